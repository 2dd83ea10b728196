#include "acceptance_test.h"

namespace velmo {
namespace {

using testing::ElementsAre;

const QStringList bolts = {"トルヴィク", "ボルト"};

class ChooseTest : public AcceptanceTest {
protected:
    bool IsSelected(const QStringList& category) {
        return Run().Describe("VlmTreeView", Item::Path(category))["selected"].toBool();
    }

    // Whether a slide's picture shows more than an empty slide.
    bool ShowsSlide(const QString& slide, const QImage& empty) { return Run().Picture(slide) != empty; }
};

TEST_F(ChooseTest, ShowsTheSlideThePathAndTheEntriesOfACategory) {
    StartWith("VLM_MAIN");
    EXPECT_THAT(Run().Tree("VlmTreeView"), ElementsAre("トルヴィク", "  ボルト", "  座金+", "    大形"));
    const QImage empty = Run().Picture("VlmTreeSlide");
    EXPECT_THAT(Run().Column("VlmPdfList", 0), ElementsAre());

    ChooseCategory(bolts);
    EXPECT_TRUE(ShowsSlide("VlmTreeSlide", empty));
    EXPECT_EQ(Run().Panels("VlmStatusBar").first(), QString("ボルト"));
    EXPECT_THAT(Run().Column("VlmPdfList", 0), ElementsAre("六角ボルト", "アイボルト", "記号"));

    ChooseCategory({"トルヴィク", "座金", "大形"});
    EXPECT_EQ(Run().Panels("VlmStatusBar").first(), QString("座金 － 大形"));
    EXPECT_THAT(Run().Column("VlmPdfList", 0), ElementsAre("平座金"));

    ChooseCategory({"トルヴィク"});
    EXPECT_EQ(Run().Panels("VlmStatusBar").first(), QString("トルヴィク"));
    EXPECT_EQ(Run().Picture("VlmTreeSlide"), empty);
}

TEST_F(ChooseTest, ShowsTheSlideOfAnEntry) {
    StartWith("VLM_MAIN");
    const QImage empty = Run().Picture("VlmPDFSlide");
    ChooseCategory(bolts);
    Run().Click("VlmPdfList", Item::Named("六角ボルト"));
    const QImage hex = Run().Picture("VlmPDFSlide");
    EXPECT_NE(hex, empty);
    Run().Click("VlmPdfList", Item::Named("アイボルト"));
    EXPECT_NE(Run().Picture("VlmPDFSlide"), hex);
    ChooseCategory({"トルヴィク", "座金"});
    EXPECT_EQ(Run().Picture("VlmPDFSlide"), empty);
}

TEST_F(ChooseTest, AsksForASymbolWhenNoneIsChosen) {
    StartWith("VLM_MAIN");
    ChooseCategory(bolts);
    Run().ClickAction("Tbar_Open");
    EXPECT_EQ(Run().ExpectMessage("シンボルを選択してください").title, QString("VELMO2"));
    Run().AnswerOk();
    EXPECT_TRUE(Run().IsWindowShown("VLM_MAIN"));
    EXPECT_FALSE(Run().IsWindowShown("VLM_VEDT"));
}

// Every way to open: what the user does with the entry that is selected.
struct WayToOpen {
    const char* name;
    void (*open)(VelmoRun& run);
};

void PrintTo(const WayToOpen& way, std::ostream* out) {
    *out << way.name;
}

class WayToOpenTest : public AcceptanceTest, public testing::WithParamInterface<WayToOpen> {};

TEST_P(WayToOpenTest, OpensTheSelectedEntry) {
    StartWith("VLM_MAIN");
    EXPECT_TRUE(Run().Window("VLM_MAIN")["onTop"].toBool());
    ChooseCategory(bolts);
    Run().Click("VlmPdfList", Item::Named("アイボルト"));
    GetParam().open(Run());
    Run().WaitForWindow("VLM_VEDT");
    const QJsonObject window = Run().Window("VLM_VEDT");
    EXPECT_EQ(window["title"].toString(), QString("Velmo 変数入力"));
    EXPECT_TRUE(window["modal"].toBool());
    EXPECT_FALSE(Run().Window("VLM_MAIN")["onTop"].toBool());
    EXPECT_EQ(VariableText(0, 0), QString("変数名(別名)"));
    EXPECT_EQ(VariableText(0, 1), QString("現 在 の 値 "));
    EXPECT_THAT(Run().Column("Vedt_NowFGrid", 0), ElementsAre("V1(d)", "V7(個数)"));
    EXPECT_THAT(Values(), ElementsAre("8", "1"));
}

INSTANTIATE_TEST_SUITE_P(
    All, WayToOpenTest,
    testing::Values(WayToOpen{"Menu", [](VelmoRun& run) { run.ClickMenu("VlmMnuFileOpen"); }},
                    WayToOpen{"ToolBar", [](VelmoRun& run) { run.ClickAction("Tbar_Open"); }},
                    WayToOpen{
                        "DoubleClickOnEntry",
                        [](VelmoRun& run) { run.DoubleClick("VlmPdfList", Item::Named("アイボルト")); }},
                    WayToOpen{"DoubleClickOnSlide", [](VelmoRun& run) { run.DoubleClick("VlmPDFSlide"); }},
                    WayToOpen{"EnterInTheList", [](VelmoRun& run) { run.Press("Return"); }}),
    [](const auto& tested) { return tested.param.name; });

TEST_F(ChooseTest, CopiesATableRowIntoTheVariables) {
    StartWith("VLM_MAIN");
    OpenEntry(bolts, "六角ボルト");
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("M10", "10", "50"), ElementsAre("M12", "12", "50")));
    EXPECT_EQ(TableText(2, 0), QString("2"));
    EXPECT_THAT(Values(), ElementsAre("10", "50", "SS400"));
    ClickTable(2, 3);
    EXPECT_THAT(Values(), ElementsAre("12", "50", "SS400"));
    EXPECT_EQ(CurrentRow("Vedt_FlexGrid"), 2);
}

TEST_F(ChooseTest, OffersTheValuesOfTheGroupAndSwitchesTheOtherVariables) {
    QStringList lines = HexTableLines();
    lines.removeLast();
    lines << "   M12   13   80";
    session_.WriteHomeLines("SMB\\BOLT\\HEX.PMN", lines);
    StartWith("VLM_MAIN");
    OpenEntry(bolts, "六角ボルト");
    ClickTable(2, 1);
    ClickVariable(2, 1);
    EXPECT_THAT(Run().ComboItems("CurCmb"), ElementsAre("50", "80"));
    Run().ChooseInCombo("CurCmb", "80");
    EXPECT_THAT(Values(), ElementsAre("13", "80", "SS400"));
    EXPECT_FALSE(Run().IsVisible("CurCmb"));
}

TEST_F(ChooseTest, EscapeClosesTheListOfValuesWithoutAChange) {
    StartWith("VLM_MAIN");
    OpenEntry(bolts, "六角ボルト");
    ClickVariable(2, 1);
    Run().WaitFor("CurCmb", [this] { return Run().IsVisible("CurCmb"); });
    Run().Press("Escape");
    if (Run().IsVisible("CurCmb"))
        Run().Press("Escape");
    EXPECT_FALSE(Run().IsVisible("CurCmb"));
    EXPECT_THAT(Values(), ElementsAre("10", "50", "SS400"));
    EXPECT_TRUE(Run().IsWindowShown("VLM_VEDT"));
}

TEST_F(ChooseTest, TakesATypedValueForAVariableWithoutColumn) {
    StartWith("VLM_MAIN");
    OpenEntry(bolts, "六角ボルト");
    EnterValue(3, "S45C");
    EXPECT_THAT(Values(), ElementsAre("10", "50", "S45C"));
    ClickVariable(3, 1);
    Run().Type("X");
    Run().Press("Escape");
    EXPECT_THAT(Values(), ElementsAre("10", "50", "S45C"));
}

TEST_F(ChooseTest, AsksForAMissingValue) {
    session_.WriteHomeLines("SMB\\BOLT\\EYE.TXT", {"$VAR", "V4=PRO(20)", "$GEO"});
    StartWith("VLM_MAIN");
    OpenEntry(bolts, "アイボルト");
    EXPECT_EQ(VariableText(1, 0), QString("V4()"));
    Run().Click("Vedt_OKBtn");
    Run().ExpectMessage("値を入力してください。");
    Run().AnswerOk();
    EXPECT_FALSE(session_.ExistsInExchange("velmo.ret"));
    EXPECT_FALSE(session_.ExistsInExchange("velmo.ret2"));
    EXPECT_TRUE(Run().IsVisible("CurEdit"));
    Run().Type("7");
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret"), QStringList({"1", "V4()", "7"}));
}

TEST_F(ChooseTest, AsksForTheLastValueWhenOnlyThatIsMissing) {
    StartWith("VLM_MAIN");
    OpenEntry(bolts, "六角ボルト");
    ClickVariable(3, 1);
    Run().Press("Ctrl+A");
    Run().Press("Delete");
    Run().Press("Return");
    ClickVariable(1, 0);
    Run().Click("Vedt_OKBtn");
    Run().ExpectMessage("値を入力してください。");
    Run().AnswerOk();
    EXPECT_EQ(CurrentRow("Vedt_NowFGrid"), 3);
    EXPECT_TRUE(Run().IsVisible("CurEdit"));
    EXPECT_FALSE(session_.ExistsInExchange("velmo.ret"));
}

TEST_F(ChooseTest, ConfirmWritesTheAnswerByteForByte) {
    StartWith("VLM_MAIN");
    OpenEntry(bolts, "六角ボルト");
    ClickTable(2, 1);
    EnterValue(3, "ｽﾃﾝﾚｽ表");
    EXPECT_TRUE(session_.ExistsInExchange("VELMONOW.mdb"));
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchange("velmo.ret"), "3\r\nV1(d)\r\n12\r\nV2(L)\r\n50\r\n"
                                                  "V3(\x8D\xDE\x8E\xBF)\r\n"
                                                  "\xBD\xC3\xDD\xDA\xBD\x95\x5C\r\n");
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"),
              (session_.HomeDir() + "SMB\\BOLT\\HEX.TXT\r\nTOLVIKS\r\n").toUtf8());
    EXPECT_FALSE(session_.ExistsInExchange("VELMONOW.mdb"));
    EXPECT_FALSE(session_.ExistsInExchange("velmo.ret3"));
}

TEST_F(ChooseTest, ConfirmKeepsTheChoiceInTheSettings) {
    StartWith("VLM_MAIN");
    Run().ResizeWindow("VLM_MAIN", {520, 410});
    OpenEntry(bolts, "六角ボルト");
    ClickTable(2, 1);
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.Setting("SmbTbl1"), QString("12"));
    EXPECT_EQ(session_.Setting("SmbTbl2"), QString("50"));
    EXPECT_EQ(session_.Setting("SmbTbl3"), QString("SS400"));
    EXPECT_EQ(session_.Setting("TBLLast"), QString("2"));
    EXPECT_EQ(session_.Setting("LastPDF"), session_.HomeDir() + "SMB\\BOLT\\HEX.TXT");
    EXPECT_EQ(session_.Setting("TreeLast"), QString("2"));
    EXPECT_EQ(session_.Setting("VlmMainWidth"), QString::number(520 * 15));
    EXPECT_EQ(session_.Setting("VlmMainHeight"), QString::number(410 * 15));
    EXPECT_EQ(session_.Setting("VlmMode"), QString("2"));
    for (const char* others : {"UsrTBLLast", "UsrLastPDF", "UsrTreeLast", "VlmTbl1", "DistNo"})
        EXPECT_EQ(session_.Setting(others), std::nullopt) << others;

    StartWith("VLM_MAIN");
    const QJsonArray rect = Run().Window("VLM_MAIN")["rect"].toArray();
    EXPECT_EQ(rect[2].toInt(), 520);
    EXPECT_EQ(rect[3].toInt(), 410);
    EXPECT_TRUE(IsSelected(bolts));
    EXPECT_TRUE(Run().Describe("VlmPdfList", Item::Named("六角ボルト"))["selected"].toBool());
    Run().ClickAction("Tbar_Open");
    Run().WaitForWindow("VLM_VEDT");
    EXPECT_THAT(Values(), ElementsAre("12", "50", "SS400"));
}

TEST_F(ChooseTest, ASymbolWithoutVariablesAnswersZero) {
    StartWith("VLM_MAIN");
    OpenEntry(bolts, "記号");
    EXPECT_THAT(Run().Texts("Vedt_NowFGrid"), ElementsAre(ElementsAre("変数がありません")));
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("テーブルはありません")));
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchange("velmo.ret"), "0\r\n");
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret2"),
              QStringList({session_.HomeDir() + "SMB\\BOLT\\MARK.TXT", "TOLVIKS"}));
}

} // namespace
} // namespace velmo
