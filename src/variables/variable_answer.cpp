#include "variables/variable_answer.h"

#include "platform/code_page.h"
#include "startup/hand_off_files.h"

namespace velmo {

int FirstRowWithoutValue(const GridCells& variableGrid) {
    for (int row = 1; row < variableGrid.Rows(); ++row) {
        if (variableGrid.Text(row, 1).isEmpty())
            return row;
    }
    return 0;
}

std::optional<ForeignCharacter> FindForeignCharacter(const GlobalState& state,
                                                     const GridCells& variableGrid) {
    if (const std::optional<QString> character = FirstForeignCharacter(state.SymbolFile))
        return ForeignCharacter{*character, 0, 0, state.SymbolFile};
    for (int row = 1; row < variableGrid.Rows(); ++row) {
        for (int column = 0; column <= 1; ++column) {
            if (const std::optional<QString> character =
                    FirstForeignCharacter(variableGrid.Text(row, column)))
                return ForeignCharacter{*character, row, column, variableGrid.Text(row, 0)};
        }
    }
    return std::nullopt;
}

void WriteAnswer(const GlobalState& state, const GridCells& variableGrid) {
    QList<VariableValue> values;
    for (int row = 1; row < variableGrid.Rows(); ++row)
        values << VariableValue{variableGrid.Text(row, 0), variableGrid.Text(row, 1)};
    WriteAnswer(state.TempDir, values, state.SymbolFile, state.UserLibrary);
}

} // namespace velmo
