#pragma once

#include <QAbstractItemView>
#include <QKeyEvent>

namespace velmo {

// An item view of single selection in which a click with Ctrl selects as any other click does, and a click
// beside the items changes nothing: once an item is selected, one always is. Until then a key that would move
// the frame selects the item that has it.
template <typename View>
class KeepsSelection : public View {
public:
    using View::View;

    // With nothing selected yet, selects the item that has the frame, or the first one.
    bool SelectFramed() {
        if (this->selectionModel()->hasSelection() || this->model()->rowCount() == 0)
            return false;
        const QModelIndex framed = this->currentIndex();
        this->setCurrentIndex(framed.isValid() ? framed : this->model()->index(0, 0));
        return true;
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (!MovesFrame(event->key()) || !SelectFramed())
            View::keyPressEvent(event);
    }

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

private:
    static bool MovesFrame(int key) {
        switch (key) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_Home:
        case Qt::Key_End:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
            return true;
        default:
            return false;
        }
    }
};

} // namespace velmo
