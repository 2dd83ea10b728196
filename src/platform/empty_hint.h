#pragma once

#include <QAbstractItemView>
#include <QLabel>

namespace velmo {

// A text in the middle of a view, seen as long as the view shows no rows. It is named after the view, and
// framed when the view has the focus.
class EmptyHint : public QObject {
    Q_OBJECT

public:
    // The view has its model already and owns the hint.
    explicit EmptyHint(QAbstractItemView& view);

    void SetText(const QString& text);
    QString Text() const { return label_->text(); }
    bool IsSeen() const { return label_->isVisible(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Follow();

    QAbstractItemView& view_;
    QLabel* label_;
};

} // namespace velmo
