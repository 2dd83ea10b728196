#pragma once

#include <QLine>
#include <QPoint>
#include <QRect>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace velmo {

// Everything a slide draws before its colour changes. Each run begins where the one before it ended; what
// lies within a run has one colour, so its order does not matter.
struct SlideRun {
    std::uint8_t colour = 0;
    std::size_t lineEnd = 0;
    std::size_t dotEnd = 0;
    std::size_t polygonEnd = 0;

    bool operator==(const SlideRun&) const = default;
};

// The geometry of a slide in screen dots (y grows upward), kept as runs in drawing order: later runs paint
// over earlier ones.
class SlideDrawing {
public:
    // Adds a line; one without length becomes a dot.
    void AddLine(std::uint8_t colour, const QLine& line);
    // Adds a polygon of at least 3 corners; fewer add nothing.
    void AddPolygon(std::uint8_t colour, std::span<const QPoint> corners);

    bool IsEmpty() const { return runs_.empty(); }
    // The smallest rectangle that holds every end point and corner, edges included; null when empty.
    QRect Bounds() const { return bounds_; }

    std::span<const SlideRun> Runs() const { return runs_; }
    std::span<const QLine> Lines() const { return lines_; }
    std::span<const QPoint> Dots() const { return dots_; }
    std::size_t PolygonCount() const { return polygonEnds_.size(); }
    // Of all polygons.
    std::size_t CornerCount() const { return corners_.size(); }
    std::span<const QPoint> Polygon(std::size_t index) const;

    bool operator==(const SlideDrawing&) const = default;

private:
    SlideRun& RunOf(std::uint8_t colour);
    void Include(QPoint point);

    std::vector<SlideRun> runs_;
    std::vector<QLine> lines_;
    std::vector<QPoint> dots_;
    std::vector<QPoint> corners_;
    std::vector<std::size_t> polygonEnds_;
    QRect bounds_;
};

} // namespace velmo
