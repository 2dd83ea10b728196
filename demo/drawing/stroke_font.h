#pragma once

#include "drawing/shape.h"

namespace velmo {

// A single-stroke font for drawings: each letter is a few polylines.
namespace StrokeFont {

bool Has(QChar letter);

// Width of a text of the given height of capitals.
double Width(const QString& text, double height);

// The strokes of a text whose base line starts at "at" and runs at an angle (degrees, counter-clockwise).
// A letter that the font lacks is an empty box.
std::vector<Points> Strokes(const QString& text, QPointF at, double height, double angle = 0);

} // namespace StrokeFont

} // namespace velmo
