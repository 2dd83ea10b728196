#pragma once

#include "platform/slide.h"

#include <QPointF>
#include <QRect>
#include <QSizeF>

namespace velmo {

// How a slide is looked at, whatever the size of the view.
struct SlideLook {
    double zoom = 1; // times the fitted size
    QPointF
        middle; // the dot in the middle of the view, counted from the drawing's own middle; Y grows upward
};

// Where the dots of a slide come to lie in a rectangle of device pixels: the drawing, not the mostly empty
// canvas, fills the rectangle but for a small margin, centred and in the canvas's proportions; a look moves
// and enlarges that. X grows to the right, Y down; a pixel p reaches from p to p + 1.
class SlideFit {
public:
    SlideFit() = default;
    SlideFit(const Slide& slide, const QRect& device, const SlideLook& look = {});

    double X(double x) const { return centre_.x() + (x - middle_.x()) * dotWidth_; }
    double Y(double y) const { return centre_.y() - (y - middle_.y()) * dotHeight_; }
    // The dot at a device coordinate, with its fraction.
    double DotAtX(double x) const { return middle_.x() + (x - centre_.x()) / dotWidth_; }
    double DotAtY(double y) const { return middle_.y() - (y - centre_.y()) / dotHeight_; }
    // The size of one dot in device pixels.
    double DotWidth() const { return dotWidth_; }
    double DotHeight() const { return dotHeight_; }
    // The size of the drawing on its canvas in device pixels, without the margin.
    QSizeF Drawn() const { return drawn_; }
    // True for the look that shows all of the drawing.
    bool IsWhole() const { return whole_; }
    // What may be painted: the part of the device rectangle that lies on the canvas.
    QRect Visible() const { return visible_; }

    bool operator==(const SlideFit&) const = default;

private:
    QPointF centre_;
    QPointF middle_;
    double dotWidth_ = 1;
    double dotHeight_ = 1;
    QSizeF drawn_;
    bool whole_ = true;
    QRect visible_;
};

} // namespace velmo
