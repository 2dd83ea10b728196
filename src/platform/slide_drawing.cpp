#include "platform/slide_drawing.h"

#include <algorithm>

namespace velmo {

void SlideDrawing::AddLine(std::uint8_t colour, const QLine& line) {
    SlideRun& run = RunOf(colour);
    Include(line.p1());
    if (line.p1() == line.p2()) {
        dots_.push_back(line.p1());
        run.dotEnd = dots_.size();
    } else {
        Include(line.p2());
        lines_.push_back(line);
        run.lineEnd = lines_.size();
    }
}

void SlideDrawing::AddPolygon(std::uint8_t colour, std::span<const QPoint> corners) {
    if (corners.size() < 3)
        return;
    SlideRun& run = RunOf(colour);
    std::ranges::for_each(corners, [this](QPoint corner) { Include(corner); });
    corners_.insert(corners_.end(), corners.begin(), corners.end());
    polygonEnds_.push_back(corners_.size());
    run.polygonEnd = polygonEnds_.size();
}

std::span<const QPoint> SlideDrawing::Polygon(std::size_t index) const {
    const std::size_t begin = index == 0 ? 0 : polygonEnds_[index - 1];
    return std::span(corners_).subspan(begin, polygonEnds_[index] - begin);
}

SlideRun& SlideDrawing::RunOf(std::uint8_t colour) {
    if (runs_.empty() || runs_.back().colour != colour)
        runs_.push_back({colour, lines_.size(), dots_.size(), polygonEnds_.size()});
    return runs_.back();
}

void SlideDrawing::Include(QPoint point) {
    if (bounds_.isNull()) {
        bounds_ = QRect(point, point);
        return;
    }
    bounds_.setLeft(std::min(bounds_.left(), point.x()));
    bounds_.setRight(std::max(bounds_.right(), point.x()));
    bounds_.setTop(std::min(bounds_.top(), point.y()));
    bounds_.setBottom(std::max(bounds_.bottom(), point.y()));
}

} // namespace velmo
