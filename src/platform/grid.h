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
    // To be called after texts changed.
    void TextsChanged() { model_->TextsChanged(); }
    // One row stands out from the others; 0 for none.
    void MarkRow(int row) { model_->MarkRow(row); }
    void SetHighlight(Highlight highlight);

    // The current cell; 0 for both when there is none.
    int Row() const;
    int Col() const;
    // Makes a cell current and scrolls it into sight; what is no cell below the header leaves all as it was.
    void SetCurrentCell(int row, int column);

    int ColWidth(int column) const;
    void SetColWidth(int column, int twips);
    // Gives each column the room that its header and the first rows need.
    void FitColumns();
    // The cell's place in the viewport.
    QRect CellRect(int row, int column) const;

Q_SIGNALS:
    // A click with the left button; column 0 of a grid with row numbers is a row number.
    void CellClicked(int row, int column);
    // Enter, F2 or the space bar on the current cell.
    void CellActivated(int row, int column);
    // The first key or input-method event of a text typed over the current cell.
    void TypingStarted(QEvent* event);
    void EscapePressed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
    bool viewportEvent(QEvent* event) override;

private:
    bool HighlightsRows() const { return selectionBehavior() == SelectRows; }

    const GridCells& cells_;
    GridModel* model_;
    // The cell under the pressed button, and the one that was current before.
    QPersistentModelIndex pressed_;
    QPersistentModelIndex before_;
};

} // namespace velmo
