#include "drawing/curve.h"

#include "platform/runtime_error.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velmo {
namespace {

constexpr double kMostSectionLines = 2000;

// Where the line y = x + shift crosses the polygon's edges, as x values from left to right.
std::vector<double> Crossings(const Points& polygon, double shift) {
    std::vector<double> crossings;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const QPointF a = polygon[i];
        const QPointF b = polygon[(i + 1) % polygon.size()];
        const double sideA = a.y() - a.x() - shift;
        const double sideB = b.y() - b.x() - shift;
        // A corner on the line belongs to one of its two edges only.
        if ((sideA < 0) != (sideB < 0))
            crossings.push_back(a.x() + (b.x() - a.x()) * sideA / (sideA - sideB));
    }
    std::sort(crossings.begin(), crossings.end());
    return crossings;
}

} // namespace

Points EllipseArc(QPointF centre, double radiusX, double radiusY, double fromAngle, double toAngle) {
    constexpr double degreesPerPiece = 3.75;
    const double sweep = toAngle - fromAngle;
    const int pieces = std::max(2, static_cast<int>(std::ceil(std::abs(sweep) / degreesPerPiece - 1e-9)));
    Points points;
    points.reserve(static_cast<std::size_t>(pieces) + 1);
    for (int i = 0; i <= pieces; ++i) {
        const double angle = (fromAngle + sweep * i / pieces) * std::numbers::pi / 180;
        points.push_back(centre + QPointF(radiusX * std::cos(angle), radiusY * std::sin(angle)));
    }
    return points;
}

std::vector<Points> SectionLines(double step, const Points& polygon) {
    if (!(step > 0))
        throw RuntimeError(ErrorNumber::InvalidArgument, QStringLiteral("ハッチングの間隔は正の値です。"));
    double lowest = polygon.front().y() - polygon.front().x();
    double highest = lowest;
    for (const QPointF& point : polygon) {
        lowest = std::min(lowest, point.y() - point.x());
        highest = std::max(highest, point.y() - point.x());
    }
    const double shiftStep = step * std::numbers::sqrt2;
    if ((highest - lowest) / shiftStep > kMostSectionLines)
        throw RuntimeError(ErrorNumber::InvalidArgument, QStringLiteral("ハッチングの間隔が細かすぎます。"));
    std::vector<Points> lines;
    for (double k = std::ceil(lowest / shiftStep); k * shiftStep <= highest; ++k) {
        const double shift = k * shiftStep;
        const std::vector<double> xs = Crossings(polygon, shift);
        for (std::size_t i = 0; i + 1 < xs.size(); i += 2)
            lines.push_back({QPointF(xs[i], xs[i] + shift), QPointF(xs[i + 1], xs[i + 1] + shift)});
    }
    return lines;
}

} // namespace velmo
