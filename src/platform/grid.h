#pragma once

#include "platform/grid_model.h"
#include "platform/keeps_selection.h"

#include <QTableView>

namespace velmo {

// A grid with a current cell. Rows and columns count as in its cells; widths are twips.
class Grid : public KeepsSelection<QTableView> {
    Q_OBJECT

public:
    // What the highlight around the current cell takes in. A highlighted row is left only by a click, a key
    // or the program; a drag and the other buttons leave it where it is.
    enum class Highlight { Cell, Row };

    // The cells are not owned and outlive the grid.
    explicit Grid(const GridCells& cells, QWidget* parent = nullptr);

    const GridCells& Cells() const { return cells_; }
    // To be called after rows or columns came or went; the first cell becomes current, no row is marked.
    void CellsReplaced();
    // The notes of GridModel: to be called after the cells changed. Widths, sight and current cell stay.
    void TextsChanged() { model_->TextsChanged(); }
    void RangeChanged(const CellRange& range) { model_->RangeChanged(range); }
    void RowsInserted(int row, int count);
    void RowsRemoved(int row, int count);
    // A new column gets the width that its texts need.
    void ColumnsInserted(int column);
    void ColumnsRemoved(int column) { model_->ColumnsRemoved(column); }
    // The columns take their widths along.
    void ColumnsSwapped(int left);
    // One row stands out from the others; 0 for none.
    void MarkRow(int row) { model_->MarkRow(row); }
    void SetHighlight(Highlight highlight);
    // From now on the cells are there to be changed: neighbouring cells, rows and columns can be selected,
    // Tab goes from cell to cell, Space types, and the headers ask for menus.
    void MakeEditable();

    // The current cell; 0 for both when there is none.
    int Row() const;
    int Col() const;
    // Makes a cell current and scrolls it into sight; what is no cell below the header leaves all as it was.
    void SetCurrentCell(int row, int column);
    // Scrolls a column's header into sight.
    void ShowColumn(int column);
    // Goes to the next cell (1) or the one before (-1), from row to row; there is none beyond the outermost.
    void StepCell(int step);
    // The first cell of the range becomes current, and all of them selected.
    void SelectRange(const CellRange& range);
    // The smallest range that holds the selected cells; the current cell by itself when none is selected, and
    // all 0 without a current cell.
    CellRange SelectedRange() const;

    int ColWidth(int column) const;
    void SetColWidth(int column, int twips);
    // What a column's header needs to be read whole, or the message where the grid shows one.
    int NeededWidth(int column) const;
    // Gives each column the room that its header and the first rows need.
    void FitColumns();
    void FitColumn(int column);
    // The cell's place in the widget that shows it: the viewport, or the header's for row 0.
    QRect CellRect(int row, int column) const;
    QWidget* CellParent(int row) const;

Q_SIGNALS:
    // A click with the left button; column 0 of a grid with row numbers is a row number.
    void CellClicked(int row, int column);
    // Enter, F2 or the space bar on the current cell; where cells are edited a double click, but no space
    // bar.
    void CellActivated(int row, int column);
    // The first key or input-method event of a text typed over the current cell.
    void TypingStarted(QEvent* event);
    void EscapePressed();
    // Delete or Backspace where cells are edited.
    void DeletePressed();
    // A right click on a cell where cells are edited; the cell is current, or one of those selected.
    void CellMenuWanted(const QPoint& place);
    // A right click on a column's header (row 0) or a row's number (column 0), or the menu key, which means
    // the current column. The column or row is current by now, the place that of the menu on the screen.
    void HeaderMenuWanted(int row, int column, const QPoint& place);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
    bool viewportEvent(QEvent* event) override;

private:
    bool HighlightsRows() const { return selectionBehavior() == SelectRows; }
    int FirstColumn() const { return cells_.HasRowNumbers() ? 1 : 0; }
    bool EditingKey(const QKeyEvent& event);
    void ConnectEditableHeader(QHeaderView* header);
    void MakeCurrent(const QModelIndex& index);
    // Without scrolling it into sight.
    void MakeCurrentInPlace(const QModelIndex& index);
    void SelectBlock(const QModelIndex& from, const QModelIndex& to);
    void SelectLine(Qt::Orientation header, int section, bool extend);
    void WantHeaderMenu(Qt::Orientation header, int section, const QPoint& place);
    void WantColumnMenuByKey();

    const GridCells& cells_;
    GridModel* model_;
    // The cell under the pressed button, and the one that was current before.
    QPersistentModelIndex pressed_;
    QPersistentModelIndex before_;
    bool editable_ = false;
    // Where a selected block began, and whether what is going on makes it larger.
    QPersistentModelIndex anchor_;
    bool extending_ = false;
};

} // namespace velmo
