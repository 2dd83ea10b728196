#include "acceptance_test.h"

namespace velmo {
namespace {

using testing::ElementsAre;

class WholeSessionTest : public AcceptanceTest {};

TEST_F(WholeSessionTest, ChoosesASymbolAndARowAndConfirms) {
    StartWith("VLM_MAIN");
    OpenEntry({"トルヴィク", "ボルト"}, "六角ボルト");
    ClickTable(2, 1);
    EXPECT_THAT(Values(), ElementsAre("12", "50", "SS400"));
    ClickVariable(2, 1);
    Run().ChooseInCombo("CurCmb", "80");
    EXPECT_THAT(Values(), ElementsAre("12", "80", "SS400"));
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret"),
              QStringList({"3", "V1(d)", "12", "V2(L)", "80", "V3(材質)", "SS400"}));
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret2"),
              QStringList({session_.HomeDir() + "SMB\\BOLT\\HEX.TXT", "TOLVIKS"}));
    EXPECT_EQ(session_.Setting("SmbTbl2"), QString("80"));
}

} // namespace
} // namespace velmo
