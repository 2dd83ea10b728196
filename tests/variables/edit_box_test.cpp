#include "window_sample.h"

#include <QClipboard>
#include <QScrollBar>

namespace velmo {
namespace {

// Into the current values through CurEdit.
class EditBoxTest : public WindowTest {};

TEST_F(EditBoxTest, AreHiddenUntilUsed) {
    WriteRows();
    Open();
    EXPECT_FALSE(CurEdit()->isVisible());
    EXPECT_FALSE(CurCmb()->isVisible());
}

TEST_F(EditBoxTest, AnUngovernedVariableOpensTheEditBoxExactlyOverItsCell) {
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

TEST_F(EditBoxTest, WithoutATableEveryVariableOpensTheEditBox) {
    Open();
    ClickValue(1);
    EXPECT_TRUE(CurEdit()->isVisible());
    EXPECT_EQ(CurEdit()->text(), QStringLiteral("100"));
}

TEST_F(EditBoxTest, AVariableOfAnEmptyGroupOpensTheEditBox) {
    symbol.state.RunMode = run_mode::ReturnFromMeasure;
    WriteRows({});
    Open();
    ClickValue(1);
    EXPECT_TRUE(CurEdit()->isVisible());
}

TEST_F(EditBoxTest, ALabelOnlyBecomesCurrent) {
    WriteRows();
    Open();
    ClickCell(Variables(), 3, 0);
    EXPECT_EQ(Variables()->Row(), 3);
    EXPECT_FALSE(CurEdit()->isVisible());
}

TEST_F(EditBoxTest, AClickWithControlKeepsTheVariableSelected) {
    Open();
    ClickCell(Variables(), 2, 0);
    QTest::mouseClick(Variables()->viewport(), Qt::LeftButton, Qt::ControlModifier,
                      Variables()->CellRect(2, 0).center());
    EXPECT_EQ(Variables()->selectionModel()->selectedIndexes().size(), 1);
}

TEST_F(EditBoxTest, EnterInTheEditBoxCommits) {
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

TEST_F(EditBoxTest, EscapeInTheEditBoxGivesTheOldTextBack) {
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

TEST_F(EditBoxTest, TabGoesOnToTheNextValue) {
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

TEST_F(EditBoxTest, ALeftEditBoxIsCommitted) {
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

TEST_F(EditBoxTest, PastedLineBreaksBecomeBlanks) {
    Open();
    ClickValue(1);
    QGuiApplication::clipboard()->setText(QStringLiteral("1\r\n2\t3"));
    Press(Qt::Key_V, Qt::ControlModifier);
    Press(Qt::Key_Return);
    const QString value = CurrentValues()[0];
    EXPECT_FALSE(value.contains(u'\n') || value.contains(u'\r') || value.contains(u'\t'))
        << value.toStdString();
}

TEST_F(EditBoxTest, TypingOverACellReplacesItsText) {
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

TEST_F(EditBoxTest, TypingWithAnInputMethodLosesNothing) {
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

TEST_F(EditBoxTest, TheEditBoxFollowsItsCell) {
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

TEST_F(EditBoxTest, OpensOverACellThatWasScrolledTo) {
    QStringList lines;
    for (int i = 1; i <= 40; ++i)
        lines << QStringLiteral("V%1=PRO(\"N%1\",%1)").arg(i);
    symbol.Define(lines);
    Open();
    ClickValue(35);
    EXPECT_EQ(CurEdit()->geometry(), Variables()->CellRect(35, 1));
    EXPECT_FALSE(CurEdit()->visibleRegion().isEmpty());
    Press(Qt::Key_Escape);
    Variables()->verticalScrollBar()->setValue(0);
    Press(Qt::Key_F2);
    ASSERT_TRUE(CurEdit()->isVisible());
    EXPECT_EQ(CurEdit()->geometry(), Variables()->CellRect(35, 1));
    EXPECT_FALSE(CurEdit()->visibleRegion().isEmpty());
}

TEST_F(EditBoxTest, EnterInTheGridTakesTheEditBoxsText) {
    Open();
    ClickValue(1);
    Type("5");
    Variables()->setFocus(Qt::OtherFocusReason);
    QTest::keyClick(Variables(), Qt::Key_Return);
    EXPECT_FALSE(CurEdit()->isVisible());
    EXPECT_EQ(CurrentValues()[0], QStringLiteral("5"));
}

} // namespace
} // namespace velmo
