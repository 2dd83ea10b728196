#include "platform/slide_view.h"

#include "platform/accessible_role.h"
#include "platform/hint_text.h"
#include "platform/plain_tool_tip.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <chrono>
#include <cmath>
#include <numeric>

namespace velmo {

namespace {

using namespace std::chrono_literals;

// The ground of a drawing window, whatever the desktop's colours are.
constexpr QColor ground(0x1B, 0x1F, 0x24);
constexpr QColor hintColour(0x8A, 0x93, 0x9C);
// Pixels.
constexpr int focusWidth = 2;
constexpr int noteMargin = 6;

// After so long without another size a slow slide is drawn anew.
constexpr auto settlingTime = 60ms;

// A slide is slow when drawing it is as much as this length of lines in pixels, about 15 ms. A line costs as
// much as a piece of it, however short it is.
constexpr double slowLength = 400000;
constexpr double lineLength = 20;

// What an arrow key moves, as a part of the view.
constexpr double arrowPart = 0.125;

// A touchpad that counts only in pixels: so many are as much as one notch of a wheel.
constexpr int pixelsPerNotch = 60;

double LengthOfLines(const SlideDrawing& drawing) {
    const std::span<const QLine> lines = drawing.Lines();
    return std::accumulate(lines.begin(), lines.end(), 0.0, [](double sum, const QLine& line) {
        return sum + std::hypot(line.dx(), line.dy());
    });
}

// How far a wheel was turned away from the user; fractions of a notch are as good as whole ones.
int Turned(const QWheelEvent& event) {
    if (!event.angleDelta().isNull())
        return event.angleDelta().y();
    return event.pixelDelta().y() * SlideCamera::notch / pixelsPerNotch;
}

// The direction of an arrow key, Y down; null for any other.
QPoint ArrowOf(int key) {
    switch (key) {
    case Qt::Key_Left:
        return {-1, 0};
    case Qt::Key_Right:
        return {1, 0};
    case Qt::Key_Up:
        return {0, -1};
    case Qt::Key_Down:
        return {0, 1};
    default:
        return {};
    }
}

} // namespace

SlideView::SlideView(QWidget* parent)
    : QWidget(parent), SlideFit_(new QAction(QStringLiteral("全体を表示(&F)"), this)) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    // The wheel alone takes no focus: it would end typing elsewhere.
    setFocusPolicy(Qt::StrongFocus);
    SetAccessibleRole(*this, QAccessible::Graphic);
    setAccessibleName(QStringLiteral("スライド"));
    SlideFit_->setObjectName(QStringLiteral("SlideFit"));
    SlideFit_->setEnabled(false);
    connect(SlideFit_, &QAction::triggered, this, &SlideView::Fit);
    settling_.setSingleShot(true);
    settling_.setInterval(settlingTime);
    connect(&settling_, &QTimer::timeout, this, [this] {
        settled_ = true;
        update();
    });
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
    if (HasPicture())
        PaintPicture(painter);
    else
        PaintHint(painter);
    if (HasPicture() && !Trouble().isEmpty())
        PaintNote(painter);
    if (hasFocus()) {
        painter.setPen(QPen(palette().highlight(), focusWidth));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}

QString SlideView::Trouble() const {
    if (slide_.damage)
        return slide_.damage->Text();
    return picture_.IsWhole() ? QString() : QStringLiteral("スライドの一部を省略しています");
}

// A whole slide may be empty: that is what shows then.
void SlideView::PaintHint(QPainter& painter) const {
    painter.fillRect(rect(), ground);
    painter.setPen(hintColour);
    const bool isEmptySlide = slide_.isSlide && !slide_.damage;
    DrawHint(painter, rect(), isEmptySlide ? QString() : slide_.damage ? Trouble() : emptyText_);
}

// In a corner, no larger than its text: what it covers is missing from the picture.
void SlideView::PaintNote(QPainter& painter) const {
    const QFontMetrics font = painter.fontMetrics();
    const QString text = font.elidedText(Trouble(), Qt::ElideRight, width() - 2 * noteMargin);
    const QSize size(font.horizontalAdvance(text) + 2 * noteMargin, font.height());
    const QRect place(QPoint(0, height() - size.height()), size);
    painter.fillRect(place, ground);
    painter.setPen(hintColour);
    painter.drawText(place, Qt::AlignCenter, text);
}

void SlideView::TellTrouble() {
    const QString trouble = Trouble();
    const QString detail = slide_.damage
                               ? slide_.damage->Detail()
                               : trouble + QStringLiteral("。図形が多すぎて、表示に時間がかかります。");
    const QString file = QStringLiteral("ファイル: ") + file_;
    setToolTip(trouble.isEmpty() ? QString() : PlainToolTip(detail + u'\n' + file));
    setAccessibleDescription(trouble.isEmpty() ? file_ : file_ + u'\n' + trouble);
}

void SlideView::PaintPicture(QPainter& painter) {
    // The ratio of what is really painted on, which is not always the screen.
    const double ratio = painter.deviceTransform().m11();
    const QSize pixels(static_cast<int>(std::ceil(width() * ratio)),
                       static_cast<int>(std::ceil(height() * ratio)));
    const SlideFit fit(slide_, QRect({}, pixels), camera_.Look());
    if (!picture_.IsSharp(fit, pixels, ratio)) {
        const bool stretch = picture_.HasRatio(ratio) && !settled_ && IsSlow(fit);
        if (!stretch) {
            picture_.Draw(slide_, fit, pixels, ratio, ground);
            TellTrouble();
        } else if (!settling_.isActive()) {
            settling_.start();
        }
    }
    settled_ = false;
    picture_.Show(painter, fit, size(), ground);
}

// Told from the fitted size: enlarged, more of a line shows but fewer lines. A polygon's edge is as slow as a
// line.
bool SlideView::IsSlow(const SlideFit& fit) const {
    const SlideDrawing& drawing = slide_.drawing;
    const auto shapes = static_cast<double>(drawing.Lines().size() + drawing.CornerCount());
    const double dot = std::max(fit.DotWidth(), fit.DotHeight()) / camera_.Look().zoom;
    return !picture_.IsWhole() || shapes * lineLength + lengths_ * dot > slowLength;
}

void SlideView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    camera_.SetView(slide_, size());
    settled_ = false;
    if (settling_.isActive())
        settling_.start();
}

void SlideView::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    LetGo();
}

void SlideView::wheelEvent(QWheelEvent* event) {
    const int turned = Turned(*event);
    if (!HasPicture() || turned == 0) {
        event->ignore();
        return;
    }
    Zoom(event->position(), turned);
}

void SlideView::keyPressEvent(QKeyEvent* event) {
    const bool plain = !(event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier));
    const int key = plain && HasPicture() ? event->key() : Qt::Key_unknown;
    const QPointF centre = QRectF(rect()).center();
    const QPoint arrow = ArrowOf(key);
    if (key == Qt::Key_Plus)
        Zoom(centre, SlideCamera::notch);
    else if (key == Qt::Key_Minus)
        Zoom(centre, -SlideCamera::notch);
    else if (key == Qt::Key_0 || key == Qt::Key_Home)
        Fit();
    else if (!arrow.isNull() && !camera_.IsFitted())
        Pan(-arrowPart * QPointF(arrow.x() * width(), arrow.y() * height()));
    else
        event->ignore();
}

void SlideView::mousePressEvent(QMouseEvent* event) {
    const bool grips = event->button() == Qt::LeftButton || event->button() == Qt::MiddleButton;
    if (grips && !grip_ && !camera_.IsFitted())
        grip_ = Grip{event->button(), event->position()};
    else
        event->ignore();
}

void SlideView::mouseMoveEvent(QMouseEvent* event) {
    if (grip_ && !event->buttons().testFlag(grip_->button))
        LetGo();
    if (!grip_) {
        event->ignore();
        return;
    }
    const QPointF distance = event->position() - grip_->at;
    if (!grip_->moved && distance.manhattanLength() < QApplication::startDragDistance())
        return;
    grip_->moved = true;
    grip_->at = event->position();
    Pan(distance);
}

void SlideView::mouseReleaseEvent(QMouseEvent* event) {
    if (grip_ && grip_->button == event->button())
        LetGo();
    else
        event->ignore();
}

// Left to the window, which may open what is shown; what follows with the button still down moves nothing.
void SlideView::mouseDoubleClickEvent(QMouseEvent* event) {
    LetGo();
    event->ignore();
}

void SlideView::contextMenuEvent(QContextMenuEvent* event) {
    LetGo();
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(SlideFit_);
    menu->popup(event->globalPos());
}

void SlideView::SetSlide(const QString& file, Slide slide) {
    file_ = file;
    slide_ = std::move(slide);
    lengths_ = LengthOfLines(slide_.drawing);
    picture_.Clear();
    camera_.SetView(slide_, size());
    TellTrouble();
    LetGo();
    Fit();
}

void SlideView::Fit() {
    camera_.Fit();
    LookChanged();
}

void SlideView::Zoom(QPointF point, int amount) {
    camera_.ZoomAround(point, amount);
    LookChanged();
}

void SlideView::Pan(QPointF distance) {
    camera_.Pan(distance);
    LookChanged();
}

void SlideView::LookChanged() {
    SlideFit_->setEnabled(!camera_.IsFitted());
    ShowCursor();
    update();
}

void SlideView::LetGo() {
    grip_.reset();
    ShowCursor();
}

void SlideView::ShowCursor() {
    if (grip_ && grip_->moved)
        setCursor(Qt::ClosedHandCursor);
    else if (!camera_.IsFitted())
        setCursor(Qt::OpenHandCursor);
    else
        unsetCursor();
}

} // namespace velmo
