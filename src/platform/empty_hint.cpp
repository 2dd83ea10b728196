#include "platform/empty_hint.h"

#include <QEvent>
#include <QPainter>

namespace velmo {

namespace {

constexpr int Margin = 8;

class HintLabel : public QLabel {
public:
    explicit HintLabel(const QAbstractItemView& view) : QLabel(view.viewport()), view_(view) {
        setTextFormat(Qt::PlainText);
        setAlignment(Qt::AlignCenter);
        setWordWrap(true);
        setMargin(Margin);
        setForegroundRole(QPalette::PlaceholderText);
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        QLabel::paintEvent(event);
        if (!view_.hasFocus())
            return;
        QPainter painter(this);
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
