#include "variables/variable_choice.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QScrollBar>

namespace velmo {

VariableChoice::VariableChoice(Grid& table)
    : table_(table), Vedt_Combo_(new QComboBox(table.CellParent(0))), over_(*Vedt_Combo_) {
    Vedt_Combo_->setObjectName(QStringLiteral("Vedt_Combo"));
    Vedt_Combo_->setAccessibleName(QStringLiteral("列に表示する変数の選択"));
    // The list first: making it lets the combo box hear events already.
    Vedt_Combo_->view()->installEventFilter(this);
    Vedt_Combo_->installEventFilter(this);
    connect(Vedt_Combo_, &QComboBox::activated, this, &VariableChoice::Choose);
}

void VariableChoice::Offer(int column, const std::vector<Item>& items) {
    Cancel();
    if (items.empty()) {
        Q_EMIT Cancelled();
        return;
    }
    Vedt_Combo_->clear();
    for (const Item& item : items)
        Vedt_Combo_->addItem(item.text, item.value);
    over_.Open(table_, 0, column);
    // The column has the width of its texts, not of the variables' names.
    QAbstractItemView* list = Vedt_Combo_->view();
    list->setMinimumWidth(list->sizeHintForColumn(0) + list->verticalScrollBar()->sizeHint().width());
    Vedt_Combo_->showPopup();
}

void VariableChoice::Choose(int index) {
    if (!IsOffering())
        return;
    const int value = Vedt_Combo_->itemData(index).toInt();
    over_.Close();
    Q_EMIT Chosen(value);
}

void VariableChoice::Cancel() {
    if (!IsOffering())
        return;
    // Closed first, so that the folding list does not cancel it once more.
    over_.Close();
    Vedt_Combo_->hidePopup();
    Q_EMIT Cancelled();
}

void VariableChoice::CancelUnlessChosen() {
    if (IsOffering() && !Vedt_Combo_->view()->isVisible())
        Cancel();
}

bool VariableChoice::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
            event->accept();
            Cancel();
            return true;
        }
        break;
    case QEvent::Hide:
        // Whoever folds it; a choice does so too, and tells of the entry only afterwards.
        if (IsOffering())
            QMetaObject::invokeMethod(this, &VariableChoice::CancelUnlessChosen, Qt::QueuedConnection);
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace velmo
