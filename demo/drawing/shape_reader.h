#pragma once

#include "drawing/drawing_names.h"
#include "drawing/shape.h"
#include "drawing/symbol_geometry.h"

namespace velmo {

// Evaluates the drawing instructions of a file. The names hold the values of the symbol's variables.
// Throws 5 or 13 naming file, line and what is wrong with it.
std::vector<Shape> ReadShapes(const SymbolGeometry& geometry, DrawingNames names);

} // namespace velmo
