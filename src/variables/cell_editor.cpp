#include "variables/cell_editor.h"

#include "variables/editor_keys.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QInputMethod>

namespace velmo {

namespace {

// A text is one line in the files that it goes to; pasted text may hold more.
QString OneLine(QString text) {
    for (const QChar lineBreak : {QChar(u'\r'), QChar(u'\n'), QChar(QChar::LineSeparator),
                                  QChar(QChar::ParagraphSeparator), QChar(u'\t')})
        text.replace(lineBreak, u' ');
    return text;
}

// Its keys end in it: the grid that it lies on would take them for its own.
class EditBox : public QLineEdit {
public:
    using QLineEdit::QLineEdit;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        QLineEdit::keyPressEvent(event);
        event->accept();
    }
};

bool IsRedo(const QKeyEvent& event) {
    return event.key() == Qt::Key_Y && event.modifiers() == Qt::ControlModifier;
}

} // namespace

CellEditor::CellEditor(Grid& variables, Grid& table)
    : QObject(&variables),
      variables_(variables),
      table_(table),
      CurEdit_(new EditBox(variables.viewport())),
      over_(*CurEdit_) {
    CurEdit_->setObjectName(QStringLiteral("CurEdit"));
    CurEdit_->installEventFilter(this);
    connect(CurEdit_, &QLineEdit::textEdited, this, [this](const QString& text) {
        Q_EMIT TextEdited(&over_.Below(), over_.Row(), over_.Column(), text);
    });
}

void CellEditor::StartCellEditing(Grid& grid, int row, int column) {
    Settle();
    CurEdit_->setText(grid.Cells().Text(row, column));
    CurEdit_->setAccessibleName(&grid == &variables_ ? QStringLiteral("現在の値の入力")
                                : row == 0           ? QStringLiteral("変数の名前の入力")
                                                     : QStringLiteral("寸法表の値の入力"));
    over_.Open(grid, row, column);
    CurEdit_->selectAll();
}

void CellEditor::Enter() {
    if (!IsEditing())
        return;
    const QString text = OneLine(CurEdit_->text());
    over_.Close();
    Q_EMIT TextEntered(&over_.Below(), over_.Row(), over_.Column(), text);
}

void CellEditor::Settle() {
    if (!IsEditing())
        return;
    // The text that an input method still holds is the user's too.
    QGuiApplication::inputMethod()->commit();
    Enter();
}

void CellEditor::GiveUp() {
    if (!IsEditing())
        return;
    over_.Close();
    Q_EMIT GivenUp();
}

void CellEditor::StartTyping(QEvent* event) {
    if (!IsEditing())
        return;
    CurEdit_->selectAll();
    QCoreApplication::sendEvent(CurEdit_, event);
}

void CellEditor::LeaveForRow(int step) {
    const int row = over_.Row() + step;
    Settle();
    Q_EMIT LeftForRow(row);
}

void CellEditor::LeaveForCell(int down, int right) {
    Grid& grid = over_.Below();
    const int row = over_.Row() + down;
    const int column = over_.Column() + right;
    Settle();
    grid.SetCurrentCell(row, column);
}

void CellEditor::LeaveByStep(int step) {
    LeaveForCell(0, 0);
    over_.Below().StepCell(step);
}

bool CellEditor::VariableKey(const QKeyEvent& event) {
    if (IsEnter(event)) {
        Enter();
        return true;
    }
    switch (event.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Down:
        LeaveForRow(1);
        return true;
    case Qt::Key_Backtab:
    case Qt::Key_Up:
        LeaveForRow(-1);
        return true;
    default:
        return false;
    }
}

bool CellEditor::HeaderKey(const QKeyEvent& event) {
    const int key = event.key();
    const bool leaves = IsEnter(event) || key == Qt::Key_Tab || key == Qt::Key_Backtab ||
                        key == Qt::Key_Down || key == Qt::Key_Up;
    if (leaves)
        Settle();
    return leaves;
}

bool CellEditor::TableKey(QKeyEvent& event) {
    if (IsEnter(event) || event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab) {
        LeaveByStep(event.modifiers().testFlag(Qt::ShiftModifier) ? -1 : 1);
        return true;
    }
    if (event.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier))
        return false;
    switch (event.key()) {
    case Qt::Key_Down:
        LeaveForCell(1, 0);
        return true;
    case Qt::Key_Up:
        LeaveForCell(-1, 0);
        return true;
    case Qt::Key_PageDown:
    case Qt::Key_PageUp:
        LeaveForCell(0, 0);
        QCoreApplication::sendEvent(&over_.Below(), &event);
        return true;
    default:
        return CaretKey(event);
    }
}

// Left and Right go to the next cell only where the caret can go no further, and never out of the table.
bool CellEditor::CaretKey(const QKeyEvent& event) {
    const int caret = CurEdit_->cursorPosition();
    if (CurEdit_->hasSelectedText())
        return false;
    const GridCells& cells = table_.Cells();
    const int first = cells.HasRowNumbers() ? 1 : 0;
    if (event.key() == Qt::Key_Left && caret == 0 && over_.Column() > first) {
        LeaveForCell(0, -1);
        return true;
    }
    if (event.key() == Qt::Key_Right && caret == CurEdit_->text().size() &&
        over_.Column() < cells.Cols() - 1) {
        LeaveForCell(0, 1);
        return true;
    }
    return false;
}

bool CellEditor::Key(QKeyEvent& event) {
    if (event.key() == Qt::Key_Escape) {
        GiveUp();
        return true;
    }
    if (IsRedo(event)) {
        CurEdit_->redo();
        return true;
    }
    if (&over_.Below() == &variables_)
        return VariableKey(event);
    return over_.Row() == 0 ? HeaderKey(event) : TableKey(event);
}

bool CellEditor::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::ShortcutOverride: {
        const auto& key = *static_cast<QKeyEvent*>(event);
        // While the editor is open its keys belong to no button or menu.
        if (IsEnter(key) || key.key() == Qt::Key_Escape || IsRedo(key) ||
            key.matches(QKeySequence::DeleteEndOfWord) || key.key() == Qt::Key_Insert) {
            event->accept();
            return true;
        }
        break;
    }
    case QEvent::KeyPress:
        if (IsEditing() && Key(*static_cast<QKeyEvent*>(event)))
            return true;
        break;
    case QEvent::FocusOut:
        if (IsLeftByUser(*static_cast<QFocusEvent*>(event)))
            Settle();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace velmo
