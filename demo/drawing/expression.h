#pragma once

#include "drawing/drawing_names.h"

namespace velmo {

// The value of an expression without blanks: numbers, names, + - * / and unary minus, parentheses and the
// functions sqrt, sin, cos, tan, atan2(y,x) (angles in degrees), min, max, abs.
// Throws 5 or 13 with a detail that says what is wrong with the text.
double EvaluateExpression(const QString& text, const DrawingNames& names);

} // namespace velmo
