#include "drawing/annotation.h"

#include "drawing/stroke_font.h"

#include <cmath>
#include <numbers>

namespace velmo {
namespace {

// In letter heights.
constexpr double kArrowLength = 0.85;
constexpr double kArrowHalfWidth = 0.17;
constexpr double kExtensionGap = 0.2;
constexpr double kExtensionOvershoot = 0.4;
constexpr double kTextGap = 0.35;

QPointF Direction(QPointF from, QPointF to) {
    const QPointF way = to - from;
    return way / std::hypot(way.x(), way.y());
}

QPointF LeftOf(QPointF direction) {
    return {-direction.y(), direction.x()};
}

void AddArrow(Drawing& drawing, int colour, QPointF tip, QPointF direction) {
    const QPointF back = tip - direction * (kArrowLength * drawing.letterHeight);
    const QPointF side = LeftOf(direction) * (kArrowHalfWidth * drawing.letterHeight);
    drawing.primitives.emplace_back(DrawnArea{colour, {tip, back + side, back - side}});
}

// Text above a line that runs through "middle", centred there and readable from below or from the right.
void AddTextAbove(Drawing& drawing, int colour, QPointF middle, QPointF direction, const QString& text) {
    QPointF reading = direction;
    if (reading.x() < -1e-9 || (std::abs(reading.x()) <= 1e-9 && reading.y() < 0))
        reading = -reading;
    const double height = drawing.letterHeight;
    const QPointF at =
        middle + LeftOf(reading) * (kTextGap * height) - reading * (StrokeFont::Width(text, height) / 2);
    const double angle = std::atan2(reading.y(), reading.x()) * 180 / std::numbers::pi;
    drawing.primitives.emplace_back(DrawnText{colour, at, height, angle, text});
}

} // namespace

void AddDimension(Drawing& drawing, const DimensionShape& dimension, const QString& text) {
    const double unit = drawing.letterHeight;
    const int colour = dimension.colour;
    const QPointF along = Direction(dimension.from, dimension.to);
    const QPointF away = LeftOf(along) * (dimension.offset < 0 ? -1.0 : 1.0);
    const double distance = std::abs(dimension.offset);
    const QPointF start = dimension.from + away * distance;
    const QPointF end = dimension.to + away * distance;
    if (distance > kExtensionGap * unit) {
        for (const QPointF foot : {dimension.from, dimension.to})
            drawing.primitives.emplace_back(DrawnLine{colour, foot + away * (kExtensionGap * unit),
                                                      foot + away * (distance + kExtensionOvershoot * unit)});
    }

    const double length = std::hypot((end - start).x(), (end - start).y());
    const double textWidth = StrokeFont::Width(text, unit);
    const bool arrowsInside = length >= 2.6 * kArrowLength * unit;
    const double tail = arrowsInside ? 0 : 1.9 * kArrowLength * unit;
    AddArrow(drawing, colour, start, arrowsInside ? -along : along);
    AddArrow(drawing, colour, end, arrowsInside ? along : -along);
    // A text that does not fit between the extension lines stands beyond the second one, on the line drawn
    // on.
    if (textWidth + 0.3 * unit <= length) {
        drawing.primitives.emplace_back(DrawnLine{colour, start - along * tail, end + along * tail});
        AddTextAbove(drawing, colour, (start + end) / 2, along, text);
    } else {
        const double textStart = std::max(tail, kTextGap * unit);
        const double reach = textStart + textWidth;
        drawing.primitives.emplace_back(DrawnLine{colour, start - along * tail, end + along * reach});
        AddTextAbove(drawing, colour, end + along * (textStart + textWidth / 2), along, text);
    }
}

void AddLeader(Drawing& drawing, const LeaderShape& leader, const QString& text) {
    const double height = drawing.letterHeight;
    const int colour = leader.colour;
    const double width = StrokeFont::Width(text, height) + kTextGap * height;
    const QPointF shoulder(leader.end.x() < leader.tip.x() ? -width : width, 0);
    AddArrow(drawing, colour, leader.tip, Direction(leader.end, leader.tip));
    drawing.primitives.emplace_back(DrawnLine{colour, leader.tip, leader.end});
    drawing.primitives.emplace_back(DrawnLine{colour, leader.end, leader.end + shoulder});
    AddTextAbove(drawing, colour, leader.end + shoulder / 2, {1, 0}, text);
}

} // namespace velmo
