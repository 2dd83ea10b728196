#include "variables/last_choice.h"

#include "platform/numbers.h"
#include "startup/settings_keys.h"

namespace velmo {

namespace keys = settings_keys;

namespace {

// The values that were saved before their symbol was saved with them are those of the last one.
bool ValuesBelongTo(const GlobalState& state, const SettingsStore& settings) {
    return settings.Get(keys::VariableValuesOf(state.UserLibrary), state.SymbolFile) == state.SymbolFile;
}

// False when there was none.
bool RestoreValues(const GlobalState& state, const SettingsStore& settings, GridCells& grid) {
    bool restored = false;
    for (int row = 1; row < grid.Rows(); ++row) {
        const QString value = settings.Get(keys::VariableValue(state.UserLibrary, row));
        if (value.isEmpty())
            continue;
        grid.SetText(row, 1, value);
        restored = true;
    }
    return restored;
}

// The measured distance goes into its row; where there is no such row, nothing does.
void RestoreMeasured(const SettingsStore& settings, GridCells& grid, LastChoice& choice) {
    const int row = ToIntegerOr(settings.Get(keys::DistNo), 1);
    if (row < 1 || row >= grid.Rows())
        return;
    choice.variableRow = row;
    const QString distance = settings.Get(keys::VlmDist, QStringLiteral("0"));
    if (ToNumberOr(distance, 0) <= 0)
        return;
    grid.SetText(row, 1, distance);
    choice.valuesRestored = true;
}

} // namespace

LastChoice RestoreLastChoice(const GlobalState& state, const SettingsStore& settings,
                             GridCells& variableGrid) {
    LastChoice choice;
    if (settings.Get(keys::LastSymbol(state.UserLibrary), keys::NoPath) != state.SymbolFile)
        return choice;
    choice.tableRow = ToIntegerOr(settings.Get(keys::LastTableRow(state.UserLibrary)), 1);
    const bool measured = state.RunMode == run_mode::ReturnFromMeasure;
    if ((measured || state.RunMode == run_mode::VariableInput) && ValuesBelongTo(state, settings))
        choice.valuesRestored = RestoreValues(state, settings, variableGrid);
    if (measured)
        RestoreMeasured(settings, variableGrid, choice);
    return choice;
}

void SaveCurrentValues(const GlobalState& state, SettingsStore& settings, const GridCells& variableGrid) {
    const bool names = state.RunMode == run_mode::UserLibrary;
    settings.Save(keys::VariableValuesOf(state.UserLibrary), names ? QString() : state.SymbolFile);
    for (int row = 1; row < variableGrid.Rows(); ++row)
        settings.Save(keys::VariableValue(state.UserLibrary, row), variableGrid.Text(row, 1));
    // What a symbol of more variables left is none of this one's.
    for (int row = qMax(1, variableGrid.Rows());; ++row) {
        const QString key = keys::VariableValue(state.UserLibrary, row);
        if (settings.Get(key).isEmpty())
            return;
        settings.Save(key, QString());
    }
}

void SaveLastChoice(const GlobalState& state, SettingsStore& settings) {
    settings.Save(keys::LastTableRow(state.UserLibrary), state.TableLast);
    settings.Save(keys::LastSymbol(state.UserLibrary), state.SymbolFile);
}

} // namespace velmo
