#include "window_sample.h"

#include <QAbstractItemView>
#include <QLabel>
#include <QStatusBar>

namespace velmo {
namespace {

// Into the current values through CurCmb.
class DropDownTest : public WindowTest {
protected:
    // The list's entries.
    QStringList Offered() const {
        QStringList texts;
        for (int i = 0; i < CurCmb()->count(); ++i)
            texts << CurCmb()->itemText(i);
        return texts;
    }
    // Opens the list of a row by key, so that it is not unfolded.
    void OpenByKey(int row) {
        Variables()->setFocus();
        Variables()->SetCurrentCell(row, 1);
        Press(Qt::Key_Return);
    }
    // A key for the unfolded list, as the window system sends it.
    void PressUnfolded(Qt::Key key) { QTest::keyClick(CurCmb()->view()->window()->windowHandle(), key); }
    // A click on an entry of the unfolded list.
    void ClickEntry(int index) {
        QAbstractItemView* view = CurCmb()->view();
        ASSERT_TRUE(view->isVisible());
        // The list passes over the release of the click that unfolded it.
        const QPoint spot = view->visualRect(view->model()->index(index, 0)).center();
        QTest::mouseMove(view->viewport(), spot);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, spot);
    }
};

TEST_F(DropDownTest, AGovernedVariableOffersTheValuesOfItsGroup) {
    WriteRows();
    Open();
    ClickValue(1);
    ASSERT_TRUE(CurCmb()->isVisible());
    EXPECT_FALSE(CurEdit()->isVisible());
    EXPECT_EQ(CurCmb()->geometry(), Variables()->CellRect(1, 1));
    EXPECT_EQ(CurCmb()->currentText(), QStringLiteral("100")) << "the cell's text, though no row has it";
    EXPECT_EQ(Offered(), (QStringList{"10", "8"}));
    EXPECT_TRUE(CurCmb()->view()->isVisible());
}

TEST_F(DropDownTest, AnEntryChosenWithTheMouseIsApplied) {
    WriteRows();
    Open();
    ClickTable(2);
    EXPECT_EQ(CurrentValues(), (QStringList{"12", "2", "3"}));
    OpenByKey(1);
    EXPECT_FALSE(CurCmb()->view()->isVisible());
    QTest::mouseClick(CurCmb()->lineEdit(), Qt::LeftButton);
    ClickEntry(1);
    EXPECT_EQ(CurrentValues(), (QStringList{"14", "4", "3"}));
    EXPECT_FALSE(CurCmb()->isVisible());
}

TEST_F(DropDownTest, EnterInTheListAppliesTheEntryShown) {
    WriteRows();
    Open();
    OpenByKey(1);
    Press(Qt::Key_Down);
    Press(Qt::Key_Down);
    EXPECT_EQ(CurCmb()->currentText(), QStringLiteral("8"));
    EXPECT_EQ(CurrentValues()[0], QStringLiteral("100")) << "nothing is applied on the way";
    Press(Qt::Key_Return);
    EXPECT_EQ(CurrentValues(), (QStringList{"8", "3", "3"}));
    EXPECT_FALSE(CurCmb()->isVisible());
    EXPECT_TRUE(Variables()->hasFocus());
}

TEST_F(DropDownTest, TypingInTheListFindsAnEntry) {
    WriteRows();
    Open();
    OpenByKey(1);
    Type("8");
    EXPECT_EQ(CurCmb()->currentText(), QStringLiteral("8"));
    Press(Qt::Key_Return);
    EXPECT_EQ(CurrentValues()[0], QStringLiteral("8"));
}

TEST_F(DropDownTest, TypingWhatTheListLacksChangesNothing) {
    WriteRows({"M10   10   1", "M10   11   2", "M10   12   3"});
    Open();
    OpenByKey(1);
    Type("9");
    EXPECT_EQ(CurCmb()->currentText(), QStringLiteral("100"));
    EXPECT_TRUE(window->statusBar()->findChild<QLabel*>()->text().contains(
        QStringLiteral("「9」は寸法表にありません。")));
    Press(Qt::Key_Return);
    EXPECT_FALSE(CurCmb()->isVisible());
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "20", "3"}));
    OpenByKey(1);
    Type("13");
    EXPECT_EQ(CurCmb()->currentText(), QStringLiteral("10")) << "as far as it could be found";
    Type("12");
    EXPECT_EQ(CurCmb()->currentText(), QStringLiteral("12"));
}

TEST_F(DropDownTest, EnterInAListOverAnEmptyCellClosesIt) {
    symbol.Define({"V12=PRO(\"W\",)", "V3=PRO(\"H\",20)"});
    WriteRows();
    Open();
    OpenByKey(1);
    ASSERT_TRUE(CurCmb()->isVisible());
    Press(Qt::Key_Return);
    EXPECT_FALSE(CurCmb()->isVisible());
    EXPECT_EQ(CurrentValues(), (QStringList{"", "20"}));
}

TEST_F(DropDownTest, EnterAppliesAValueThatTheCellWritesOtherwise) {
    symbol.Define({"V12=PRO(\"W\",8.0)", "V3=PRO(\"H\",20)"});
    WriteRows();
    Open();
    OpenByKey(1);
    Press(Qt::Key_Return);
    EXPECT_EQ(CurrentValues(), (QStringList{"8", "3"}));
}

TEST_F(DropDownTest, KeysStepThroughTheListWithoutApplyingIt) {
    QStringList rows;
    for (int i = 11; i <= 40; ++i)
        rows << QStringLiteral("M10   %1   1").arg(i);
    WriteRows(rows);
    Open();
    OpenByKey(1);
    const auto after = [this](Qt::Key key) {
        Press(key);
        return CurCmb()->currentText();
    };
    EXPECT_EQ(after(Qt::Key_Home), QStringLiteral("11"));
    EXPECT_EQ(after(Qt::Key_PageDown), QStringLiteral("21"));
    EXPECT_EQ(after(Qt::Key_End), QStringLiteral("40"));
    EXPECT_EQ(after(Qt::Key_Down), QStringLiteral("40"));
    EXPECT_EQ(after(Qt::Key_PageUp), QStringLiteral("30"));
    EXPECT_TRUE(CurCmb()->isVisible());
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "20", "3"}));
}

TEST_F(DropDownTest, TurningTheWheelChoosesNothing) {
    WriteRows();
    Open();
    OpenByKey(1);
    QWheelEvent turn(QPointF(5, 5), CurCmb()->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, {},
                     Qt::NoScrollPhase, false);
    QApplication::sendEvent(CurCmb(), &turn);
    EXPECT_EQ(CurrentValues()[0], QStringLiteral("100"));
    EXPECT_TRUE(CurCmb()->isVisible());
}

TEST_F(DropDownTest, EscapeInTheListChangesNothing) {
    WriteRows();
    Open();
    OpenByKey(1);
    Press(Qt::Key_Down);
    Press(Qt::Key_Escape);
    EXPECT_FALSE(CurCmb()->isVisible());
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "20", "3"}));
}

TEST_F(DropDownTest, EscapeInTheUnfoldedListClosesBoth) {
    WriteRows();
    Open();
    ClickValue(1);
    QTest::keyClick(CurCmb()->view(), Qt::Key_Escape);
    EXPECT_FALSE(CurCmb()->view()->isVisible());
    EXPECT_FALSE(CurCmb()->isVisible());
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "20", "3"}));
}

TEST_F(DropDownTest, EnterInTheUnfoldedListAppliesTheEntry) {
    WriteRows();
    Open();
    ClickValue(1);
    ASSERT_TRUE(CurCmb()->view()->isVisible());
    PressUnfolded(Qt::Key_Down);
    PressUnfolded(Qt::Key_Return);
    EXPECT_FALSE(CurCmb()->isVisible());
    EXPECT_EQ(CurrentValues(), (QStringList{"10", "1", "3"})) << "the first step reaches the first entry";
    ClickValue(1);
    PressUnfolded(Qt::Key_Down);
    PressUnfolded(Qt::Key_Return);
    EXPECT_EQ(CurrentValues(), (QStringList{"8", "3", "3"}));
}

TEST_F(DropDownTest, EnterInTheUnfoldedListWithoutAnEntryClosesIt) {
    WriteRows();
    Open();
    ClickValue(1);
    ASSERT_TRUE(CurCmb()->view()->isVisible());
    PressUnfolded(Qt::Key_Return);
    EXPECT_FALSE(CurCmb()->view()->isVisible());
    EXPECT_FALSE(CurCmb()->isVisible());
    EXPECT_FALSE(CurEdit()->isVisible());
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "20", "3"}));
}

TEST_F(DropDownTest, TypingInTheUnfoldedListFindsAnEntry) {
    WriteRows({"M10   10   1", "M10   11   2", "M10   12   3"});
    Open();
    ClickValue(1);
    PressUnfolded(Qt::Key_1);
    PressUnfolded(Qt::Key_1);
    PressUnfolded(Qt::Key_Return);
    EXPECT_EQ(CurrentValues(), (QStringList{"11", "2", "3"}));
}

TEST_F(DropDownTest, ALeftListIsClosedUnchanged) {
    WriteRows();
    Open();
    OpenByKey(1);
    Press(Qt::Key_Down);
    Press(Qt::Key_Tab);
    EXPECT_EQ(Offered(), (QStringList{"1", "3"})) << "the next variable's";
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "20", "3"}));
    ClickTable(3);
    EXPECT_FALSE(CurCmb()->isVisible());
    EXPECT_EQ(CurrentValues(), (QStringList{"16", "5", "3"}));
}

TEST_F(DropDownTest, EnterInTheGridTakesTheListsTextWithoutItsRow) {
    WriteRows();
    Open();
    OpenByKey(1);
    Press(Qt::Key_Down);
    Press(Qt::Key_Down);
    Variables()->setFocus(Qt::OtherFocusReason);
    ASSERT_TRUE(CurCmb()->isVisible());
    QTest::keyClick(Variables(), Qt::Key_Return);
    EXPECT_FALSE(CurCmb()->isVisible());
    EXPECT_EQ(CurrentValues(), (QStringList{"8", "20", "3"}));
}

TEST_F(DropDownTest, EscapeInTheGridClosesTheList) {
    WriteRows();
    Open();
    OpenByKey(1);
    Variables()->setFocus(Qt::OtherFocusReason);
    QTest::keyClick(Variables(), Qt::Key_Escape);
    EXPECT_FALSE(CurCmb()->isVisible());
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "20", "3"}));
}

TEST_F(DropDownTest, EnterInTheGridOpensTheEditor) {
    WriteRows();
    Open();
    OpenByKey(3);
    EXPECT_TRUE(CurEdit()->isVisible());
    Press(Qt::Key_Escape);
    Press(Qt::Key_F2);
    EXPECT_TRUE(CurEdit()->isVisible());
}

TEST_F(DropDownTest, ValuesThatAreNoNumbersAreShownAsAnErrorAndTheWindowStays) {
    WriteRows({"M10    x   1", "M10    8   2"});
    Open();
    OpenByKey(1);
    Press(Qt::Key_Down);
    messages.ExpectContaining("実行時エラー '13'");
    Press(Qt::Key_Return);
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(CurCmb()->isVisible());
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "20", "3"}));
    EXPECT_EQ(messages.ExitStatus(), 0);
}

TEST_F(DropDownTest, MoreThanThirtyVariablesAreAnErrorWhenAValueIsApplied) {
    QStringList lines{QStringLiteral("V12=PRO(\"W\",100)"), QStringLiteral("V3=PRO(\"H\",20)")};
    for (int i = 101; i <= 129; ++i)
        lines << QStringLiteral("V%1=PRO(\"N%1\",0)").arg(i);
    symbol.Define(lines);
    WriteRows();
    Open();
    OpenByKey(1);
    Press(Qt::Key_Down);
    messages.ExpectContaining("実行時エラー '9'");
    Press(Qt::Key_Return);
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(CurCmb()->isVisible());
    EXPECT_EQ(CurrentValues()[0], QStringLiteral("100"));
}

TEST_F(DropDownTest, AQuoteInTheNominalIsShownAsAnError) {
    WriteRows({"5'x    1   1"});
    Open();
    messages.ExpectContaining("実行時エラー '3075'");
    ClickValue(1);
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(CurCmb()->isVisible());
}

} // namespace
} // namespace velmo
