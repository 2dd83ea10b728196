#pragma once

#include "platform/cell_range.h"

#include <QStringList>

#include <vector>

namespace velmo {

// Cells on their way to or from a spreadsheet: rows of texts, as wide as the widest of them. Rows and columns
// count from 0.
class CellBlock {
public:
    CellBlock() = default;
    explicit CellBlock(std::vector<QStringList> rows);

    int Rows() const { return int(rows_.size()); }
    int Columns() const { return columns_; }
    bool IsEmpty() const { return columns_ == 0; }
    // Behind the end of a short row cells are empty.
    QString Text(int row, int column) const;

private:
    std::vector<QStringList> rows_;
    int columns_ = 0;
};

// The block as spreadsheets put it on the clipboard: cells parted by tabs, rows by line feeds. A cell that
// holds a tab or a line end or begins with a quote stands in quotes, those in it doubled.
QString ToTabText(const CellBlock& block);

// Reads such a text; a row may end in CR LF too, and a line end behind the last row adds none. Quotes that do
// not enclose a whole cell are text. In the cells, tabs and line ends become blanks, and other control
// characters are dropped: a table's cell is one line. No text is no rows.
CellBlock FromTabText(const QString& text);

// Where a pasted block goes: what would be written, and how far the table reaches from its first cell on.
struct PasteTargets {
    CellRange cells;
    int rowsThere = 0;
    int columnsThere = 0;

    // Otherwise nothing may be pasted.
    bool Fit() const { return cells.rows <= rowsThere && cells.columns <= columnsThere; }
};

// A block that fills the selected cells evenly, as one value always does, is repeated all over them; any
// other goes once from their top left. The table has so many data rows and columns.
PasteTargets TargetsOfPaste(const CellBlock& block, const CellRange& selected, int tableRows,
                            int tableColumns);

// The text for a cell of the targets, counted from 0 at their top left.
QString PastedText(const CellBlock& block, int row, int column);

} // namespace velmo
