#include "table_run.h"

namespace velmo {
namespace {

using testing::ElementsAre;

// Editing single cells with keys and mouse.
class TableCellsTest : public TableRunTest {
protected:
    void SetUp() override {
        TableRunTest::SetUp();
        OpenTable();
    }
};

TEST_F(TableCellsTest, AClickMakesACellCurrentAndNoMore) {
    Click({2, 3});
    ExpectCurrent({2, 3});
    EXPECT_THAT(Values(), ElementsAre("d", "L", "材質"));
    Click({4, 1});
    ExpectCurrent({4, 1});
    EXPECT_FALSE(IsChanged());
}

TEST_F(TableCellsTest, F2EnterAndDoubleClickOpenTheText) {
    Click({2, 3});
    Run().Press("F2");
    ExpectEditing({2, 3}, "60");
    EXPECT_EQ(Run().Property("CurEdit", "selectedText").toString(), QString("60"));
    Run().Press("Escape");
    ExpectCurrent({2, 3});
    Run().Press("Return");
    ExpectEditing({2, 3}, "60");
    Run().Press("Escape");
    DoubleClick({3, 1});
    ExpectEditing({3, 1}, "M12");
    Run().Press("Escape");
    ExpectCurrent({3, 1});
    EXPECT_FALSE(IsChanged());
}

TEST_F(TableCellsTest, TypingReplacesTheText) {
    Click({2, 3});
    Run().Type("6");
    ExpectEditing({2, 3}, "6");
    Run().Type("5");
    Run().Press("Return");
    EXPECT_EQ(TableText(2, 3), QString("65"));
    EXPECT_TRUE(IsChanged());
    // The first letter that an input method composes is the text's too.
    Click({3, 1});
    Run().Type("特注M12");
    ExpectEditing({3, 1}, "特注M12");
    Run().Press("Return");
    EXPECT_EQ(TableText(3, 1), QString("特注M12"));
    // A blank begins a text as well; around the value none is kept, as in the file.
    Click({1, 1});
    Run().Type(" x ");
    ExpectEditing({1, 1}, " x ");
    Run().Press("Return");
    EXPECT_EQ(TableText(1, 1), QString("x"));
    Click({1, 2});
    Run().Type("  ");
    Run().Press("Return");
    EXPECT_EQ(TableText(1, 2), QString());
}

TEST_F(TableCellsTest, AfterF2TheTextIsCorrected) {
    Click({1, 1});
    Run().Press("F2");
    Run().Press("End");
    Run().Press("Backspace");
    Run().Type("6");
    Run().Press("Tab");
    EXPECT_EQ(TableText(1, 1), QString("M16"));
}

TEST_F(TableCellsTest, EnterAndTabGoRightAndOnToTheNextRow) {
    Enter({1, 2}, "11");
    ExpectCurrent({1, 3});
    Run().Type("51");
    Run().Press("Tab");
    ExpectCurrent({2, 1});
    Run().Type("M11");
    Run().Press("Shift+Tab");
    ExpectCurrent({1, 3});
    Run().Press("F2");
    Run().Press("Shift+Tab");
    ExpectCurrent({1, 2});
    EXPECT_THAT(TableRows().first(2),
                ElementsAre(ElementsAre("M10", "11", "51"), ElementsAre("M11", "10", "60")));
}

TEST_F(TableCellsTest, TabGoesFromCellToCellWithoutEditing) {
    Run().Press("Tab");
    ExpectCurrent({1, 2});
    Run().Press("Tab");
    Run().Press("Tab");
    ExpectCurrent({2, 1});
    Run().Press("Shift+Tab");
    ExpectCurrent({1, 3});
}

TEST_F(TableCellsTest, TheOutermostCellsAreLeftForNoOther) {
    Enter({4, 3}, "81");
    ExpectCurrent({4, 3});
    EXPECT_EQ(TableText(4, 3), QString("81"));
    Click({1, 1});
    Run().Press("F2");
    Run().Press("Shift+Tab");
    ExpectCurrent({1, 1});
    Run().Type("M9");
    Run().Press("Up");
    ExpectCurrent({1, 1});
    EXPECT_EQ(TableText(1, 1), QString("M9"));
    EXPECT_EQ(TableRows().size(), 4);
}

TEST_F(TableCellsTest, UpAndDownCommitAndMove) {
    Click({2, 2});
    Run().Type("11");
    Run().Press("Down");
    ExpectCurrent({3, 2});
    EXPECT_EQ(TableText(2, 2), QString("11"));
    Run().Type("13");
    Run().Press("Up");
    ExpectCurrent({2, 2});
    EXPECT_EQ(TableText(3, 2), QString("13"));
}

TEST_F(TableCellsTest, LeftAndRightMoveOnlyFromTheTextsEnds) {
    Click({2, 2});
    Run().Type("12");
    Run().Press("Left");
    ExpectEditing({2, 2}, "12");
    Run().Press("Right");
    ExpectEditing({2, 2}, "12");
    Run().Press("Right");
    ExpectCurrent({2, 3});
    EXPECT_EQ(TableText(2, 2), QString("12"));
    Run().Press("F2");
    Run().Press("Home");
    ExpectEditing({2, 3}, "60");
    Run().Press("Left");
    ExpectCurrent({2, 2});
    Run().Press("Left");
    ExpectCurrent({2, 1});
    Run().Press("F2");
    Run().Press("Home");
    Run().Press("Left");
    ExpectEditing({2, 1}, "M10");
}

TEST_F(TableCellsTest, EscapeGivesTheOldTextBack) {
    Click({2, 2});
    Run().Type("99");
    Run().Press("Escape");
    ExpectCurrent({2, 2});
    EXPECT_EQ(TableText(2, 2), QString("10"));
    EXPECT_FALSE(IsChanged());
    // Once more, with nothing open, it leaves the window as it is.
    Run().Press("Escape");
    ExpectCurrent({2, 2});
    EXPECT_TRUE(Run().IsWindowShown("VLM_VEDT"));
}

TEST_F(TableCellsTest, TheSameTextIsNoChange) {
    Enter({2, 2}, "10");
    EXPECT_EQ(TableText(2, 2), QString("10"));
    EXPECT_FALSE(IsChanged());
    EXPECT_FALSE(Run().Action("VedtMnuEditUndo")["enabled"].toBool());
}

TEST_F(TableCellsTest, ClickingElsewhereCommits) {
    Click({2, 2});
    Run().Type("11");
    Click({4, 3});
    ExpectCurrent({4, 3});
    EXPECT_EQ(TableText(2, 2), QString("11"));
    Run().Type("81");
    Run().ClickColumnHeader("Vedt_FlexGrid", 0);
    EXPECT_FALSE(IsEditing());
    EXPECT_EQ(TableText(4, 3), QString("81"));
}

TEST_F(TableCellsTest, HomeAndEndGoToTheEdges) {
    Click({2, 2});
    Run().Press("End");
    ExpectCurrent({2, 3});
    Run().Press("Home");
    ExpectCurrent({2, 1});
    Run().Press("Ctrl+End");
    ExpectCurrent({4, 3});
    Run().Press("Ctrl+Home");
    ExpectCurrent({1, 1});
    Run().Press("Down");
    Run().Press("Right");
    ExpectCurrent({2, 2});
    Run().Press("Up");
    Run().Press("Left");
    ExpectCurrent({1, 1});
}

TEST_F(TableCellsTest, KeysOfTheTableStayTheEditorsWhileItIsOpen) {
    Click({1, 1});
    Run().Press("F2");
    Run().Press("Home");
    Run().Press("Delete");
    ExpectEditing({1, 1}, "10");
    Run().Press("Ctrl+Z");
    ExpectEditing({1, 1}, "M10");
    Run().Press("Ctrl+Y");
    ExpectEditing({1, 1}, "10");
    Run().Press("Ctrl+A");
    Run().Press("Ctrl+C");
    EXPECT_EQ(Run().Clipboard(), QString("10"));
    Run().SetClipboard("20\n30");
    Run().Press("Ctrl+V");
    Run().Press("Return");
    ExpectCurrent({1, 2});
    EXPECT_EQ(TableText(1, 1), QString("20 30"));
    EXPECT_EQ(TableText(2, 1), QString("M10"));
}

TEST_F(TableCellsTest, AWordIsDeletedAndNotTheRow) {
    Click({1, 1});
    Run().Press("F2");
    Run().Press("Home");
    Run().Press("Ctrl+Delete");
    ExpectEditing({1, 1}, "");
    Run().Press("Insert");
    ExpectEditing({1, 1}, "");
    Run().Press("Escape");
    EXPECT_EQ(TableRows().size(), 4);
}

} // namespace
} // namespace velmo
