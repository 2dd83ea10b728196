#pragma once

#include "drawing/shape.h"

namespace velmo {

// Points along an ellipse parallel to the axes, from one angle to the other (degrees, counter-clockwise when
// the second is larger), both ends included, fine enough to look round at the size of a drawing.
Points EllipseArc(QPointF centre, double radiusX, double radiusY, double fromAngle, double toAngle);

// The section lines of a polygon: at 45 degrees, step apart, each a pair of points. Lines of neighbouring
// polygons with the same step meet. Throws 5 when the step gives no lines or far too many.
std::vector<Points> SectionLines(double step, const Points& polygon);

} // namespace velmo
