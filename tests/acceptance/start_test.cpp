#include "acceptance_test.h"
#include "platform/work_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace velmo {
namespace {

using testing::ElementsAre;

class StartTest : public AcceptanceTest {};

TEST_F(StartTest, AFirstStartImportsTheListFile) {
    StartWith("VLM_MAIN");
    // Twips, as near as pixels come to them.
    const QJsonValue place = Run().Property("VLM_MAIN", "pos");
    EXPECT_NEAR(place[0].toInt() * 15, 1000, 15);
    EXPECT_NEAR(place[1].toInt() * 15, 1000, 15);
    const QJsonValue size = Run().Property("VLM_MAIN", "size");
    EXPECT_NEAR(size[0].toInt() * 15, 6500, 15);
    EXPECT_NEAR(size[1].toInt() * 15, 6500, 15);
    EXPECT_TRUE(Run().Describe("VlmTreeView", Item::Named("トルヴィク"))["selected"].toBool());
    EXPECT_EQ(session_.Setting("VelmoDB"), session_.HomeDir() + "velmo2.mdb");
    EXPECT_EQ(QDir(session_.Home()).entryList({"velmo*"}, QDir::Files), QStringList("velmo2.mdb"));
    EXPECT_THAT(
        session_.QueryHome("velmo2.mdb",
                           "SELECT ID, ParentID, FolderName, ifnull(SLDFileName, '') FROM FolderTable"),
        ElementsAre(ElementsAre("1", "0", "トルヴィク", ""),
                    ElementsAre("2", "1", "ボルト", "SMB\\BOLT\\BOLT.SLD"),
                    ElementsAre("3", "1", "座金", "SMB\\WASH\\WASH.SLD"),
                    ElementsAre("4", "3", "大形", "SMB\\WASH\\LARGE.SLD")));
    EXPECT_THAT(
        session_.QueryHome("velmo2.mdb",
                           "SELECT ID, FolderID, PDFName, PDFFileName, SLDFileName FROM PDFFileTable"),
        ElementsAre(ElementsAre("1", "2", "六角ボルト", "SMB\\BOLT\\HEX.TXT", "SMB\\BOLT\\HEX.SLD"),
                    ElementsAre("2", "2", "アイボルト", "SMB\\BOLT\\EYE.TXT", "SMB\\BOLT\\EYE.SLD"),
                    ElementsAre("3", "2", "記号", "SMB\\BOLT\\MARK.TXT", "SMB\\BOLT\\MARK.SLD"),
                    ElementsAre("4", "4", "平座金", "SMB\\WASH\\WASHER.TXT", "SMB\\WASH\\WASHER.SLD")));
}

TEST_F(StartTest, TheSecondStartReadsTheDatabaseAndNotTheList) {
    StartWith("VLM_MAIN");
    Run().ClickAction("Tbar_Cancel");
    EXPECT_EQ(End(), 0);
    QFile::remove(session_.Home() + "/syst/vlmsymlib.lst");
    const QByteArray database = session_.ReadHome("velmo2.mdb");
    StartWith("VLM_MAIN");
    EXPECT_THAT(Run().Tree("VlmTreeView"), ElementsAre("トルヴィク", "  ボルト", "  座金+", "    大形"));
    EXPECT_EQ(session_.ReadHome("velmo2.mdb"), database);
}

TEST_F(StartTest, AHomeThatEndsInABackslashIsTheSame) {
    session_.Set("VlmHome", session_.HomeDir());
    session_.Set("VlmTemp", session_.TempDir());
    StartWith("VLM_MAIN");
    OpenEntry({"トルヴィク", "ボルト"}, "アイボルト");
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret2"),
              QStringList({session_.HomeDir() + "SMB\\BOLT\\EYE.TXT", "TOLVIKS"}));
    EXPECT_EQ(session_.Setting("VlmHome"), session_.HomeDir());
}

TEST_F(StartTest, NamesAreFoundWhateverTheirCase) {
    StartWith("VLM_MAIN");
    Run().ClickAction("Tbar_Cancel");
    EXPECT_EQ(End(), 0);
    const QDir home(session_.Home());
    ASSERT_TRUE(QFile::rename(home.filePath("velmo2.mdb"), home.filePath("VELMO2.MDB")));
    ASSERT_TRUE(QFile::rename(home.filePath("SMB/BOLT/HEX.TXT"), home.filePath("SMB/BOLT/Hex.txt")));
    ASSERT_TRUE(QFile::rename(home.filePath("SMB/BOLT/HEX.PMN"), home.filePath("SMB/BOLT/hex.pmn")));
    ASSERT_TRUE(QFile::rename(home.filePath("SMB/BOLT"), home.filePath("SMB/bolt")));
    ASSERT_TRUE(QFile::rename(home.filePath("SMB"), home.filePath("smb")));
    ASSERT_TRUE(QFile::remove(home.filePath("syst/vlmsymlib.lst")));
    StartWith("VLM_MAIN");
    const QImage empty = Run().Picture("VlmPDFSlide");
    ChooseCategory({"トルヴィク", "ボルト"});
    Run().Click("VlmPdfList", Item::Named("六角ボルト"));
    EXPECT_NE(Run().Picture("VlmPDFSlide"), empty);
    Run().ClickAction("Tbar_Open");
    Run().WaitForWindow("VLM_VEDT");
    EXPECT_EQ(TableRows().size(), 2);
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret2")->first(), session_.HomeDir() + "SMB\\BOLT\\HEX.TXT");
    EXPECT_EQ(home.entryList({"*.mdb"}, QDir::Files), QStringList("VELMO2.MDB"));
}

TEST_F(StartTest, FoldersMayHaveJapaneseNames) {
    // The second bytes of these characters are backslashes in code page 932.
    const QTemporaryDir folder;
    session_ = VelmoSession(folder.filePath("表ソ能/ライブラリ 十"), folder.filePath("作業"));
    WriteSmallLibrary(session_);
    StartWith("VLM_MAIN");
    OpenEntry({"トルヴィク", "ボルト"}, "アイボルト");
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret2"),
              QStringList({session_.HomeDir() + "SMB\\BOLT\\EYE.TXT", "TOLVIKS"}));
    session_.Set("VlmNxt", "1");
    StartWith("VLM_VEDT");
    EXPECT_THAT(Values(), ElementsAre("8", "1"));
}

TEST_F(StartTest, AnyProgramCanMakeTheDatabase) {
    session_.ExecuteHome(
        "Velmo2.mdb",
        "CREATE TABLE FolderTable (id INTEGER PRIMARY KEY, parentid INT, foldername, sldfilename);"
        "CREATE TABLE PDFFileTable (id INTEGER PRIMARY KEY, folderid INT, pdfname, pdffilename, sldfilename);"
        "INSERT INTO FolderTable VALUES (1, 0, '別の根', NULL), (11, 1, '別の分類', NULL), (12, 0, '二番', "
        "NULL);"
        "INSERT INTO PDFFileTable VALUES (5, 11, '目', 'SMB\\BOLT\\EYE.TXT', NULL);");
    session_.Set("TreeLast", "11");
    StartWith("VLM_MAIN");
    // A second row without a parent is not shown.
    EXPECT_THAT(Run().Tree("VlmTreeView"), ElementsAre("別の根", "  別の分類"));
    EXPECT_EQ(session_.Setting("VelmoDB"), std::nullopt);
    Run().Click("VlmPdfList", Item::Named("目"));
    Run().ClickAction("Tbar_Open");
    Run().WaitForWindow("VLM_VEDT");
    EXPECT_THAT(Values(), ElementsAre("8", "1"));
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.Setting("TreeLast"), QString("11"));
}

// Databases with categories that no tree of the library's own making has.
class OddTreeTest : public AcceptanceTest {
protected:
    void Make(const QString& folders) {
        session_.ExecuteHome(
            "Velmo2.mdb",
            "CREATE TABLE FolderTable (ID INTEGER PRIMARY KEY, ParentID, FolderName, SLDFileName);"
            "CREATE TABLE PDFFileTable (ID INTEGER PRIMARY KEY, FolderID, PDFName, PDFFileName, SLDFileName);"
            "INSERT INTO FolderTable VALUES (1, 0, '根', NULL), (2, 1, '枝', NULL), " +
                folders);
    }
    // The category cannot be selected, which is told; another one can.
    void ExpectToldAndUsable(const QString& id) {
        session_.Set("TreeLast", id);
        Start();
        ExpectError({"35601"});
        Run().WaitForWindow("VLM_MAIN");
        ChooseCategory({"根", "枝"});
        EXPECT_EQ(Run().Panels("VlmStatusBar").first(), QString("枝"));
        Run().ClickAction("Tbar_Cancel");
        EXPECT_EQ(End(), 0);
    }
};

TEST_F(OddTreeTest, ACategoryBelowASecondRoot) {
    Make("(3, 0, '二番', NULL), (4, 3, '見えない', NULL)");
    ExpectToldAndUsable("4");
}

TEST_F(OddTreeTest, ACategoryBelowItself) {
    Make("(3, 4, '輪', NULL), (4, 3, '環', NULL), (5, 5, '自分', NULL)");
    ExpectToldAndUsable("4");
    ExpectToldAndUsable("5");
}

TEST_F(OddTreeTest, ACategoryDeeperThanIsRemembered) {
    QStringList chain;
    for (int id = 3; id <= 24; ++id)
        chain << QString("(%1, %2, 'L%1', NULL)").arg(id).arg(id == 3 ? 1 : id - 1);
    Make(chain.join(", "));
    ExpectToldAndUsable("24");
    session_.Set("TreeLast", "23");
    StartWith("VLM_MAIN");
    QStringList way = {"根"};
    for (int id = 3; id <= 23; ++id)
        way << QString("L%1").arg(id);
    EXPECT_TRUE(Run().Describe("VlmTreeView", Item::Path(way))["selected"].toBool());
    EXPECT_EQ(Run().Panels("VlmStatusBar").first(), way.sliced(1).join(" － "));
}

TEST_F(OddTreeTest, TheFirstOfTwoEntriesOfTheSameName) {
    Make("(3, 1, '葉', NULL);"
         "INSERT INTO PDFFileTable VALUES (1, 2, '双子', 'SMB\\BOLT\\EYE.TXT', NULL), (2, 2, '双子', "
         "'SMB\\BOLT\\HEX.TXT', NULL), (3, 3, '双子', 'SMB\\WASH\\WASHER.TXT', NULL)");
    StartWith("VLM_MAIN");
    ChooseCategory({"根", "枝"});
    Run().Click("VlmPdfList", Item::Cell(1, 0));
    Run().ClickAction("Tbar_Open");
    Run().WaitForWindow("VLM_VEDT");
    EXPECT_THAT(Values(), ElementsAre("8", "1"));
}

TEST_F(StartTest, WithoutAnExchangeFolderTheAnswerIsWrittenHere) {
    session_.Set("VlmTemp", "");
    StartWith("VLM_MAIN");
    OpenEntry({"トルヴィク", "ボルト"}, "アイボルト");
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_TRUE(session_.ReadExchangeLines("..\\velmo.ret").has_value());
    EXPECT_TRUE(session_.ReadExchangeLines("..\\velmo.ret2").has_value());
    EXPECT_FALSE(session_.ExistsInExchange("..\\VELMONOW.mdb"));
    EXPECT_FALSE(session_.ExistsInExchange("velmo.ret"));
}

TEST_F(StartTest, WithoutSettingsTheLibraryIsLookedForHere) {
    session_.WriteHome("..\\syst\\vlmsymlib.lst", session_.ReadHome("syst\\vlmsymlib.lst"));
    session_.WriteHome("..\\SMB\\BOLT\\EYE.TXT", session_.ReadHome("SMB\\BOLT\\EYE.TXT"));
    ASSERT_TRUE(QDir(QFileInfo(session_.SettingsPath()).path()).removeRecursively());
    StartWith("VLM_MAIN");
    OpenEntry({"トルヴィク", "ボルト"}, "アイボルト");
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchangeLines("..\\velmo.ret2"), QStringList({"SMB\\BOLT\\EYE.TXT", "TOLVIKS"}));
    EXPECT_EQ(session_.Setting("LastPDF"), QString("SMB\\BOLT\\EYE.TXT"));
    EXPECT_EQ(session_.Setting("VelmoDB"), QString("velmo2.mdb"));
}

TEST_F(StartTest, ALeftOverOfABrokenImportDoesNoHarm) {
    session_.WriteHome("velmo2.mdb.new", "half a database");
    session_.WriteHome("velmo2.mdb.new-journal", "half a journal");
    StartWith("VLM_MAIN");
    EXPECT_EQ(Run().Tree("VlmTreeView").size(), 4);
    EXPECT_EQ(QDir(session_.Home()).entryList({"velmo*"}, QDir::Files), QStringList("velmo2.mdb"));
}

TEST_F(StartTest, ManyFirstStartsAtOnceShowTheSameLibrary) {
    constexpr int programs = 4;
    std::vector<std::unique_ptr<VelmoRun>> runs;
    {
        // They all wait to make it.
        const WorkFile another(session_.Home() + "/velmo2.mdb.making");
        ASSERT_TRUE(another.IsOpen());
        for (int program = 0; program < programs; ++program)
            runs.push_back(std::make_unique<VelmoRun>(session_.LaunchOf(VELMO_PROGRAM, TEST_PLUGIN_FOLDER)));
    }
    for (const std::unique_ptr<VelmoRun>& run : runs) {
        run->WaitForWindow("VLM_MAIN");
        EXPECT_THAT(run->Tree("VlmTreeView"), ElementsAre("トルヴィク", "  ボルト", "  座金+", "    大形"));
        run->ClickAction("Tbar_Cancel");
        EXPECT_EQ(run->WaitForEnd(), 0);
    }
    EXPECT_EQ(QDir(session_.Home()).entryList({"velmo*"}, QDir::Files), QStringList("velmo2.mdb"));
    EXPECT_EQ(session_.QueryHome("velmo2.mdb", "PRAGMA integrity_check").value(0), QStringList("ok"));
}

TEST_F(StartTest, WhileAnotherProgramMakesTheLibraryItIsWaitedForAndCanBeStopped) {
    const auto isToldToWait = [this] { return Run().Screen().contains("QProgressDialog"); };
    {
        const WorkFile other(session_.Home() + "/velmo2.mdb.making");
        ASSERT_TRUE(other.IsOpen());
        Start();
        Run().WaitFor("the wait to be told", isToldToWait);
        Run().Press("Escape");
        EXPECT_EQ(End(), 0);
        EXPECT_FALSE(session_.ExistsInHome("velmo2.mdb"));
        Start();
        Run().WaitFor("the wait to be told", isToldToWait);
    }
    Run().WaitForWindow("VLM_MAIN");
    EXPECT_EQ(Run().Tree("VlmTreeView").size(), 4);
}

TEST_F(StartTest, ASavedCategoryThatIsGoneBecomesTheRoot) {
    session_.Set("TreeLast", "77");
    StartWith("VLM_MAIN");
    Run().CloseWindow("VLM_MAIN");
    EXPECT_EQ(End(), 0);
    session_.Set("TreeLast", "77");
    StartWith("VLM_MAIN");
    EXPECT_TRUE(Run().Describe("VlmTreeView", Item::Named("トルヴィク"))["selected"].toBool());
}

TEST_F(StartTest, ADeepCategoryIsOpenedAgain) {
    StartWith("VLM_MAIN");
    Run().CloseWindow("VLM_MAIN");
    EXPECT_EQ(End(), 0);
    session_.Set("TreeLast", "4");
    session_.Set("LastPDF", session_.HomeDir() + "SMB\\WASH\\WASHER.TXT");
    StartWith("VLM_MAIN");
    EXPECT_TRUE(
        Run().Describe("VlmTreeView", Item::Path({"トルヴィク", "座金", "大形"}))["selected"].toBool());
    EXPECT_EQ(Run().Panels("VlmStatusBar").first(), QString("座金 － 大形"));
    Run().ClickAction("Tbar_Open");
    Run().WaitForWindow("VLM_VEDT");
    EXPECT_THAT(Values(), ElementsAre("6", "1"));
}

} // namespace
} // namespace velmo
