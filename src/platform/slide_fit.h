#pragma once

#include "platform/slide.h"

#include <QPointF>
#include <QRect>

namespace velmo {

// Where the dots of a slide come to lie in a rectangle of device pixels: the drawing, not the mostly empty
// canvas, fills the rectangle but for a small margin, centred and in the canvas's proportions. X grows to the
// right, Y down; a pixel p reaches from p to p + 1.
class SlideFit {
public:
    SlideFit(const Slide& slide, const QRect& device);

    double X(double x) const { return centre_.x() + (x - middle_.x()) * dotWidth_; }
    double Y(double y) const { return centre_.y() - (y - middle_.y()) * dotHeight_; }
    // The size of one dot in device pixels.
    double DotWidth() const { return dotWidth_; }
    double DotHeight() const { return dotHeight_; }
    // What may be painted: the part of the device rectangle that lies on the canvas.
    QRect Visible() const { return visible_; }

private:
    QPointF centre_;
    QPointF middle_;
    double dotWidth_ = 1;
    double dotHeight_ = 1;
    QRect visible_;
};

} // namespace velmo
