#include "fault_test.h"

namespace velmo {
namespace {

// Ways to leave the variable window and the browser, which answer the CAD side and save settings.
class AnswerFaultTest : public FaultTest {
protected:
    void SetUp() override {
        FaultTest::SetUp();
        session_.WriteExchangeLines("velmo.ret", {"1", "V1(d)", "7"});
        session_.WriteExchangeLines("velmo.ret2", {"NO SELECT", "TOLVIKS"});
    }
    void OpenSymbol() {
        StartWith("VLM_MAIN");
        OpenEntry(bolts_, "六角ボルト");
        ClickTable(2, 1);
    }
};

TEST_P(AnswerFaultTest, AConfirmedSymbol) {
    Try({[this] {
             OpenSymbol();
             Run().Click("Vedt_OKBtn");
         },
         true});
}

TEST_P(AnswerFaultTest, ADistanceIsAskedFor) {
    Try({[this] {
        OpenSymbol();
        ClickVariable(3, 0);
        Run().ClickAction("TB_POINT");
    }});
}

TEST_P(AnswerFaultTest, ADistanceComesBack) {
    session_.WriteExchangeLines("velmo.ret2", {session_.HomeDir() + "SMB\\BOLT\\HEX.TXT", "TOLVIKS"});
    session_.Set("LastPDF", session_.HomeDir() + "SMB\\BOLT\\HEX.TXT");
    session_.Set("VlmMode", "4");
    session_.Set("DistNo", "3");
    session_.Set("VlmDist", "12.5");
    Try({[this] {
        StartWith("VLM_VEDT");
        Run().Click("Vedt_OKBtn");
    }});
}

TEST_P(AnswerFaultTest, ACancelledSymbol) {
    Try({[this] {
             OpenSymbol();
             Run().Click("VEdt_CanBtn");
             Run().WaitUntilClosed("VLM_VEDT");
             Run().ClickAction("Tbar_Cancel");
         },
         true});
}

TEST_P(AnswerFaultTest, ACancelledBrowser) {
    Try({[this] {
             StartWith("VLM_MAIN");
             Run().ClickMenu("VlmMnuFileCan");
         },
         true});
}

TEST_P(AnswerFaultTest, ADocument) {
    session_.WriteHome("DOC\\A.PDF", "%PDF");
    session_.WriteExchangeLines("velmo.doc", {"old", "and longer than a line"});
    Try({[this] {
             OpenSymbol();
             Run().ClickMenu("VedtMnuFileOpen");
             Run().WaitForWindow("Vlm_FileFrm");
             Run().Click("VlmFileTV", Item::Path({"トルヴィク", "DOC"}));
             Run().Click("Vlm_File", Item::Named("A.PDF"));
             Run().WaitForText("Vlm_Text", "A.PDF");
             Run().Click("Vlm_FilOKBtn");
         },
         true});
}

INSTANTIATE_TEST_SUITE_P(Calls, AnswerFaultTest, FaultTest::Fates(), FaultTest::FateName);

} // namespace
} // namespace velmo
