#include "platform/slide_clip.h"

#include <algorithm>

namespace velmo {

namespace {

// The part of a polygon on the inner side of one border: distance is above 0 outside.
template <typename Distance>
QPolygonF ClipAtBorder(const QPolygonF& corners, Distance distance) {
    QPolygonF inside;
    for (qsizetype i = 0; i < corners.size(); ++i) {
        const QPointF from = corners[i];
        const QPointF to = corners[(i + 1) % corners.size()];
        const double fromDistance = distance(from);
        const double toDistance = distance(to);
        if (fromDistance <= 0)
            inside.append(from);
        if ((fromDistance <= 0) != (toDistance <= 0))
            inside.append(from + (to - from) * (fromDistance / (fromDistance - toDistance)));
    }
    return inside;
}

} // namespace

bool ClipLine(QLineF& line, const QRectF& area) {
    if (area.contains(line.p1()) && area.contains(line.p2()))
        return true;
    double begin = 0;
    double end = 1;
    const auto cut = [&](double step, double room) {
        // Within a border as far as step * t <= room.
        if (step == 0)
            return room >= 0;
        const double at = room / step;
        if (step > 0)
            end = std::min(end, at);
        else
            begin = std::max(begin, at);
        return begin <= end;
    };
    const bool found = cut(-line.dx(), line.x1() - area.left()) && cut(line.dx(), area.right() - line.x1()) &&
                       cut(-line.dy(), line.y1() - area.top()) && cut(line.dy(), area.bottom() - line.y1());
    if (found)
        line = QLineF(line.pointAt(begin), line.pointAt(end));
    return found;
}

QPolygonF ClipPolygon(QPolygonF corners, const QRectF& area) {
    corners = ClipAtBorder(corners, [&](QPointF p) { return area.left() - p.x(); });
    corners = ClipAtBorder(corners, [&](QPointF p) { return p.x() - area.right(); });
    corners = ClipAtBorder(corners, [&](QPointF p) { return area.top() - p.y(); });
    return ClipAtBorder(corners, [&](QPointF p) { return p.y() - area.bottom(); });
}

} // namespace velmo
