#include "fault_test.h"

namespace velmo {
namespace {

// A dimension table that is changed and saved.
class TableFaultTest : public FaultTest {
protected:
    void SetUp() override {
        FaultTest::SetUp();
        session_.Set("VlmMode", "3");
        session_.Set("VlmNxt", "1");
        session_.WriteExchangeLines("velmo.ret2", {session_.HomeDir() + "SMB\\BOLT\\HEX.TXT", "VELMO"});
    }
};

TEST_P(TableFaultTest, AChangedTable) {
    Try({[this] {
        StartWith("VLM_VEDT");
        ClickTable(1, 2);
        Run().Type("11");
        Run().Press("Return");
        Run().Click("Vedt_OKBtn");
    }});
}

INSTANTIATE_TEST_SUITE_P(Calls, TableFaultTest, FaultTest::Fates(), FaultTest::FateName);

} // namespace
} // namespace velmo
