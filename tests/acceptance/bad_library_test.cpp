#include "acceptance_test.h"
#include "obey_permissions.h"

#include <QDir>
#include <QFile>
#include <SQLiteCpp/SQLiteCpp.h>

namespace velmo {
namespace {

using testing::ElementsAre;

const QString listFile = "syst\\vlmsymlib.lst";

// List files that cannot be imported: no database is left behind.
class BadListFileTest : public AcceptanceTest {
protected:
    void ExpectRefused(const QStringList& parts) {
        const QByteArray settings = session_.SettingsFile();
        ExpectFailedStart(QStringList{session_.HomeDir() + listFile} + parts);
        EXPECT_EQ(QDir(session_.Home()).entryList(QDir::Files), QStringList());
        EXPECT_EQ(session_.SettingsFile(), settings);
        EXPECT_FALSE(session_.ExistsInExchange("velmo.ret2"));
    }
};

TEST_F(BadListFileTest, Missing) {
    QFile::remove(session_.Home() + "/syst/vlmsymlib.lst");
    ExpectRefused({"53"});
}

TEST_F(BadListFileTest, AMissingFolder) {
    QDir(session_.Home() + "/syst").removeRecursively();
    ExpectRefused({"76"});
}

TEST_F(BadListFileTest, NestedTooDeep) {
    QStringList lines = {R"(("root,  ,")"};
    for (int depth = 1; depth <= 10; ++depth)
        lines << QString(R"(("L%1,  \A.SLD,")").arg(depth);
    session_.WriteHomeLines(listFile, lines);
    StartWith("VLM_MAIN");
    Run().ClickAction("Tbar_Cancel");
    EXPECT_EQ(End(), 0);
    QFile::remove(session_.Home() + "/velmo2.mdb");
    session_.Set("VelmoDB", "");
    session_.WriteHomeLines(listFile, lines << R"(("L11,  \A.SLD,")");
    ExpectRefused({"'9'", "行: 12"});
}

TEST_F(BadListFileTest, ALineWithoutItsCommas) {
    session_.WriteHomeLines(listFile, {R"(("root,  ,")", R"(("ボルト")"});
    ExpectRefused({"'5'", "行: 2"});
}

TEST_F(BadListFileTest, ANameThatIsTooLong) {
    session_.WriteHomeLines(
        listFile, {R"(("root,  ,")", R"(("A,  \A.SLD,")", "(\"" + QString(256, 'x') + R"(,  \A.SLD,"))"});
    ExpectRefused({"3163", "行: 3", "FolderName"});
}

TEST_F(BadListFileTest, AnEmptyListHasNoRoot) {
    session_.WriteHome(listFile, "");
    Start();
    ExpectError({"3021"});
    EXPECT_EQ(End(), 1);
}

// Library files that are something else, or that others keep from us.
class BadLibraryTest : public AcceptanceTest {
protected:
    void ImportOnce() {
        StartWith("VLM_MAIN");
        Run().ClickAction("Tbar_Cancel");
        EXPECT_EQ(End(), 0);
    }
    QString Library() const { return session_.HomeDir() + "Velmo2.mdb"; }
    // Starts with a question about this library, which stays open.
    void ExpectQuestionAtStart(const QString& question) {
        Start();
        const Message message = Run().ExpectMessage(question);
        EXPECT_EQ(message.title, QString("VELMO2"));
        EXPECT_THAT(message.buttons, ElementsAre("Yes", "No"));
    }
    const QString NoCategory =
        " には分類がありません。\n\n一覧ファイルからライブラリを作り直してよろしいですか";
    const QString NoRoot = " には最上位の分類がありません。\n\n最上位の分類を作り直してよろしいですか";
};

TEST_F(BadLibraryTest, NoDatabase) {
    const QByteArray text = QByteArray("Standard Jet DB").repeated(100);
    session_.WriteHome("Velmo2.mdb", text);
    ExpectFailedStart({"3343", Library()});
    EXPECT_EQ(session_.ReadHome("Velmo2.mdb"), text);
}

TEST_F(BadLibraryTest, AnEmptyFile) {
    session_.WriteHome("Velmo2.mdb", "");
    ExpectQuestionAtStart(Library() + NoCategory);
    // No is the usual answer.
    Run().Press("Return");
    ExpectError({"3078", Library()});
    EXPECT_EQ(End(), 1);
    EXPECT_EQ(session_.ReadHome("Velmo2.mdb"), "");
    ExpectQuestionAtStart(Library() + NoCategory);
    Run().AnswerYes();
    Run().WaitForWindow("VLM_MAIN");
    EXPECT_THAT(Run().Tree("VlmTreeView"), ElementsAre("トルヴィク", "  ボルト", "  座金+", "    大形"));
    EXPECT_EQ(QDir(session_.Home()).entryList({"velmo*"}, QDir::Files), QStringList("Velmo2.mdb"));
}

TEST_F(BadLibraryTest, AnEmptyUserLibrary) {
    const QString user = session_.HomeDir() + "VelmoUsr.mdb";
    session_.WriteExchangeLines("velmo.ret2", {"NO SELECT", "VELMO"});
    session_.WriteHome("VelmoUsr.mdb", "");
    ExpectQuestionAtStart(user + NoRoot);
    Run().AnswerNo();
    ExpectError({"3078", user});
    EXPECT_EQ(End(), 1);
    EXPECT_EQ(session_.ReadHome("VelmoUsr.mdb"), "");
    ExpectQuestionAtStart(user + NoRoot);
    Run().AnswerYes();
    Run().WaitForWindow("VLM_MAIN");
    EXPECT_THAT(Run().Tree("VlmTreeView"), ElementsAre("VELMOデータ"));
}

TEST_F(BadLibraryTest, OtherTables) {
    session_.ExecuteHome("Velmo2.mdb", "CREATE TABLE Customers (Name)");
    const QByteArray before = session_.ReadHome("Velmo2.mdb");
    ExpectFailedStart({"3078", Library()});
    EXPECT_EQ(session_.ReadHome("Velmo2.mdb"), before);
}

TEST_F(BadLibraryTest, OtherColumns) {
    session_.ExecuteHome("Velmo2.mdb", "CREATE TABLE FolderTable (ID INTEGER PRIMARY KEY, ParentID);"
                                       "INSERT INTO FolderTable VALUES (1, 0);");
    ExpectFailedStart({"3265", Library(), "foldername"});
}

TEST_F(BadLibraryTest, NoEntryTable) {
    session_.ExecuteHome(
        "Velmo2.mdb", "CREATE TABLE FolderTable (ID INTEGER PRIMARY KEY, ParentID, FolderName, SLDFileName);"
                      "INSERT INTO FolderTable VALUES (1, 0, 'R', '');");
    Start();
    ExpectError({"3078", Library()});
    // A category that cannot be shown leaves a usable window.
    Run().WaitForWindow("VLM_MAIN");
    Run().ClickAction("Tbar_Cancel");
    EXPECT_EQ(End(), 0);
}

TEST_F(BadLibraryTest, CutShort) {
    ImportOnce();
    const QByteArray half = session_.ReadHome("velmo2.mdb").first(4096 + 100);
    session_.WriteHome("velmo2.mdb", half);
    ExpectFailedStart({"3343", Library()});
    EXPECT_EQ(session_.ReadHome("velmo2.mdb"), half);
}

TEST_F(BadLibraryTest, NoCategories) {
    ImportOnce();
    session_.ExecuteHome("velmo2.mdb", "DELETE FROM FolderTable");
    const QByteArray before = session_.ReadHome("velmo2.mdb");
    ExpectQuestionAtStart(Library() + NoCategory);
    Run().AnswerNo();
    ExpectError({"3021", Library()});
    EXPECT_EQ(End(), 1);
    EXPECT_EQ(session_.ReadHome("velmo2.mdb"), before);
    ExpectQuestionAtStart(Library() + NoCategory);
    Run().AnswerYes();
    Run().WaitForWindow("VLM_MAIN");
    OpenEntry({"トルヴィク", "ボルト"}, "アイボルト");
}

TEST_F(BadLibraryTest, NoRootAmongTheCategories) {
    ImportOnce();
    session_.ExecuteHome("velmo2.mdb", "UPDATE FolderTable SET ParentID = 2 WHERE ID = 1");
    ExpectQuestionAtStart(Library() + NoRoot);
    Run().AnswerNo();
    ExpectError({"3021", Library()});
    EXPECT_EQ(End(), 1);
    ExpectQuestionAtStart(Library() + NoRoot);
    Run().AnswerYes();
    Run().WaitForWindow("VLM_MAIN");
    EXPECT_THAT(Run().Tree("VlmTreeView"), ElementsAre("トルヴィク", "  ボルト", "  座金+", "    大形"));
}

TEST_F(BadLibraryTest, LockedByAnotherProgramFromTheStart) {
    ImportOnce();
    SQLite::Database other((session_.Home() + "/velmo2.mdb").toStdString(), SQLite::OPEN_READWRITE);
    other.exec("BEGIN EXCLUSIVE");
    ExpectFailedStart({"3260", Library()});
}

TEST_F(BadLibraryTest, LockedForAWhileLeavesTheBrowserUsable) {
    StartWith("VLM_MAIN");
    {
        SQLite::Database other((session_.Home() + "/velmo2.mdb").toStdString(), SQLite::OPEN_READWRITE);
        other.exec("BEGIN EXCLUSIVE");
        ChooseCategory({"トルヴィク", "ボルト"});
        ExpectError({"3260", Library()});
    }
    ChooseCategory({"トルヴィク", "座金"});
    ChooseCategory({"トルヴィク", "ボルト"});
    EXPECT_THAT(Run().Column("VlmPdfList", 0), ElementsAre("六角ボルト", "アイボルト", "記号"));
}

TEST_F(BadLibraryTest, AMissingHome) {
    session_.Set("VlmHome", session_.Home() + "/nil");
    ExpectFailedStart({"76", session_.Home() + "/nil\\"});
    EXPECT_FALSE(session_.ExistsInHome("nil"));
}

TEST_F(BadLibraryTest, NoHomeAtAll) {
    session_.WriteSettingsFile("");
    ExpectFailedStart({listFile});
}

#ifdef Q_OS_LINUX
class PermissionTest : public BadLibraryTest {
protected:
    void TearDown() override {
        QFile::setPermissions(session_.Home(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        BadLibraryTest::TearDown();
    }
    void MakeHomeReadOnly() { QFile::setPermissions(session_.Home(), QFile::ReadOwner | QFile::ExeOwner); }
};

TEST_F(PermissionTest, AReadOnlyLibraryIsUsedAllTheSame) {
    ImportOnce();
    QFile::setPermissions(session_.Home() + "/velmo2.mdb", QFile::ReadOwner);
    MakeHomeReadOnly();
    StartChanged(ObeyPermissions);
    Run().WaitForWindow("VLM_MAIN");
    OpenEntry({"トルヴィク", "ボルト"}, "アイボルト");
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
}

TEST_F(PermissionTest, AReadOnlyHomeTakesNoNewLibrary) {
    MakeHomeReadOnly();
    const QByteArray settings = session_.SettingsFile();
    StartChanged(ObeyPermissions);
    ExpectError({"75", session_.HomeDir() + "velmo2.mdb"});
    EXPECT_EQ(End(), 1);
    EXPECT_EQ(QDir(session_.Home()).entryList(QDir::Files), QStringList());
    EXPECT_EQ(session_.SettingsFile(), settings);
}

TEST_F(PermissionTest, AnUnreadableLibrary) {
    ImportOnce();
    QFile::setPermissions(session_.Home() + "/velmo2.mdb", {});
    StartChanged(ObeyPermissions);
    ExpectError({"75", Library()});
    EXPECT_EQ(End(), 1);
}

TEST_F(PermissionTest, AnUnreadableDefinition) {
    StartWith("VLM_MAIN");
    QFile::setPermissions(session_.Home() + "/SMB/BOLT/EYE.TXT", {});
    StartChanged(ObeyPermissions);
    Run().WaitForWindow("VLM_MAIN");
    ChooseCategory({"トルヴィク", "ボルト"});
    Run().Click("VlmPdfList", Item::Named("アイボルト"));
    Run().ClickAction("Tbar_Open");
    ExpectError({"75", session_.HomeDir() + "SMB\\BOLT\\EYE.TXT"});
    EXPECT_EQ(End(), 1);
}
#endif

} // namespace
} // namespace velmo
