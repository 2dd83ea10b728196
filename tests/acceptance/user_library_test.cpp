#include "acceptance_test.h"

namespace velmo {
namespace {

using testing::ElementsAre;

class UserLibraryTest : public AcceptanceTest {
protected:
    void SetUp() override {
        AcceptanceTest::SetUp();
        session_.WriteExchangeLines("velmo.ret2", {"NO SELECT", "VELMO"});
    }
    // A category with two entries, added as any program could.
    void FillUserLibrary() {
        session_.ExecuteHome("VelmoUsr.mdb",
                             "INSERT INTO FolderTable (ParentID, FolderName, SLDFileName) VALUES (1, "
                             "'現場', 'SMB\\WASH\\WASH.SLD');"
                             "INSERT INTO PDFFileTable (FolderID, PDFName, PDFFileName, SLDFileName) VALUES "
                             "(2, '私の座金', 'SMB\\WASH\\WASHER.TXT', 'SMB\\WASH\\WASHER.SLD'),"
                             "(2, '私のアイボルト', 'SMB\\BOLT\\EYE.TXT', '');");
    }
};

TEST_F(UserLibraryTest, IsMadeWithItsRootAlone) {
    StartWith("VLM_MAIN");
    EXPECT_THAT(Run().Tree("VlmTreeView"), ElementsAre("VELMOデータ"));
    EXPECT_EQ(session_.Setting("UsrDB"), session_.HomeDir() + "VelmoUsr.mdb");
    EXPECT_EQ(session_.Setting("VelmoDB"), std::nullopt);
    EXPECT_FALSE(session_.ExistsInHome("Velmo2.mdb"));
    EXPECT_FALSE(session_.ExistsInHome("velmo2.mdb"));
    EXPECT_THAT(
        session_.QueryHome("VelmoUsr.mdb", "SELECT ID, ParentID, FolderName, SLDFileName FROM FolderTable"),
        ElementsAre(ElementsAre("1", "0", "VELMOデータ", "")));
    EXPECT_THAT(session_.QueryHome("VelmoUsr.mdb", "SELECT count(*) FROM PDFFileTable"),
                ElementsAre(ElementsAre("0")));
}

TEST_F(UserLibraryTest, ConfirmUsesItsOwnWordAndKeys) {
    StartWith("VLM_MAIN");
    Run().ClickAction("Tbar_Cancel");
    EXPECT_EQ(End(), 0);
    FillUserLibrary();
    StartWith("VLM_MAIN");
    OpenEntry({"VELMOデータ", "現場"}, "私の座金");
    ClickTable(2, 1);
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    const QString symbol = session_.HomeDir() + "SMB\\WASH\\WASHER.TXT";
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret"), QStringList({"2", "V1(d)", "12", "V2(L)", "50"}));
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret2"), QStringList({symbol, "VELMO"}));
    EXPECT_EQ(session_.Setting("VlmTbl1"), QString("12"));
    EXPECT_EQ(session_.Setting("VlmTbl2"), QString("50"));
    EXPECT_EQ(session_.Setting("UsrTBLLast"), QString("2"));
    EXPECT_EQ(session_.Setting("UsrLastPDF"), symbol);
    EXPECT_EQ(session_.Setting("UsrTreeLast"), QString("2"));
    for (const char* others : {"SmbTbl1", "TBLLast", "LastPDF", "TreeLast", "EdtTreeLast", "Tree2nd1st"})
        EXPECT_EQ(session_.Setting(others), std::nullopt) << others;

    // The answer's second line brings the next run here again.
    StartWith("VLM_MAIN");
    EXPECT_TRUE(Run().Describe("VlmTreeView", Item::Path({"VELMOデータ", "現場"}))["selected"].toBool());
    EXPECT_TRUE(Run().Describe("VlmPdfList", Item::Named("私の座金"))["selected"].toBool());
}

// Run mode 3: both libraries, and the variable window edits the table.
class TableEditingTest : public UserLibraryTest {
protected:
    void SetUp() override {
        UserLibraryTest::SetUp();
        session_.WriteExchangeLines("velmo.ret2", {"NO SELECT", "TOLVIKS"});
        session_.Set("VlmMode", "3");
        StartWith("VLM_MAIN");
        Run().ClickAction("Tbar_Cancel");
        EXPECT_EQ(End(), 0);
        FillUserLibrary();
    }
    const QStringList userCategory_ = {"VELMOデータ", "現場"};
    const QStringList systemCategory_ = {"トルヴィク", "ボルト"};
};

TEST_F(TableEditingTest, ShowsBothTrees) {
    EXPECT_EQ(session_.Setting("UsrDB"), session_.HomeDir() + "VelmoUsr.mdb");
    EXPECT_EQ(session_.Setting("VelmoDB"), session_.HomeDir() + "velmo2.mdb");
    StartWith("VLM_MAIN");
    EXPECT_THAT(Run().Tree("VlmTreeView"),
                ElementsAre("VELMOデータ", "  現場", "トルヴィク", "  ボルト", "  座金+", "    大形"));
}

TEST_F(TableEditingTest, CategoriesOfTheSameNumberAreTwo) {
    StartWith("VLM_MAIN");
    ChooseCategory(userCategory_);
    EXPECT_THAT(Run().Column("VlmPdfList", 0), ElementsAre("私の座金", "私のアイボルト"));
    EXPECT_EQ(Run().Panels("VlmStatusBar").first(), QString("VELMOデータ － 現場"));
    ChooseCategory(systemCategory_);
    EXPECT_THAT(Run().Column("VlmPdfList", 0), ElementsAre("六角ボルト", "アイボルト", "記号"));
    EXPECT_EQ(Run().Panels("VlmStatusBar").first(), QString("トルヴィク － ボルト"));
    ChooseCategory(userCategory_);
    EXPECT_THAT(Run().Column("VlmPdfList", 0), ElementsAre("私の座金", "私のアイボルト"));
}

TEST_F(TableEditingTest, TheBrowserStaysAndRemembersItsTree) {
    StartWith("VLM_MAIN");
    OpenEntry(systemCategory_, "六角ボルト");
    Run().Click("Vedt_OKBtn");
    Run().WaitFor("the browser alone", [this] { return !Run().IsWindowShown("VLM_VEDT"); });
    EXPECT_TRUE(Run().Window("VLM_MAIN")["onTop"].toBool());
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret2"),
              QStringList({session_.HomeDir() + "SMB\\BOLT\\HEX.TXT", "VELMO"}));
    Run().CloseWindow("VLM_MAIN");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.Setting("EdtTreeLast"), QString("2"));
    EXPECT_EQ(session_.Setting("Tree2nd1st"), QString("1"));
    EXPECT_EQ(session_.Setting("UsrTreeLast"), std::nullopt);
    EXPECT_EQ(session_.Setting("VlmMode"), QString("3"));
    StartWith("VLM_MAIN");
    EXPECT_TRUE(Run().Describe("VlmTreeView", Item::Path(systemCategory_))["selected"].toBool());
    EXPECT_TRUE(Run().Describe("VlmPdfList", Item::Named("六角ボルト"))["selected"].toBool());

    OpenEntry(userCategory_, "私の座金");
    Run().Click("Vedt_OKBtn");
    Run().WaitFor("the browser alone", [this] { return !Run().IsWindowShown("VLM_VEDT"); });
    Run().CloseWindow("VLM_MAIN");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.Setting("EdtTreeLast"), QString("2"));
    EXPECT_EQ(session_.Setting("Tree2nd1st"), QString("0"));
    StartWith("VLM_MAIN");
    EXPECT_TRUE(Run().Describe("VlmTreeView", Item::Path(userCategory_))["selected"].toBool());
}

TEST_F(TableEditingTest, AMoveInTheSystemLibraryThatWasKilledIsFinished) {
    session_.WriteHome("NEW\\HEX.TXT", session_.ReadHome("SMB\\BOLT\\HEX.TXT"));
    ASSERT_TRUE(QFile::remove(session_.Home() + "/SMB/BOLT/HEX.TXT"));
    session_.WriteHome("velmo2.mdb.move", R"(["PDFFileName","SMB\\BOLT\\HEX.TXT","NEW\\HEX.TXT"])"
                                          "\n");
    StartWith("VLM_MAIN");
    EXPECT_FALSE(session_.ExistsInHome("velmo2.mdb.move"));
    EXPECT_THAT(session_.QueryHome("velmo2.mdb", "SELECT PDFFileName FROM PDFFileTable WHERE ID=1"),
                ElementsAre(ElementsAre("NEW\\HEX.TXT")));
    OpenEntry(systemCategory_, "六角ボルト");
    EXPECT_THAT(Run().Column("Vedt_NowFGrid", 0), ElementsAre("V1", "V2", "V3"));
}

TEST_F(TableEditingTest, TheVariableWindowHasItsOwnCaptions) {
    StartWith("VLM_MAIN");
    OpenEntry(systemCategory_, "六角ボルト");
    EXPECT_EQ(Run().Window("VLM_VEDT")["title"].toString(), QString("Velmo テーブル編集"));
    EXPECT_EQ(VariableText(0, 0), QString("変 数 名"));
    EXPECT_EQ(VariableText(0, 1), QString("名  前"));
    EXPECT_THAT(Run().Column("Vedt_NowFGrid", 0), ElementsAre("V1", "V2", "V3"));
    EXPECT_THAT(Values(), ElementsAre("d", "L", "材質"));
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("M10", "10", "50"), ElementsAre("M10", "10", "60"),
                                         ElementsAre("M12", "12", "50"), ElementsAre("M12", "12", "80")));
}

TEST_F(TableEditingTest, RowsOfAGroupComeTogether) {
    session_.WriteHomeLines("SMB\\BOLT\\HEX.PMN",
                            {"", "1", "1", "ｺﾒﾝﾄ", "3", "0", "呼び", "3", "A", "B", "  A"});
    StartWith("VLM_MAIN");
    OpenEntry(systemCategory_, "六角ボルト");
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("A"), ElementsAre("A"), ElementsAre("B")));
    EXPECT_EQ(TableText(1, 0), QString("1"));
    EXPECT_EQ(TableText(2, 0), QString("2"));
    EXPECT_EQ(TableText(3, 0), QString("3"));
}

TEST_F(TableEditingTest, ASymbolWithoutATableFileGetsANewTable) {
    StartWith("VLM_MAIN");
    OpenEntry(systemCategory_, "アイボルト");
    EXPECT_EQ(TableText(0, 1), QString("呼び"));
    EXPECT_EQ(TableText(0, 2), QString("d"));
    EXPECT_EQ(TableText(0, 3), QString("個数"));
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("", "", "")));
    EXPECT_EQ(TableText(1, 0), QString("1"));
    EXPECT_FALSE(session_.ExistsInHome("SMB\\BOLT\\EYE.PMN"));
}

TEST_F(TableEditingTest, ASymbolWithoutVariablesGetsNone) {
    StartWith("VLM_MAIN");
    OpenEntry(systemCategory_, "記号");
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("テーブルはありません")));
}

TEST_F(TableEditingTest, AFileWithoutRowsShowsOneEmptyRow) {
    QStringList lines = HexTableLines().first(17);
    session_.WriteHomeLines("SMB\\BOLT\\HEX.PMN", lines << "0");
    StartWith("VLM_MAIN");
    OpenEntry(systemCategory_, "六角ボルト");
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("", "", "")));
    EXPECT_EQ(TableText(1, 0), QString("1"));
}

TEST_F(TableEditingTest, BackToTheTreeMakesTheNextOneAnOrdinaryInput) {
    StartWith("VLM_MAIN");
    OpenEntry(systemCategory_, "六角ボルト");
    Run().Click("Vedt_TreeBtn");
    Run().WaitFor("the browser alone", [this] { return !Run().IsWindowShown("VLM_VEDT"); });
    EXPECT_EQ(session_.Setting("VlmMode"), QString("3"));
    OpenShownEntry("六角ボルト");
    EXPECT_EQ(Run().Window("VLM_VEDT")["title"].toString(), QString("Velmo 変数入力"));
    EXPECT_THAT(Values(), ElementsAre("10", "50", "SS400"));
}

} // namespace
} // namespace velmo
