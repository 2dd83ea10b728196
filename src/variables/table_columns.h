#pragma once

#include "variables/work_database.h"

#include <vector>

namespace velmo {

// What the table file says of a column: the variable of NowTable that the column shows.
struct TableColumn {
    // Row in the variable grid; 0 for the comment column.
    std::int16_t row = 0;
    std::int16_t number = 0;
    // Characters.
    std::int16_t width = 0;
    std::int16_t small = 0;
    QString name;
};

// Columns 1, 2, 3 ... of the table; nothing stands for one that shows no variable.
using TableColumns = std::vector<std::optional<TableColumn>>;

// So many columns.
TableColumns ReadTableColumns(const WorkDatabase& work, int columns);

// The columns whose variable has a number that the four digits of the file cannot hold; it is read as another
// one's then.
std::vector<int> ColumnsWithLongNumber(const TableColumns& columns);

// The columns that show no variable. The file keeps neither their values nor their names, and what is read
// from it then ends at the first of them.
std::vector<int> ColumnsWithoutVariable(const TableColumns& columns);

} // namespace velmo
