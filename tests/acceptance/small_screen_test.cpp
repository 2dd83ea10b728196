#include "move_run.h"

namespace velmo {
namespace {

// Every window on a screen of 800 by 600 pixels, or of the size that the environment tells, with the
// desktop's usual font and a large one.
class SmallScreenTest : public MoveRunTest, public testing::WithParamInterface<int> {
protected:
    void SetUp() override {
        qputenv("VELMO_TEST_FONT_SIZE", QByteArray::number(GetParam()));
        MoveRunTest::SetUp();
    }
    void TearDown() override {
        MoveRunTest::TearDown();
        qunsetenv("VELMO_TEST_FONT_SIZE");
    }
    void ExpectOnScreen(const QString& window) {
        const QRect place = ExpectSmallEnough(window);
        EXPECT_TRUE(Screen().contains(place)) << window.toStdString() << ' ' << place.x() << ' ' << place.y()
                                              << ' ' << place.width() << ' ' << place.height();
    }
    QRect ExpectSmallEnough(const QString& window) {
        const QJsonArray rect = Run().Window(window)["rect"].toArray();
        const QRect place(rect[0].toInt(), rect[1].toInt(), rect[2].toInt(), rect[3].toInt());
        EXPECT_LE(place.width(), Screen().width()) << window.toStdString();
        EXPECT_LE(place.height(), Screen().height()) << window.toStdString();
        return place;
    }

private:
    static QRect Screen() {
        const QStringList size = qEnvironmentVariable("VELMO_TEST_SCREEN", "800x800").split('x');
        return {0, 0, size.first().toInt(), size.last().toInt()};
    }
};

TEST_P(SmallScreenTest, HoldsTheVariableWindow) {
    OpenEntry(bolts_, "六角ボルト");
    ExpectOnScreen("VLM_VEDT");
}

TEST_P(SmallScreenTest, HoldsTheTableEditor) {
    Run().ClickMenu("VlmMnuFileCan");
    EXPECT_EQ(End(), 0);
    session_.Set("VlmMode", "3");
    session_.Set("VlmNxt", "1");
    session_.WriteExchangeLines("velmo.ret2", {session_.HomeDir() + "SMB\\BOLT\\HEX.TXT", "VELMO"});
    StartWith("VLM_VEDT");
    ExpectOnScreen("VLM_VEDT");
}

TEST_P(SmallScreenTest, HoldsTheMoveToolAndItsPicker) {
    OpenTool(parts_);
    ExpectOnScreen("Vlm_Tool");
    Select("ポンプ");
    Run().Click("FilMovBtn");
    Run().WaitForWindow("Vlm_SelDir");
    ExpectOnScreen("Vlm_SelDir");
}

TEST_P(SmallScreenTest, HoldsTheEditorAndItsPicker) {
    AddEntry(bolts_);
    ExpectOnScreen("Vlm_TBlEdt");
    Run().Click("Srch4");
    Run().WaitForWindow("Vlm_FileFrm");
    ExpectOnScreen("Vlm_FileFrm");
}

TEST_P(SmallScreenTest, HoldsTheBrowserWhereverItWas) {
    ExpectOnScreen("VLM_MAIN");
    Run().ClickMenu("VlmMnuFileCan");
    EXPECT_EQ(End(), 0);
    session_.Set("VlmMainWidth", "30000");
    session_.Set("VlmMainHeight", "30000");
    StartWith("VLM_MAIN");
    // Where its user left it, it may reach over an edge.
    ExpectSmallEnough("VLM_MAIN");
}

INSTANTIATE_TEST_SUITE_P(Fonts, SmallScreenTest, testing::Values(9, 18));

} // namespace
} // namespace velmo
