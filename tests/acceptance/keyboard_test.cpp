#include "acceptance_test.h"

namespace velmo {
namespace {

using testing::ElementsAre;

// Whole sessions without the mouse.
class KeyboardTest : public AcceptanceTest {
protected:
    // Tab until a control has the focus; as often as there are controls.
    void TabTo(const QString& control) {
        constexpr int most = 20;
        for (int i = 0; i < most && Run().Focus() != control; ++i)
            Run().Press("Tab");
        ASSERT_EQ(Run().Focus(), control);
    }
    void OpenHex() {
        EXPECT_EQ(Run().Focus(), QString("VlmTreeView"));
        Run().Press("Down");
        EXPECT_EQ(Run().Panels("VlmStatusBar").first(), QString("ボルト"));
        TabTo("VlmPdfList");
        Run().Press("Home");
        Run().Press("Return");
        Run().WaitForWindow("VLM_VEDT");
        EXPECT_THAT(Values(), ElementsAre("10", "50", "SS400"));
    }
};

TEST_F(KeyboardTest, ChoosesASymbolARowAndConfirms) {
    StartWith("VLM_MAIN");
    OpenHex();
    EXPECT_EQ(Run().Focus(), QString("Vedt_FlexGrid"));
    Run().Press("Down");
    Run().Press("Return");
    EXPECT_THAT(Values(), ElementsAre("12", "50", "SS400"));
    TabTo("Vedt_OKBtn");
    Run().Press("Space");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret"),
              QStringList({"3", "V1(d)", "12", "V2(L)", "50", "V3(材質)", "SS400"}));
    EXPECT_EQ(session_.Setting("TBLLast"), QString("2"));
}

TEST_F(KeyboardTest, ChangesValuesInTheGrid) {
    StartWith("VLM_MAIN");
    OpenHex();
    TabTo("Vedt_NowFGrid");
    Run().Press("Down");
    Run().Press("Return");
    Run().WaitFor("CurCmb", [this] { return Run().IsVisible("CurCmb"); });
    Run().Press("Down");
    Run().Press("Return");
    EXPECT_THAT(Values(), ElementsAre("10", "60", "SS400"));
    EXPECT_FALSE(Run().IsVisible("CurCmb"));
    Run().Press("Down");
    Run().Type("S45C");
    Run().Press("Return");
    EXPECT_THAT(Values(), ElementsAre("10", "60", "S45C"));
    TabTo("Vedt_OKBtn");
    Run().Press("Return");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret"),
              QStringList({"3", "V1(d)", "10", "V2(L)", "60", "V3(材質)", "S45C"}));
}

TEST_F(KeyboardTest, OpensACategoryWithTheArrows) {
    StartWith("VLM_MAIN");
    Run().Press("Down");
    Run().Press("Down");
    EXPECT_EQ(Run().Panels("VlmStatusBar").first(), QString("座金"));
    Run().Press("Right");
    Run().Press("Right");
    EXPECT_EQ(Run().Panels("VlmStatusBar").first(), QString("座金 － 大形"));
    EXPECT_THAT(Run().Column("VlmPdfList", 0), ElementsAre("平座金"));
    TabTo("VlmPdfList");
    Run().Press("Space");
    Run().Press("Ctrl+O");
    Run().WaitForWindow("VLM_VEDT");
    EXPECT_THAT(Values(), ElementsAre("6", "1"));
}

TEST_F(KeyboardTest, CancelsThroughTheMenu) {
    StartWith("VLM_MAIN");
    Run().Press("Alt+F");
    Run().WaitFor("the menu", [this] { return Run().Action("VlmMnuFileCan")["shown"].toBool(); });
    Run().Press("C");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), "NO SELECT\r\n");
}

TEST_F(KeyboardTest, CancelsTheVariableWindow) {
    StartWith("VLM_MAIN");
    OpenHex();
    TabTo("VEdt_CanBtn");
    Run().Press("Space");
    Run().WaitFor("the browser alone", [this] { return !Run().IsWindowShown("VLM_VEDT"); });
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), "NO SELECT\r\n");
    // The list has the focus again, and the same entry opens.
    EXPECT_EQ(Run().Focus(), QString("VlmPdfList"));
    Run().Press("Return");
    Run().WaitForWindow("VLM_VEDT");
}

TEST_F(KeyboardTest, ClosesAMessageAndGoesOnInTheField) {
    session_.WriteHomeLines("SMB\\BOLT\\HEX.TXT", {"$VAR", R"(V1=PRO("d",10))", R"(V2=PRO("L",))", "$GEO"});
    StartWith("VLM_MAIN");
    Run().Press("Down");
    TabTo("VlmPdfList");
    Run().Press("Home");
    Run().Press("Return");
    Run().WaitForWindow("VLM_VEDT");
    TabTo("Vedt_OKBtn");
    Run().Press("Return");
    Run().ExpectMessage("値を入力してください。");
    Run().Press("Return");
    Run().WaitFor("CurEdit", [this] { return Run().Focus() == "CurEdit"; });
    Run().Type("45");
    Run().Press("Return");
    EXPECT_THAT(Values(), ElementsAre("10", "45"));
    TabTo("Vedt_OKBtn");
    Run().Press("Return");
    EXPECT_EQ(End(), 0);
}

} // namespace
} // namespace velmo
