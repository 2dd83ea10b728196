#pragma once

#include "platform/cell_row.h"

#include <vector>

namespace velmo {

// The texts of a grid, without its window. Rows and columns count from 0; row 0 is the header row. A grid
// with row numbers has a column 0 whose cells read 1, 2, 3 ... below the header. A cell outside the grid is
// error 9.
class GridCells {
public:
    enum class FirstColumn { Texts, RowNumbers };
    // Where the texts of a column are kept: they stay there when the column moves, leaves or comes back, so
    // that none of this touches a row.
    enum class ColumnStore : int {};

    explicit GridCells(FirstColumn firstColumn) : numbered_(firstColumn == FirstColumn::RowNumbers) {}

    bool HasRowNumbers() const { return numbered_; }
    // The fixed row and column included.
    int Rows() const { return int(rows_.size()); }
    int Cols() const { return cols_; }
    // New cells are empty.
    void SetRows(int rows);
    void SetCols(int cols);

    QString Text(int row, int column) const;
    // The same without a copy, good until the row's texts change; not for row numbers (error 5).
    QStringView TextView(int row, int column) const;
    // All texts of a row, from the first column that is no row number on, good until one of them changes.
    // buffer is used again from row to row.
    struct RowBuffer {
        std::vector<QStringView> stored;
        std::vector<QStringView> texts;
    };
    const std::vector<QStringView>& RowTexts(int row, RowBuffer& buffer) const;
    // Throws 5 for a row number and for a text longer than 65535 characters.
    void SetText(int row, int column, QStringView text);
    // Adds a row below the last one; its first text is that of the first column that is no row number.
    // Columns are in their first order yet.
    void AppendRow(CellRow row) { rows_.push_back(std::move(row)); }
    void ReserveRows(int rows) { rows_.reserve(size_t(rows)); }

    // The row comes to stand at a place below the header; those from there on go one down.
    void InsertRow(int at, CellRow row = {});
    // Takes a row out; it can come back as long as no column was made or dropped for good.
    CellRow TakeRow(int row);
    const CellRow& RowAt(int row) const;
    void SwapRows(int left, int right);

    // Room for a column that is not shown yet; empty.
    ColumnStore MakeColumn();
    // The column comes to stand at a place, not before the row numbers; those from there on go one right.
    void InsertColumn(int at, ColumnStore store);
    ColumnStore TakeColumn(int column);
    void SwapColumns(int left, int right);

    // The grid now says only this: one row, one column, no header.
    void BecomeMessage(const QString& text);
    bool IsMessage() const { return message_; }

private:
    void RequireRow(int row, int first, int end) const;
    void RequireCell(int row, int column) const;
    void RequireTextColumn(int column) const;
    // The place of a column among those that hold texts.
    int Place(int column) const { return numbered_ && !message_ ? column - 1 : column; }
    int Index(int column) const { return stores_[size_t(Place(column))]; }

    bool numbered_;
    bool message_ = false;
    int cols_ = 0;
    // For each column with texts, its index in the rows.
    std::vector<int> stores_;
    // Indexes given out so far.
    int made_ = 0;
    std::vector<CellRow> rows_ = std::vector<CellRow>(1);
};

} // namespace velmo
