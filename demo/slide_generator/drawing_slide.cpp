#include "slide_generator/drawing_slide.h"

#include "platform/slide_writer.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace velmo {
namespace {

constexpr int kHighX = 1599;
constexpr int kHighY = 1199;
constexpr double kMargin = 50;

// Millimetres to dots.
class Fit {
public:
    explicit Fit(const QRectF& bounds) : centre_(bounds.center()) {
        // A single point or line has no width or no height to fit.
        const double width = std::max(bounds.width(), 1e-6);
        const double height = std::max(bounds.height(), 1e-6);
        scale_ = std::min((kHighX - 2 * kMargin) / width, (kHighY - 2 * kMargin) / height);
    }

    QPoint Dot(QPointF point) const {
        const QPointF way = (point - centre_) * scale_;
        return {static_cast<int>(std::lround(kHighX / 2.0 + way.x())),
                static_cast<int>(std::lround(kHighY / 2.0 + way.y()))};
    }

private:
    QPointF centre_;
    double scale_ = 1;
};

void AddLine(SlideWriter& writer, const Fit& fit, const DrawnLine& line) {
    const QPoint from = fit.Dot(line.from);
    const QPoint to = fit.Dot(line.to);
    // A piece of a curve shorter than a dot is part of its neighbours.
    if (from == to && line.from != line.to)
        return;
    writer.SetColour(static_cast<std::uint8_t>(line.colour));
    writer.AddLine(from, to);
}

// Cut into triangles, the only polygons that every viewer knows.
void AddArea(SlideWriter& writer, const Fit& fit, const DrawnArea& area) {
    writer.SetColour(static_cast<std::uint8_t>(area.colour));
    for (std::size_t i = 2; i < area.points.size(); ++i) {
        const std::array corners = {fit.Dot(area.points[0]), fit.Dot(area.points[i - 1]),
                                    fit.Dot(area.points[i])};
        writer.AddPolygon(corners);
    }
}

} // namespace

QByteArray DrawingSlide(const Drawing& drawing) {
    SlideWriter writer(kHighX, kHighY);
    const Drawing stroked = WithStrokedTexts(drawing);
    const Fit fit(DrawingBounds(stroked));
    for (const Primitive& primitive : stroked.primitives) {
        if (const auto* line = std::get_if<DrawnLine>(&primitive))
            AddLine(writer, fit, *line);
        else if (const auto* area = std::get_if<DrawnArea>(&primitive))
            AddArea(writer, fit, *area);
    }
    return writer.Bytes();
}

} // namespace velmo
