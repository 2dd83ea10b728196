#pragma once

#include "platform/grid_cells.h"
#include "platform/settings_store.h"
#include "startup/global_state.h"

namespace velmo {

// What was confirmed last in a library: the symbol, its table row, the current values of its variables.

struct LastChoice {
    // 1 unless the symbol is the one that was confirmed last.
    std::int16_t tableRow = 1;
    // The row of the variable grid to start at.
    int variableRow = 1;
};

// When the symbol is the one confirmed last, puts the remembered current values into column 1 of the variable
// grid, in run mode 4 the measured distance too. Throws 6 or 13, naming the key, when a remembered row is no
// 16-bit number.
LastChoice RestoreLastChoice(const GlobalState& state, const SettingsStore& settings,
                             GridCells& variableGrid);

// Remember the current values, and the symbol with TableLast; nothing is on disk before the settings are
// flushed.
void SaveCurrentValues(const GlobalState& state, SettingsStore& settings, const GridCells& variableGrid);
void SaveLastChoice(const GlobalState& state, SettingsStore& settings);

} // namespace velmo
