#include "variables/last_choice.h"

#include "platform/numbers.h"
#include "startup/settings_keys.h"

namespace velmo {

namespace keys = settings_keys;

namespace {

void RestoreValues(const GlobalState& state, const SettingsStore& settings, GridCells& grid) {
    for (int row = 1; row < grid.Rows(); ++row) {
        const QString value = settings.Get(keys::VariableValue(state.UserLibrary, row));
        if (!value.isEmpty())
            grid.SetText(row, 1, value);
    }
}

// The row that was measured, or 1 when there is no such row.
int RestoreMeasured(const SettingsStore& settings, GridCells& grid) {
    const int row = settings.GetInteger(keys::DistNo, 1);
    if (row < 1 || row >= grid.Rows())
        return 1;
    const QString distance = settings.Get(keys::VlmDist, QStringLiteral("0"));
    if (ToNumberOr(distance, 0) > 0)
        grid.SetText(row, 1, distance);
    return row;
}

} // namespace

LastChoice RestoreLastChoice(const GlobalState& state, const SettingsStore& settings,
                             GridCells& variableGrid) {
    LastChoice choice;
    if (settings.Get(keys::LastSymbol(state.UserLibrary), keys::NoPath) != state.SymbolFile)
        return choice;
    choice.tableRow = settings.GetInteger(keys::LastTableRow(state.UserLibrary), 1);
    const bool measured = state.RunMode == run_mode::ReturnFromMeasure;
    if (measured || state.RunMode == run_mode::VariableInput)
        RestoreValues(state, settings, variableGrid);
    if (measured)
        choice.variableRow = RestoreMeasured(settings, variableGrid);
    return choice;
}

void SaveCurrentValues(const GlobalState& state, SettingsStore& settings, const GridCells& variableGrid) {
    for (int row = 1; row < variableGrid.Rows(); ++row)
        settings.Save(keys::VariableValue(state.UserLibrary, row), variableGrid.Text(row, 1));
}

void SaveLastChoice(const GlobalState& state, SettingsStore& settings) {
    settings.Save(keys::LastTableRow(state.UserLibrary), state.TableLast);
    settings.Save(keys::LastSymbol(state.UserLibrary), state.SymbolFile);
}

} // namespace velmo
