#pragma once

#include "platform/grid_cells.h"
#include "startup/global_state.h"
#include "variables/work_database.h"

namespace velmo {

// Whether the table file may be replaced as it is now.
using MayReplace = std::function<bool()>;

// Writes the dimension table back to the symbol's table file: cells as the table grid has them, columns as
// NowTable knows them. The old file is replaced in one step, or stays as it was. When the work file cannot be
// created, that is told through inform and the result is false. From then on no other program can save the
// table this way; mayReplace is asked last of all, so that the file is still what it looked at when it is
// replaced. When it may not be, the result is false.
//
// Throws 5 when something in the table cannot be saved (FindTableFault finds it before), 6 or 9 when the file
// could not hold as many rows or columns or a variable's number, or would exceed a gigabyte, and what
// ReplaceFile throws.
bool SaveDimensionTable(const GlobalState& state, const WorkDatabase& work, const GridCells& cells,
                        const Inform& inform, const MayReplace& mayReplace = {});

} // namespace velmo
