#include "library/split_bar.h"

#include "platform/accessible_role.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPainter>

namespace velmo {

namespace {

// How far an arrow key moves a bar, in pixels.
constexpr int KeyStep = 8;

} // namespace

SplitBar::SplitBar(Qt::Orientation orientation, const char* image, const char* picture, QWidget* parent)
    : QWidget(parent), orientation_(orientation), picture_(new QWidget(parent)) {
    setObjectName(QLatin1String(image));
    SetAccessibleRole(*this, QAccessible::Splitter);
    setFocusPolicy(Qt::TabFocus);
    setCursor(orientation == Qt::Vertical ? Qt::SplitHCursor : Qt::SplitVCursor);
    picture_->setObjectName(QLatin1String(picture));
    picture_->setAutoFillBackground(true);
    picture_->setBackgroundRole(QPalette::Highlight);
    picture_->hide();
}

void SplitBar::Place(const QRect& place, int first, int last) {
    setGeometry(place);
    picture_->setGeometry(place);
    first_ = first;
    last_ = last;
}

int SplitBar::Along(const QPointF& point) const {
    return qRound(orientation_ == Qt::Vertical ? point.x() : point.y());
}

void SplitBar::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    hold_ = Along(event->position());
    picture_->setGeometry(geometry());
    picture_->show();
    picture_->raise();
    dragged_ = true;
    // Escape gives the drag up, whatever has the focus.
    QCoreApplication::instance()->installEventFilter(this);
}

void SplitBar::mouseMoveEvent(QMouseEvent* event) {
    if (!dragged_)
        return;
    const int place = qBound(first_, Along(mapToParent(event->position())) - hold_, last_);
    picture_->move(orientation_ == Qt::Vertical ? QPoint(place, y()) : QPoint(x(), place));
}

void SplitBar::mouseReleaseEvent(QMouseEvent* event) {
    if (!dragged_ || event->button() != Qt::LeftButton)
        return;
    EndDrag();
    Q_EMIT Dropped(Along(picture_->pos()));
}

void SplitBar::keyPressEvent(QKeyEvent* event) {
    const bool back = event->key() == (orientation_ == Qt::Vertical ? Qt::Key_Left : Qt::Key_Up);
    const bool on = event->key() == (orientation_ == Qt::Vertical ? Qt::Key_Right : Qt::Key_Down);
    if (back || on)
        Q_EMIT Dropped(qBound(first_, Along(pos()) + (on ? KeyStep : -KeyStep), last_));
    else
        QWidget::keyPressEvent(event);
}

void SplitBar::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    EndDrag();
}

void SplitBar::paintEvent(QPaintEvent*) {
    if (hasFocus())
        QPainter(this).fillRect(rect(), palette().highlight());
}

bool SplitBar::eventFilter(QObject* watched, QEvent* event) {
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (!isKey || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape)
        return QWidget::eventFilter(watched, event);
    EndDrag();
    return true;
}

void SplitBar::EndDrag() {
    dragged_ = false;
    QCoreApplication::instance()->removeEventFilter(this);
    picture_->hide();
}

} // namespace velmo
