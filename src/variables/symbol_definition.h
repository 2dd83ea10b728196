#pragma once

#include "platform/grid_cells.h"
#include "startup/global_state.h"
#include "variables/work_database.h"

#include <optional>

namespace velmo {

// A symbol has at most so many variables.
inline constexpr int MostVariables = 500;

// One variable of a symbol definition file, e.g. V12=PRO("W",100).
struct VariableLine {
    std::int16_t number = 0;
    QString name;
    QString value;
};

// Takes a line of the variable section apart; nothing when it declares no variable. Throws 5, 6 or 13 when
// the line starts like a variable and cannot be read as one.
std::optional<VariableLine> ParseVariableLine(QStringView line);

// Creates the work database and fills NowTable and the variable grid, whose header and two columns are there
// already, from the symbol's definition file. Returns the number of variables; with none, the grid becomes a
// message. Throws, naming file and line, when the file cannot be opened, a line is wrong or there are too
// many variables (9).
std::int16_t ReadSymbolDefinition(const GlobalState& state, WorkDatabase& work, GridCells& variableGrid,
                                  const Inform& inform);

} // namespace velmo
