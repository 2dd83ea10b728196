#include "library/find_box.h"
#include "library/library_samples.h"
#include "platform/keyed_tree.h"
#include "support/message_queue.h"

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QTest>
#include <QToolButton>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

namespace velmo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The box around a tree, in a window whose own shortcuts are the same keys.
class FindBoxTest : public testing::Test {
protected:
    FindBoxTest() {
        folder.Write("made", "");
        state.LibraryDb = folder.Path("Velmo2.mdb");
        CreateLibraryFile(state.LibraryDb);
        Database library = Open();
        Transaction transaction(library);
        AddCategory(library, 0, "root");
        AddCategory(library, 1, "bolts");
        for (int i = 1; i <= 40; ++i)
            AddEntry(library, 2, QString("pin %1").arg(i, 2, 10, QChar('0')), "A");
        transaction.Commit();

        tree->Nodes().Add({}, {NewNode{"Nod1", "root", 0, {NewNode{"Nod2", "bolts", 0, {}}}}});
        box = new FindBox(*tree, state, messages);
        window.setCentralWidget(box);
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape, Qt::Key_Down}) {
            auto* action = new QAction(&window);
            action->setShortcut(key);
            QObject::connect(action, &QAction::triggered, &window, [this] { ++windowActions; });
            window.addAction(action);
        }
        QObject::connect(box, &FindBox::Chosen, &window, [this](const FoundName& found, FindBox::Wish wish) {
            chosen << QString("%1/%2%3")
                          .arg(found.way.back())
                          .arg(found.entryId)
                          .arg(wish == FindBox::Wish::Open ? " open" : "");
        });
        window.resize(300, 260);
    }

    void SetUp() override {
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        tree->setFocus();
    }

    Database Open() const { return Database(state.LibraryDb, Database::Access::Write); }
    QLineEdit* Field() { return box->findChild<QLineEdit*>("VlmFind"); }
    QListView* List() { return box->findChild<QListView*>("VlmFindList"); }
    bool IsListShown() { return List() && List()->isVisible(); }
    QLabel* Hint() { return box->findChild<QLabel*>("VlmFindListHint"); }
    QStringList Listed() {
        QStringList texts;
        for (int row = 0; row < List()->model()->rowCount(); ++row)
            texts << List()->model()->index(row, 0).data().toString();
        return texts;
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        ASSERT_TRUE(QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    void LookFor(const QString& text) {
        Field()->setFocus();
        Field()->setText(text);
    }
    void ClickRow(int row) {
        QTest::mouseClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier,
                          List()->visualRect(List()->model()->index(row, 0)).center());
    }
    QStringList Chosen() { return std::exchange(chosen, {}); }

    const TempFolder folder;
    GlobalState state;
    MessageQueue messages;
    QMainWindow window;
    KeyedTree* tree = new KeyedTree;
    FindBox* box = nullptr;
    QStringList chosen;
    int windowActions = 0;
};

TEST_F(FindBoxTest, TheListStandsInTheTreesPlaceWhileThereIsAText) {
    EXPECT_TRUE(tree->isVisible());
    EXPECT_FALSE(IsListShown());
    Press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(Field()->hasFocus());
    QTest::keyClicks(Field(), "pin 1");
    EXPECT_FALSE(tree->isVisible());
    EXPECT_TRUE(IsListShown());
    EXPECT_EQ(List()->geometry().topLeft(), tree->geometry().topLeft());
    EXPECT_EQ(Listed().first(), "pin 01");
    EXPECT_THAT(Chosen(), IsEmpty()) << "typing chooses nothing";
    while (!Field()->text().isEmpty())
        Press(Qt::Key_Backspace);
    EXPECT_TRUE(tree->isVisible());
    EXPECT_FALSE(IsListShown());
    EXPECT_TRUE(Field()->hasFocus());
}

TEST_F(FindBoxTest, TabGoesFromTheFieldToTheTreeAndBack) {
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(Field()->hasFocus());
    Press(Qt::Key_Tab);
    EXPECT_TRUE(tree->hasFocus());
}

TEST_F(FindBoxTest, CtrlFSelectsTheText) {
    LookFor("pin");
    Press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(Field()->selectedText(), "pin");
}

TEST_F(FindBoxTest, WhereThereIsNoRoomTheFieldComesWhenItIsWanted) {
    box->setFixedHeight(50);
    EXPECT_TRUE(QTest::qWaitFor([&] { return tree->height() == 50; })) << "the tree has all of it";
    EXPECT_FALSE(Field()->isVisible());

    Press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(Field()->hasFocus());
    QTest::keyClicks(Field(), "pin 1");
    EXPECT_TRUE(IsListShown());
    window.setFocus();
    EXPECT_TRUE(Field()->isVisible()) << "what is searched for stays in sight";
    Press(Qt::Key_F, Qt::ControlModifier);
    Press(Qt::Key_Escape);
    EXPECT_TRUE(Field()->isVisible());
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Field()->isVisible());
    EXPECT_TRUE(tree->hasFocus());

    box->setFixedHeight(200);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Field()->isVisible(); }));
}

TEST_F(FindBoxTest, BlanksAloneAreNoText) {
    LookFor(" 　");
    EXPECT_TRUE(tree->isVisible());
    EXPECT_FALSE(IsListShown());
}

TEST_F(FindBoxTest, KeysMoveInTheListWhileTheFieldKeepsTheFocus) {
    LookFor("pin");
    const int last = List()->model()->rowCount() - 1;
    ASSERT_EQ(last, 39);
    Press(Qt::Key_Down);
    EXPECT_THAT(Chosen(), ElementsAre("2/1")) << "the first key chooses the best one";
    Press(Qt::Key_Down);
    EXPECT_THAT(Chosen(), ElementsAre("2/2"));
    Press(Qt::Key_Up);
    Press(Qt::Key_Up);
    EXPECT_THAT(Chosen(), ElementsAre("2/1")) << "at the top there is no further";
    Press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_THAT(Chosen(), ElementsAre("2/40"));
    EXPECT_TRUE(List()->viewport()->rect().contains(List()->visualRect(List()->currentIndex())));
    Press(Qt::Key_PageUp);
    const int paged = List()->currentIndex().row();
    EXPECT_LT(paged, last - 1);
    EXPECT_GT(paged, 0);
    Press(Qt::Key_PageDown);
    EXPECT_EQ(List()->currentIndex().row(), last);
    Press(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(List()->currentIndex().row(), 0);
    EXPECT_TRUE(Field()->hasFocus());
    EXPECT_EQ(windowActions, 0);
    Press(Qt::Key_Home);
    EXPECT_EQ(Field()->cursorPosition(), 0) << "without Ctrl these move the caret";
}

TEST_F(FindBoxTest, AClickChoosesAndLeavesTheFocus) {
    LookFor("pin");
    ClickRow(1);
    EXPECT_THAT(Chosen(), ElementsAre("2/2"));
    EXPECT_TRUE(Field()->hasFocus());
    ClickRow(1);
    EXPECT_THAT(Chosen(), ElementsAre("2/2")) << "what is chosen already can be chosen again";
}

TEST_F(FindBoxTest, EnterOpensTheChosenOneOrElseTheBest) {
    LookFor("pin");
    Press(Qt::Key_Return);
    EXPECT_THAT(Chosen(), ElementsAre("2/1 open"));
    Press(Qt::Key_Down);
    Press(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_THAT(Chosen(), ElementsAre("2/2", "2/2 open"));
    EXPECT_TRUE(IsListShown()) << "the search goes on when the symbol is closed";
    EXPECT_EQ(windowActions, 0);
}

TEST_F(FindBoxTest, EnterOnACategoryGoesToTheTree) {
    LookFor("bolts");
    Press(Qt::Key_Return);
    EXPECT_THAT(Chosen(), ElementsAre("2/0 open"));
    EXPECT_EQ(Field()->text(), "");
    EXPECT_TRUE(tree->isVisible());
    EXPECT_TRUE(tree->hasFocus());
}

TEST_F(FindBoxTest, ADoubleClickOpensWithTheLeftButtonOnly) {
    LookFor("pin");
    const QPoint second = List()->visualRect(List()->model()->index(1, 0)).center();
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier, second);
    QTest::mouseDClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier, second);
    EXPECT_EQ(Chosen().last(), "2/2 open");
    QTest::mouseDClick(List()->viewport(), Qt::RightButton, Qt::NoModifier, second);
    EXPECT_FALSE(Chosen().contains("2/2 open"));
}

TEST_F(FindBoxTest, EscapeFirstClearsAndThenGoesBackToTheTree) {
    LookFor("pin");
    Press(Qt::Key_Escape);
    EXPECT_EQ(Field()->text(), "");
    EXPECT_TRUE(tree->isVisible());
    EXPECT_TRUE(Field()->hasFocus());
    Press(Qt::Key_Escape);
    EXPECT_TRUE(tree->hasFocus());
    EXPECT_EQ(windowActions, 0);
}

TEST_F(FindBoxTest, TheClearButtonLeavesTheFocusInTheField) {
    LookFor("pin");
    QTest::mouseClick(Field()->findChild<QToolButton*>(), Qt::LeftButton);
    EXPECT_EQ(Field()->text(), "");
    EXPECT_TRUE(tree->isVisible());
    EXPECT_TRUE(Field()->hasFocus());
}

TEST_F(FindBoxTest, SaysWhenNothingIsFound) {
    LookFor("pin");
    EXPECT_FALSE(Hint()->isVisible());
    LookFor("pinn");
    EXPECT_THAT(Listed(), IsEmpty());
    EXPECT_TRUE(Hint()->isVisible());
    EXPECT_EQ(Hint()->text(), "一致する分類やシンボルはありません。\nEsc で検索をやめます。");
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Down, Qt::Key_PageUp})
        Press(key);
    EXPECT_THAT(Chosen(), IsEmpty());
    LookFor("pin");
    EXPECT_FALSE(Hint()->isVisible());
}

TEST_F(FindBoxTest, ATextAfterAChoiceStartsAtTheTopAgain) {
    LookFor("pin");
    Press(Qt::Key_End, Qt::ControlModifier);
    Chosen();
    LookFor("pin ");
    EXPECT_FALSE(List()->selectionModel()->hasSelection());
    EXPECT_THAT(Chosen(), IsEmpty());
    EXPECT_TRUE(List()->viewport()->rect().contains(List()->visualRect(List()->model()->index(0, 0))));
    Press(Qt::Key_Down);
    EXPECT_THAT(Chosen(), ElementsAre("2/1"));
}

TEST_F(FindBoxTest, LooksAgainWhenTheLibraryHasChanged) {
    LookFor("pin");
    Press(Qt::Key_End, Qt::ControlModifier);
    Chosen();
    Open().Execute("DELETE FROM PDFFileTable WHERE ID<=5");
    box->LookAgain();
    EXPECT_EQ(Listed().size(), 35);
    EXPECT_EQ(List()->currentIndex().data().toString(), "pin 40");
    EXPECT_TRUE(List()->viewport()->rect().contains(List()->visualRect(List()->currentIndex())));
    EXPECT_THAT(Chosen(), IsEmpty());
    Open().Execute("DELETE FROM PDFFileTable WHERE ID=40");
    box->LookAgain();
    EXPECT_FALSE(List()->selectionModel()->hasSelection());
    LookFor("");
    box->LookAgain();
    EXPECT_TRUE(tree->isVisible());
}

TEST_F(FindBoxTest, ALibraryThatCannotBeReadIsToldAndTheTreeStays) {
    ASSERT_TRUE(QFile::remove(folder.Path("Velmo2.mdb").replace('\\', '/')));
    messages.ExpectContaining("Velmo2.mdb");
    LookFor("pin");
    EXPECT_EQ(Field()->text(), "");
    EXPECT_TRUE(tree->isVisible());
}

} // namespace
} // namespace velmo
