#pragma once

#include "drawing/shape.h"

namespace velmo {

// The strokes of a polyline drawn in a style; unit is the drawing's letter height, which dashes follow.
// A pattern is stretched so that it begins and ends with a dash.
std::vector<Points> StyledStrokes(const Points& path, LineStyle style, double unit);

} // namespace velmo
