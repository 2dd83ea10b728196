#include "startup/settings_keys.h"
#include "window_sample.h"

#include <QSignalSpy>

namespace velmo {
namespace {

namespace keys = settings_keys;

// The ways out while the table is edited.
class VedtLeavingTest : public WindowTest {
protected:
    VedtLeavingTest() {
        symbol.state.RunMode = run_mode::UserLibrary;
        symbol.state.Confirmed = true;
        WriteRows();
        before_ = symbol.folder.Read("S1.PMN");
        Open();
        cancelled_ = std::make_unique<QSignalSpy>(window.get(), &VLM_VEDT::Cancelled);
    }

    void ChangeTheTable() {
        ClickTable(1, 2);
        Type("7");
        Press(Qt::Key_Return);
    }
    // As by its key, which leaves the focus where it is.
    void PressButton(const char* name) { Find<QPushButton>(name)->click(); }
    void Ask(bool answer) {
        messages.Expect(QStringLiteral("寸法表の変更は保存されていません。破棄して閉じてよろしいですか"),
                        answer);
    }
    void ExpectStillOpen() const {
        EXPECT_TRUE(window->isVisible());
        EXPECT_EQ(symbol.state.RunMode, run_mode::UserLibrary);
        EXPECT_TRUE(symbol.state.Confirmed);
        EXPECT_EQ(cancelled_->size(), 0);
        EXPECT_TRUE(HasWorkDatabase());
        for (const char* file : {"velmo.ret", "velmo.ret2"})
            EXPECT_FALSE(symbol.folder.Exists(file)) << file;
        EXPECT_EQ(Setting(keys::VlmMode), QStringLiteral("none"));
        EXPECT_EQ(Setting(keys::UsrLastPDF), QStringLiteral("none"));
    }
    // And all is as good as before.
    void ExpectSaves() {
        ClickButton("Vedt_OKBtn");
        EXPECT_FALSE(window->isVisible());
        EXPECT_NE(symbol.folder.Read("S1.PMN"), before_);
    }

    QByteArray before_;
    std::unique_ptr<QSignalSpy> cancelled_;
};

TEST_F(VedtLeavingTest, CancelGivesUpANameThatIsBeingTyped) {
    ClickValue(1);
    Type("X");
    PressButton("VEdt_CanBtn");
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(symbol.folder.Read("velmo.ret2"), "NO SELECT\r\n");
    EXPECT_EQ(cancelled_->size(), 1);
    EXPECT_FALSE(HasWorkDatabase());
    EXPECT_EQ(symbol.folder.Read("S1.PMN"), before_);
}

TEST_F(VedtLeavingTest, CancelGivesUpAHeaderThatIsBeingTypedAndAVariableThatIsBeingChosen) {
    Table()->SetCurrentCell(1, 2);
    Press(Qt::Key_F2, Qt::ShiftModifier);
    ASSERT_TRUE(CurEdit()->isVisible());
    Type("X");
    Find<QAction>("VedtMnuFileCan")->trigger();
    EXPECT_FALSE(window->isVisible());
    Open();
    Table()->SetCurrentCell(1, 2);
    Press(Qt::Key_Insert, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_TRUE(Find<QComboBox>("Vedt_Combo")->isVisible());
    PressButton("VEdt_CanBtn");
    EXPECT_FALSE(window->isVisible());
}

TEST_F(VedtLeavingTest, ARefusedCancelLeavesAllAsItWas) {
    ChangeTheTable();
    ClickValue(1);
    Type("X");
    Ask(false);
    PressButton("VEdt_CanBtn");
    ExpectStillOpen();
    EXPECT_EQ(CurrentValues()[0], QStringLiteral("W"));
    // The close box asks on its own.
    Ask(false);
    EXPECT_FALSE(window->close());
    ExpectStillOpen();
    ExpectSaves();
}

TEST_F(VedtLeavingTest, ARefusedWayBackLeavesTheMode) {
    ChangeTheTable();
    Ask(false);
    PressButton("Vedt_TreeBtn");
    ExpectStillOpen();
    Ask(true);
    PressButton("Vedt_TreeBtn");
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(symbol.state.RunMode, run_mode::VariableInput);
    EXPECT_EQ(symbol.folder.Read("S1.PMN"), before_);
}

TEST_F(VedtLeavingTest, MeasureAsksTooAndHandsTheNamesOver) {
    symbol.state.UserLibrary = true;
    ChangeTheTable();
    ClickCell(Variables(), 2, 0);
    Ask(false);
    ClickMeasure();
    ExpectStillOpen();
    Ask(true);
    ClickMeasure();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(symbol.folder.Read("velmo.ret"), "3\r\nV12\r\nW\r\nV3\r\nH\r\nV5\r\nT\r\n");
    EXPECT_EQ(Setting(keys::VlmMode), QStringLiteral("4"));
    EXPECT_EQ(Setting(keys::DistNo), QStringLiteral("2"));
    EXPECT_EQ(symbol.folder.Read("S1.PMN"), before_);
    // Names are no values.
    settings.Save(keys::VlmDist, "12.5");
    symbol.state.RunMode = run_mode::ReturnFromMeasure;
    Open();
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "12.5", "3"}));
}

TEST_F(VedtLeavingTest, WithoutAChangeNothingIsAsked) {
    ClickMeasure();
    EXPECT_FALSE(window->isVisible());
    Open();
    PressButton("Vedt_TreeBtn");
    EXPECT_FALSE(window->isVisible());
}

TEST_F(VedtLeavingTest, AfterACancelThatCannotBeWrittenTheTableCanStillBeSaved) {
    ChangeTheTable();
    Block("velmo.ret2");
    Ask(true);
    messages.ExpectContaining("velmo.ret2");
    PressButton("VEdt_CanBtn");
    EXPECT_EQ(messages.ExitStatus(), 1);
    EXPECT_TRUE(symbol.state.Confirmed);
    EXPECT_TRUE(HasWorkDatabase());
    Ask(false);
    EXPECT_FALSE(window->close());
    Unblock("velmo.ret2");
    ExpectSaves();
}

} // namespace
} // namespace velmo
