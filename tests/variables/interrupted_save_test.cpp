#include "platform/files.h"
#include "symbol_sample.h"

#include <QDir>
#include <QProcess>

#include <csignal>

namespace velmo {
namespace {

constexpr int SomeCalls = 5;
constexpr int MostCalls = 500;

// A program of its own saves a table and is stopped at each of its file system calls in turn.
class InterruptedSaveTest : public testing::Test {
protected:
    InterruptedSaveTest() {
        symbol.Define({"V1=PRO(\"W\",1)"});
        WriteOld();
    }

    void WriteOld() const { symbol.WriteTable({{"V0001", 4, "W"}}, {"   1", "   2"}); }

    // Runs the program with a fate at a call.
    void Save(const char* fate, int call) {
        program.start(QStringLiteral(DOOMED_SAVE),
                      {symbol.state.TempDir, symbol.state.SymbolFile, fate, QString::number(call)});
        ASSERT_TRUE(program.waitForFinished(-1));
    }
    bool WasKilled() const {
        return program.exitStatus() == QProcess::CrashExit && program.exitCode() == SIGKILL;
    }
    QByteArray Table() const { return symbol.folder.Read("S1.PMN"); }
    QStringList Files() const {
        return QDir(NativePath(symbol.state.TempDir)).entryList({"S1*"}, QDir::Files, QDir::Name);
    }

    SymbolSample symbol;
    QProcess program;
    const QByteArray newTable = "\r\n1\r\n1\r\nV0001\r\n4\r\n0\r\nW\r\n2\r\n  99\r\n   2\r\n";
};

TEST_F(InterruptedSaveTest, KilledAtAnyCallTheTableIsTheOldOneOrTheNewOne) {
    const QByteArray oldTable = Table();
    int old = 0;
    int replaced = 0;
    int call = 1;
    for (; call < MostCalls; ++call) {
        // What the run killed before left beside the table stays there.
        WriteOld();
        Save("kill", call);
        if (!WasKilled())
            break;
        const QByteArray table = Table();
        ASSERT_TRUE(table == oldTable || table == newTable) << "call " << call;
        ++(table == oldTable ? old : replaced);
    }
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0) << "what killed runs left does not keep the next one from saving";
    EXPECT_EQ(Table(), newTable);
    EXPECT_EQ(Files(), (QStringList{"S1.PMN", "S1.TXT"}));
    EXPECT_GT(old, SomeCalls);
    EXPECT_GT(replaced, 0) << "some call comes after the replacement";
    RecordProperty("killed_before", old);
    RecordProperty("killed_after", replaced);
}

TEST_F(InterruptedSaveTest, TheFinishedFileIsSyncedBeforeItIsRenamedAndItsFolderAfter) {
    Save("kill", MostCalls);
    ASSERT_EQ(program.exitCode(), 0);
    const QByteArrayList calls = program.readAllStandardOutput().split('\n');
    ASSERT_EQ(calls.count("rename"), 1);
    EXPECT_EQ(calls.count("fsync"), 2);
    EXPECT_LT(calls.lastIndexOf("write"), calls.indexOf("fsync"));
    EXPECT_LT(calls.indexOf("fsync"), calls.indexOf("rename"));
    EXPECT_LT(calls.indexOf("rename"), calls.lastIndexOf("fsync"));
    EXPECT_FALSE(calls.contains("unlink")) << "there is no moment without a table";
}

TEST_F(InterruptedSaveTest, WithoutAnOldTableThereIsNoneOrTheNewOne) {
    int none = 0;
    int made = 0;
    for (int call = 1; call < MostCalls; ++call) {
        QFile::remove(NativePath(symbol.folder.Path("S1.PMN")));
        Save("kill", call);
        if (!WasKilled())
            break;
        if (symbol.folder.Exists("S1.PMN")) {
            ASSERT_TRUE(Table().endsWith("\r\nW\r\n1\r\n        99          \r\n")) << "call " << call;
            ++made;
        } else {
            ++none;
        }
    }
    EXPECT_GT(none, SomeCalls);
    EXPECT_GT(made, 0);
}

TEST_F(InterruptedSaveTest, AFailureOfAnyCallIsToldOrHarmless) {
    const QByteArray oldTable = Table();
    int told = 0;
    int toldAfterwards = 0;
    int harmless = 0;
    // The last call that there is.
    int calls = 1;
    for (WriteOld(), Save("kill", calls); WasKilled(); WriteOld(), Save("kill", calls))
        ++calls;
    ASSERT_GT(calls, SomeCalls);
    for (int call = 1; call < calls; ++call) {
        WriteOld();
        Save("fail", call);
        ASSERT_EQ(program.exitStatus(), QProcess::NormalExit) << "call " << call;
        const bool saved = program.exitCode() == 0;
        // Once renamed, the table is in its place; what fails after that is told all the same.
        const qsizetype renaming = program.readAllStandardOutput().split('\n').indexOf("rename") + 1;
        const bool renamed = renaming > 0 && renaming < call;
        EXPECT_EQ(Table(), saved || renamed ? newTable : oldTable) << "call " << call;
        EXPECT_EQ(Files(), (QStringList{"S1.PMN", "S1.TXT"})) << "call " << call;
        ++(saved ? harmless : told);
        toldAfterwards += !saved && renamed ? 1 : 0;
    }
    EXPECT_GT(told, SomeCalls);
    EXPECT_GT(toldAfterwards, 0) << "a folder that cannot be synced is an error";
    EXPECT_GT(harmless, 0);
}

} // namespace
} // namespace velmo
