#include "variables/value_list.h"

#include "platform/numbers.h"
#include "variables/editor_keys.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QLineEdit>

#include <limits>
#include <utility>

namespace velmo {

namespace {

bool IsText(const QKeyEvent& event) {
    return !event.text().isEmpty() && event.text().front().isPrint();
}

// Unfolds without a current entry when it shows none, whichever way it is unfolded: the first step reaches
// the first entry, and Enter takes none.
class DropDown : public QComboBox {
public:
    using QComboBox::QComboBox;

    void showPopup() override {
        QComboBox::showPopup();
        if (currentIndex() < 0)
            view()->setCurrentIndex({});
    }
};

} // namespace

ValueList::ValueList(Grid& variables)
    : QObject(&variables),
      variables_(variables),
      CurCmb_(new DropDown(variables.viewport())),
      over_(*CurCmb_) {
    CurCmb_->setObjectName(QStringLiteral("CurCmb"));
    CurCmb_->setAccessibleName(QStringLiteral("現在の値の選択"));
    // Editable, because the cell's text need not be one of the values; read only, because nothing else may
    // be chosen.
    CurCmb_->setEditable(true);
    CurCmb_->setInsertPolicy(QComboBox::NoInsert);
    CurCmb_->setCompleter(nullptr);
    shown_ = CurCmb_->lineEdit();
    shown_->setReadOnly(true);
    list_ = CurCmb_->view();
    for (QObject* watched : std::initializer_list<QObject*>{CurCmb_, shown_, list_})
        watched->installEventFilter(this);
    connect(CurCmb_, &QComboBox::activated, this,
            [this](int index) { Q_EMIT ValueChosen(over_.Row(), CurCmb_->itemText(index)); });
}

void ValueList::Offer(const QStringList& values, Unfold unfold) {
    Close();
    typed_.clear();
    CurCmb_->clear();
    CurCmb_->addItems(values);
    const QString text = variables_.Cells().Text(variables_.Row(), variables_.Col());
    CurCmb_->setCurrentIndex(int(values.indexOf(text)));
    CurCmb_->setEditText(text);
    over_.Open(variables_, variables_.Row(), variables_.Col());
    if (unfold == Unfold::Yes)
        CurCmb_->showPopup();
}

void ValueList::Close() {
    if (!IsOffering())
        return;
    CurCmb_->hidePopup();
    over_.Close();
}

void ValueList::Enter() {
    if (!IsOffering())
        return;
    const QString text = CurCmb_->currentText();
    Close();
    Q_EMIT TextEntered(over_.Row(), over_.Column(), text);
}

void ValueList::StartTyping(QEvent* event) {
    if (IsOffering() && event->type() == QEvent::KeyPress)
        QCoreApplication::sendEvent(CurCmb_, event);
}

// Goes to the row so many rows below.
void ValueList::Leave(int step) {
    const int row = over_.Row() + step;
    Close();
    Q_EMIT LeftForRow(row);
}

void ValueList::Step(int step) {
    typed_.clear();
    CurCmb_->setCurrentIndex(qBound(0, CurCmb_->currentIndex() + step, CurCmb_->count() - 1));
}

// Goes to the entry that is, or else begins with, all that was typed.
void ValueList::FindEntry(const QString& typed) {
    typed_ += typed;
    int index = CurCmb_->findText(typed_, Qt::MatchFixedString);
    if (index < 0)
        index = CurCmb_->findText(typed_, Qt::MatchStartsWith);
    if (index < 0)
        Q_EMIT ValueNotFound(std::exchange(typed_, {}));
    else if (list_->isVisible())
        list_->setCurrentIndex(list_->model()->index(index, 0));
    else
        CurCmb_->setCurrentIndex(index);
}

// Whether the text shown is one of the values, as it stands or as a number.
bool ValueList::ShowsEntry() const {
    if (CurCmb_->currentIndex() >= 0)
        return true;
    constexpr double none = std::numeric_limits<double>::max();
    const double shown = ToNumberOr(CurCmb_->currentText(), none);
    for (int i = 0; shown != none && i < CurCmb_->count(); ++i) {
        if (ToNumberOr(CurCmb_->itemText(i), none) == shown)
            return true;
    }
    return false;
}

bool ValueList::Key(const QKeyEvent& event) {
    if (IsEnter(event)) {
        if (ShowsEntry())
            Q_EMIT ValueChosen(over_.Row(), CurCmb_->currentText());
        else
            Close();
        return true;
    }
    switch (event.key()) {
    case Qt::Key_Escape:
        Close();
        return true;
    case Qt::Key_Tab:
        Leave(1);
        return true;
    case Qt::Key_Backtab:
        Leave(-1);
        return true;
    case Qt::Key_Space:
        CurCmb_->showPopup();
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (event.modifiers() & Qt::AltModifier)
            CurCmb_->showPopup();
        else
            Step(event.key() == Qt::Key_Up ? -1 : 1);
        return true;
    case Qt::Key_PageUp:
        Step(-CurCmb_->maxVisibleItems());
        return true;
    case Qt::Key_PageDown:
        Step(CurCmb_->maxVisibleItems());
        return true;
    case Qt::Key_Home:
        Step(-CurCmb_->count());
        return true;
    case Qt::Key_End:
        Step(CurCmb_->count());
        return true;
    default:
        break;
    }
    if (!IsText(event))
        return false;
    FindEntry(event.text());
    return true;
}

bool ValueList::UnfoldedKey(const QKeyEvent& event) {
    const bool pressed = event.type() == QEvent::KeyPress;
    // One Escape closes the unfolded list and the drop-down; so does Enter where there is nothing to take.
    if (event.key() == Qt::Key_Escape || (pressed && IsEnter(event) && !list_->currentIndex().isValid())) {
        Close();
        return true;
    }
    if (!pressed)
        return false;
    if (event.key() == Qt::Key_Space || !IsText(event)) {
        typed_.clear();
        return false;
    }
    FindEntry(event.text());
    return true;
}

bool ValueList::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress: {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (watched == list_) {
            if (UnfoldedKey(key))
                return true;
            break;
        }
        if (event->type() == QEvent::KeyPress)
            return Key(key);
        // While the drop-down is open its keys belong to no button or menu.
        if (IsEnter(key) || key.key() == Qt::Key_Escape) {
            event->accept();
            return true;
        }
        break;
    }
    case QEvent::FocusOut:
        if (IsLeftByUser(*static_cast<QFocusEvent*>(event)))
            Close();
        break;
    case QEvent::Wheel:
        // Turning over the closed list must not choose anything.
        if (watched != list_)
            return true;
        break;
    case QEvent::MouseButtonPress:
        if (watched == shown_) {
            CurCmb_->showPopup();
            return true;
        }
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace velmo
