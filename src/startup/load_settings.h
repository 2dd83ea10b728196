#pragma once

#include "platform/settings_store.h"
#include "startup/global_state.h"

namespace velmo {

// Fills the state from the settings and from the previous answer in velmo.ret2. Never fails: what is missing
// or no number gets its default. SymbolFile is not empty afterwards exactly when the variable window is to
// open at once.
void LoadSettings(GlobalState& state, const SettingsStore& settings);

} // namespace velmo
