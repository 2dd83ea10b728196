#include "platform/empty_hint.h"

#include <QEvent>

namespace velmo {

namespace {

constexpr int Margin = 8;

} // namespace

EmptyHint::EmptyHint(QAbstractItemView& view)
    : QObject(&view), view_(view), label_(new QLabel(view.viewport())) {
    label_->setTextFormat(Qt::PlainText);
    label_->setAlignment(Qt::AlignCenter);
    label_->setWordWrap(true);
    label_->setMargin(Margin);
    label_->setForegroundRole(QPalette::PlaceholderText);
    label_->setAttribute(Qt::WA_TransparentForMouseEvents);
    view.viewport()->installEventFilter(this);
    const QAbstractItemModel* model = view.model();
    connect(model, &QAbstractItemModel::rowsInserted, this, &EmptyHint::Follow);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &EmptyHint::Follow);
    connect(model, &QAbstractItemModel::modelReset, this, &EmptyHint::Follow);
    Follow();
}

void EmptyHint::SetText(const QString& text) {
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
