#include "platform/slide_view.h"

#include "platform/slide_painter.h"

#include <QPainter>

#include <cmath>

namespace velmo {

namespace {

// The ground of a drawing window, whatever the desktop's colours are.
constexpr QColor ground(0x1B, 0x1F, 0x24);
constexpr QColor hintColour(0x8A, 0x93, 0x9C);
constexpr int hintMargin = 8;

} // namespace

SlideView::SlideView(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAccessibleName(QStringLiteral("スライド"));
}

void SlideView::ShowSlide(const QString& stored) {
    SetSlide(stored, LoadSlide(stored));
}

void SlideView::Clear() {
    SetSlide({}, {});
}

void SlideView::SetEmptyText(const QString& text) {
    emptyText_ = text;
    update();
}

QSize SlideView::sizeHint() const {
    return {320, 240};
}

QSize SlideView::minimumSizeHint() const {
    return {64, 48};
}

void SlideView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!HasPicture()) {
        painter.fillRect(rect(), ground);
        painter.setPen(hintColour);
        painter.drawText(rect().adjusted(hintMargin, hintMargin, -hintMargin, -hintMargin),
                         Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
        return;
    }
    // The ratio of what is really painted on, which is not always the screen.
    const double ratio = painter.deviceTransform().m11();
    const QSize pixels(static_cast<int>(std::ceil(width() * ratio)),
                       static_cast<int>(std::ceil(height() * ratio)));
    if (picture_.isNull() || picture_.size() != pixels || picture_.devicePixelRatio() != ratio)
        Render(pixels, ratio);
    painter.drawPixmap(0, 0, picture_);
}

void SlideView::SetSlide(const QString& file, Slide slide) {
    file_ = file;
    slide_ = std::move(slide);
    picture_ = {};
    setAccessibleDescription(file_);
    update();
}

void SlideView::Render(QSize pixels, double ratio) {
    picture_ = QPixmap(pixels);
    picture_.fill(ground);
    QPainter painter(&picture_);
    const int penWidth = std::max(1, static_cast<int>(std::lround(ratio)));
    PaintSlide(painter, slide_, QRect(QPoint(0, 0), pixels), {ground, penWidth});
    painter.end();
    picture_.setDevicePixelRatio(ratio);
}

} // namespace velmo
