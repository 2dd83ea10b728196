#pragma once

#include <QLineF>
#include <QPolygonF>
#include <QRectF>

namespace velmo {

// Cuts a line to its part within an area; false, and the line stays, when there is none.
bool ClipLine(QLineF& line, const QRectF& area);

// The part of a polygon within an area; empty when there is none.
QPolygonF ClipPolygon(QPolygonF corners, const QRectF& area);

} // namespace velmo
