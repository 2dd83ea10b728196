#include "library_run.h"

namespace velmo {
namespace {

using testing::ElementsAre;

// A user library that is filled from nothing, and the symbol that is then taken from it.
class UserLibraryUpkeepTest : public LibraryRunTest {
protected:
    void SetUp() override {
        LibraryRunTest::SetUp();
        session_.WriteExchangeLines("velmo.ret2", {"NO SELECT", "VELMO"});
        session_.WriteHome("SMB\\BOLT\\HEX.PDF", "document");
        StartWith("VLM_MAIN");
    }
    const QStringList user_ = {"VELMOデータ"};
    const QStringList site_ = {"VELMOデータ", "現場"};
};

TEST_F(UserLibraryUpkeepTest, FromTheEmptyLibraryToTheAnswer) {
    Run().Click("VlmTreeView", Item::Path(user_));
    Run().Press("Insert");
    Run().WaitForWindow("Vlm_TBlEdt");
    Run().Type("現場");
    Run().Press("Return");
    Run().WaitUntilClosed("Vlm_TBlEdt");
    EXPECT_THAT(Run().Tree("VlmTreeView"), ElementsAre("VELMOデータ", "  現場"));

    ChooseOnEmptyPart("VlmMnuPopAdd");
    Run().WaitForWindow("Vlm_TBlEdt");
    EXPECT_EQ(Run().Text("Name1"), QString("現場"));
    Run().Type("私のボルト");
    Run().Click("Srch4");
    Run().WaitForWindow("Vlm_FileFrm");
    Unfold({"トルヴィク", "SMB", "BOLT"}, "VlmFileTV");
    Run().Click("VlmFileTV", Item::Path({"トルヴィク", "SMB", "BOLT"}));
    Run().DoubleClick("Vlm_File", Item::Named("HEX.SLD"));
    Run().WaitUntilClosed("Vlm_FileFrm");
    EXPECT_EQ(Run().Text("Name3"), QString(R"(SMB\BOLT\HEX.PDF)"));
    Fill("Name3", R"(SMB\BOLT\HEX.TXT)");
    ConfirmEditor();
    EXPECT_THAT(
        session_.QueryHome("VelmoUsr.mdb", "SELECT * FROM PDFFileTable"),
        ElementsAre(ElementsAre("1", "2", "私のボルト", R"(SMB\BOLT\HEX.TXT)", R"(SMB\BOLT\HEX.SLD)")));

    OpenShownEntry("私のボルト");
    ClickTable(2, 1);
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret2"),
              QStringList({session_.HomeDir() + R"(SMB\BOLT\HEX.TXT)", "VELMO"}));
    EXPECT_EQ(session_.Setting("UsrTreeLast"), QString("2"));
    EXPECT_FALSE(session_.ExistsInHome("velmo2.mdb"));

    StartWith("VLM_MAIN");
    EXPECT_EQ(SelectedCategory(), QString("VELMOデータ > 現場"));
    EXPECT_EQ(SelectedEntry(), QString("私のボルト"));
}

TEST_F(UserLibraryUpkeepTest, TheSymbolOpenedLastIsNotChosenByACommand) {
    Run().ClickAction("Tbar_Cancel");
    EXPECT_EQ(End(), 0);
    session_.ExecuteHome("VelmoUsr.mdb",
                         "INSERT INTO FolderTable (ParentID, FolderName, SLDFileName) VALUES (1, '現場', '');"
                         "INSERT INTO PDFFileTable (FolderID, PDFName, PDFFileName, SLDFileName) VALUES "
                         "(2, 'A', 'SMB\\BOLT\\HEX.TXT', 'A.SLD'), (2, 'B', 'SMB\\BOLT\\EYE.TXT', 'B.SLD');");
    session_.Set("UsrTreeLast", "2");
    session_.Set("UsrLastPDF", session_.HomeDir() + R"(SMB\BOLT\HEX.TXT)");
    StartWith("VLM_MAIN");
    EXPECT_EQ(SelectedEntry(), QString("A"));
    EditEntry(site_, "B");
    Fill("Name2", "C");
    ConfirmEditor();
    EXPECT_THAT(ListedEntries(), ElementsAre("A", "C"));
    EXPECT_EQ(SelectedEntry(), QString("C"));
    AddCategoryBelow(site_);
    Fill("Name2", "下");
    ConfirmEditor();
    EXPECT_EQ(SelectedCategory(), QString("VELMOデータ > 現場 > 下"));
    EXPECT_EQ(SelectedEntry(), QString());
    ChooseOnCategory({"VELMOデータ", "現場", "下"}, "VlmMnuPopDel");
    ExpectQuestion("下を削除します。よろしいですか", "VELMO分類ツリー削除");
    Run().AnswerYes();
    EXPECT_EQ(SelectedCategory(), QString("VELMOデータ > 現場"));
    EXPECT_THAT(ListedEntries(), ElementsAre("A", "C"));
}

} // namespace
} // namespace velmo
