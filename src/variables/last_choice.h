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
    // Some current value is the remembered one.
    bool valuesRestored = false;
};

// When the symbol is the one confirmed last, puts the remembered current values into column 1 of the variable
// grid unless they belong to another, in run mode 4 the measured distance too. A remembered row that is no
// 16-bit number is 1.
LastChoice RestoreLastChoice(const GlobalState& state, const SettingsStore& settings,
                             GridCells& variableGrid);

// Remember the current values with their symbol, or in run mode 3, where they are names, without any; and the
// symbol chosen last with TableLast. Nothing is on disk before the settings are flushed.
void SaveCurrentValues(const GlobalState& state, SettingsStore& settings, const GridCells& variableGrid);
void SaveLastChoice(const GlobalState& state, SettingsStore& settings);

} // namespace velmo
