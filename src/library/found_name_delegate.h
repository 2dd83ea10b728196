#pragma once

#include <QStyledItemDelegate>

namespace velmo {

// Draws a name that was found with the way to it, dimmed, below. Both are elided in the middle. The selection
// fades while the field, whose keys go to the view, does not have the keyboard.
class FoundNameDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    FoundNameDelegate(const QWidget& field, QObject* parent);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    const QWidget& field_;
};

} // namespace velmo
