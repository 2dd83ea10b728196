#include "cad_side/drawing_view.h"

#include "platform/slide_colour.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace velmo {
namespace {

constexpr QRgb kGround = qRgb(0x18, 0x1C, 0x22);
constexpr QRgb kGrid = qRgb(0x25, 0x2B, 0x34);
constexpr QRgb kAxis = qRgb(0x3A, 0x43, 0x50);
constexpr QRgb kQuiet = qRgb(0x8A, 0x97, 0xA8);
constexpr QRgb kMeasure = qRgb(0xFF, 0xA5, 0x3A);
constexpr int kOutline = 7;
constexpr double kSnapReach = 12;
constexpr double kGridReach = 8;
constexpr double kGridPixels = 24;

double Distance(QPointF a, QPointF b) {
    return std::hypot(b.x() - a.x(), b.y() - a.y());
}

double Hundredths(double value) {
    return std::round(value * 100) / 100;
}

// 1, 2, 5, 10, 20, 50 ...: the smallest such number of millimetres that is at least this many pixels wide.
double RoundStep(double scale, double pixels) {
    const double wanted = pixels / scale;
    const double power = std::pow(10, std::floor(std::log10(wanted)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= wanted)
            return factor * power;
    }
    return 10 * power;
}

} // namespace

DrawingView::DrawingView(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setMinimumSize(420, 320);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void DrawingView::ShowDrawing(const Drawing& drawing) {
    drawing_ = WithStrokedTexts(drawing);
    first_.reset();
    second_.reset();
    ShowAll();
}

void DrawingView::SetHint(const QString& hint) {
    hint_ = hint;
    update();
}

void DrawingView::StartMeasuring() {
    isMeasuring_ = true;
    first_.reset();
    second_.reset();
    setCursor(Qt::CrossCursor);
    update();
}

void DrawingView::StopMeasuring() {
    isMeasuring_ = false;
    unsetCursor();
    update();
}

QPointF DrawingView::ToWidget(QPointF point) const {
    return origin_ + QPointF(point.x() * scale_, -point.y() * scale_);
}

QPointF DrawingView::ToDrawing(QPointF position) const {
    return {(position.x() - origin_.x()) / scale_, (origin_.y() - position.y()) / scale_};
}

QPointF DrawingView::Snapped(QPointF position) const {
    const QPointF free = ToDrawing(position);
    std::optional<QPointF> best;
    double bestReach = kSnapReach;
    for (const QPointF corner : drawing_.corners) {
        const double reach = Distance(ToWidget(corner), position);
        if (reach < bestReach) {
            bestReach = reach;
            best = corner;
        }
    }
    if (best)
        return *best;
    const double step = RoundStep(scale_, kGridPixels);
    const QPointF crossing(std::round(free.x() / step) * step, std::round(free.y() / step) * step);
    return Distance(ToWidget(crossing), position) < kGridReach ? crossing : free;
}

void DrawingView::ShowAll() {
    hasOwnView_ = false;
    const QRectF bounds = DrawingBounds(drawing_);
    constexpr double margin = 48;
    if (!drawing_.primitives.empty())
        scale_ = std::min(std::max(width() - 2 * margin, 50.0) / std::max(bounds.width(), 1.0),
                          std::max(height() - 2 * margin, 50.0) / std::max(bounds.height(), 1.0));
    const QPointF middle = drawing_.primitives.empty() ? QPointF() : bounds.center();
    origin_ = QPointF(width() / 2.0 - middle.x() * scale_, height() / 2.0 + middle.y() * scale_);
    update();
}

void DrawingView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), QColor(kGround));
    painter.setRenderHint(QPainter::Antialiasing);
    PaintGrid(painter);
    PaintDrawing(painter);
    PaintScale(painter);
    PaintMeasurement(painter);
    if (drawing_.primitives.empty() && !hint_.isEmpty()) {
        QFont font = painter.font();
        font.setPointSizeF(font.pointSizeF() * 1.3);
        painter.setFont(font);
        painter.setPen(QColor(kQuiet));
        painter.drawText(rect().adjusted(40, 40, -40, -40), Qt::AlignCenter | Qt::TextWordWrap, hint_);
    }
}

void DrawingView::PaintGrid(QPainter& painter) const {
    const double step = RoundStep(scale_, kGridPixels);
    const QPointF low = ToDrawing(QPointF(0, height()));
    const QPointF high = ToDrawing(QPointF(width(), 0));
    const auto paint = [&](QRgb colour, double x, double y) {
        painter.setPen(QPen(QColor(colour), 1));
        if (!std::isnan(x))
            painter.drawLine(ToWidget({x, low.y()}), ToWidget({x, high.y()}));
        if (!std::isnan(y))
            painter.drawLine(ToWidget({low.x(), y}), ToWidget({high.x(), y}));
    };
    for (double k = std::ceil(low.x() / step); k * step <= high.x(); ++k)
        paint(kGrid, k * step, std::nan(""));
    for (double k = std::ceil(low.y() / step); k * step <= high.y(); ++k)
        paint(kGrid, std::nan(""), k * step);
    paint(kAxis, 0, 0);
}

void DrawingView::PaintDrawing(QPainter& painter) const {
    for (const Primitive& primitive : drawing_.primitives) {
        if (const auto* line = std::get_if<DrawnLine>(&primitive)) {
            const QColor colour(SlideColour(static_cast<std::uint8_t>(line->colour)));
            painter.setPen(QPen(colour, line->colour == kOutline ? 2 : 1.2, Qt::SolidLine, Qt::RoundCap));
            painter.drawLine(ToWidget(line->from), ToWidget(line->to));
        } else if (const auto* area = std::get_if<DrawnArea>(&primitive)) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(QColor(SlideColour(static_cast<std::uint8_t>(area->colour))));
            QPolygonF polygon;
            for (const QPointF point : area->points)
                polygon << ToWidget(point);
            painter.drawPolygon(polygon);
        }
    }
}

void DrawingView::PaintScale(QPainter& painter) const {
    const double length = RoundStep(scale_, 60);
    const QPointF left(16, height() - 18);
    const QPointF right = left + QPointF(length * scale_, 0);
    painter.setPen(QPen(QColor(kQuiet), 1.5));
    painter.drawLine(left, right);
    for (const QPointF end : {left, right})
        painter.drawLine(end + QPointF(0, -4), end + QPointF(0, 4));
    painter.drawText(left + QPointF(4, -7), QStringLiteral("%1 mm").arg(length));
    if (pointer_)
        painter.drawText(
            rect().adjusted(0, 0, -14, -12), Qt::AlignRight | Qt::AlignBottom,
            QStringLiteral("X %1   Y %2").arg(pointer_->x(), 0, 'f', 1).arg(pointer_->y(), 0, 'f', 1));
}

void DrawingView::PaintMeasurement(QPainter& painter) const {
    const std::optional<QPointF> end = second_ ? second_ : pointer_;
    if (!isMeasuring_ || !end)
        return;
    painter.setPen(QPen(QColor(kMeasure), 1.5));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(ToWidget(*end) - QPointF(5, 5), QSizeF(10, 10)));
    if (!first_)
        return;
    painter.drawRect(QRectF(ToWidget(*first_) - QPointF(5, 5), QSizeF(10, 10)));
    painter.setPen(QPen(QColor(kMeasure), 1.5, Qt::DashLine));
    painter.drawLine(ToWidget(*first_), ToWidget(*end));

    const QString text = QStringLiteral("%1 mm").arg(Hundredths(Distance(*first_, *end)));
    QFont font = painter.font();
    font.setBold(true);
    painter.setFont(font);
    QRectF box = painter.fontMetrics().boundingRect(text).adjusted(-6, -3, 6, 3);
    box.moveCenter((ToWidget(*first_) + ToWidget(*end)) / 2 - QPointF(0, 18));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(kMeasure));
    painter.drawRoundedRect(box, 3, 3);
    painter.setPen(QColor(kGround));
    painter.drawText(box, Qt::AlignCenter, text);
}

void DrawingView::resizeEvent(QResizeEvent* /*event*/) {
    if (!hasOwnView_)
        ShowAll();
}

void DrawingView::wheelEvent(QWheelEvent* event) {
    const QPointF fixed = ToDrawing(event->position());
    scale_ = std::clamp(scale_ * std::pow(1.0015, event->angleDelta().y()), 0.01, 1000.0);
    origin_ += event->position() - ToWidget(fixed);
    hasOwnView_ = true;
    update();
}

void DrawingView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    if (!isMeasuring_) {
        dragFrom_ = event->position();
        return;
    }
    const QPointF point = Snapped(event->position());
    if (!first_ || second_) {
        first_ = point;
        second_.reset();
    } else if (point != *first_) {
        second_ = point;
        Q_EMIT Measured(Hundredths(Distance(*first_, point)));
    }
    update();
}

void DrawingView::mouseMoveEvent(QMouseEvent* event) {
    if (dragFrom_) {
        origin_ += event->position() - *dragFrom_;
        dragFrom_ = event->position();
        hasOwnView_ = true;
    }
    pointer_ = isMeasuring_ ? Snapped(event->position()) : ToDrawing(event->position());
    update();
}

void DrawingView::mouseReleaseEvent(QMouseEvent* /*event*/) {
    dragFrom_.reset();
}

void DrawingView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (isMeasuring_)
        mousePressEvent(event);
    else
        ShowAll();
}

void DrawingView::leaveEvent(QEvent* /*event*/) {
    pointer_.reset();
    update();
}

} // namespace velmo
