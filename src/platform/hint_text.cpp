#include "platform/hint_text.h"

namespace velmo {

namespace {

// Pixels.
constexpr int Margin = 8;

} // namespace

void DrawHint(QPainter& painter, const QRect& place, const QString& text) {
    const QFontMetrics font = painter.fontMetrics();
    const int above = qBound(0, (place.height() - font.height()) / 2, Margin);
    const QRect room = place.adjusted(Margin, above, -Margin, -above);
    const int height = font.boundingRect(room, Qt::TextWordWrap, text).height();
    const Qt::Alignment vertical = height > room.height() ? Qt::AlignTop : Qt::AlignVCenter;
    painter.drawText(room, int(Qt::AlignHCenter | vertical) | Qt::TextWordWrap, text);
}

} // namespace velmo
