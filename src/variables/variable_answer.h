#pragma once

#include "platform/grid_cells.h"
#include "startup/global_state.h"

#include <optional>

namespace velmo {

// The answer of the variable window to the CAD side: every variable of the grid with its current value.

// The first row without a current value; 0 when all have one.
int FirstRowWithoutValue(const GridCells& variableGrid);

// A character that the answer files cannot hold, and where it stands.
struct ForeignCharacter {
    QString character;
    // In the variable grid; 0 for the path of the definition file.
    int row = 0;
    int column = 0;
    // The variable's label, or the path.
    QString field;
};

std::optional<ForeignCharacter> FindForeignCharacter(const GlobalState& state, const GridCells& variableGrid);

// Writes velmo.ret and velmo.ret2. Throws as the hand-off files do.
void WriteAnswer(const GlobalState& state, const GridCells& variableGrid);

} // namespace velmo
