#include "table_run.h"

namespace velmo {
namespace {

using testing::UnorderedElementsAre;

// The ways out that do not save.
class TableLeavingTest : public TableRunTest {
protected:
    void SetUp() override {
        TableRunTest::SetUp();
        OpenTable();
        before_ = session_.ReadHome(tableFile_);
        settings_ = session_.SettingsFile();
        choice_ = session_.ReadExchange("velmo.ret2");
    }
    void ExpectNothingSaved() {
        EXPECT_EQ(session_.ReadHome(tableFile_), before_);
        EXPECT_EQ(session_.SettingsFile(), settings_);
        EXPECT_FALSE(session_.ExistsInExchange("velmo.ret"));
        EXPECT_FALSE(session_.ExistsInHome("SMB\\BOLT\\HEX.TMP"));
    }

    const QString question_ = "寸法表の変更は保存されていません。破棄して閉じてよろしいですか";
    QByteArray before_;
    QByteArray settings_;
    QByteArray choice_;
};

TEST_F(TableLeavingTest, CancelDropsTheChanges) {
    Enter({1, 2}, "11");
    Run().Click("VEdt_CanBtn");
    EXPECT_EQ(End(), 0);
    ExpectNothingSaved();
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), "NO SELECT\r\n");
    EXPECT_FALSE(session_.ExistsInExchange("VELMONOW.mdb"));
    OpenTable();
    EXPECT_EQ(TableText(1, 2), QString("10"));
}

TEST_F(TableLeavingTest, CancelWhileACellIsEdited) {
    Click({1, 2});
    Run().Type("11");
    Run().Click("VEdt_CanBtn");
    EXPECT_EQ(End(), 0);
    ExpectNothingSaved();
}

TEST_F(TableLeavingTest, CancelWithoutAChange) {
    Run().Click("VEdt_CanBtn");
    EXPECT_EQ(End(), 0);
    ExpectNothingSaved();
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), "NO SELECT\r\n");
}

TEST_F(TableLeavingTest, BackToTheTreeDropsTheChanges) {
    Enter({1, 2}, "11");
    Run().Click("Vedt_TreeBtn");
    EXPECT_EQ(End(), 0);
    ExpectNothingSaved();
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), choice_);
}

TEST_F(TableLeavingTest, TheCloseBoxAsksAboutChanges) {
    Enter({1, 2}, "11");
    Run().CloseWindow("VLM_VEDT");
    const Message message = Run().ExpectMessage(question_);
    EXPECT_EQ(message.title, QString("VELMO2"));
    EXPECT_THAT(message.buttons, UnorderedElementsAre("Yes", "No"));
    Run().AnswerNo();
    EXPECT_TRUE(Run().IsWindowShown("VLM_VEDT"));
    EXPECT_EQ(TableText(1, 2), QString("11"));
    EXPECT_TRUE(IsChanged());
    Run().CloseWindow("VLM_VEDT");
    Run().ExpectMessage(question_);
    Run().AnswerYes();
    EXPECT_EQ(End(), 0);
    ExpectNothingSaved();
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), choice_);
}

TEST_F(TableLeavingTest, WhatIsBeingTypedIsAChangeToo) {
    Click({1, 2});
    Run().Type("11");
    Run().CloseWindow("VLM_VEDT");
    Run().ExpectMessage(question_);
    Run().AnswerNo();
    EXPECT_EQ(TableText(1, 2), QString("11"));
    Run().Press("Ctrl+Return");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(TableFile().at(18), QString("   M10   11   50"));
}

TEST_F(TableLeavingTest, WithoutAChangeTheCloseBoxCloses) {
    Click({1, 2});
    Run().Press("F2");
    Run().CloseWindow("VLM_VEDT");
    EXPECT_EQ(End(), 0);
    ExpectNothingSaved();
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), choice_);
}

TEST_F(TableLeavingTest, TheCloseBoxAsksNothingAboutWhatWasUndone) {
    ChooseOnRow(1, "VedtHdrPopCpy");
    Run().Press("Ctrl+Z");
    Run().CloseWindow("VLM_VEDT");
    EXPECT_EQ(End(), 0);
    ExpectNothingSaved();
}

TEST_F(TableLeavingTest, EscapeDoesNotCloseTheWindow) {
    Enter({1, 2}, "11");
    Run().Press("Escape");
    Run().Press("Escape");
    EXPECT_TRUE(Run().IsWindowShown("VLM_VEDT"));
    EXPECT_TRUE(IsChanged());
}

TEST_F(TableLeavingTest, ClosingGivesUpAChoiceThatIsOpen) {
    ChooseOnColumn(3, "VedtHdrPopAdd");
    Run().WaitFor("the list", [this] { return Run().IsVisible("Vedt_Combo"); });
    Run().CloseWindow("VLM_VEDT");
    EXPECT_EQ(End(), 0);
    ExpectNothingSaved();
}

} // namespace
} // namespace velmo
