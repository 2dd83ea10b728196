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

    // Nothing of the way out has been gone.
    void ExpectStillOpen() {
        EXPECT_TRUE(Run().IsWindowShown("VLM_VEDT"));
        ExpectNothingSaved();
        EXPECT_EQ(session_.ReadExchange("velmo.ret2"), choice_);
        EXPECT_TRUE(session_.ExistsInExchange("VELMONOW.mdb"));
        EXPECT_EQ(TableText(1, 2), QString("11"));
        EXPECT_TRUE(IsChanged());
    }

    const QString question_ = "寸法表の変更は保存されていません。破棄して閉じてよろしいですか";
    QByteArray before_;
    QByteArray settings_;
    QByteArray choice_;
};

TEST_F(TableLeavingTest, CancelAsksBeforeItDropsTheChanges) {
    Enter({1, 2}, "11");
    Run().Click("VEdt_CanBtn");
    Run().ExpectMessage(question_);
    Run().AnswerNo();
    ExpectStillOpen();
    Run().Click("VEdt_CanBtn");
    Run().ExpectMessage(question_);
    Run().AnswerYes();
    EXPECT_EQ(End(), 0);
    ExpectNothingSaved();
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), "NO SELECT\r\n");
    EXPECT_FALSE(session_.ExistsInExchange("VELMONOW.mdb"));
    OpenTable();
    EXPECT_EQ(TableText(1, 2), QString("10"));
}

TEST_F(TableLeavingTest, AClickOnCancelEndsTheTypingFirst) {
    Click({1, 2});
    Run().Type("11");
    Run().Click("VEdt_CanBtn");
    Run().ExpectMessage(question_);
    Run().AnswerYes();
    EXPECT_EQ(End(), 0);
    ExpectNothingSaved();
}

TEST_F(TableLeavingTest, CancelByItsKeyGivesUpTheNameThatIsTyped) {
    ClickVariable(1, 1);
    Run().Type("X");
    ASSERT_TRUE(IsEditing());
    Run().Press("Alt+C");
    EXPECT_EQ(End(), 0);
    ExpectNothingSaved();
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), "NO SELECT\r\n");
    EXPECT_FALSE(session_.ExistsInExchange("VELMONOW.mdb"));
}

TEST_F(TableLeavingTest, CancelByTheMenuGivesUpTheHeaderThatIsTyped) {
    ChooseOnColumn(2, "VedtHdrPopRen");
    Run().Type("X");
    Run().ClickMenu("VedtMnuFileCan");
    EXPECT_EQ(End(), 0);
    ExpectNothingSaved();
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), "NO SELECT\r\n");
}

TEST_F(TableLeavingTest, ARefusedCancelByItsKeyLeavesEverything) {
    Enter({1, 2}, "11");
    ClickVariable(1, 1);
    Run().Type("X");
    Run().Press("Alt+C");
    Run().ExpectMessage(question_);
    Run().AnswerNo();
    ExpectStillOpen();
    EXPECT_EQ(VariableText(1, 1), QString("d"));
    Confirm();
    EXPECT_EQ(TableFile().at(18), QString("   M10   11   50"));
    EXPECT_EQ(TableFile().at(11), QString("d"));
}

TEST_F(TableLeavingTest, CancelWithoutAChange) {
    Run().Click("VEdt_CanBtn");
    EXPECT_EQ(End(), 0);
    ExpectNothingSaved();
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), "NO SELECT\r\n");
}

TEST_F(TableLeavingTest, BackToTheTreeAsksBeforeItDropsTheChanges) {
    Enter({1, 2}, "11");
    Run().Click("Vedt_TreeBtn");
    Run().ExpectMessage(question_);
    Run().AnswerNo();
    ExpectStillOpen();
    Run().Click("Vedt_TreeBtn");
    Run().ExpectMessage(question_);
    Run().AnswerYes();
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

TEST_F(TableLeavingTest, MeasureAsksToo) {
    Enter({1, 2}, "11");
    ClickVariable(2, 0);
    Run().ClickAction("TB_POINT");
    Run().ExpectMessage(question_);
    Run().AnswerNo();
    ExpectStillOpen();
    Run().Press("Ctrl+M");
    Run().ExpectMessage(question_);
    Run().AnswerYes();
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadHome(tableFile_), before_);
    EXPECT_EQ(session_.Setting("VlmMode"), QString("4"));
    EXPECT_EQ(session_.Setting("DistNo"), QString("2"));
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret2"), QStringList({Symbol("HEX.TXT"), "VELMO"}));
    // The names that were shown are no values.
    session_.Set("VlmDist", "12.5");
    StartWith("VLM_VEDT");
    EXPECT_EQ(Values(), QStringList({"10", "12.5", "SS400"}));
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
