#include "acceptance_test.h"

namespace velmo {
namespace {

using testing::ElementsAre;

const QStringList bolts = {"トルヴィク", "ボルト"};

class MeasureTest : public AcceptanceTest {
protected:
    // Asks the CAD side for the material's place, of all things.
    void AskForADistance() {
        StartWith("VLM_MAIN");
        OpenEntry(bolts, "六角ボルト");
        ClickTable(2, 1);
        ClickVariable(3, 0);
        Run().ClickAction("TB_POINT");
        EXPECT_EQ(End(), 0);
    }
};

TEST_F(MeasureTest, WritesTheAnswerAndTheRowToMeasure) {
    AskForADistance();
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret"),
              QStringList({"3", "V1(d)", "12", "V2(L)", "50", "V3(材質)", "SS400"}));
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret2"),
              QStringList({session_.HomeDir() + "SMB\\BOLT\\HEX.TXT", "TOLVIKS"}));
    EXPECT_EQ(session_.Setting("VlmMode"), QString("4"));
    EXPECT_EQ(session_.Setting("DistNo"), QString("3"));
    EXPECT_EQ(session_.Setting("SmbTbl1"), QString("12"));
    EXPECT_EQ(session_.Setting("TBLLast"), QString("2"));
    EXPECT_EQ(session_.Setting("LastPDF"), session_.HomeDir() + "SMB\\BOLT\\HEX.TXT");
    EXPECT_TRUE(session_.ExistsInExchange("VELMONOW.mdb"));
}

TEST_F(MeasureTest, TakesAnOpenEditorsTextBeforeItLeaves) {
    StartWith("VLM_MAIN");
    OpenEntry(bolts, "六角ボルト");
    ClickVariable(3, 1);
    Run().Press("Ctrl+A");
    Run().Type("S45C");
    Run().ClickAction("TB_POINT");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.Setting("SmbTbl3"), QString("S45C"));
    EXPECT_EQ(session_.Setting("DistNo"), QString("3"));
}

TEST_F(MeasureTest, TheDistanceComesIntoItsRow) {
    AskForADistance();
    session_.Set("VlmDist", "12.5");
    StartWith("VLM_VEDT");
    EXPECT_THAT(Values(), ElementsAre("12", "50", "12.5"));
    EXPECT_EQ(CurrentRow("Vedt_NowFGrid"), 3);
    EXPECT_EQ(CurrentRow("Vedt_FlexGrid"), 2);
    EXPECT_EQ(session_.Setting("VlmMode"), QString("2"));
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret"),
              QStringList({"3", "V1(d)", "12", "V2(L)", "50", "V3(材質)", "12.5"}));
    EXPECT_EQ(session_.Setting("VlmMode"), QString("2"));
    EXPECT_FALSE(session_.ExistsInExchange("VELMONOW.mdb"));
    // Answered once: the next run is an ordinary one.
    StartWith("VLM_MAIN");
}

struct NoDistance {
    const char* name;
    const char* value;
};

void PrintTo(const NoDistance& distance, std::ostream* out) {
    *out << distance.value;
}

class NoDistanceTest : public MeasureTest, public testing::WithParamInterface<NoDistance> {};

TEST_P(NoDistanceTest, LeavesTheValueAsItWas) {
    AskForADistance();
    session_.Set("VlmDist", GetParam().value);
    StartWith("VLM_VEDT");
    EXPECT_THAT(Values(), ElementsAre("12", "50", "SS400"));
    EXPECT_EQ(CurrentRow("Vedt_NowFGrid"), 3);
    EXPECT_EQ(session_.Setting("VlmMode"), QString("2"));
}

INSTANTIATE_TEST_SUITE_P(All, NoDistanceTest,
                         testing::Values(NoDistance{"Zero", "0"}, NoDistance{"Negative", "-3"},
                                         NoDistance{"Empty", ""}, NoDistance{"Words", "測定不能"},
                                         NoDistance{"WithUnit", "12.5mm"}),
                         [](const auto& tested) { return tested.param.name; });

TEST_F(MeasureTest, ARowOutsideTheGridIsPassedOver) {
    AskForADistance();
    session_.Set("VlmDist", "12.5");
    session_.Set("DistNo", "9");
    StartWith("VLM_VEDT");
    EXPECT_THAT(Values(), ElementsAre("12", "50", "SS400"));
    EXPECT_EQ(session_.Setting("VlmMode"), QString("2"));
}

TEST_F(MeasureTest, AnotherSymbolThanTheMeasuredOneTakesNoDistance) {
    AskForADistance();
    session_.Set("VlmDist", "12.5");
    session_.WriteExchangeLines("velmo.ret2", {session_.HomeDir() + "SMB\\WASH\\WASHER.TXT", "TOLVIKS"});
    StartWith("VLM_VEDT");
    EXPECT_THAT(Values(), ElementsAre("6", "1"));
    EXPECT_EQ(session_.Setting("VlmMode"), QString("2"));
}

TEST_F(MeasureTest, AfterACancelledAnswerTheBrowserOpens) {
    AskForADistance();
    session_.WriteExchangeLines("velmo.ret2", {"NO SELECT"});
    StartWith("VLM_MAIN");
    EXPECT_FALSE(Run().IsWindowShown("VLM_VEDT"));
}

TEST_F(MeasureTest, ASymbolWithoutVariablesSurvivesTheCycle) {
    StartWith("VLM_MAIN");
    OpenEntry(bolts, "記号");
    Run().ClickAction("TB_POINT");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchange("velmo.ret"), "0\r\n");
    EXPECT_EQ(session_.Setting("DistNo"), QString("0"));
    session_.Set("VlmDist", "3");
    StartWith("VLM_VEDT");
    EXPECT_THAT(Run().Texts("Vedt_NowFGrid"), ElementsAre(ElementsAre("変数がありません")));
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
}

TEST_F(MeasureTest, ATableWithoutRowsShowsOneEmptyRowOnReturn) {
    AskForADistance();
    session_.WriteHomeLines("SMB\\BOLT\\HEX.PMN", HexTableLines().first(17) << "0");
    StartWith("VLM_VEDT");
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("", "", "")));
    EXPECT_EQ(TableText(1, 0), QString("1"));
}

TEST_F(MeasureTest, AMissingValueIsAskedForFirst) {
    session_.WriteHomeLines("SMB\\BOLT\\EYE.TXT", {"$VAR", R"(V1=PRO("d",))", "$GEO"});
    StartWith("VLM_MAIN");
    OpenEntry(bolts, "アイボルト");
    Run().ClickAction("TB_POINT");
    Run().ExpectMessage("値を入力してください。");
    Run().AnswerOk();
    EXPECT_FALSE(session_.ExistsInExchange("velmo.ret"));
    EXPECT_EQ(session_.Setting("VlmMode"), QString("2"));
    EXPECT_TRUE(Run().IsWindowShown("VLM_VEDT"));
}

} // namespace
} // namespace velmo
