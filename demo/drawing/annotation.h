#pragma once

#include "drawing/drawing.h"

namespace velmo {

// Draws a dimension with the drawing's letter height: extension lines, dimension line, arrowheads and text.
void AddDimension(Drawing& drawing, const DimensionShape& dimension, const QString& text);

// Draws an arrow to the tip with the text on a shoulder at the other end.
void AddLeader(Drawing& drawing, const LeaderShape& leader, const QString& text);

} // namespace velmo
