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

class NoDistanceTest : public MeasureTest, public testing::WithParamInterface<const char*> {};

TEST_P(NoDistanceTest, LeavesTheValueAsItWas) {
    AskForADistance();
    session_.Set("VlmDist", GetParam());
    StartWith("VLM_VEDT");
    EXPECT_THAT(Values(), ElementsAre("12", "50", "SS400"));
    EXPECT_EQ(CurrentRow("Vedt_NowFGrid"), 3);
    EXPECT_EQ(session_.Setting("VlmMode"), QString("2"));
}

INSTANTIATE_TEST_SUITE_P(All, NoDistanceTest, testing::Values("0", "-3", "", "測定不能", "12.5mm"));

TEST_F(MeasureTest, ARowOutsideTheGridIsPassedOver) {
    AskForADistance();
    session_.Set("VlmDist", "12.5");
    session_.Set("DistNo", "9");
    StartWith("VLM_VEDT");
    EXPECT_THAT(Values(), ElementsAre("12", "50", "SS400"));
    EXPECT_EQ(session_.Setting("VlmMode"), QString("2"));
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
