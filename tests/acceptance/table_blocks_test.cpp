#include "table_run.h"

namespace velmo {
namespace {

using testing::ElementsAre;

// Blocks of cells and the clipboard.
class TableBlocksTest : public TableRunTest {
protected:
    void SetUp() override {
        TableRunTest::SetUp();
        OpenTable();
    }
    QString Line(int row) { return TableRows().at(row - 1).join(' '); }
};

TEST_F(TableBlocksTest, MouseAndKeysSelectBlocks) {
    Run().Drag("Vedt_FlexGrid", CellOf({1, 2}), CellOf({3, 3}));
    EXPECT_EQ(Selected(), QString("1,2 - 3,3"));
    EXPECT_EQ(Run().View("Vedt_FlexGrid")["selection"].toArray().size(), 6);
    Click({2, 2});
    EXPECT_EQ(Selected(), QString("2,2 - 2,2"));
    Run().Press("Shift+Down");
    Run().Press("Shift+Left");
    EXPECT_EQ(Selected(), QString("2,1 - 3,2"));
    SelectBlock({1, 1}, {2, 3});
    EXPECT_EQ(Selected(), QString("1,1 - 2,3"));
    Run().ClickRowHeader("Vedt_FlexGrid", 2);
    EXPECT_EQ(Selected(), QString("3,1 - 3,3"));
    Run().ClickColumnHeader("Vedt_FlexGrid", 1);
    EXPECT_EQ(Selected(), QString("1,2 - 4,2"));
    EXPECT_FALSE(IsEditing());
    EXPECT_FALSE(IsChanged());
}

TEST_F(TableBlocksTest, CopyGivesTabSeparatedText) {
    SelectBlock({1, 2}, {2, 3});
    Run().Press("Ctrl+C");
    EXPECT_EQ(Run().Clipboard(), QString("10\t50\n10\t60"));
    Click({4, 1});
    Run().ClickMenu("VedtMnuEditCopy");
    EXPECT_EQ(Run().Clipboard(), QString("M12"));
    EXPECT_FALSE(IsChanged());
}

TEST_F(TableBlocksTest, CutEmptiesTheCells) {
    SelectBlock({1, 2}, {2, 3});
    Run().Press("Ctrl+X");
    EXPECT_EQ(Run().Clipboard(), QString("10\t50\n10\t60"));
    EXPECT_EQ(Line(1), QString("M10  "));
    EXPECT_EQ(Line(2), QString("M10  "));
    EXPECT_EQ(Run().Action("VedtMnuEditUndo")["text"].toString(), QString("元に戻す(&U) 切り取り"));
    Run().Press("Ctrl+Z");
    EXPECT_EQ(Line(1), QString("M10 10 50"));
    EXPECT_EQ(Line(2), QString("M10 10 60"));
    EXPECT_FALSE(IsChanged());
}

TEST_F(TableBlocksTest, TheKeysOfOldDoTheSame) {
    SelectBlock({1, 2}, {1, 3});
    Run().Press("Ctrl+Insert");
    EXPECT_EQ(Run().Clipboard(), QString("10\t50"));
    Click({4, 2});
    Run().Press("Shift+Insert");
    EXPECT_EQ(Line(4), QString("M12 10 50"));
    Run().Press("Shift+Delete");
    EXPECT_EQ(Line(4), QString("M12  "));
    EXPECT_EQ(Run().Clipboard(), QString("10\t50"));
}

TEST_F(TableBlocksTest, PasteTakesASpreadsheetsCells) {
    Run().SetClipboard("1\t2\r\n3\t\"4\"\r\n");
    Click({2, 2});
    Run().Press("Ctrl+V");
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("M10", "10", "50"), ElementsAre("M10", "1", "2"),
                                         ElementsAre("M12", "3", "4"), ElementsAre("M12", "12", "80")));
    EXPECT_TRUE(IsChanged());
    Run().Press("Ctrl+Z");
    EXPECT_EQ(Line(2), QString("M10 10 60"));
    EXPECT_EQ(Line(3), QString("M12 12 50"));
    Run().ClickMenu("VedtMnuEditPaste");
    EXPECT_EQ(Line(3), QString("M12 3 4"));
}

TEST_F(TableBlocksTest, OneValueFillsTheSelection) {
    Run().SetClipboard("7\n");
    SelectBlock({1, 2}, {4, 3});
    Run().Press("Ctrl+V");
    for (int row = 1; row <= 4; ++row)
        EXPECT_EQ(Line(row).section(' ', 1), QString("7 7"));
    Run().Press("Ctrl+Z");
    EXPECT_EQ(Line(4), QString("M12 12 80"));
    EXPECT_FALSE(IsChanged());
}

TEST_F(TableBlocksTest, ABlockThatDoesNotFitIsRefused) {
    Run().SetClipboard("1\t2\n3\t4");
    const QList<QStringList> before = TableRows();
    Click({4, 3});
    Run().Press("Ctrl+V");
    const Message message = Run().ExpectMessage("貼り付ける範囲 (2 行 × 2 列) が表からはみ出します。\n"
                                                "ここに貼り付けられるのは 1 行 × 1 列までです。");
    EXPECT_EQ(message.title, QString("VELMO2"));
    Run().AnswerOk();
    EXPECT_EQ(TableRows(), before);
    EXPECT_FALSE(IsChanged());
    ExpectCurrent({4, 3});
}

TEST_F(TableBlocksTest, AnEmptyClipboardChangesNothing) {
    Run().SetClipboard("");
    Run().Press("Ctrl+V");
    EXPECT_FALSE(IsChanged());
}

TEST_F(TableBlocksTest, WhatWasCopiedComesBackAsItWas) {
    Enter({1, 1}, "a\"b");
    SelectBlock({1, 1}, {2, 3});
    Run().Press("Ctrl+C");
    Click({3, 1});
    Run().Press("Ctrl+V");
    EXPECT_EQ(TableRows().at(2), TableRows().at(0));
    EXPECT_EQ(TableRows().at(3), TableRows().at(1));
}

TEST_F(TableBlocksTest, DeleteEmptiesTheSelectedCells) {
    SelectBlock({3, 2}, {4, 2});
    Run().Press("Delete");
    EXPECT_EQ(Line(3), QString("M12  50"));
    EXPECT_EQ(Line(4), QString("M12  80"));
    EXPECT_TRUE(IsChanged());
    Run().Press("Ctrl+Z");
    EXPECT_FALSE(IsChanged());
    Run().ClickMenu("VedtMnuEditClear");
    EXPECT_EQ(Line(3), QString("M12  50"));
}

TEST_F(TableBlocksTest, UndoShowsTheBlockThatCameBack) {
    SelectBlock({2, 2}, {3, 3});
    Run().Press("Delete");
    Click({1, 1});
    Run().Press("Ctrl+Z");
    EXPECT_EQ(Selected(), QString("2,2 - 3,3"));
    EXPECT_EQ(Current(), Place(2, 2));
    Click({4, 1});
    Run().Press("Ctrl+Y");
    EXPECT_EQ(Selected(), QString("2,2 - 3,3"));
}

TEST_F(TableBlocksTest, ARightClickOnCellsRepeatsTheEditMenu) {
    SelectBlock({1, 2}, {2, 3});
    Run().RightClick("Vedt_FlexGrid", CellOf({2, 2}));
    Run().WaitForWindow("VedtCellPop");
    Run().ClickAction("VedtMnuEditCopy");
    EXPECT_EQ(Run().Clipboard(), QString("10\t50\n10\t60"));
    EXPECT_EQ(Selected(), QString("1,2 - 2,3"));
    Run().RightClick("Vedt_FlexGrid", CellOf({4, 3}));
    Run().WaitForWindow("VedtCellPop");
    EXPECT_EQ(Current(), Place(4, 3));
    Run().ClickAction("VedtMnuEditClear");
    EXPECT_EQ(Line(4), QString("M12 12 "));
    EXPECT_EQ(Line(1), QString("M10 10 50"));
}

TEST_F(TableBlocksTest, AHeadersPopUpSelectsWhatItWorksOn) {
    OpenColumnPopUp(2);
    EXPECT_EQ(Selected(), QString("1,2 - 4,2"));
    Run().Press("Escape");
    OpenRowPopUp(3);
    EXPECT_EQ(Selected(), QString("3,1 - 3,3"));
    Run().Press("Escape");
}

TEST_F(TableBlocksTest, OutsideTheTableItsKeysDoNothingToIt) {
    ClickVariable(3, 0);
    EXPECT_EQ(Run().Focus(), QString("Vedt_NowFGrid"));
    Run().SetClipboard("9");
    for (const char* key : {"Ctrl+V", "Ctrl+X", "Delete", "Insert", "Ctrl+Shift+D", "Alt+Right"})
        Run().Press(key);
    EXPECT_EQ(Line(1), QString("M10 10 50"));
    EXPECT_EQ(TableRows().size(), 4);
    EXPECT_FALSE(IsChanged());
}

// The bar below the table.
class TableFindTest : public TableRunTest {
protected:
    void SetUp() override {
        TableRunTest::SetUp();
        WriteColumn({"ボルト", "M10", "ﾎﾞﾙﾄ特", "Ｍ１２", "なし"});
        OpenTable();
    }
    void Search(const QString& text) {
        Run().Press("Ctrl+F");
        EXPECT_EQ(Run().Focus(), QString("VedtFindText"));
        Run().Press("Ctrl+A");
        Run().Type(text);
    }
    QString Outcome() { return Run().Text("VedtFindOutcome"); }
};

TEST_F(TableFindTest, KanaWidthAndCaseDoNotMatter) {
    Search("ぼると");
    EXPECT_EQ(Current(), Place(1, 1));
    Run().Press("Return");
    EXPECT_EQ(Current(), Place(3, 1));
    EXPECT_EQ(Outcome(), QString());
    Run().Press("F3");
    EXPECT_EQ(Current(), Place(1, 1));
    EXPECT_EQ(Outcome(), QString("先頭から検索しました"));
    Search("m12");
    EXPECT_EQ(Current(), Place(4, 1));
    Search("ｍ１");
    EXPECT_EQ(Current(), Place(4, 1));
    Run().Press("Shift+F3");
    EXPECT_EQ(Current(), Place(2, 1));
}

TEST_F(TableFindTest, TellsWhenThereIsNone) {
    Search("M16");
    EXPECT_EQ(Outcome(), QString("見つかりません"));
    Run().Press("Backspace");
    EXPECT_EQ(Outcome(), QString());
}

TEST_F(TableFindTest, EscapeGoesBackToTheTable) {
    EXPECT_FALSE(Run().IsVisible("VedtFindBar"));
    Run().ClickMenu("VedtMnuEditFind");
    Run().Type("特");
    Run().Press("Escape");
    EXPECT_FALSE(Run().IsVisible("VedtFindBar"));
    ExpectCurrent({3, 1});
    // The search goes on without the bar.
    Run().Press("F3");
    ExpectCurrent({3, 1});
    Run().Type("x");
    ExpectEditing({3, 1}, "x");
}

TEST_F(TableFindTest, FindEntersWhatIsBeingTyped) {
    Click({2, 1});
    Run().Type("M14");
    Search("m14");
    EXPECT_EQ(TableText(2, 1), QString("M14"));
    EXPECT_EQ(Current(), Place(2, 1));
    EXPECT_EQ(Outcome(), QString());
}

TEST_F(TableFindTest, KeysInTheBarChangeNoCell) {
    Search("M10");
    Run().Press("Home");
    Run().Press("Delete");
    Run().Press("Ctrl+A");
    Run().Press("Ctrl+X");
    EXPECT_EQ(Run().Clipboard(), QString("10"));
    Run().SetClipboard("M1");
    Run().Press("Ctrl+V");
    EXPECT_EQ(Run().Text("VedtFindText"), QString("M1"));
    Run().Press("Ctrl+Z");
    EXPECT_FALSE(IsChanged());
    EXPECT_THAT(Run().Column("Vedt_FlexGrid", 0), ElementsAre("ボルト", "M10", "ﾎﾞﾙﾄ特", "Ｍ１２", "なし"));
}

} // namespace
} // namespace velmo
