#pragma once

#include "platform/slide.h"
#include "platform/slide_fit.h"

#include <QColor>
#include <QDeadlineTimer>
#include <QPainter>
#include <QRect>

namespace velmo {

// How a slide is painted.
struct SlidePaint {
    QColor ground;    // what colour number 0 stands for; the painter's device already has it
    int penWidth = 1; // in device pixels
    // When painting ends, whatever is still to be painted.
    QDeadlineTimer due{QDeadlineTimer::Forever};
};

// Paints the part of a slide that a fit makes visible. The fit is in pixels of the painter's device, and the
// painter has no transformation. Lines are antialiased unless so many show that it would take long. Leaves
// the painter as it was. False when something was left out: what was not yet painted when it was due, and
// polygons that would take long one by one.
bool PaintSlide(QPainter& painter, const Slide& slide, const SlideFit& fit, const SlidePaint& paint);

// The same with all of the slide fitted into a rectangle.
bool PaintSlide(QPainter& painter, const Slide& slide, const QRect& device, const SlidePaint& paint);

} // namespace velmo
