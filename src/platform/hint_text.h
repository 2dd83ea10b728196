#pragma once

#include <QPainter>

namespace velmo {

// Draws a hint in the middle of a place; of one that is too long for it the beginning is seen.
void DrawHint(QPainter& painter, const QRect& place, const QString& text);

} // namespace velmo
