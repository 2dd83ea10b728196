#include "two_grids.h"
#include "variables/cell_editor.h"

#include <QInputMethodEvent>
#include <QScrollBar>
#include <QSignalSpy>

namespace velmo {
namespace {

class CellEditorTest : public TwoGridsTest {
protected:
    CellEditorTest() {
        QObject::connect(&editor, &CellEditor::TextEntered, &window,
                         [this](Grid* grid, int row, int column, const QString& text) {
                             entered << QStringLiteral("%1 %2,%3 %4")
                                            .arg(grid == table ? u"table" : u"variables")
                                            .arg(row)
                                            .arg(column)
                                            .arg(text);
                         });
    }

    // As F2 does.
    void Edit(int row, int column) {
        table->SetCurrentCell(row, column);
        editor.StartCellEditing(*table, row, column);
    }
    // As the first key of a text does.
    void EditByTyping(int row, int column, QChar first) {
        Edit(row, column);
        QKeyEvent key(QEvent::KeyPress, 0, {}, first);
        editor.StartTyping(&key);
    }
    QLineEdit* CurEdit() const { return window.findChild<QLineEdit*>(QStringLiteral("CurEdit")); }
    // Whether the last key left the table's editor for this cell.
    bool IsAt(int row, int column) const {
        return !editor.IsEditing() && table->hasFocus() && Current() == std::pair(row, column);
    }

    CellEditor& editor = *new CellEditor(*variables, *table);
    QStringList entered;
};

TEST_F(CellEditorTest, LiesOverACellOfEitherGridWithItsText) {
    EXPECT_FALSE(CurEdit()->isVisible());
    editor.StartCellEditing(*table, 2, 3);
    EXPECT_TRUE(CurEdit()->isVisible());
    EXPECT_TRUE(CurEdit()->hasFocus());
    EXPECT_EQ(CurEdit()->text(), QStringLiteral("2,3"));
    EXPECT_EQ(CurEdit()->selectedText(), QStringLiteral("2,3"));
    EXPECT_EQ(CurEdit()->parentWidget(), table->viewport());
    EXPECT_EQ(CurEdit()->geometry(), table->CellRect(2, 3));
    editor.StartCellEditing(*table, 0, 1);
    EXPECT_EQ(CurEdit()->text(), QStringLiteral("0,1"));
    EXPECT_EQ(CurEdit()->parentWidget(), table->horizontalHeader()->viewport());
    EXPECT_EQ(CurEdit()->geometry(), table->CellRect(0, 1));
    EXPECT_TRUE(CurEdit()->hasFocus());
    editor.StartCellEditing(*variables, 1, 1);
    EXPECT_EQ(CurEdit()->text(), QStringLiteral("1,1"));
    EXPECT_EQ(CurEdit()->parentWidget(), variables->viewport());
    EXPECT_EQ(window.findChildren<QLineEdit*>().size(), 1);
    EXPECT_EQ(entered, (QStringList{"table 2,3 2,3", "table 0,1 0,1"})) << "what was open is entered";
}

TEST_F(CellEditorTest, EnterAndTabGoOnThroughTheTable) {
    EditByTyping(1, 2, u'a');
    Press(Qt::Key_Return);
    EXPECT_TRUE(IsAt(1, 3));
    EditByTyping(1, 3, u'b');
    Press(Qt::Key_Tab);
    EXPECT_TRUE(IsAt(2, 1)) << "from the last column to the next row";
    EditByTyping(2, 1, u'c');
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(IsAt(1, 3));
    Edit(1, 3);
    Press(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_TRUE(IsAt(1, 2)) << "Shift turns Enter round, too";
    EditByTyping(3, 3, u'd');
    Press(Qt::Key_Enter);
    EXPECT_TRUE(IsAt(3, 3)) << "there is no further cell";
    EditByTyping(1, 1, u'e');
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(IsAt(1, 1));
    EXPECT_EQ(entered, (QStringList{"table 1,2 a", "table 1,3 b", "table 2,1 c", "table 1,3 1,3",
                                    "table 3,3 d", "table 1,1 e"}));
}

TEST_F(CellEditorTest, UpAndDownGoToTheNextRows) {
    EditByTyping(2, 2, u'a');
    Press(Qt::Key_Down);
    EXPECT_TRUE(IsAt(3, 2));
    EditByTyping(3, 2, u'b');
    Press(Qt::Key_Down);
    EXPECT_TRUE(IsAt(3, 2));
    Edit(3, 2);
    Press(Qt::Key_Up);
    EXPECT_TRUE(IsAt(2, 2));
    Edit(2, 2);
    Press(Qt::Key_PageUp);
    EXPECT_TRUE(IsAt(1, 2));
    EXPECT_EQ(entered.mid(0, 2), (QStringList{"table 2,2 a", "table 3,2 b"}));
}

TEST_F(CellEditorTest, LeftAndRightMoveTheCaretFirst) {
    Edit(2, 2);
    Press(Qt::Key_Right);
    EXPECT_TRUE(editor.IsEditing());
    EXPECT_FALSE(CurEdit()->hasSelectedText());
    Press(Qt::Key_Right);
    EXPECT_TRUE(IsAt(2, 3));
    Edit(2, 2);
    for (int caret = 2; caret >= 0; --caret) {
        Press(Qt::Key_Left);
        ASSERT_TRUE(editor.IsEditing());
        EXPECT_EQ(CurEdit()->cursorPosition(), caret);
    }
    Press(Qt::Key_Left);
    EXPECT_TRUE(IsAt(2, 1));
    EditByTyping(2, 2, u'a');
    Type(QStringLiteral("b"));
    for (int i = 0; i < 2; ++i) {
        Press(Qt::Key_Left);
        EXPECT_TRUE(editor.IsEditing());
    }
    Press(Qt::Key_Left);
    EXPECT_TRUE(IsAt(2, 1));
    EditByTyping(2, 2, u'c');
    Press(Qt::Key_Right);
    EXPECT_TRUE(IsAt(2, 3));
    EXPECT_EQ(entered.mid(2), (QStringList{"table 2,2 ab", "table 2,2 c"}));
}

TEST_F(CellEditorTest, LeftAndRightStayInTheTable) {
    EditByTyping(2, 3, u'a');
    Press(Qt::Key_Right);
    EXPECT_TRUE(editor.IsEditing());
    EditByTyping(2, 1, u'b');
    Press(Qt::Key_Home);
    Press(Qt::Key_Left);
    EXPECT_TRUE(editor.IsEditing());
    Press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(CurEdit()->selectedText(), QStringLiteral("b"));
}

TEST_F(CellEditorTest, EscapeGivesTheOldTextBack) {
    EditByTyping(2, 2, u'a');
    Press(Qt::Key_Escape);
    EXPECT_TRUE(IsAt(2, 2));
    editor.StartCellEditing(*table, 0, 2);
    Type(QStringLiteral("x"));
    Press(Qt::Key_Escape);
    EXPECT_TRUE(IsAt(2, 2));
    EXPECT_EQ(entered, QStringList());
}

TEST_F(CellEditorTest, AHeaderIsEnteredByEveryKeyThatLeaves) {
    table->SetCurrentCell(2, 2);
    for (const Qt::Key key :
         {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Down, Qt::Key_Up}) {
        entered.clear();
        editor.StartCellEditing(*table, 0, 3);
        Type(QStringLiteral("name"));
        Press(key);
        EXPECT_TRUE(IsAt(2, 2));
        EXPECT_EQ(entered, QStringList{"table 0,3 name"});
    }
    editor.StartCellEditing(*table, 0, 3);
    Press(Qt::Key_Right);
    Press(Qt::Key_Right);
    EXPECT_TRUE(editor.IsEditing());
}

TEST_F(CellEditorTest, KeysThatMeanNothingToItDoNotReachTheGrid) {
    const QSignalSpy activated(table, &Grid::CellActivated);
    Edit(2, 2);
    Press(Qt::Key_F2);
    Press(Qt::Key_Home, Qt::ControlModifier);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_TRUE(editor.IsEditing());
    EXPECT_EQ(Current(), std::pair(2, 2));
    EXPECT_EQ(activated.size(), 0);
}

TEST_F(CellEditorTest, UndoesAndRedoesItsOwnTyping) {
    QAction undo;
    undo.setShortcut(Qt::CTRL | Qt::Key_Z);
    QAction redo;
    redo.setShortcut(Qt::CTRL | Qt::Key_Y);
    const QSignalSpy undone(&undo, &QAction::triggered);
    const QSignalSpy redone(&redo, &QAction::triggered);
    window.addActions({&undo, &redo});
    EditByTyping(2, 2, u'a');
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(CurEdit()->text(), QStringLiteral("2,2"));
    Press(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(CurEdit()->text(), QStringLiteral("a"));
    EXPECT_TRUE(editor.IsEditing());
    EXPECT_EQ(undone.size() + redone.size(), 0);
    Press(Qt::Key_Escape);
    Press(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(redone.size(), 1);
}

TEST_F(CellEditorTest, AClickElsewhereEnters) {
    EditByTyping(2, 2, u'a');
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, table->CellRect(3, 1).center());
    EXPECT_TRUE(IsAt(3, 1));
    EditByTyping(3, 1, u'b');
    QTest::mouseClick(table->horizontalHeader()->viewport(), Qt::LeftButton, {},
                      table->CellRect(0, 2).center());
    EXPECT_TRUE(IsAt(1, 2)) << "a header does not take the focus by itself";
    editor.StartCellEditing(*table, 0, 2);
    Type(QStringLiteral("c"));
    QTest::mouseClick(variables->viewport(), Qt::LeftButton, {}, variables->CellRect(1, 0).center());
    EXPECT_FALSE(editor.IsEditing());
    EXPECT_TRUE(variables->hasFocus());
    EXPECT_EQ(entered, (QStringList{"table 2,2 a", "table 3,1 b", "table 0,2 c"}));
}

TEST_F(CellEditorTest, ARightClickOnAHeaderEntersBeforeItsMenu) {
    QStringList enteredBefore;
    QObject::connect(table, &Grid::HeaderMenuWanted, &window, [&] { enteredBefore = entered; });
    EditByTyping(2, 2, u'a');
    QWidget* names = table->horizontalHeader()->viewport();
    QContextMenuEvent menu(QContextMenuEvent::Mouse, table->CellRect(0, 1).center(), {});
    QApplication::sendEvent(names, &menu);
    EXPECT_EQ(enteredBefore, QStringList{"table 2,2 a"});
}

TEST_F(CellEditorTest, AnotherWindowInFrontLeavesItOpen) {
    EditByTyping(2, 2, u'a');
    QFocusEvent out(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QApplication::sendEvent(CurEdit(), &out);
    QFocusEvent menu(QEvent::FocusOut, Qt::PopupFocusReason);
    QApplication::sendEvent(CurEdit(), &menu);
    EXPECT_TRUE(editor.IsEditing());
}

TEST_F(CellEditorTest, SettlingEntersWhatIsOpenOnce) {
    editor.Settle();
    EditByTyping(2, 2, u'a');
    editor.Settle();
    editor.Settle();
    editor.Enter();
    EXPECT_EQ(entered, QStringList{"table 2,2 a"});
}

TEST_F(CellEditorTest, AnInputMethodBeginsItsTextOverTheCell) {
    EXPECT_TRUE(table->testAttribute(Qt::WA_InputMethodEnabled));
    QObject::connect(table, &Grid::TypingStarted, &window, [this](QEvent* event) {
        Edit(2, 2);
        editor.StartTyping(event);
    });
    QInputMethodEvent first(QStringLiteral("こ"), {});
    QApplication::sendEvent(table, &first);
    ASSERT_TRUE(editor.IsEditing());
    EXPECT_TRUE(CurEdit()->hasFocus());
    QInputMethodEvent last;
    last.setCommitString(QStringLiteral("呼び"));
    QApplication::sendEvent(CurEdit(), &last);
    Press(Qt::Key_Return);
    EXPECT_EQ(entered, QStringList{QStringLiteral("table 2,2 呼び")});
}

TEST_F(CellEditorTest, FollowsItsCell) {
    Fill(tableCells, 200, 40);
    table->CellsReplaced();
    Edit(3, 2);
    table->SetColWidth(1, 3000);
    EXPECT_EQ(CurEdit()->geometry(), table->CellRect(3, 2));
    table->verticalScrollBar()->setValue(1);
    EXPECT_EQ(CurEdit()->geometry(), table->CellRect(3, 2));
    editor.StartCellEditing(*table, 0, 30);
    EXPECT_EQ(CurEdit()->geometry(), table->CellRect(0, 30));
    EXPECT_FALSE(CurEdit()->visibleRegion().isEmpty()) << "scrolled into sight";
    table->horizontalScrollBar()->setValue(table->horizontalScrollBar()->value() - 40);
    EXPECT_EQ(CurEdit()->geometry(), table->CellRect(0, 30));
    table->SetColWidth(30, 4500);
    EXPECT_EQ(CurEdit()->geometry(), table->CellRect(0, 30));
}

TEST_F(CellEditorTest, OverTheVariableGridTheWindowDecidesWhereToGo) {
    const QSignalSpy left(&editor, &CellEditor::LeftForRow);
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Down, Qt::Key_Backtab, Qt::Key_Up}) {
        editor.StartCellEditing(*variables, 2, 1);
        Type(QStringLiteral("v"));
        Press(key);
        EXPECT_FALSE(editor.IsEditing());
    }
    ASSERT_EQ(left.size(), 4);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(left[i][0].toInt(), i < 2 ? 3 : 1);
    EXPECT_EQ(entered, QStringList(4, QStringLiteral("variables 2,1 v")));
    editor.StartCellEditing(*variables, 2, 1);
    Press(Qt::Key_Return);
    EXPECT_EQ(left.size(), 4);
    EXPECT_TRUE(variables->hasFocus());
}

TEST_F(CellEditorTest, GoesWithItsGridsWhileItIsOpen) {
    for (const int row : {0, 1}) {
        editor.StartCellEditing(*table, row, 1);
        ASSERT_TRUE(CurEdit()->hasFocus());
    }
    delete table;
    delete variables;
    EXPECT_EQ(entered, QStringList{"table 0,1 0,1"}) << "nothing is entered into a grid that goes";
}

} // namespace
} // namespace velmo
