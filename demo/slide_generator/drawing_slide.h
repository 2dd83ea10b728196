#pragma once

#include "drawing/drawing.h"

#include <QByteArray>

namespace velmo {

// The drawing as a slide of 1600 by 1200 dots: fitted with a margin, centred, texts as strokes.
// The same drawing always gives the same bytes.
QByteArray DrawingSlide(const Drawing& drawing);

} // namespace velmo
