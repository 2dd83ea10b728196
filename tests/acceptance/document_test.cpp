#include "table_run.h"

namespace velmo {
namespace {

using testing::ElementsAre;

// Runs that end with a document.
class DocumentTest : public TableRunTest {
protected:
    void SetUp() override {
        TableRunTest::SetUp();
        session_.WriteHome("DOC\\図面\\A.PDF", "%PDF");
        session_.WriteHome("DOC\\図面\\B.pdf", "%PDF");
        session_.WriteExchangeLines("velmo.ret", {"1", "V1(d)", "7"});
        session_.WriteExchangeLines("velmo.ret2", {Symbol("HEX.TXT"), "TOLVIKS"});
    }
    // Asks for the symbol of the answer before.
    void OpenVariables() {
        session_.Set("VlmMode", "2");
        session_.Set("VlmNxt", "1");
        StartWith("VLM_VEDT");
        Remember();
    }
    void Remember() {
        settings_ = session_.SettingsFile();
        values_ = session_.ReadExchange("velmo.ret");
        choice_ = session_.ReadExchange("velmo.ret2");
    }
    void ChooseDocument(const QString& item) {
        Run().ClickMenu(item);
        Run().WaitForWindow("Vlm_FileFrm");
        Run().Click("VlmFileTV", Item::Path({"トルヴィク", "DOC"}));
        Run().ClickBranch("VlmFileTV", Item::Path({"トルヴィク", "DOC"}));
        Run().Click("VlmFileTV", Item::Path({"トルヴィク", "DOC", "図面"}));
        Run().Click("Vlm_File", Item::Named("B.pdf"));
        Run().WaitForText("Vlm_Text", "B.pdf");
        Run().Click("Vlm_FilOKBtn");
    }
    void ExpectDocument() {
        EXPECT_EQ(End(), 0);
        EXPECT_EQ(session_.ReadExchangeLines("velmo.doc"),
                  QStringList(session_.HomeDir() + "DOC\\図面\\B.pdf"));
        EXPECT_EQ(session_.ReadExchange("velmo.ret"), values_);
        EXPECT_EQ(session_.ReadExchange("velmo.ret2"), choice_);
    }
    void ExpectDocumentAnswered() {
        ExpectDocument();
        EXPECT_EQ(session_.SettingsFile(), settings_);
    }

    QByteArray settings_;
    QByteArray values_;
    QByteArray choice_;
};

TEST_F(DocumentTest, OpenedDocumentEndsTheRun) {
    OpenVariables();
    ChooseDocument("VedtMnuFileOpen");
    ExpectDocumentAnswered();
}

TEST_F(DocumentTest, SavedDocumentEndsTheRunAndReplacesTheAnswerBefore) {
    session_.WriteExchangeLines("velmo.doc", {"old", "and longer than a line"});
    OpenVariables();
    ClickTable(2, 1);
    ChooseDocument("VedtMnuFileWrite");
    ExpectDocumentAnswered();
}

TEST_F(DocumentTest, CancelledPickerLeavesTheWindow) {
    OpenVariables();
    Run().ClickMenu("VedtMnuFileOpen");
    Run().WaitForWindow("Vlm_FileFrm");
    EXPECT_EQ(Run().Window("Vlm_FileFrm")["title"].toString(), QString("PDFファイル選択"));
    Run().Click("Vlm_FilOKBtn");
    Run().ExpectMessage("ファイルを選択してください");
    Run().AnswerOk();
    Run().Press("Escape");
    Run().WaitFor("the variable window alone", [this] { return !Run().IsWindowShown("Vlm_FileFrm"); });
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_FALSE(session_.ExistsInExchange("velmo.doc"));
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), choice_);
    EXPECT_NE(session_.ReadExchange("velmo.ret"), values_);
}

TEST_F(DocumentTest, MenuCancelIsTheButton) {
    OpenVariables();
    Run().ClickMenu("VedtMnuFileCan");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), "NO SELECT\r\n");
    EXPECT_EQ(session_.ReadExchange("velmo.ret"), values_);
    EXPECT_FALSE(session_.ExistsInExchange("velmo.doc"));
    EXPECT_FALSE(session_.ExistsInExchange("VELMONOW.mdb"));
}

TEST_F(DocumentTest, ADocumentEndsTheRunOfTheBrowserToo) {
    session_.WriteExchangeLines("velmo.ret2", {"NO SELECT", "TOLVIKS"});
    session_.Set("VlmMode", "2");
    StartWith("VLM_MAIN");
    Run().ResizeWindow("VLM_MAIN", {520, 410});
    OpenEntry({"トルヴィク", "ボルト"}, "六角ボルト");
    Remember();
    ChooseDocument("VedtMnuFileOpen");
    ExpectDocument();
    // As after any symbol that was opened.
    EXPECT_EQ(session_.Setting("TreeLast"), QString("2"));
    EXPECT_EQ(session_.Setting("LastPDF"), Symbol("HEX.TXT"));
    EXPECT_EQ(session_.Setting("VlmMainWidth"), QString::number(520 * 15));
    EXPECT_EQ(session_.Setting("SmbTbl1"), std::nullopt);
    EXPECT_EQ(session_.Setting("VlmMode"), QString("2"));
}

TEST_F(DocumentTest, InTheUserLibrarysModeTheBrowserRemembersItsOwnPlace) {
    session_.WriteExchangeLines("velmo.ret2", {"NO SELECT", "TOLVIKS"});
    session_.Set("VlmMode", "3");
    session_.Set("VlmNxt", "0");
    StartWith("VLM_MAIN");
    Remember();
    OpenEntry({"トルヴィク", "ボルト"}, "六角ボルト");
    ChooseDocument("VedtMnuFileOpen");
    ExpectDocument();
    EXPECT_EQ(session_.Setting("EdtTreeLast"), QString("2"));
    EXPECT_EQ(session_.Setting("Tree2nd1st"), QString("1"));
    EXPECT_EQ(session_.Setting("UsrTreeLast"), std::nullopt);
}

// No run begins with the mode of one that ended with a document.
TEST_F(DocumentTest, TheModeOfADocumentInTheStoreChoosesNone) {
    for (const char* way : {"VEdt_CanBtn", "Vedt_OKBtn"}) {
        session_.WriteExchangeLines("velmo.ret2", {Symbol("HEX.TXT"), "TOLVIKS"});
        session_.Set("VlmMode", "33");
        session_.Set("VlmNxt", "1");
        StartWith("VLM_VEDT");
        Run().Click(way);
        EXPECT_EQ(End(), 0);
        EXPECT_FALSE(session_.ExistsInExchange("velmo.doc"));
    }
    session_.Set("VlmNxt", "0");
    StartWith("VLM_MAIN");
    OpenEntry({"トルヴィク", "ボルト"}, "六角ボルト");
    Run().Click("VEdt_CanBtn");
    Run().WaitFor("the browser alone", [this] { return !Run().IsWindowShown("VLM_VEDT"); });
    Run().CloseWindow("VLM_MAIN");
    EXPECT_EQ(End(), 0);
    EXPECT_FALSE(session_.ExistsInExchange("velmo.doc"));
}

TEST_F(DocumentTest, AChangedTableIsAskedAbout) {
    OpenTable();
    Remember();
    const QByteArray table = session_.ReadHome(tableFile_);
    const QString question = "寸法表の変更は保存されていません。破棄して閉じてよろしいですか";
    Enter({1, 2}, "11");
    ChooseDocument("VedtMnuFileOpen");
    Run().ExpectMessage(question);
    Run().AnswerNo();
    EXPECT_TRUE(Run().IsWindowShown("VLM_VEDT"));
    EXPECT_EQ(TableText(1, 2), QString("11"));
    // The picker comes back where it was.
    Run().ClickMenu("VedtMnuFileOpen");
    Run().WaitForWindow("Vlm_FileFrm");
    EXPECT_THAT(Run().Column("Vlm_File", 0), ElementsAre("A.PDF", "B.pdf"));
    Run().Press("Down");
    Run().WaitForText("Vlm_Text", "B.pdf");
    Run().Press("Return");
    Run().ExpectMessage(question);
    Run().AnswerYes();
    ExpectDocumentAnswered();
    EXPECT_EQ(session_.ReadHome(tableFile_), table);
}

TEST_F(DocumentTest, AnAnswerThatCannotBeWrittenEndsTheRun) {
    session_.WriteExchangeLines("velmo.doc\\in the way", {});
    OpenVariables();
    ChooseDocument("VedtMnuFileOpen");
    ExpectError({"velmo.doc"});
    EXPECT_EQ(End(), 1);
    EXPECT_EQ(session_.ReadExchange("velmo.ret"), values_);
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), choice_);
}

TEST_F(DocumentTest, AnAnswerThatCannotBeWrittenEndsTheRunOfTheBrowserToo) {
    session_.WriteExchangeLines("velmo.ret2", {"NO SELECT", "TOLVIKS"});
    session_.WriteExchangeLines("velmo.doc\\in the way", {});
    StartWith("VLM_MAIN");
    OpenEntry({"トルヴィク", "ボルト"}, "六角ボルト");
    ChooseDocument("VedtMnuFileOpen");
    ExpectError({"velmo.doc"});
    EXPECT_EQ(End(), 1);
}

} // namespace
} // namespace velmo
