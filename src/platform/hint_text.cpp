#include "platform/hint_text.h"

namespace velmo {

namespace {

// Pixels.
constexpr int Margin = 8;

} // namespace

void DrawHint(QPainter& painter, const QRect& place, const QString& text) {
    const QRect room = place.adjusted(Margin, Margin, -Margin, -Margin);
    const int height = painter.fontMetrics().boundingRect(room, Qt::TextWordWrap, text).height();
    const Qt::Alignment vertical = height > room.height() ? Qt::AlignTop : Qt::AlignVCenter;
    painter.drawText(room, int(Qt::AlignHCenter | vertical) | Qt::TextWordWrap, text);
}

} // namespace velmo
