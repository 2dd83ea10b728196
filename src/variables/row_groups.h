#pragma once

#include "platform/grid_cells.h"

#include <QHash>

namespace velmo {

// The rows of a table while it is read: those with the same first value belong to one group and stand
// together in the grid, below the group's first row.
class RowGroups {
public:
    enum class Duplicates { Shown, Hidden };

    // The cells of the next row, to be filled before the next call; null when it repeats a first value and is
    // not shown.
    CellRow* Add(QStringView firstValue, Duplicates duplicates);
    // Rows to be shown.
    int Count() const { return int(rows_.size()); }
    // Adds the rows to the grid, group by group.
    void MoveInto(GridCells& cells);

private:
    struct Row {
        int group;
        CellRow cells;
    };

    QHash<QString, int> groups_;
    std::vector<Row> rows_;
};

} // namespace velmo
