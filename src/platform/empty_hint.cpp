#include "platform/empty_hint.h"

#include "platform/hint_text.h"

#include <QEvent>
#include <QPainter>

namespace velmo {

namespace {

class HintLabel : public QLabel {
public:
    explicit HintLabel(const QAbstractItemView& view) : QLabel(view.viewport()), view_(view) {
        setTextFormat(Qt::PlainText);
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setPen(palette().color(QPalette::PlaceholderText));
        DrawHint(painter, rect(), text());
        if (!view_.hasFocus())
            return;
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }

private:
    const QAbstractItemView& view_;
};

} // namespace

EmptyHint::EmptyHint(QAbstractItemView& view) : QObject(&view), view_(view), label_(new HintLabel(view)) {
    view.viewport()->installEventFilter(this);
    const QAbstractItemModel* model = view.model();
    connect(model, &QAbstractItemModel::rowsInserted, this, &EmptyHint::Follow);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &EmptyHint::Follow);
    connect(model, &QAbstractItemModel::modelReset, this, &EmptyHint::Follow);
    Follow();
}

void EmptyHint::SetText(const QString& text) {
    label_->setObjectName(view_.objectName() + QStringLiteral("Hint"));
    label_->setText(text);
    Follow();
}

// Who cannot see the hint is told it too.
void EmptyHint::Follow() {
    const bool empty = view_.model()->rowCount(view_.rootIndex()) == 0;
    label_->setVisible(empty);
    view_.setAccessibleDescription(empty ? label_->text() : QString());
}

bool EmptyHint::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize)
        label_->resize(view_.viewport()->size());
    return QObject::eventFilter(watched, event);
}

} // namespace velmo
