#include "fault_test.h"

#include <QFile>

namespace velmo {
namespace {

// The first start with a library home, which makes the libraries, up to a symbol that is confirmed.
class StartFaultTest : public FaultTest {
protected:
    void SetUp() override {
        FaultTest::SetUp();
        QFile::remove(session_.Home() + "/velmo2.mdb");
    }
};

TEST_P(StartFaultTest, TheSystemLibrary) {
    Try({[this] {
        StartWith("VLM_MAIN");
        OpenEntry(bolts_, "六角ボルト");
        Run().Click("Vedt_OKBtn");
    }});
}

TEST_P(StartFaultTest, BothLibraries) {
    session_.Set("VlmMode", "3");
    session_.WriteExchangeLines("velmo.ret2", {"NO SELECT", "VELMO"});
    Try({[this] {
        StartWith("VLM_MAIN");
        ChooseCategory({"トルヴィク", "ボルト"});
        OpenShownEntry("六角ボルト");
        Run().Click("Vedt_OKBtn");
        Run().WaitUntilClosed("VLM_VEDT");
        Run().ClickAction("Tbar_Cancel");
    }});
}

INSTANTIATE_TEST_SUITE_P(Calls, StartFaultTest, FaultTest::Fates(), FaultTest::FateName);

} // namespace
} // namespace velmo
