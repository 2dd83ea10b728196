#pragma once

#include "platform/grid_cells.h"
#include "variables/work_database.h"

#include <QStringList>

namespace velmo {

// The two grids of the variable window and the row of the table that was chosen.
struct ValueGrids {
    const WorkDatabase& work;
    const GridCells& table;
    int tableRow;
    GridCells& variables;
};

// Names and nominals mean those that are exactly so; only where there is none, those that the work database
// takes for equal.

// Puts the chosen table row's cells into the current values of the variables that its columns are named
// after. A quote in a column's name is error 3075; no current value has changed then.
void CopyTableRow(const ValueGrids& grids);

// The values that the table allows for the variable of a row within the chosen nominal group, in table order,
// each once; empty when the table does not govern the variable. A quote in the nominal is error 3075.
QStringList AllowedValues(const ValueGrids& grids, int variableRow);

// Takes the variables that the table governs from the first row of the chosen nominal group that has the
// value for the variable of a row. Throws 9 when there are more than 30 variables, 13 when a compared value
// is no number; no current value has changed then.
void ApplyAllowedValue(const ValueGrids& grids, int variableRow, const QString& value);

} // namespace velmo
