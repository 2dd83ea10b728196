#pragma once

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QStyledItemDelegate>
#include <QToolTip>

namespace velmo {

// Items of a view whose tooltip, their whole text, is shown only where there is no room for the text itself.
class ElidedTipDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override {
        const QRect seen = option.rect & view->viewport()->rect();
        if (event->type() != QEvent::ToolTip ||
            QStyledItemDelegate::sizeHint(option, index).width() > seen.width())
            return QStyledItemDelegate::helpEvent(event, view, option, index);
        QToolTip::hideText();
        return true;
    }
};

} // namespace velmo
