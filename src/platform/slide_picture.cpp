#include "platform/slide_picture.h"

#include "platform/slide_painter.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace velmo {

namespace {

using namespace std::chrono_literals;

// Users wait hardly longer than this for a picture; slides of the largest drawings take a quarter of it on
// the largest screens.
constexpr auto longest = 800ms;

} // namespace

bool SlidePicture::IsSharp(const SlideFit& fit, QSize pixels, double ratio) const {
    return HasRatio(ratio) && pixmap_.size() == pixels && fit_ == fit;
}

void SlidePicture::Draw(const Slide& slide, const SlideFit& fit, QSize pixels, double ratio,
                        const QColor& ground) {
    pixmap_ = QPixmap(pixels);
    pixmap_.fill(ground);
    QPainter painter(&pixmap_);
    const int penWidth = std::max(1, static_cast<int>(std::lround(ratio)));
    isWhole_ = PaintSlide(painter, slide, fit, {ground, penWidth, QDeadlineTimer(longest)});
    painter.end();
    pixmap_.setDevicePixelRatio(ratio);
    fit_ = fit;
}

void SlidePicture::Show(QPainter& painter, const SlideFit& fit, QSize view, const QColor& ground) const {
    if (fit_ == fit) {
        painter.drawPixmap(0, 0, pixmap_);
        return;
    }
    const double ratio = pixmap_.devicePixelRatio();
    const double scaleX = fit.DotWidth() / fit_.DotWidth();
    const double scaleY = fit.DotHeight() / fit_.DotHeight();
    const QPointF corner(fit.X(0) - scaleX * fit_.X(0), fit.Y(0) - scaleY * fit_.Y(0));
    const QRectF stretched(corner / ratio,
                           QSizeF(scaleX * pixmap_.width(), scaleY * pixmap_.height()) / ratio);
    painter.fillRect(QRect({}, view), ground);
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(stretched, pixmap_, QRectF(pixmap_.rect()));
    painter.restore();
}

} // namespace velmo
