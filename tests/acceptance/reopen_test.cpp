#include "acceptance_test.h"

namespace velmo {
namespace {

using testing::ElementsAre;

const QStringList bolts = {"トルヴィク", "ボルト"};

// Runs that begin in the variable window: the CAD side asks for the symbol of the last answer.
class ReopenTest : public AcceptanceTest {
protected:
    // A first run that confirms M12 with another material.
    void ConfirmOnce() {
        StartWith("VLM_MAIN");
        OpenEntry(bolts, "六角ボルト");
        ClickTable(2, 1);
        EnterValue(3, "S45C");
        Run().Click("Vedt_OKBtn");
        EXPECT_EQ(End(), 0);
        session_.Set("VlmNxt", "1");
    }
    QString Symbol(const QString& name) const { return session_.HomeDir() + "SMB\\BOLT\\" + name; }
};

TEST_F(ReopenTest, RestoresTheValuesAndTheRow) {
    ConfirmOnce();
    StartWith("VLM_VEDT");
    EXPECT_FALSE(Run().IsWindowShown("VLM_MAIN"));
    EXPECT_THAT(Values(), ElementsAre("12", "50", "S45C"));
    EXPECT_EQ(CurrentRow("Vedt_FlexGrid"), 2);
    // The restored row's group is the one that the values come from.
    ClickVariable(2, 1);
    Run().ChooseInCombo("CurCmb", "80");
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret"),
              QStringList({"3", "V1(d)", "12", "V2(L)", "80", "V3(材質)", "S45C"}));
    EXPECT_EQ(session_.Setting("TBLLast"), QString("2"));
}

TEST_F(ReopenTest, AnEmptyRememberedValueLeavesTheInitialOne) {
    ConfirmOnce();
    session_.Set("SmbTbl3", "");
    StartWith("VLM_VEDT");
    EXPECT_THAT(Values(), ElementsAre("12", "50", "SS400"));
}

TEST_F(ReopenTest, ATableThatShrankBeginsAtItsFirstRow) {
    ConfirmOnce();
    QStringList lines = HexTableLines().first(17);
    lines << "1"
          << "   M10   10   50";
    session_.WriteHomeLines("SMB\\BOLT\\HEX.PMN", lines);
    StartWith("VLM_VEDT");
    EXPECT_EQ(CurrentRow("Vedt_FlexGrid"), 1);
    EXPECT_THAT(Values(), ElementsAre("12", "50", "S45C"));
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.Setting("TBLLast"), QString("1"));
}

TEST_F(ReopenTest, AnotherSymbolThanTheLastBeginsAfresh) {
    ConfirmOnce();
    session_.WriteExchangeLines("velmo.ret2", {session_.HomeDir() + "SMB\\WASH\\WASHER.TXT", "TOLVIKS"});
    StartWith("VLM_VEDT");
    EXPECT_THAT(Values(), ElementsAre("6", "1"));
    EXPECT_EQ(CurrentRow("Vedt_FlexGrid"), 1);
}

TEST_F(ReopenTest, ValuesOfAnotherSymbolStayAway) {
    ConfirmOnce();
    EXPECT_EQ(session_.Setting("SmbTblOf"), Symbol("HEX.TXT"));
    session_.Set("VlmNxt", "0");
    // Opened and left again, it is the symbol chosen last, but no value of it was confirmed.
    StartWith("VLM_MAIN");
    OpenEntry(bolts, "アイボルト");
    Run().CloseWindow("VLM_VEDT");
    Run().WaitFor("the browser alone", [this] { return !Run().IsWindowShown("VLM_VEDT"); });
    Run().CloseWindow("VLM_MAIN");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.Setting("LastPDF"), Symbol("EYE.TXT"));
    StartWith("VLM_MAIN");
    OpenEntry(bolts, "アイボルト");
    EXPECT_THAT(Values(), ElementsAre("8", "1"));
}

TEST_F(ReopenTest, NamesThatWereConfirmedInTheTableEditorAreNoValues) {
    session_.WriteExchangeLines("velmo.ret2", {Symbol("EYE.TXT"), "VELMO"});
    session_.Set("VlmMode", "3");
    session_.Set("VlmNxt", "1");
    StartWith("VLM_VEDT");
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.Setting("VlmTblOf"), QString());
    session_.Set("VlmMode", "2");
    StartWith("VLM_VEDT");
    EXPECT_THAT(Values(), ElementsAre("8", "1"));
}

TEST_F(ReopenTest, EnterKeepsTheValuesThatWereTyped) {
    ConfirmOnce();
    session_.Set("SmbTbl1", "12.7");
    StartWith("VLM_VEDT");
    Run().Press("Return");
    EXPECT_THAT(Values(), ElementsAre("12.7", "50", "S45C"));
    EXPECT_EQ(Run().Focus(), QString("Vedt_NowFGrid"));
}

TEST_F(ReopenTest, CancelEndsTheProgramAndTheNextRunIsTheBrowser) {
    ConfirmOnce();
    const QByteArray values = session_.ReadExchange("velmo.ret");
    StartWith("VLM_VEDT");
    EnterValue(3, "X");
    Run().Click("VEdt_CanBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), "NO SELECT\r\n");
    EXPECT_EQ(session_.ReadExchange("velmo.ret"), values);
    EXPECT_EQ(session_.Setting("SmbTbl3"), QString("S45C"));
    StartWith("VLM_MAIN");
}

TEST_F(ReopenTest, CloseBoxAndBackToTheTreeEndTheProgram) {
    ConfirmOnce();
    const QByteArray choice = session_.ReadExchange("velmo.ret2");
    const QByteArray settings = session_.SettingsFile();
    StartWith("VLM_VEDT");
    Run().CloseWindow("VLM_VEDT");
    EXPECT_EQ(End(), 0);
    StartWith("VLM_VEDT");
    Run().Click("Vedt_TreeBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), choice);
    EXPECT_EQ(session_.SettingsFile(), settings);
}

TEST_F(ReopenTest, ADefinitionFileOfOneLineMeansTheSystemLibrary) {
    session_.Set("VlmNxt", "1");
    session_.WriteExchangeLines("velmo.ret2", {Symbol("EYE.TXT")});
    StartWith("VLM_VEDT");
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret2"), QStringList({Symbol("EYE.TXT"), "TOLVIKS"}));
}

TEST_F(ReopenTest, TheLibraryWordIsComparedExactly) {
    session_.Set("VlmNxt", "1");
    session_.WriteExchangeLines("velmo.ret2", {Symbol("EYE.TXT"), "velmo"});
    StartWith("VLM_VEDT");
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.Setting("SmbTbl1"), QString("8"));
    EXPECT_EQ(session_.Setting("VlmTbl1"), std::nullopt);
}

TEST_F(ReopenTest, TheUserLibraryHasItsOwnMemory) {
    session_.Set("VlmNxt", "1");
    session_.Set("SmbTbl2", "99");
    session_.WriteExchangeLines("velmo.ret2", {Symbol("EYE.TXT"), "VELMO"});
    StartWith("VLM_VEDT");
    EnterValue(2, "4");
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret2"), QStringList({Symbol("EYE.TXT"), "VELMO"}));
    EXPECT_EQ(session_.Setting("VlmTbl2"), QString("4"));
    EXPECT_EQ(session_.Setting("UsrLastPDF"), Symbol("EYE.TXT"));
    EXPECT_EQ(session_.Setting("UsrTBLLast"), QString("1"));
    EXPECT_EQ(session_.Setting("SmbTbl2"), QString("99"));
    EXPECT_EQ(session_.Setting("LastPDF"), std::nullopt);
    StartWith("VLM_VEDT");
    EXPECT_THAT(Values(), ElementsAre("8", "4"));
}

TEST_F(ReopenTest, WithoutTheRequestTheBrowserOpens) {
    ConfirmOnce();
    session_.Set("VlmNxt", "0");
    StartWith("VLM_MAIN");
    EXPECT_FALSE(Run().IsWindowShown("VLM_VEDT"));
}

} // namespace
} // namespace velmo
