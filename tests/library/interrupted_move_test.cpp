#include "library/symbol_file_move.h"
#include "symbol_library.h"

#include <QProcess>

#include <csignal>

namespace velmo {
namespace {

constexpr int SomeCalls = 20;
constexpr int MostCalls = 1000;

// A program of its own moves the files of three entries and is stopped at each of its file system calls in
// turn.
class InterruptedMoveTest : public SymbolLibrary {
protected:
    InterruptedMoveTest() {
        Database database = Open();
        AddEntry(database, 2, "M10 again", "A\\M10.PDF", "A\\it's.SLD");
        // Longer than what is copied at once.
        contents["M12.PDF"] = QByteArray(2'500'000, 'p');
        contents["it's.SLD"] = "odd";
        for (const char* name : {"M10.PDF", "M10.PMN", "M10.lbl", "M10.SLD", "M12.SLD"})
            contents[name] = QByteArray("content of ") + name;
        library = folder.Read("home\\VelmoUsr.mdb");
    }

    // Everything as before the first move.
    void Restore() {
        QDir home(NativePath(state.LibRoot));
        ASSERT_TRUE(QDir(home.filePath("A")).removeRecursively() &&
                    QDir(home.filePath("N")).removeRecursively());
        for (const QString& left : Leftovers())
            ASSERT_TRUE(home.remove(left));
        WriteFile("VelmoUsr.mdb", library);
        for (auto file = contents.cbegin(); file != contents.cend(); ++file)
            WriteFile("A\\" + file.key(), file.value());
        WriteFile("N\\M12.SLD", oldSlide);
    }
    void Move(const char* fate, int call) {
        program.start(QStringLiteral(DOOMED_MOVE), {state.LibRoot, fate, QString::number(call)});
        ASSERT_TRUE(program.waitForFinished(-1));
    }
    bool WasKilled() const {
        return program.exitStatus() == QProcess::CrashExit && program.exitCode() == SIGKILL;
    }

    // Each file is whole in its old or its new place; what lies there unasked is whole too. Counts those in
    // the old one.
    int ExpectFilesWhole() const {
        const QMap<QString, QByteArray> files = Files();
        int old = 0;
        for (auto file = contents.cbegin(); file != contents.cend(); ++file) {
            const bool inOld = files.value("A\\" + file.key()) == file.value();
            EXPECT_TRUE(inOld || files.value("N\\" + file.key()) == file.value()) << file.key().toStdString();
            old += inOld ? 1 : 0;
        }
        for (auto file = files.cbegin(); file != files.cend(); ++file) {
            const bool half = file.key().endsWith(".moving");
            const bool replaced = file.key() == "N\\M12.SLD" && file.value() == oldSlide;
            EXPECT_TRUE(half || replaced || file.value() == contents.value(PathToFnam(file.key())))
                << file.key().toStdString();
        }
        return old;
    }
    // The entries are there, and each of their files is the right one.
    void ExpectEntriesWhole() const {
        const QMap<QString, QByteArray> files = Files();
        const std::vector<ContentRow> rows = FolderContent(state);
        ASSERT_EQ(rows.size(), names.size());
        for (size_t i = 0; i < rows.size(); ++i) {
            EXPECT_EQ(rows[i].name, names.at(i));
            for (const QString& file : {rows[i].pdf, rows[i].slide}) {
                ASSERT_TRUE(files.contains(file)) << file.toStdString();
                EXPECT_EQ(files.value(file), contents.value(PathToFnam(file)));
            }
        }
        // What belongs to a symbol is beside its definition file, and nowhere else after a move.
        const bool moved = rows[0].pdf == "N\\M10.PDF";
        for (const QString& name : {QStringLiteral("M10.PMN"), QStringLiteral("M10.lbl")}) {
            EXPECT_EQ(files.value((moved ? "N\\" : "A\\") + name), contents[name]);
            EXPECT_FALSE(moved && files.contains("A\\" + name)) << name.toStdString();
        }
    }
    void ExpectFinished() const {
        FinishInterruptedMove(state.LibraryDb, state.LibRoot);
        ExpectEntriesWhole();
        EXPECT_FALSE(folder.Exists("home\\VelmoUsr.mdb.move"));
        for (const QString& name : FileNames())
            EXPECT_FALSE(name.endsWith(".moving")) << name.toStdString();
    }
    void ExpectMoved() const {
        EXPECT_EQ(FileNames(), (QStringList{"N\\M10.PDF", "N\\M10.PMN", "N\\M10.SLD", "N\\M10.lbl",
                                            "N\\M12.PDF", "N\\M12.SLD", "N\\it's.SLD"}));
        ExpectEntriesWhole();
        EXPECT_EQ(Leftovers(), QStringList());
    }

    QMap<QString, QByteArray> contents;
    const std::vector<QString> names = {"M10", "M12", "M10 again"};
    const QByteArray oldSlide = "was there before";
    QByteArray library;
    QProcess program;
};

TEST_F(InterruptedMoveTest, KilledAtAnyCallNoFileIsLostAndEveryEntryFindsItsFile) {
    // How many files were still in their old places, over all kills.
    QMap<int, int> kills;
    int call = 1;
    for (; call < MostCalls; ++call) {
        Restore();
        Move("kill", call);
        if (!WasKilled())
            break;
        ++kills[ExpectFilesWhole()];
        ExpectFinished();
        ASSERT_FALSE(HasFailure()) << "call " << call;
    }
    EXPECT_EQ(program.exitCode(), 0);
    ExpectMoved();
    for (int old = 0; old <= int(contents.size()); ++old)
        EXPECT_GT(kills[old], 0) << "no kill with " << old << " files to go";
    RecordProperty("kills", call - 1);
}

TEST_F(InterruptedMoveTest, WhatAKilledMoveLeftDoesNotHinderTheNext) {
    // A step that meets each kind of call sooner or later.
    constexpr int step = 3;
    int kills = 0;
    for (int call = 1; call < MostCalls; call += step) {
        Restore();
        Move("kill", call);
        if (!WasKilled())
            break;
        ++kills;
        Move("kill", MostCalls);
        ASSERT_EQ(program.exitCode(), 0) << "call " << call;
        // The first program of a series finds the library as the killed one left it and lists old names,
        // which the move itself then puts right.
        ExpectFilesWhole();
        ExpectFinished();
        Move("kill", MostCalls);
        ExpectMoved();
        ASSERT_FALSE(HasFailure()) << "call " << call;
    }
    EXPECT_GT(kills, SomeCalls);
}

TEST_F(InterruptedMoveTest, AFailureOfAnyCallLosesNothingEither) {
    int told = 0;
    int harmless = 0;
    int calls = 1;
    for (Restore(), Move("kill", calls); WasKilled(); Restore(), Move("kill", calls))
        ++calls;
    ASSERT_GT(calls, SomeCalls);
    for (int call = 1; call < calls; ++call) {
        Restore();
        Move("fail", call);
        ASSERT_EQ(program.exitStatus(), QProcess::NormalExit) << "call " << call;
        ExpectFilesWhole();
        ++(program.exitCode() == 0 ? harmless : told);
        ExpectFinished();
        if (program.exitCode() == 0)
            ExpectMoved();
        ASSERT_FALSE(HasFailure()) << "call " << call;
    }
    EXPECT_GT(told, SomeCalls);
    EXPECT_GT(harmless, 0);
}

TEST_F(InterruptedMoveTest, EachFileIsOnTheDiskBeforeItsSourceIsDeleted) {
    Restore();
    Move("kill", MostCalls);
    ASSERT_EQ(program.exitCode(), 0);
    const QByteArrayList calls = program.readAllStandardOutput().split('\n');
    const auto expectAt = [&](qsizetype at, const QByteArrayList& names) {
        EXPECT_EQ(calls.mid(at, names.size()), names) << "call " << at;
    };
    // The note, by its rename, is there before the first copy is finished.
    const qsizetype note = calls.indexOf("rename");
    expectAt(note - 1, {"fsync", "rename", "open", "fsync"});
    qsizetype copy = calls.indexOf("futimens");
    EXPECT_LT(note, copy);
    EXPECT_EQ(calls.count("futimens"), contents.size());
    EXPECT_EQ(calls.count("rename"), contents.size() + 1);
    QByteArray order;
    for (const QByteArray& call : calls.mid(copy))
        order += call == "futimens" ? "c" : call == "unlink" ? "d" : "";
    EXPECT_TRUE(order.startsWith("cccddd"
                                 "cd"
                                 "cd"
                                 "cd"
                                 "cd"))
        << "the first symbol has three: " << order.toStdString();
    for (; copy >= 0; copy = calls.indexOf("futimens", copy + 1))
        expectAt(copy + 1, {"fsync", "rename", "open", "fsync", "close", "close", "close"});
    // The note goes last, after the commit and the disappearance of the engine's journal are on the disk.
    EXPECT_LT(calls.lastIndexOf("fdatasync"), calls.lastIndexOf("unlink"));
    EXPECT_GT(calls.lastIndexOf("fdatasync"), calls.lastIndexOf("unlink", calls.lastIndexOf("unlink") - 1));
}

} // namespace
} // namespace velmo
