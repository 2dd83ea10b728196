#pragma once

#include "platform/elided_tip_delegate.h"

namespace velmo {

// Items of a list that are as wide as the list: a text that is wider is elided, and needs no scroll bar.
class ElidingDelegate : public ElidedTipDelegate {
public:
    using ElidedTipDelegate::ElidedTipDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return {0, QStyledItemDelegate::sizeHint(option, index).height()};
    }
};

} // namespace velmo
