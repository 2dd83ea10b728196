#pragma once

#include "platform/grid_cells.h"
#include "startup/global_state.h"
#include "variables/work_database.h"

#include <functional>

namespace velmo {

// The symbol's dimension table as the table grid shows it.
struct DimensionTable {
    GridCells cells{GridCells::FirstColumn::RowNumbers};
    // Rows that can be chosen; 0 when the grid is a message or a header alone.
    std::int16_t rows = 0;
    // False when a table file is there that could not be read to its end, or that holds more than its columns
    // and rows.
    bool whole = true;
};

// What a table file has in place of a variable's number for the comment column.
inline constexpr QStringView CommentColumnKey = u"ｺﾒﾝﾄ";
inline constexpr int MostTableColumns = 501;

// Told now and then how much of a file has been read.
using Progress = std::function<void(qint64 done, qint64 size)>;

// The table file that belongs to a definition file. Throws 5 when that name has no four-character extension.
QString DimensionTablePath(const QString& symbolFile);

// Reads the symbol's table file into PmnTable and the result, and links the variables of NowTable to the
// columns that hold them; in run mode 3 their names go into the variable grid too. What is wrong with the
// file ends its reading without a word; a failure of the work database is thrown.
DimensionTable LoadDimensionTable(const GlobalState& state, const WorkDatabase& work, int variableCount,
                                  GridCells& variableGrid, const Progress& progress = {});

} // namespace velmo
