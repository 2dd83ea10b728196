#include "cad_side/symbol_drawing.h"

#include "drawing/symbol_geometry.h"

#include <algorithm>

namespace velmo {

Drawing DrawAnswer(const CadAnswer& answer) {
    const SymbolGeometry geometry = ReadSymbolGeometry(answer.symbolFile);
    VariableValues values;
    // By number: the name in a label may be a table's heading instead of the definition's own.
    for (const DrawingVariable& variable : geometry.variables) {
        const auto found =
            std::find_if(answer.variables.begin(), answer.variables.end(), [&](const CadVariable& one) {
                return one.HasValue() && one.Number() == variable.number;
            });
        if (found != answer.variables.end())
            values.insert(variable.name, found->value);
    }
    return MakeDrawing(geometry, values, DimensionText::LettersAndValues);
}

} // namespace velmo
