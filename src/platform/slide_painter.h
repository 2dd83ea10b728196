#pragma once

#include "platform/slide.h"

#include <QColor>
#include <QPainter>
#include <QRect>

namespace velmo {

// How a slide is painted.
struct SlidePaint {
    QColor ground;    // what colour number 0 stands for; the painter's device already has it
    int penWidth = 1; // in device pixels
};

// Paints a slide into a rectangle of the painter's device. The rectangle is in device pixels, and the painter
// has no transformation. Lines are antialiased unless there are so many that it would take long. Leaves the
// painter as it was.
void PaintSlide(QPainter& painter, const Slide& slide, const QRect& device, const SlidePaint& paint);

} // namespace velmo
