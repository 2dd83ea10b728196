#include "variables/value_editors.h"

#include "platform/numbers.h"

#include <QAbstractItemView>
#include <QGuiApplication>
#include <QHeaderView>
#include <QInputMethod>
#include <QKeyEvent>
#include <QScrollBar>

#include <limits>
#include <utility>

namespace velmo {

namespace {

// A value is one line in the answer files; pasted text may hold more.
QString OneLine(QString text) {
    for (const QChar lineBreak : {QChar(u'\r'), QChar(u'\n'), QChar(QChar::LineSeparator),
                                  QChar(QChar::ParagraphSeparator), QChar(u'\t')})
        text.replace(lineBreak, u' ');
    return text;
}

// With Ctrl it is the window's.
bool IsEnter(const QKeyEvent& event) {
    return (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) &&
           !event.modifiers().testFlag(Qt::ControlModifier);
}

bool IsText(const QKeyEvent& event) {
    return !event.text().isEmpty() && event.text().front().isPrint();
}

// Unfolds without a current entry when it shows none, whichever way it is unfolded: the first step reaches
// the first entry, and Enter takes none.
class ValueList : public QComboBox {
public:
    using QComboBox::QComboBox;

    void showPopup() override {
        QComboBox::showPopup();
        if (currentIndex() < 0)
            view()->setCurrentIndex({});
    }
};

} // namespace

ValueEditors::ValueEditors(Grid& grid)
    : QObject(&grid),
      grid_(grid),
      CurEdit_(new QLineEdit(grid.viewport())),
      CurCmb_(new ValueList(grid.viewport())) {
    CurEdit_->setObjectName(QStringLiteral("CurEdit"));
    CurEdit_->setAccessibleName(QStringLiteral("現在の値の入力"));
    CurCmb_->setObjectName(QStringLiteral("CurCmb"));
    CurCmb_->setAccessibleName(QStringLiteral("現在の値の選択"));
    // Editable, because the cell's text need not be one of the values; read only, because nothing else may
    // be chosen.
    CurCmb_->setEditable(true);
    CurCmb_->setInsertPolicy(QComboBox::NoInsert);
    CurCmb_->setCompleter(nullptr);
    listText_ = CurCmb_->lineEdit();
    listText_->setReadOnly(true);
    list_ = CurCmb_->view();
    CurEdit_->hide();
    CurCmb_->hide();
    for (QObject* watched : std::initializer_list<QObject*>{CurEdit_, CurCmb_, listText_, list_})
        watched->installEventFilter(this);
    connect(CurCmb_, &QComboBox::activated, this,
            [this](int index) { Q_EMIT ValueChosen(row_, CurCmb_->itemText(index)); });
    const auto follow = [this] {
        for (QWidget* editor : std::initializer_list<QWidget*>{CurEdit_, CurCmb_})
            editor->setGeometry(grid_.CellRect(row_, column_));
    };
    connect(grid.horizontalHeader(), &QHeaderView::sectionResized, this, follow);
    connect(grid.horizontalScrollBar(), &QScrollBar::valueChanged, this, follow);
    connect(grid.verticalScrollBar(), &QScrollBar::valueChanged, this, follow);
}

void ValueEditors::Place(QWidget* editor) {
    row_ = grid_.Row();
    column_ = grid_.Col();
    editor->setGeometry(grid_.CellRect(row_, column_));
    editor->show();
    editor->setFocus();
}

void ValueEditors::StartCellEditing() {
    Settle();
    CurEdit_->setText(grid_.Cells().Text(grid_.Row(), grid_.Col()));
    Place(CurEdit_);
    CurEdit_->selectAll();
}

void ValueEditors::OfferValues(const QStringList& values, Unfold unfold) {
    Settle();
    typed_.clear();
    CurCmb_->clear();
    CurCmb_->addItems(values);
    const QString text = grid_.Cells().Text(grid_.Row(), grid_.Col());
    CurCmb_->setCurrentIndex(int(values.indexOf(text)));
    CurCmb_->setEditText(text);
    Place(CurCmb_);
    if (unfold == Unfold::Yes)
        CurCmb_->showPopup();
}

void ValueEditors::Close(QWidget* editor) {
    if (!editor->isVisibleTo(&grid_))
        return;
    CurCmb_->hidePopup();
    // A focused control that hides would hand the focus on to whatever comes next.
    if (editor->hasFocus() || editor->isAncestorOf(grid_.window()->focusWidget()))
        grid_.setFocus();
    editor->hide();
}

void ValueEditors::Enter() {
    if (IsEditing()) {
        const QString text = OneLine(CurEdit_->text());
        Close(CurEdit_);
        Q_EMIT TextEntered(row_, column_, text);
    } else if (IsOffering()) {
        const QString text = CurCmb_->currentText();
        Close(CurCmb_);
        Q_EMIT TextEntered(row_, column_, text);
    }
}

void ValueEditors::Settle() {
    if (IsEditing()) {
        // The text that an input method still holds is the user's too.
        QGuiApplication::inputMethod()->commit();
        Enter();
    }
    CloseList();
}

void ValueEditors::CloseList() {
    Close(CurCmb_);
}

void ValueEditors::StartTyping(QEvent* event) {
    if (IsEditing()) {
        CurEdit_->selectAll();
        QCoreApplication::sendEvent(CurEdit_, event);
    } else if (IsOffering() && event->type() == QEvent::KeyPress) {
        QCoreApplication::sendEvent(CurCmb_, event);
    }
}

// Goes from the open editor to the row so many rows below.
void ValueEditors::Leave(int step) {
    const int row = row_ + step;
    Settle();
    Q_EMIT LeftForRow(row);
}

void ValueEditors::StepList(int step) {
    typed_.clear();
    CurCmb_->setCurrentIndex(qBound(0, CurCmb_->currentIndex() + step, CurCmb_->count() - 1));
}

// Goes to the entry that is, or else begins with, all that was typed.
void ValueEditors::FindEntry(const QString& typed) {
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
bool ValueEditors::ShowsEntry() const {
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

bool ValueEditors::EditKey(const QKeyEvent& event) {
    if (IsEnter(event)) {
        Enter();
        return true;
    }
    switch (event.key()) {
    case Qt::Key_Escape:
        Close(CurEdit_);
        return true;
    case Qt::Key_Tab:
    case Qt::Key_Down:
        Leave(1);
        return true;
    case Qt::Key_Backtab:
    case Qt::Key_Up:
        Leave(-1);
        return true;
    default:
        return false;
    }
}

bool ValueEditors::ListKey(const QKeyEvent& event) {
    if (IsEnter(event)) {
        if (ShowsEntry())
            Q_EMIT ValueChosen(row_, CurCmb_->currentText());
        else
            CloseList();
        return true;
    }
    switch (event.key()) {
    case Qt::Key_Escape:
        CloseList();
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
            StepList(event.key() == Qt::Key_Up ? -1 : 1);
        return true;
    case Qt::Key_PageUp:
        StepList(-CurCmb_->maxVisibleItems());
        return true;
    case Qt::Key_PageDown:
        StepList(CurCmb_->maxVisibleItems());
        return true;
    case Qt::Key_Home:
        StepList(-CurCmb_->count());
        return true;
    case Qt::Key_End:
        StepList(CurCmb_->count());
        return true;
    default:
        break;
    }
    if (!IsText(event))
        return false;
    FindEntry(event.text());
    return true;
}

bool ValueEditors::UnfoldedListKey(const QKeyEvent& event) {
    const bool pressed = event.type() == QEvent::KeyPress;
    // One Escape closes the unfolded list and the drop-down; so does Enter where there is nothing to take.
    if (event.key() == Qt::Key_Escape || (pressed && IsEnter(event) && !list_->currentIndex().isValid())) {
        CloseList();
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

bool ValueEditors::eventFilter(QObject* watched, QEvent* event) {
    const bool inList = watched == CurCmb_ || watched == listText_;
    switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress: {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (watched == list_) {
            if (UnfoldedListKey(key))
                return true;
            break;
        }
        if (event->type() == QEvent::KeyPress)
            return watched == CurEdit_ ? EditKey(key) : ListKey(key);
        // While an editor is open its keys belong to no button or menu.
        if (IsEnter(key) || key.key() == Qt::Key_Escape) {
            event->accept();
            return true;
        }
        break;
    }
    case QEvent::FocusOut: {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason == Qt::MouseFocusReason || reason == Qt::TabFocusReason ||
            reason == Qt::BacktabFocusReason)
            Settle();
        break;
    }
    case QEvent::Wheel:
        // Turning over the closed list must not choose anything.
        if (inList)
            return true;
        break;
    case QEvent::MouseButtonPress:
        if (watched == listText_) {
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
