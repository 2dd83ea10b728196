#pragma once

#include <QAbstractItemView>

namespace velmo {

// An item view of single selection in which a click with Ctrl selects as any other click does, and a click
// beside the items changes nothing: once an item is selected, one always is.
template <typename View>
class KeepsSelection : public View {
public:
    using View::View;

protected:
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override {
        if (!index.isValid())
            return QItemSelectionModel::NoUpdate;
        const QItemSelectionModel::SelectionFlags flags = View::selectionCommand(index, event);
        if (!flags.testFlag(QItemSelectionModel::Deselect))
            return flags;
        constexpr auto whole = QItemSelectionModel::Rows | QItemSelectionModel::Columns;
        return QItemSelectionModel::ClearAndSelect | (flags & whole);
    }
};

} // namespace velmo
