#include "acceptance_test.h"

namespace velmo {
namespace {

using testing::ElementsAre;

const QStringList bolts = {"トルヴィク", "ボルト"};
const QByteArray noSelection = "NO SELECT\r\n";

class LeaveTest : public AcceptanceTest {
protected:
    void SetUp() override {
        AcceptanceTest::SetUp();
        session_.WriteExchangeLines("velmo.ret", {"1", "V1(d)", "7"});
        session_.WriteExchangeLines("velmo.ret2", {"old", "TOLVIKS"});
        StartWith("VLM_MAIN");
        before_ = session_.SettingsFile();
        oldValues_ = session_.ReadExchange("velmo.ret");
        oldChoice_ = session_.ReadExchange("velmo.ret2");
    }

    void ExpectAnswer(const QByteArray& choice) {
        EXPECT_EQ(session_.ReadExchange("velmo.ret"), oldValues_);
        EXPECT_EQ(session_.ReadExchange("velmo.ret2"), choice);
    }
    void ExpectNothingSaved() { EXPECT_EQ(session_.SettingsFile(), before_); }

    QByteArray before_;
    QByteArray oldValues_;
    QByteArray oldChoice_;
};

TEST_F(LeaveTest, MenuCancelAnswersThatNothingWasChosen) {
    ChooseCategory(bolts);
    Run().ClickMenu("VlmMnuFileCan");
    EXPECT_EQ(End(), 0);
    ExpectAnswer(noSelection);
    ExpectNothingSaved();
}

TEST_F(LeaveTest, ToolBarCancelOnlyCloses) {
    ChooseCategory(bolts);
    Run().ResizeWindow("VLM_MAIN", {600, 500});
    Run().ClickAction("Tbar_Cancel");
    EXPECT_EQ(End(), 0);
    ExpectAnswer(oldChoice_);
    ExpectNothingSaved();
}

TEST_F(LeaveTest, CloseBoxOnlyCloses) {
    ChooseCategory(bolts);
    Run().CloseWindow("VLM_MAIN");
    EXPECT_EQ(End(), 0);
    ExpectAnswer(oldChoice_);
    ExpectNothingSaved();
}

TEST_F(LeaveTest, CancelOfTheVariableWindowComesBackToTheBrowser) {
    OpenEntry(bolts, "六角ボルト");
    ClickTable(2, 1);
    Run().Click("VEdt_CanBtn");
    Run().WaitFor("the browser alone", [this] { return !Run().IsWindowShown("VLM_VEDT"); });
    EXPECT_TRUE(Run().Window("VLM_MAIN")["onTop"].toBool());
    ExpectAnswer(noSelection);
    ExpectNothingSaved();
    EXPECT_FALSE(session_.ExistsInExchange("VELMONOW.mdb"));

    Run().ClickAction("Tbar_Open");
    Run().WaitForWindow("VLM_VEDT");
    EXPECT_THAT(Values(), ElementsAre("10", "50", "SS400"));
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret2"),
              QStringList({session_.HomeDir() + "SMB\\BOLT\\HEX.TXT", "TOLVIKS"}));
    EXPECT_EQ(session_.Setting("TreeLast"), QString("2"));
}

TEST_F(LeaveTest, ClosingTheBrowserAfterACancelledSymbolSavesNothing) {
    OpenEntry(bolts, "六角ボルト");
    Run().Click("VEdt_CanBtn");
    Run().WaitFor("the browser alone", [this] { return !Run().IsWindowShown("VLM_VEDT"); });
    Run().ClickAction("Tbar_Cancel");
    EXPECT_EQ(End(), 0);
    ExpectAnswer(noSelection);
    ExpectNothingSaved();
}

TEST_F(LeaveTest, CloseBoxOfTheVariableWindowWritesNothing) {
    OpenEntry(bolts, "六角ボルト");
    ClickTable(2, 1);
    Run().CloseWindow("VLM_VEDT");
    Run().WaitFor("the browser alone", [this] { return !Run().IsWindowShown("VLM_VEDT"); });
    EXPECT_TRUE(Run().Window("VLM_MAIN")["onTop"].toBool());
    ExpectAnswer(oldChoice_);
    ExpectNothingSaved();
    EXPECT_TRUE(session_.ExistsInExchange("VELMONOW.mdb"));
    // The symbol was opened, so the browser remembers its place.
    Run().CloseWindow("VLM_MAIN");
    EXPECT_EQ(End(), 0);
    ExpectAnswer(oldChoice_);
    EXPECT_EQ(session_.Setting("TreeLast"), QString("2"));
    EXPECT_EQ(session_.Setting("LastPDF"), session_.HomeDir() + "SMB\\BOLT\\HEX.TXT");
    EXPECT_EQ(session_.Setting("SmbTbl1"), std::nullopt);
}

TEST_F(LeaveTest, BackToTheTreeKeepsTheFilesAndAnotherSymbolCanBeChosen) {
    OpenEntry(bolts, "六角ボルト");
    Run().Click("Vedt_TreeBtn");
    Run().WaitFor("the browser alone", [this] { return !Run().IsWindowShown("VLM_VEDT"); });
    EXPECT_TRUE(Run().Window("VLM_MAIN")["onTop"].toBool());
    ExpectAnswer(oldChoice_);
    EXPECT_TRUE(session_.ExistsInExchange("VELMONOW.mdb"));
    OpenShownEntry("アイボルト");
    EXPECT_THAT(Values(), ElementsAre("8", "1"));
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret"), QStringList({"2", "V1(d)", "8", "V7(個数)", "1"}));
}

TEST_F(LeaveTest, CancelKeepsTheWindowPlaceOfTheRunBefore) {
    Run().ResizeWindow("VLM_MAIN", {520, 410});
    OpenEntry(bolts, "アイボルト");
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    StartWith("VLM_MAIN");
    Run().ResizeWindow("VLM_MAIN", {700, 600});
    Run().ClickMenu("VlmMnuFileCan");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.Setting("VlmMainWidth"), QString::number(520 * 15));
    EXPECT_EQ(session_.Setting("VlmMainHeight"), QString::number(410 * 15));
}

} // namespace
} // namespace velmo
