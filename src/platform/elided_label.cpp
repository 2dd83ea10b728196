#include "platform/elided_label.h"

#include "platform/plain_tool_tip.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace velmo {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    // A long text must not make the window wide.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

QRect ElidedLabel::TextArea() const {
    const int space = margin();
    const QRect area = contentsRect().adjusted(space + qMax(0, indent()), space, -space, -space);
    return QStyle::visualRect(layoutDirection(), contentsRect(), area);
}

QString ElidedLabel::ShownText() const {
    return fontMetrics().elidedText(text(), Qt::ElideMiddle, TextArea().width());
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    if (ShownText() == text())
        QToolTip::hideText();
    else
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), PlainToolTip(text()), this);
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawFrame(&painter);
    style()->drawItemText(&painter, TextArea(), int(QStyle::visualAlignment(layoutDirection(), alignment())),
                          palette(), isEnabled(), ShownText(), foregroundRole());
}

} // namespace velmo
