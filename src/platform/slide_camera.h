#pragma once

#include "platform/slide_fit.h"

#include <QPointF>
#include <QSize>
#include <QSizeF>

namespace velmo {

// Moves and enlarges the look at a slide in a view: never smaller than fitted, at most 50 times as large, and
// the middle of the view stays on the drawing. Points and distances are in the view's pixels, Y down.
class SlideCamera {
public:
    static constexpr double mostZoom = 50;
    // The amount of zooming that makes a picture 1.25 times as large; a wheel turned by one notch says so
    // much.
    static constexpr int notch = 120;

    // Looks at a slide in a view of this size. Zoom and the dot in the middle stay what they are.
    void SetView(const Slide& slide, QSize view);

    void Fit();
    // Enlarges, or reduces for an amount below 0, while the dot under a point of the view stays there.
    void ZoomAround(QPointF point, int amount);
    // Moves the picture by a distance.
    void Pan(QPointF distance);

    bool IsFitted() const { return amount_ == 0; }
    SlideLook Look() const { return {Zoom(), middle_}; }

private:
    double Zoom() const;
    void KeepInSight();

    int amount_ = 0; // of zooming since it was fitted; whole, so that going back ends exactly there
    QPointF middle_;
    // All of these at the fitted size.
    QSizeF view_{0, 0};
    QSizeF drawn_{0, 0};
    QSizeF dot_{1, 1};
};

} // namespace velmo
