#include "variables/value_editors.h"
#include "window_sample.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QScrollBar>

namespace velmo {
namespace {

// Into the current values through the two editors.
class ValueEditorsTest : public WindowTest {
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

TEST_F(ValueEditorsTest, AreHiddenUntilUsed) {
    WriteRows();
    Open();
    EXPECT_FALSE(CurEdit()->isVisible());
    EXPECT_FALSE(CurCmb()->isVisible());
}

TEST_F(ValueEditorsTest, AnUngovernedVariableOpensTheEditBoxExactlyOverItsCell) {
    WriteRows();
    Open();
    ClickValue(3);
    ASSERT_TRUE(CurEdit()->isVisible());
    EXPECT_FALSE(CurCmb()->isVisible());
    EXPECT_EQ(CurEdit()->text(), QStringLiteral("3"));
    EXPECT_TRUE(CurEdit()->hasFocus());
    EXPECT_EQ(CurEdit()->geometry(), Variables()->CellRect(3, 1));
    EXPECT_EQ(CurEdit()->parentWidget(), Variables()->viewport());
}

TEST_F(ValueEditorsTest, WithoutATableEveryVariableOpensTheEditBox) {
    Open();
    ClickValue(1);
    EXPECT_TRUE(CurEdit()->isVisible());
    EXPECT_EQ(CurEdit()->text(), QStringLiteral("100"));
}

TEST_F(ValueEditorsTest, AVariableOfAnEmptyGroupOpensTheEditBox) {
    symbol.state.RunMode = run_mode::ReturnFromMeasure;
    WriteRows({});
    Open();
    ClickValue(1);
    EXPECT_TRUE(CurEdit()->isVisible());
}

TEST_F(ValueEditorsTest, ALabelOnlyBecomesCurrent) {
    WriteRows();
    Open();
    ClickCell(Variables(), 3, 0);
    EXPECT_EQ(Variables()->Row(), 3);
    EXPECT_FALSE(CurEdit()->isVisible());
}

TEST_F(ValueEditorsTest, EnterInTheEditBoxCommits) {
    WriteRows();
    Open();
    ClickValue(3);
    Type("7.5");
    Press(Qt::Key_Return);
    EXPECT_FALSE(CurEdit()->isVisible());
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "20", "7.5"}));
    EXPECT_TRUE(Variables()->hasFocus());
    EXPECT_EQ(Variables()->Row(), 3);
    EXPECT_TRUE(window->isVisible()) << "Enter belonged to the edit box";
}

TEST_F(ValueEditorsTest, EscapeInTheEditBoxGivesTheOldTextBack) {
    WriteRows();
    Open();
    ClickValue(3);
    Type("7.5");
    Press(Qt::Key_Escape);
    EXPECT_FALSE(CurEdit()->isVisible());
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "20", "3"}));
    EXPECT_TRUE(window->isVisible());
    Press(Qt::Key_Escape);
    EXPECT_TRUE(window->isVisible()) << "nothing is lost unasked";
}

TEST_F(ValueEditorsTest, TabGoesOnToTheNextValue) {
    Open();
    ClickValue(1);
    Type("1");
    Press(Qt::Key_Tab);
    EXPECT_EQ(CurEdit()->geometry(), Variables()->CellRect(2, 1));
    Type("2");
    Press(Qt::Key_Down);
    Type("4");
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(CurEdit()->text(), QStringLiteral("2"));
    Press(Qt::Key_Up);
    EXPECT_EQ(CurEdit()->text(), QStringLiteral("1"));
    Press(Qt::Key_Up);
    EXPECT_FALSE(CurEdit()->isVisible()) << "there is no row above";
    EXPECT_EQ(CurrentValues(), (QStringList{"1", "2", "4"}));
}

TEST_F(ValueEditorsTest, ALeftEditBoxIsCommitted) {
    WriteRows();
    Open();
    ClickValue(3);
    Type("7");
    ClickValue(1);
    EXPECT_FALSE(CurEdit()->isVisible());
    EXPECT_EQ(CurrentValues()[2], QStringLiteral("7"));
    CurCmb()->hidePopup();
    ClickValue(3);
    Type("8");
    ClickTable(2);
    EXPECT_FALSE(CurEdit()->isVisible());
    EXPECT_EQ(CurrentValues(), (QStringList{"12", "2", "8"}));
}

TEST_F(ValueEditorsTest, PastedLineBreaksBecomeBlanks) {
    Open();
    ClickValue(1);
    QGuiApplication::clipboard()->setText(QStringLiteral("1\r\n2\t3"));
    Press(Qt::Key_V, Qt::ControlModifier);
    Press(Qt::Key_Return);
    const QString value = CurrentValues()[0];
    EXPECT_FALSE(value.contains(u'\n') || value.contains(u'\r') || value.contains(u'\t'))
        << value.toStdString();
}

TEST_F(ValueEditorsTest, TypingOverACellReplacesItsText) {
    Open();
    Variables()->setFocus();
    Variables()->SetCurrentCell(2, 1);
    Type("4");
    EXPECT_TRUE(CurEdit()->isVisible());
    EXPECT_EQ(CurEdit()->text(), QStringLiteral("4"));
    Type("2");
    Press(Qt::Key_Enter);
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "42", "3"}));
}

TEST_F(ValueEditorsTest, TypingWithAnInputMethodLosesNothing) {
    Open();
    Variables()->setFocus();
    Variables()->SetCurrentCell(2, 1);
    EXPECT_TRUE(Variables()->testAttribute(Qt::WA_InputMethodEnabled));
    QInputMethodEvent first(QStringLiteral("あ"), {});
    QApplication::sendEvent(Variables(), &first);
    ASSERT_TRUE(CurEdit()->isVisible());
    QInputMethodEvent last;
    last.setCommitString(QStringLiteral("亜鉛"));
    QApplication::sendEvent(CurEdit(), &last);
    Press(Qt::Key_Return);
    EXPECT_EQ(CurrentValues()[1], QStringLiteral("亜鉛"));
}

TEST_F(ValueEditorsTest, TheEditBoxFollowsItsCell) {
    QStringList lines;
    for (int i = 1; i <= 40; ++i)
        lines << QStringLiteral("V%1=PRO(\"N%1\",%1)").arg(i);
    symbol.Define(lines);
    Open();
    ClickValue(3);
    Variables()->verticalScrollBar()->setValue(1);
    EXPECT_EQ(CurEdit()->geometry(), Variables()->CellRect(3, 1));
    Variables()->SetColWidth(0, 900);
    EXPECT_EQ(CurEdit()->geometry(), Variables()->CellRect(3, 1));
}

TEST_F(ValueEditorsTest, AGovernedVariableOffersTheValuesOfItsGroup) {
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

TEST_F(ValueEditorsTest, AnEntryChosenWithTheMouseIsApplied) {
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

TEST_F(ValueEditorsTest, EnterInTheListAppliesTheEntryShown) {
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

TEST_F(ValueEditorsTest, TypingInTheListFindsAnEntry) {
    WriteRows();
    Open();
    OpenByKey(1);
    Type("8");
    EXPECT_EQ(CurCmb()->currentText(), QStringLiteral("8"));
    Press(Qt::Key_Return);
    EXPECT_EQ(CurrentValues()[0], QStringLiteral("8"));
}

TEST_F(ValueEditorsTest, TurningTheWheelChoosesNothing) {
    WriteRows();
    Open();
    OpenByKey(1);
    QWheelEvent turn(QPointF(5, 5), CurCmb()->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, {},
                     Qt::NoScrollPhase, false);
    QApplication::sendEvent(CurCmb(), &turn);
    EXPECT_EQ(CurrentValues()[0], QStringLiteral("100"));
    EXPECT_TRUE(CurCmb()->isVisible());
}

TEST_F(ValueEditorsTest, EscapeInTheListChangesNothing) {
    WriteRows();
    Open();
    OpenByKey(1);
    Press(Qt::Key_Down);
    Press(Qt::Key_Escape);
    EXPECT_FALSE(CurCmb()->isVisible());
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "20", "3"}));
}

TEST_F(ValueEditorsTest, EscapeInTheUnfoldedListClosesBoth) {
    WriteRows();
    Open();
    ClickValue(1);
    QTest::keyClick(CurCmb()->view(), Qt::Key_Escape);
    EXPECT_FALSE(CurCmb()->view()->isVisible());
    EXPECT_FALSE(CurCmb()->isVisible());
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "20", "3"}));
}

TEST_F(ValueEditorsTest, EnterInTheUnfoldedListAppliesTheEntry) {
    WriteRows();
    Open();
    ClickValue(1);
    ASSERT_TRUE(CurCmb()->view()->isVisible());
    QTest::keyClick(CurCmb()->view()->window()->windowHandle(), Qt::Key_Down);
    QTest::keyClick(CurCmb()->view()->window()->windowHandle(), Qt::Key_Return);
    EXPECT_FALSE(CurCmb()->isVisible());
    EXPECT_EQ(CurrentValues(), (QStringList{"8", "3", "3"}));
}

TEST_F(ValueEditorsTest, ALeftListIsClosedUnchanged) {
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

TEST_F(ValueEditorsTest, EnterInTheGridTakesTheListsTextWithoutItsRow) {
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

TEST_F(ValueEditorsTest, EscapeInTheGridClosesTheList) {
    WriteRows();
    Open();
    OpenByKey(1);
    Variables()->setFocus(Qt::OtherFocusReason);
    QTest::keyClick(Variables(), Qt::Key_Escape);
    EXPECT_FALSE(CurCmb()->isVisible());
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "20", "3"}));
}

TEST_F(ValueEditorsTest, EnterInTheGridTakesTheEditBoxsText) {
    Open();
    ClickValue(1);
    Type("5");
    Variables()->setFocus(Qt::OtherFocusReason);
    QTest::keyClick(Variables(), Qt::Key_Return);
    EXPECT_FALSE(CurEdit()->isVisible());
    EXPECT_EQ(CurrentValues()[0], QStringLiteral("5"));
}

TEST_F(ValueEditorsTest, EnterInTheGridOpensTheEditor) {
    WriteRows();
    Open();
    OpenByKey(3);
    EXPECT_TRUE(CurEdit()->isVisible());
    Press(Qt::Key_Escape);
    Press(Qt::Key_F2);
    EXPECT_TRUE(CurEdit()->isVisible());
}

TEST_F(ValueEditorsTest, ValuesThatAreNoNumbersAreShownAsAnErrorAndTheWindowStays) {
    WriteRows({"M10    x   1", "M10    8   2"});
    Open();
    OpenByKey(1);
    Press(Qt::Key_Down);
    messages.ExpectContaining("実行時エラー '13'");
    Press(Qt::Key_Return);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "20", "3"}));
    EXPECT_EQ(messages.ExitStatus(), 0);
}

TEST_F(ValueEditorsTest, MoreThanThirtyVariablesAreAnErrorWhenAValueIsApplied) {
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
    EXPECT_EQ(CurrentValues()[0], QStringLiteral("100"));
}

TEST_F(ValueEditorsTest, AQuoteInTheNominalIsShownAsAnError) {
    WriteRows({"5'x    1   1"});
    Open();
    messages.ExpectContaining("実行時エラー '3075'");
    ClickValue(1);
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(CurCmb()->isVisible());
}

} // namespace
} // namespace velmo
