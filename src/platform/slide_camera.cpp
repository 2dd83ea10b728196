#include "platform/slide_camera.h"

#include <algorithm>
#include <cmath>

namespace velmo {

namespace {

constexpr double notchFactor = 1.25;

int MostAmount() {
    return static_cast<int>(
        std::ceil(SlideCamera::notch * std::log(SlideCamera::mostZoom) / std::log(notchFactor)));
}

// How far the middle of the view may be from the middle of the drawing, in dots. It stays on the drawing, and
// what lies beyond the edges of the fitted view stays out of sight, so that fitting again leads back in one
// smooth movement.
double Furthest(double zoom, double view, double drawn, double dot) {
    return std::min((zoom - 1) * view, zoom * drawn) / 2 / (zoom * dot);
}

} // namespace

void SlideCamera::SetView(const Slide& slide, QSize view) {
    if (view.isEmpty())
        return;
    const SlideFit fit(slide, QRect({}, view));
    view_ = view;
    drawn_ = fit.Drawn();
    dot_ = {fit.DotWidth(), fit.DotHeight()};
    KeepInSight();
}

void SlideCamera::Fit() {
    amount_ = 0;
    middle_ = {};
}

void SlideCamera::ZoomAround(QPointF point, int amount) {
    const double before = Zoom();
    amount_ = static_cast<int>(std::clamp<qint64>(qint64{amount_} + amount, 0, MostAmount()));
    const double step = 1 / before - 1 / Zoom();
    const QPointF away = point - QPointF(view_.width(), view_.height()) / 2;
    middle_ += QPointF(away.x() / dot_.width(), -away.y() / dot_.height()) * step;
    KeepInSight();
}

void SlideCamera::Pan(QPointF distance) {
    middle_ -= QPointF(distance.x() / dot_.width(), -distance.y() / dot_.height()) / Zoom();
    KeepInSight();
}

double SlideCamera::Zoom() const {
    return std::min(std::pow(notchFactor, 1.0 * amount_ / notch), mostZoom);
}

void SlideCamera::KeepInSight() {
    const double x = Furthest(Zoom(), view_.width(), drawn_.width(), dot_.width());
    const double y = Furthest(Zoom(), view_.height(), drawn_.height(), dot_.height());
    middle_ = {std::clamp(middle_.x(), -x, x), std::clamp(middle_.y(), -y, y)};
}

} // namespace velmo
