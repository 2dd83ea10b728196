#pragma once

#include "platform/slide.h"
#include "platform/slide_fit.h"

#include <QColor>
#include <QPainter>
#include <QPixmap>

namespace velmo {

// The picture of a slide as it was drawn last. While drawing anew would take long, it can be shown stretched
// to where its dots have moved since.
class SlidePicture {
public:
    // Whether it is what Draw would draw.
    bool IsSharp(const SlideFit& fit, QSize pixels, double ratio) const;
    // Whether there is one, drawn for the same device pixel ratio.
    bool HasRatio(double ratio) const { return !IsEmpty() && pixmap_.devicePixelRatio() == ratio; }

    void Clear() { *this = {}; }
    // Whether all of the slide could be drawn within the time that a user can wait for it.
    bool IsWhole() const { return isWhole_; }

    // Draws the slide on the ground, as large as a view of so many device pixels; the fit is in these.
    void Draw(const Slide& slide, const SlideFit& fit, QSize pixels, double ratio, const QColor& ground);
    // Shows it in a view, stretched as the fit says. Draw has been called.
    void Show(QPainter& painter, const SlideFit& fit, QSize view, const QColor& ground) const;

private:
    bool IsEmpty() const { return pixmap_.isNull(); }

    QPixmap pixmap_;
    SlideFit fit_;
    bool isWhole_ = true;
};

} // namespace velmo
