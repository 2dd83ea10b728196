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

    explicit GridCells(FirstColumn firstColumn) : numbered_(firstColumn == FirstColumn::RowNumbers) {}

    bool HasRowNumbers() const { return numbered_; }
    // The fixed row and column included.
    int Rows() const { return int(rows_.size()); }
    int Cols() const { return cols_; }
    // New cells are empty.
    void SetRows(int rows);
    void SetCols(int cols);

    QString Text(int row, int column) const;
    // Throws 5 for a row number and for a text longer than 65535 characters.
    void SetText(int row, int column, QStringView text);
    // Adds a row below the last one; its first text is that of the first column that is no row number.
    void AppendRow(CellRow row) { rows_.push_back(std::move(row)); }
    void ReserveRows(int rows) { rows_.reserve(size_t(rows)); }

    // The grid now says only this: one row, one column, no header.
    void BecomeMessage(const QString& text);
    bool IsMessage() const { return message_; }

private:
    void RequireCell(int row, int column) const;
    // The place of a column in its row.
    int Index(int column) const { return numbered_ && !message_ ? column - 1 : column; }

    bool numbered_;
    bool message_ = false;
    int cols_ = 0;
    std::vector<CellRow> rows_ = std::vector<CellRow>(1);
};

} // namespace velmo
