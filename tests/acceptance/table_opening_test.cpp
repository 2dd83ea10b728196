#include "table_run.h"

namespace velmo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class TableOpeningTest : public TableRunTest {};

TEST_F(TableOpeningTest, ShowsTheTableAndTheNames) {
    OpenTable();
    EXPECT_FALSE(Run().IsWindowShown("VLM_MAIN"));
    EXPECT_EQ(Run().Window("VLM_VEDT")["title"].toString(), QString("Velmo テーブル編集"));
    EXPECT_EQ(VariableText(0, 0), QString("変 数 名"));
    EXPECT_EQ(VariableText(0, 1), QString("名  前"));
    EXPECT_THAT(Values(), ElementsAre("d", "L", "材質"));
    EXPECT_THAT(Headers(), ElementsAre("呼び", "d", "L"));
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("M10", "10", "50"), ElementsAre("M10", "10", "60"),
                                         ElementsAre("M12", "12", "50"), ElementsAre("M12", "12", "80")));
    for (int row = 1; row <= 4; ++row)
        EXPECT_EQ(TableText(row, 0), QString::number(row));
    ExpectCurrent({1, 1});
    EXPECT_EQ(Selected(), QString("1,1 - 1,1"));
    EXPECT_TRUE(Run().Action("TB_POINT")["enabled"].toBool());
    for (const char* menu : {"VedtMnuEdit", "VedtMnuRow", "VedtMnuCol"})
        EXPECT_TRUE(Run().Action(menu)["shown"].toBool()) << menu;
}

TEST_F(TableOpeningTest, TheStatusBarTellsOfTheTable) {
    OpenTable();
    EXPECT_EQ(Run().Text("VedtChangedPanel"), QString("変更なし"));
    EXPECT_EQ(Run().Text("VedtSizePanel"), QString("4 行 × 3 列"));
    EXPECT_EQ(Run().Text("VedtLengthPanel"), QString("3 / 6 文字"));
    Click({1, 2});
    EXPECT_EQ(Run().Text("VedtLengthPanel"), QString("2 / 5 文字"));
    Enter({1, 2}, "123456");
    Click({1, 2});
    EXPECT_EQ(Run().Text("VedtLengthPanel"), QString("6 / 5 文字 (長すぎます)"));
    EXPECT_EQ(Run().Text("VedtChangedPanel"), QString("変更あり"));
}

TEST_F(TableOpeningTest, RowsOfAGroupComeTogetherAndAreSavedSo) {
    WriteColumn({"A", "B", "       A  "});
    OpenTable();
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("A"), ElementsAre("A"), ElementsAre("B")));
    for (int row = 1; row <= 3; ++row)
        EXPECT_EQ(TableText(row, 0), QString::number(row));
    Enter({3, 1}, "C");
    Confirm();
    EXPECT_THAT(TableFile().mid(7), ElementsAre("3", "         A", "         A", "         C"));
}

TEST_F(TableOpeningTest, ColumnWidthsFollowTheMouseAndTheContents) {
    WriteColumn({"1234567890"});
    OpenTable();
    const auto width = [this] {
        return Run().Describe("Vedt_FlexGrid", Item::Cell(0, 0))["rect"][2].toInt();
    };
    const int fitting = width();
    Run().DragColumnBorder("Vedt_FlexGrid", 0, 60);
    EXPECT_EQ(width(), fitting + 60);
    Run().DoubleClickColumnBorder("Vedt_FlexGrid", 0);
    Run().WaitFor("the width of the contents", [&] { return width() <= fitting; });
    ExpectCurrent({1, 1});
    EXPECT_FALSE(IsChanged());
}

TEST_F(TableOpeningTest, ASymbolWithoutATableFileGetsANewTable) {
    OpenTable("EYE");
    EXPECT_THAT(Headers(), ElementsAre("呼び", "d", "個数"));
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("", "", "")));
    EXPECT_EQ(TableText(1, 0), QString("1"));
    EXPECT_FALSE(IsChanged());
    EXPECT_EQ(Run().Text("VedtSizePanel"), QString("1 行 × 3 列"));
    EXPECT_EQ(Run().Text("VedtLengthPanel"), QString("0 / 10 文字"));
    Confirm();
    EXPECT_FALSE(session_.ExistsInHome("SMB\\BOLT\\EYE.PMN"));
}

TEST_F(TableOpeningTest, ASymbolWithoutVariablesHasNothingToEdit) {
    OpenTable("MARK");
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("テーブルはありません")));
    Run().Click("Vedt_FlexGrid", Item::Cell(0, 0));
    Run().Press("F2");
    Run().Type("1");
    EXPECT_FALSE(IsEditing());
    EXPECT_FALSE(Run().IsVisible("VedtMnuEdit"));
    Confirm();
    EXPECT_FALSE(session_.ExistsInHome("SMB\\BOLT\\MARK.PMN"));
}

TEST_F(TableOpeningTest, TheLastRowIsCurrentAgain) {
    OpenTable();
    Click({3, 2});
    Confirm();
    EXPECT_EQ(session_.Setting("UsrTBLLast"), QString("3"));
    OpenTable();
    ExpectCurrent({3, 1});
}

TEST_F(TableOpeningTest, VariableInputHasNoneOfIt) {
    session_.Set("VlmMode", "2");
    OpenTable();
    EXPECT_EQ(Run().Window("VLM_VEDT")["title"].toString(), QString("Velmo 変数入力"));
    for (const char* control :
         {"VedtMnuEdit", "VedtMnuRow", "VedtMnuCol", "VedtChangedPanel", "VedtSizePanel", "VedtLengthPanel"})
        EXPECT_FALSE(Run().IsVisible(control)) << control;
    Run().RightClickColumnHeader("Vedt_FlexGrid", 0);
    EXPECT_FALSE(Run().IsWindowShown("VedtHdrPop"));
    Run().DoubleClick("Vedt_FlexGrid", Item::Cell(0, 1));
    Run().Press("F2");
    EXPECT_FALSE(IsEditing());
    Run().Press("Ctrl+Delete");
    Run().Press("Delete");
    EXPECT_EQ(TableRows().size(), 2);
    EXPECT_EQ(TableText(1, 2), QString("10"));
}

// The browser stays open behind the editor, and the user goes on from there.
class EditFromBrowserTest : public TableRunTest {
protected:
    void SetUp() override {
        TableRunTest::SetUp();
        session_.Set("VlmNxt", "0");
        session_.WriteExchangeLines("velmo.ret2", {"old", "VELMO"});
        StartWith("VLM_MAIN");
    }
    void WaitForBrowser() {
        Run().WaitFor("the browser alone", [this] { return !Run().IsWindowShown("VLM_VEDT"); });
    }
};

TEST_F(EditFromBrowserTest, WhatWasSavedIsThereTheNextTime) {
    OpenEntry({"トルヴィク", "ボルト"}, "六角ボルト");
    Enter({1, 2}, "11");
    Run().Click("Vedt_OKBtn");
    WaitForBrowser();
    EXPECT_EQ(TableFile().at(18), QString("   M10   11   50"));
    EXPECT_FALSE(session_.ExistsInExchange("VELMONOW.mdb"));
    OpenShownEntry("六角ボルト");
    EXPECT_EQ(Run().Window("VLM_VEDT")["title"].toString(), QString("Velmo テーブル編集"));
    EXPECT_EQ(TableText(1, 2), QString("11"));
    EXPECT_FALSE(IsChanged());
    EXPECT_FALSE(Run().Action("VedtMnuEditUndo")["enabled"].toBool());
    Run().Click("VEdt_CanBtn");
    WaitForBrowser();
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), "NO SELECT\r\n");
}

TEST_F(EditFromBrowserTest, BackToTheTreeDropsTheChanges) {
    const QByteArray before = session_.ReadHome(tableFile_);
    const QByteArray answer = session_.ReadExchange("velmo.ret2");
    OpenEntry({"トルヴィク", "ボルト"}, "六角ボルト");
    Enter({1, 2}, "11");
    Run().Click("Vedt_TreeBtn");
    Run().WaitForMessage();
    Run().AnswerYes();
    WaitForBrowser();
    EXPECT_EQ(session_.ReadHome(tableFile_), before);
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), answer);
    EXPECT_FALSE(session_.ExistsInHome("SMB\\BOLT\\HEX.TMP"));
}

// A cancel that was taken back is none for the browser either: it remembers the symbol that was opened.
TEST_F(EditFromBrowserTest, ARefusedCancelForgetsNothing) {
    OpenEntry({"トルヴィク", "ボルト"}, "六角ボルト");
    Enter({1, 2}, "11");
    Run().Click("VEdt_CanBtn");
    Run().WaitForMessage();
    Run().AnswerNo();
    Run().CloseWindow("VLM_VEDT");
    Run().WaitForMessage();
    Run().AnswerYes();
    WaitForBrowser();
    Run().CloseWindow("VLM_MAIN");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.Setting("EdtTreeLast"), QString("2"));
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret2"), QStringList({"old", "VELMO"}));
}

} // namespace
} // namespace velmo
