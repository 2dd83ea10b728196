#include "move_run.h"
#include "obey_permissions.h"

#include <QFile>

namespace velmo {
namespace {

using testing::ElementsAre;

// Files of entries that are moved to another folder of the disk.
class MoveFilesTest : public MoveRunTest {};

TEST_F(MoveFilesTest, MovesTheFilesOfAnEntry) {
    OpenTool(parts_);
    Select("弁");
    MoveFilesTo(newFolder_);
    AwaitToolClosed();
    EXPECT_THAT(PartEntries(), ElementsAre(firstParts_[0], R"(6|5|弁|NEW\VALVE.PDF|NEW\VALVE.SLD)"));
    EXPECT_EQ(HomeFile("NEW\\VALVE.PDF"), QString("VALVE.PDF"));
    EXPECT_EQ(HomeFile("NEW\\VALVE.SLD"), QString("VALVE.SLD"));
    EXPECT_FALSE(session_.ExistsInHome("OLD\\VALVE.PDF"));
    EXPECT_FALSE(session_.ExistsInHome("OLD\\VALVE.SLD"));
    EXPECT_TRUE(session_.ExistsInHome("OLD\\PUMP.PDF"));
}

TEST_F(MoveFilesTest, TheHomeFolderItselfIsATarget) {
    OpenTool(parts_);
    Run().Click("AllBtn");
    MoveFilesTo({"トルヴィク"});
    AwaitToolClosed();
    EXPECT_THAT(PartEntries(), ElementsAre("5|5|ポンプ|PUMP.PDF|PUMP.SLD", "6|5|弁|VALVE.PDF|VALVE.SLD"));
    EXPECT_EQ(HomeFile("PUMP.PDF"), QString("PUMP.PDF"));
    EXPECT_FALSE(session_.ExistsInHome("OLD\\PUMP.PDF"));
}

TEST_F(MoveFilesTest, AsksBeforeItOverwritesOneByOne) {
    session_.WriteHome("NEW\\VALVE.PDF", "old document");
    session_.WriteHome("NEW\\VALVE.SLD", "old slide");
    OpenTool(parts_);
    Select("弁");
    MoveFilesTo(newFolder_);
    const QString question = "はすでに存在します\r上書きしてよろしいですか";
    ExpectQuestion(Spelled("NEW\\", "VALVE.PDF") + question, "VELMO2");
    Run().AnswerNo();
    ExpectQuestion(Spelled("NEW\\", "VALVE.SLD") + question, "VELMO2");
    Run().AnswerYes();
    AwaitToolClosed();
    EXPECT_THAT(PartEntries(), ElementsAre(firstParts_[0], R"(6|5|弁|OLD\VALVE.PDF|NEW\VALVE.SLD)"));
    EXPECT_EQ(HomeFile("NEW\\VALVE.PDF"), QString("old document"));
    EXPECT_EQ(HomeFile("OLD\\VALVE.PDF"), QString("VALVE.PDF"));
    EXPECT_EQ(HomeFile("NEW\\VALVE.SLD"), QString("VALVE.SLD"));
    EXPECT_FALSE(session_.ExistsInHome("OLD\\VALVE.SLD"));
}

TEST_F(MoveFilesTest, SaysWhichFileIsMissingAndMovesTheOthers) {
    QFile::remove(session_.Home() + "/OLD/PUMP.PDF");
    OpenTool(parts_);
    Run().Click("AllBtn");
    MoveFilesTo(newFolder_);
    ExpectRefusal(session_.HomeDir() + "OLD\\PUMP.PDFが見つかりません");
    AwaitToolClosed();
    EXPECT_THAT(PartEntries(), ElementsAre(R"(5|5|ポンプ|OLD\PUMP.PDF|NEW\PUMP.SLD)",
                                           R"(6|5|弁|NEW\VALVE.PDF|NEW\VALVE.SLD)"));
}

TEST_F(MoveFilesTest, EveryEntryAndCategoryThatNamesAMovedFileFollowsIt) {
    Execute("UPDATE FolderTable SET SLDFileName = 'OLD\\VALVE.SLD' WHERE ID = 5;"
            "INSERT INTO PDFFileTable (FolderID, PDFName, PDFFileName, SLDFileName) VALUES "
            "(5, '弁2', 'OLD\\VALVE.PDF', ''), (4, '他', 'OLD\\VALVE.PDF', '')");
    OpenTool(parts_);
    Select("弁");
    MoveFilesTo(newFolder_);
    AwaitToolClosed();
    EXPECT_THAT(PartEntries(), ElementsAre(firstParts_[0], R"(6|5|弁|NEW\VALVE.PDF|NEW\VALVE.SLD)",
                                           R"(7|5|弁2|NEW\VALVE.PDF|)", R"(8|4|他|NEW\VALVE.PDF|)"));
    EXPECT_EQ(Categories().last(), QString(R"(5|1|部品|NEW\VALVE.SLD)"));
}

TEST_F(MoveFilesTest, FilesThatAreMovedOntoThemselvesStay) {
    OpenTool(parts_);
    Select("弁");
    MoveFilesTo({"トルヴィク", "OLD"});
    AwaitToolClosed();
    EXPECT_EQ(PartEntries(), firstParts_);
    EXPECT_EQ(HomeFile("OLD\\VALVE.PDF"), QString("VALVE.PDF"));
}

TEST_F(MoveFilesTest, AnEntryWithoutASlideMovesItsFileAlone) {
    Execute("UPDATE PDFFileTable SET SLDFileName = '' WHERE ID = 6");
    OpenTool(parts_);
    Select("弁");
    MoveFilesTo({"トルヴィク", "NEW", "DEEP"});
    AwaitToolClosed();
    EXPECT_EQ(PartEntries().last(), QString(R"(6|5|弁|NEW\DEEP\VALVE.PDF|)"));
}

TEST_F(MoveFilesTest, AFolderInTheWayIsNoFile) {
    session_.WriteHome("NEW\\VALVE.PDF\\A.TXT", "");
    OpenTool(parts_);
    Select("弁");
    MoveFilesTo(newFolder_);
    const Message message = Run().WaitForMessage();
    EXPECT_TRUE(message.text.contains("VALVE.PDF")) << message.text.toStdString();
    Run().Answer(message.buttons.contains("No") ? "No" : "Ok");
    EXPECT_EQ(HomeFile("OLD\\VALVE.PDF"), QString("VALVE.PDF"));
    EXPECT_TRUE(PartEntries().last().startsWith(R"(6|5|弁|OLD\VALVE.PDF|)"));
}

TEST_F(MoveFilesTest, FoldersAreFoundHoweverTheLibrarySpellsThem) {
    Execute("UPDATE PDFFileTable SET PDFFileName = 'old\\valve.pdf' WHERE ID = 6");
    OpenTool(parts_);
    Select("弁");
    MoveFilesTo(newFolder_);
    AwaitToolClosed();
    EXPECT_EQ(PartEntries().last(), QString(R"(6|5|弁|NEW\valve.pdf|NEW\VALVE.SLD)"));
    EXPECT_FALSE(session_.ExistsInHome("OLD\\VALVE.PDF"));
}

TEST_F(MoveFilesTest, AMovedSymbolCanBeOpened) {
    ChooseOnCategory(large_, "VlmMnuPopTool");
    Run().WaitForWindow("Vlm_Tool");
    Run().Click("AllBtn");
    MoveFilesTo(newFolder_);
    AwaitToolClosed();
    EXPECT_EQ(Entries()[3], QString(R"(4|4|平座金|NEW\WASHER.TXT|NEW\WASHER.SLD)"));
    // Its table went along.
    EXPECT_TRUE(session_.ExistsInHome("NEW\\WASHER.PMN"));
    EXPECT_FALSE(session_.ExistsInHome("SMB\\WASH\\WASHER.PMN"));
    OpenEntry(large_, "平座金");
    EXPECT_THAT(Run().Column("Vedt_NowFGrid", 0), ElementsAre("V1(d)", "V2(L)"));
    EXPECT_EQ(TableRows().size(), 2) << "a table that is missing is told in a single row";
}

TEST_F(MoveFilesTest, ATableThatIsThereAlreadyIsAskedAbout) {
    session_.WriteHome("NEW\\WASHER.PMN", "old table");
    ChooseOnCategory(large_, "VlmMnuPopTool");
    Run().WaitForWindow("Vlm_Tool");
    Run().Click("AllBtn");
    MoveFilesTo(newFolder_);
    ExpectQuestion(Spelled("NEW\\", "WASHER.PMN") + "はすでに存在します\r上書きしてよろしいですか", "VELMO2");
    Run().AnswerNo();
    AwaitToolClosed();
    EXPECT_EQ(HomeFile("NEW\\WASHER.PMN"), QString("old table"));
    EXPECT_TRUE(session_.ExistsInHome("SMB\\WASH\\WASHER.PMN"));
    EXPECT_TRUE(session_.ExistsInHome("NEW\\WASHER.TXT"));
}

TEST_F(MoveFilesTest, AFileOutsideTheHomeIsRefusedAndTheOthersMove) {
    session_.WriteHome("..\\SECRET.PDF", "not ours");
    Execute("UPDATE PDFFileTable SET PDFFileName = '..\\SECRET.PDF' WHERE ID = 5");
    OpenTool(parts_);
    Run().Click("AllBtn");
    MoveFilesTo(newFolder_);
    ExpectRefusal(
        "「ポンプ」のファイル ..\\SECRET.PDF は、ライブラリのフォルダの外を指しているため移動できません。");
    AwaitToolClosed();
    EXPECT_EQ(HomeFile("..\\SECRET.PDF"), QString("not ours"));
    EXPECT_FALSE(session_.ExistsInHome("NEW\\SECRET.PDF"));
    EXPECT_THAT(PartEntries(), ElementsAre(R"(5|5|ポンプ|..\SECRET.PDF|NEW\PUMP.SLD)",
                                           R"(6|5|弁|NEW\VALVE.PDF|NEW\VALVE.SLD)"));
}

TEST_F(MoveFilesTest, AFileOutsideIsRefusedAloneBetweenFilesOfTheTopFolder) {
    session_.WriteHome("..\\SECRET\\PUMP.PDF", "not ours");
    for (const char* name : {"FIRST.PDF", "LAST.PDF"})
        session_.WriteHome(name, name);
    Execute("UPDATE PDFFileTable SET FolderID = 5, PDFFileName = 'FIRST.PDF', SLDFileName = '' WHERE ID = 4;"
            "UPDATE PDFFileTable SET PDFFileName = '../SECRET/PUMP.PDF' WHERE ID = 5;"
            "UPDATE PDFFileTable SET PDFFileName = 'LAST.PDF' WHERE ID = 6");
    OpenTool(parts_);
    Run().Click("AllBtn");
    MoveFilesTo(newFolder_);
    ExpectRefusal("「ポンプ」のファイル ../SECRET/PUMP.PDF "
                  "は、ライブラリのフォルダの外を指しているため移動できません。");
    AwaitToolClosed();
    EXPECT_EQ(HomeFile("..\\SECRET\\PUMP.PDF"), QString("not ours"));
    EXPECT_THAT(Entries().mid(3),
                ElementsAre(R"(4|5|平座金|NEW\FIRST.PDF|)", R"(5|5|ポンプ|../SECRET/PUMP.PDF|NEW\PUMP.SLD)",
                            R"(6|5|弁|NEW\LAST.PDF|NEW\VALVE.SLD)"));
    EXPECT_EQ(HomeFile("NEW\\LAST.PDF"), QString("LAST.PDF"));
}

#ifdef Q_OS_LINUX
TEST_F(MoveFilesTest, AFolderThatLeadsOutOfTheHomeIsNoTarget) {
    session_.WriteHome("..\\ELSEWHERE\\PUMP.PDF", "not ours");
    ASSERT_TRUE(QFile::link("../ELSEWHERE", session_.Home() + "/OUT"));
    OpenTool(parts_);
    Run().Click("AllBtn");
    MoveFilesTo({"トルヴィク", "OUT"});
    ExpectError({"75", Spelled("OUT\\", {}), "移動先のフォルダは、ライブラリのフォルダの外にあります。"});
    EXPECT_THAT(SelectedRows(), ElementsAre("ポンプ", "弁"));
    EXPECT_EQ(PartEntries(), firstParts_);
    EXPECT_EQ(HomeFile("..\\ELSEWHERE\\PUMP.PDF"), QString("not ours"));
    EXPECT_FALSE(session_.ExistsInHome("..\\ELSEWHERE\\VALVE.PDF"));
}

TEST_F(MoveFilesTest, AHomeThatIsReachedByALinkIsFine) {
    Run().ClickAction("Tbar_Cancel");
    EXPECT_EQ(End(), 0);
    const QString way = session_.Home() + "-link";
    ASSERT_TRUE(QFile::link(session_.Home(), way));
    session_.Set("VlmHome", way);
    StartWith("VLM_MAIN");
    OpenTool(parts_);
    Run().Click("AllBtn");
    MoveFilesTo(newFolder_);
    AwaitToolClosed();
    EXPECT_THAT(PartEntries(), ElementsAre(R"(5|5|ポンプ|NEW\PUMP.PDF|NEW\PUMP.SLD)",
                                           R"(6|5|弁|NEW\VALVE.PDF|NEW\VALVE.SLD)"));
    EXPECT_EQ(HomeFile("NEW\\VALVE.SLD"), QString("VALVE.SLD"));
}

TEST_F(MoveFilesTest, ANoteThatSomebodyElseWroteReachesNothingOutside) {
    Run().ClickAction("Tbar_Cancel");
    EXPECT_EQ(End(), 0);
    session_.WriteHome("..\\SECRET.PDF.moving", "not ours");
    session_.WriteHome("velmo2.mdb.move", R"(["PDFFileName","OLD\\GONE.PDF","..\\SECRET.PDF"])"
                                          "\n");
    StartWith("VLM_MAIN");
    EXPECT_EQ(HomeFile("..\\SECRET.PDF.moving"), QString("not ours"));
    EXPECT_FALSE(session_.ExistsInHome("velmo2.mdb.move"));
}

// Folders in which the user may not write.
class MoveWithoutPermissionTest : public MoveFilesTest {
protected:
    void TearDown() override {
        for (const char* folder : {"/OLD", "/NEW"})
            QFile::setPermissions(session_.Home() + folder, all_);
        MoveFilesTest::TearDown();
    }
    void StartWithout(const QString& folder) {
        QFile::setPermissions(session_.Home() + folder, QFile::ReadOwner | QFile::ExeOwner);
        StartChanged(ObeyPermissions);
        Run().WaitForWindow("VLM_MAIN");
    }
    const QFile::Permissions all_ = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
};

TEST_F(MoveWithoutPermissionTest, ToTheTarget) {
    StartWithout("/NEW");
    OpenTool(parts_);
    Run().Click("AllBtn");
    MoveFilesTo(newFolder_);
    ExpectError({"PUMP.PDF"});
    EXPECT_THAT(SelectedRows(), ElementsAre("ポンプ", "弁"));
    EXPECT_EQ(PartEntries(), firstParts_);
    for (const char* name : {"PUMP.PDF", "PUMP.SLD", "VALVE.PDF", "VALVE.SLD"}) {
        EXPECT_EQ(HomeFile(QString("OLD\\") + name), QString(name));
        EXPECT_FALSE(session_.ExistsInHome(QString("NEW\\") + name));
    }
}

TEST_F(MoveWithoutPermissionTest, ToTheSource) {
    StartWithout("/OLD");
    OpenTool(parts_);
    Run().Click("AllBtn");
    MoveFilesTo(newFolder_);
    ExpectError({"PUMP.PDF"});
    EXPECT_EQ(PartEntries(), firstParts_);
    for (const char* name : {"PUMP.PDF", "PUMP.SLD", "VALVE.PDF", "VALVE.SLD"})
        EXPECT_EQ(HomeFile(QString("OLD\\") + name), QString(name));
}
#endif

} // namespace
} // namespace velmo
