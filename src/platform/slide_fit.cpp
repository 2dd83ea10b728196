#include "platform/slide_fit.h"

#include <algorithm>

namespace velmo {

namespace {

// Left free on each side of the drawing, as a part of the device rectangle.
constexpr double margin = 0.04;

// A drawing smaller than this part of its canvas is not enlarged further, so that a lone dot stays a dot.
constexpr double smallestPart = 0.05;

} // namespace

SlideFit::SlideFit(const Slide& slide, const QRect& device, const SlideLook& look)
    : centre_(QRectF(device).center()), whole_(look.zoom <= 1), visible_(device) {
    // The canvas reaches half a dot beyond the middles of its outermost dots; a cut line's end still shows on
    // it.
    const QRect canvas(0, 0, slide.highX + 1, slide.highY + 1);
    const bool onCanvas = canvas.intersects(slide.drawing.Bounds());
    const QRect shown = onCanvas ? canvas & slide.drawing.Bounds() : slide.drawing.Bounds();

    const double shape = slide.DotShape();
    const double width = std::max({shown.width() - 1.0, slide.highX * smallestPart, 1.0}) * shape;
    const double height = std::max({shown.height() - 1.0, slide.highY * smallestPart, 1.0});
    dotHeight_ = (1 - 2 * margin) * std::min(device.width() / width, device.height() / height) * look.zoom;
    dotWidth_ = dotHeight_ * shape;
    middle_ = QPointF(shown.left() + (shown.width() - 1) / 2.0, shown.top() + (shown.height() - 1) / 2.0) +
              look.middle;
    drawn_ = QSizeF(std::max(shown.width() - 1, 0) * dotWidth_, std::max(shown.height() - 1, 0) * dotHeight_);

    if (onCanvas) {
        const QRectF area(QPointF(X(-0.5), Y(slide.highY + 0.5)), QPointF(X(slide.highX + 0.5), Y(-0.5)));
        // Room for the pen of a line along the very edge.
        visible_ = (area.adjusted(-2, -2, 2, 2) & QRectF(device)).toAlignedRect() & device;
    }
}

} // namespace velmo
