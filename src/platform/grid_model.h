#pragma once

#include "platform/cell_range.h"
#include "platform/grid_cells.h"

#include <QAbstractTableModel>

namespace velmo {

// Shows grid cells in an item view. The header row and the row numbers are the view's headers, so that cell
// (row, column) of the cells is model cell (row - 1, column - 1), or (row - 1, column) without row numbers. A
// message is model cell (0, 0).
class GridModel : public QAbstractTableModel {
    Q_OBJECT

public:
    // The cells are not owned and outlive the model; whoever changes them tells the model, change by change
    // and after each one.
    explicit GridModel(const GridCells& cells, QObject* parent = nullptr);

    // Rows or columns came or went; no row is marked any longer.
    void CellsReplaced();
    // Texts changed, the headers' too; rows and columns are as many as before.
    void TextsChanged();
    // The same for some cells; row 0 is the header row.
    void RangeChanged(const CellRange& range);

    // Rows below the header came or went; those from there on have new numbers.
    void RowsInserted(int row, int count);
    void RowsRemoved(int row, int count);
    // Columns right of the row numbers likewise.
    void ColumnsInserted(int column);
    void ColumnsRemoved(int column);
    // A column changed places with the one right of it.
    void ColumnsSwapped(int left);

    // One row, counted as in the cells, stands out from the others; 0 for none.
    void MarkRow(int row);

    QModelIndex IndexOf(int row, int column) const;
    int RowOf(const QModelIndex& index) const { return index.row() + firstRow_; }
    int ColumnOf(const QModelIndex& index) const { return index.column() + firstColumn_; }
    // The view's column of a column of the cells; -1 for the row numbers.
    int Section(int column) const { return column - firstColumn_; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    // Between the two signals of a change the view still counts as before: where a row or column that it
    // means stands now, after some came (count above 0) or went from first on.
    struct Shift {
        int first = 0;
        int count = 0;
        // -1 for one that went.
        int operator()(int place) const;
    };

    void Measure();
    bool HasCell(int row, int column) const {
        return row >= 0 && row < cells_.Rows() && column >= 0 && column < cells_.Cols();
    }
    QVariant MarkedFont(int row) const;

    const GridCells& cells_;
    // What the view was told last.
    int firstRow_ = 1;
    int firstColumn_ = 0;
    int rows_ = 0;
    int columns_ = 0;
    int markedRow_ = 0;
    Shift rowShift_;
    Shift columnShift_;
};

} // namespace velmo
