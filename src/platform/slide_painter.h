#pragma once

#include "platform/slide.h"
#include "platform/slide_fit.h"

#include <QColor>
#include <QPainter>
#include <QRect>

namespace velmo {

// How a slide is painted.
struct SlidePaint {
    QColor ground;    // what colour number 0 stands for; the painter's device already has it
    int penWidth = 1; // in device pixels
};

// Paints the part of a slide that a fit makes visible. The fit is in pixels of the painter's device, and the
// painter has no transformation. Lines are antialiased unless so many show that it would take long. Leaves
// the painter as it was.
void PaintSlide(QPainter& painter, const Slide& slide, const SlideFit& fit, const SlidePaint& paint);

// The same with all of the slide fitted into a rectangle.
void PaintSlide(QPainter& painter, const Slide& slide, const QRect& device, const SlidePaint& paint);

} // namespace velmo
