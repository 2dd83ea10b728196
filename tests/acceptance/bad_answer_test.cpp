#include "acceptance_test.h"
#include "support/small_disk.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <csignal>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#include <sys/stat.h>
#endif

namespace velmo {
namespace {

using testing::ElementsAre;

const QStringList bolts = {"トルヴィク", "ボルト"};

// Answers that cannot be written: told, exit status 1, and what was there stays.
class BadAnswerTest : public AcceptanceTest {
protected:
    void SetUp() override {
        AcceptanceTest::SetUp();
        session_.WriteExchangeLines("velmo.ret", {"1", "V1(d)", "7"});
        session_.WriteExchangeLines("velmo.ret2", {"old", "TOLVIKS"});
    }
    void OpenEye() {
        StartWith("VLM_MAIN");
        OpenEntry(bolts, "アイボルト");
        settings_ = session_.SettingsFile();
    }
    // A folder has the name that a file is to get.
    void Block(const QString& name) {
        QFile::remove(session_.Exchange() + '/' + name);
        QDir().mkpath(session_.Exchange() + '/' + name);
    }
    void ExpectNothingSaved() { EXPECT_EQ(session_.SettingsFile(), settings_); }
    void ExpectNoWorkFiles(const QStringList& files) {
        EXPECT_THAT(QDir(session_.Exchange()).entryList(QDir::Files),
                    testing::UnorderedElementsAreArray(files));
    }

    QByteArray settings_;
};

TEST_F(BadAnswerTest, TheValuesFileIsAFolder) {
    Block("velmo.ret");
    OpenEye();
    Run().Click("Vedt_OKBtn");
    ExpectError({session_.TempDir() + "velmo.ret"});
    EXPECT_EQ(End(), 1);
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), "old\r\nTOLVIKS\r\n");
    ExpectNothingSaved();
}

TEST_F(BadAnswerTest, TheChoiceFileIsAFolder) {
    Block("velmo.ret2");
    OpenEye();
    Run().Click("Vedt_OKBtn");
    ExpectError({session_.TempDir() + "velmo.ret2"});
    EXPECT_EQ(End(), 1);
    EXPECT_EQ(session_.ReadExchange("velmo.ret"), "1\r\nV1(d)\r\n7\r\n");
    ExpectNothingSaved();
}

TEST_F(BadAnswerTest, MeasureIsRefusedAlike) {
    Block("velmo.ret");
    OpenEye();
    Run().ClickAction("TB_POINT");
    ExpectError({session_.TempDir() + "velmo.ret"});
    EXPECT_EQ(End(), 1);
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), "old\r\nTOLVIKS\r\n");
    ExpectNothingSaved();
}

TEST_F(BadAnswerTest, CancelOfTheVariableWindow) {
    Block("velmo.ret2");
    OpenEye();
    Run().Click("VEdt_CanBtn");
    ExpectError({session_.TempDir() + "velmo.ret2"});
    EXPECT_EQ(End(), 1);
    ExpectNothingSaved();
}

TEST_F(BadAnswerTest, CancelOfTheBrowserLeavesItOpen) {
    Block("velmo.ret2");
    StartWith("VLM_MAIN");
    Run().ClickMenu("VlmMnuFileCan");
    ExpectError({session_.TempDir() + "velmo.ret2"});
    EXPECT_TRUE(Run().IsWindowShown("VLM_MAIN"));
    Run().ClickAction("Tbar_Cancel");
    EXPECT_EQ(End(), 0);
}

TEST_F(BadAnswerTest, AMissingExchangeFolder) {
    session_.Set("VlmTemp", session_.Exchange() + "/nil");
    StartWith("VLM_MAIN");
    settings_ = session_.SettingsFile();
    ChooseCategory(bolts);
    Run().Click("VlmPdfList", Item::Named("アイボルト"));
    Run().ClickAction("Tbar_Open");
    ExpectError({"76", session_.Exchange() + "/nil\\VELMONOW.mdb"});
    EXPECT_EQ(End(), 1);
    EXPECT_FALSE(session_.ExistsInExchange("nil"));
    ExpectNothingSaved();
}

TEST_F(BadAnswerTest, AnExchangeFolderThatGoesAway) {
    OpenEye();
    ASSERT_TRUE(QDir(session_.Exchange()).removeRecursively());
    Run().Click("Vedt_OKBtn");
    ExpectError({"76", session_.TempDir() + "velmo.ret"});
    EXPECT_EQ(End(), 1);
    ExpectNothingSaved();
}

TEST_F(BadAnswerTest, TheWorkDatabaseIsAFolder) {
    Block("VELMONOW.mdb");
    StartWith("VLM_MAIN");
    ChooseCategory(bolts);
    Run().Click("VlmPdfList", Item::Named("アイボルト"));
    Run().ClickAction("Tbar_Open");
    ExpectError({session_.TempDir() + "VELMONOW.mdb"});
    EXPECT_EQ(End(), 1);
}

TEST_F(BadAnswerTest, AnOldWorkDatabaseIsReplacedWhateverItHolds) {
    session_.WriteExchangeLines("VELMONOW.mdb", {"no database"});
    OpenEye();
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    ExpectNoWorkFiles({"velmo.ret", "velmo.ret2"});
}

TEST_F(BadAnswerTest, TheSettingsCannotBeSaved) {
    OpenEye();
    QFile::remove(session_.SettingsPath());
    QDir().mkpath(session_.SettingsPath());
    Run().Click("Vedt_OKBtn");
    ExpectError({session_.SettingsPath()});
    // The answer stands, but nothing says that it was handed back before the settings are there too.
    EXPECT_TRUE(Run().IsWindowShown("VLM_VEDT"));
    QDir().rmdir(session_.SettingsPath());
    session_.WriteSettingsFile(settings_);
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.Setting("SmbTbl1"), QString("8"));
}

#ifdef Q_OS_UNIX
constexpr int mostBytes = 100'000;

// Files of the new process cannot grow beyond a size; a write beyond it fails as on a full disk.
void LimitFileSize() {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{mostBytes, mostBytes};
    setrlimit(RLIMIT_FSIZE, &limit);
}

TEST_F(BadAnswerTest, TheDiskIsFull) {
    const SmallDisk disk(session_.Exchange(), mostBytes);
    if (!disk.IsThere())
        GTEST_SKIP() << "no disk can be mounted here";
    // The values go into the answer only, and not into the work database.
    const QString value(mostBytes / 2, '1');
    session_.WriteHomeLines("SMB\\BOLT\\EYE.TXT",
                            {"$VAR", R"(V1=PRO("d",)" + value, R"(V2=PRO("e",)" + value, "$GEO"});
    session_.WriteExchangeLines("velmo.ret", {"1", "V1(d)", "7"});
    session_.WriteExchangeLines("velmo.ret2", {session_.HomeDir() + "SMB\\BOLT\\EYE.TXT", "TOLVIKS"});
    const QByteArray choice = session_.ReadExchange("velmo.ret2");
    session_.Set("VlmNxt", "1");
    settings_ = session_.SettingsFile();
    StartWith("VLM_VEDT");
    Run().Click("Vedt_OKBtn");
    ExpectError({"61", session_.TempDir() + "velmo.ret"});
    EXPECT_EQ(End(), 1);
    EXPECT_EQ(session_.ReadExchange("velmo.ret"), "1\r\nV1(d)\r\n7\r\n");
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), choice);
    ExpectNoWorkFiles({"VELMONOW.mdb", "velmo.ret", "velmo.ret2"});
    ExpectNothingSaved();
}

TEST_F(BadAnswerTest, TheSettingsAreOnAFullDisk) {
    const QString folder = QFileInfo(session_.SettingsPath()).path();
    const QByteArray settings = session_.SettingsFile() + "[Others]\nKey=1\n";
    const SmallDisk disk(folder, mostBytes);
    if (!disk.IsThere())
        GTEST_SKIP() << "no disk can be mounted here";
    session_.WriteSettingsFile(settings);
    OpenEye();
    disk.Fill("others");
    Run().Click("Vedt_OKBtn");
    ExpectError({"61", session_.SettingsPath()});
    ExpectNothingSaved();
    EXPECT_EQ(session_.ReadExchange("velmo.ret"), "1\r\nV1(d)\r\n7\r\n");
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), "old\r\nTOLVIKS\r\n");
    EXPECT_EQ(QDir(folder).entryList(QDir::Files), (QStringList{"others", "Velmo2.ini"}));
    ASSERT_TRUE(QFile::remove(folder + "/others"));
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_TRUE(session_.SettingsFile().contains("[Others]\nKey=1\n"));
    EXPECT_EQ(session_.Setting("SmbTbl1"), QString("8"));
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret2")->last(), QString("TOLVIKS"));
}

TEST_F(BadAnswerTest, TheAnswerIsAPipe) {
    for (const char* name : {"velmo.ret", "velmo.ret2"}) {
        QFile::remove(session_.Exchange() + '/' + name);
        ASSERT_EQ(::mkfifo(QFile::encodeName(session_.Exchange() + '/' + name).constData(), 0600), 0);
        OpenEye();
        Run().Click("Vedt_OKBtn");
        ExpectError({"75", session_.TempDir() + name, "通常のファイルではありません"});
        EXPECT_EQ(End(), 1);
        ExpectNothingSaved();
        QFile::remove(session_.Exchange() + '/' + name);
    }
}

TEST_F(BadAnswerTest, TheDiskIsFullForTheSettings) {
    session_.WriteExchangeLines("velmo.ret2", {session_.HomeDir() + "SMB\\BOLT\\EYE.TXT", "TOLVIKS"});
    session_.Set("VlmNxt", "1");
    settings_ = session_.SettingsFile() + "[Others]\nKey=";
    settings_ += QByteArray(mostBytes - settings_.size() - 1, 'x') + '\n';
    session_.WriteSettingsFile(settings_);
    StartChanged(LimitFileSize);
    Run().WaitForWindow("VLM_VEDT");
    Run().Click("Vedt_OKBtn");
    ExpectError({session_.SettingsPath()});
    ExpectNothingSaved();
    EXPECT_EQ(QDir(QFileInfo(session_.SettingsPath()).path()).entryList({"*.ini*"}, QDir::Files),
              QStringList("Velmo2.ini"));
    EXPECT_TRUE(Run().IsWindowShown("VLM_VEDT"));
    Run().Click("VEdt_CanBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), "NO SELECT\r\n");
    ExpectNothingSaved();
}

TEST_F(BadAnswerTest, TheDiskIsFullDuringTheImport) {
    QStringList lines = {R"(("root,  ,")", R"(("A,  \A.SLD,")"};
    for (int entry = 0; entry < mostBytes / 50; ++entry)
        lines << QString(R"(("entry %1,  \BOLT\HEX.SLD,  \BOLT\HEX.TXT"))").arg(entry);
    session_.WriteHomeLines("syst\\vlmsymlib.lst", lines);
    settings_ = session_.SettingsFile();
    StartChanged(LimitFileSize);
    ExpectError({session_.HomeDir() + "velmo2.mdb"});
    EXPECT_EQ(End(), 1);
    EXPECT_EQ(QDir(session_.Home()).entryList(QDir::Files), QStringList());
    ExpectNothingSaved();
}
#endif

// Characters that the CAD side cannot read.
class ForeignCharacterTest : public BadAnswerTest {};

TEST_F(ForeignCharacterTest, InAValueIsToldWithItsVariable) {
    OpenEye();
    EnterValue(2, "1😀2");
    Run().Click("Vedt_OKBtn");
    ExpectError({"😀", "V7(個数)"});
    EXPECT_EQ(CurrentRow("Vedt_NowFGrid"), 2);
    EXPECT_EQ(session_.ReadExchange("velmo.ret"), "1\r\nV1(d)\r\n7\r\n");
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), "old\r\nTOLVIKS\r\n");
    ExpectNothingSaved();
    Run().ClickAction("TB_POINT");
    ExpectError({"😀", "V7(個数)"});
    ExpectNothingSaved();
    // The field is open for another value.
    Run().Press("Ctrl+A");
    Run().Type("12");
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret"), QStringList({"2", "V1(d)", "8", "V7(個数)", "12"}));
}

TEST_F(ForeignCharacterTest, InTheSymbolsPath) {
    session_.Set("VlmHome", session_.Home() + "é");
    ASSERT_TRUE(QFile::rename(session_.Home(), session_.Home() + "é"));
    StartWith("VLM_MAIN");
    settings_ = session_.SettingsFile();
    OpenEntry(bolts, "アイボルト");
    Run().Click("Vedt_OKBtn");
    ExpectError({"é"});
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), "old\r\nTOLVIKS\r\n");
    ExpectNothingSaved();
    Run().Click("VEdt_CanBtn");
    Run().WaitFor("the browser alone", [this] { return !Run().IsWindowShown("VLM_VEDT"); });
}

TEST_F(ForeignCharacterTest, CharactersOfTheCodePageAreTaken) {
    OpenEye();
    EnterValue(2, "①Ⅲ㈱髙～∥－￢");
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret")->last(), QString("①Ⅲ㈱髙～∥－￢"));
}

} // namespace
} // namespace velmo
