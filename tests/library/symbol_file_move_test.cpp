#include "library/symbol_file_move.h"
#include "support/failing_disk.h"
#include "support/failure.h"
#include "support/other_user.h"
#include "symbol_library.h"

#include <QElapsedTimer>

#include <unistd.h>

namespace velmo {
namespace {

class SymbolFileMoveTest : public SymbolLibrary {
protected:
    SymbolFileMoveTest() {
        callbacks.inform = [this](const QString& text) {
            ExpectFree();
            told << text;
        };
        callbacks.ask = [this](const QString& text) {
            ExpectFree();
            asked << text;
            return !refused.contains(asked.size());
        };
        callbacks.progress = [this](qint64 done, qint64 total) {
            progress << QStringLiteral("%1/%2").arg(done).arg(total);
            return done != stopAt;
        };
    }

    // No connection of ours is open while the user reads.
    void ExpectFree() const {
        Database database = Open();
        database.Execute("BEGIN EXCLUSIVE");
        database.Execute("ROLLBACK");
    }
    void Move() { MoveSymbolFiles(state, FolderContent(state), callbacks); }
    // Everyone may write the library, and add files beside it and in one of the folders.
    void OpenTo(const QString& name) const {
        constexpr mode_t everyoneWorks = 0777;
        Permit(state.LibraryDb, everyoneWrites);
        for (const QString& opened : {folder.Path(), Root(name)})
            ASSERT_EQ(::chmod(QFile::encodeName(NativePath(opened)).constData(), everyoneWorks), 0);
    }
    // The move fails at a file that it has no right to, and everything is as before.
    void ExpectTold(const QString& file) {
        try {
            Move();
            ADD_FAILURE() << "no error";
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), ErrorNumber::PermissionDenied);
            EXPECT_EQ(error.File(), file);
        }
        EXPECT_EQ(FileNames(), (QStringList{"A\\M10.PDF", "A\\M10.SLD", "A\\M12.PDF", "A\\M12.SLD"}));
        EXPECT_EQ(Entries(), firstEntries);
        EXPECT_EQ(Leftovers(), QStringList());
    }
    QString Root(const QString& name) const { return state.LibRoot + name; }

    FileMoveCallbacks callbacks;
    QStringList told;
    QStringList asked;
    QStringList progress;
    // The questions, counted from 1, that are answered no.
    QList<qsizetype> refused;
    qint64 stopAt = -1;
    const QStringList movedEntries = {"1|2|M10|N\\M10.PDF|N\\M10.SLD", "2|2|M12|N\\M12.PDF|N\\M12.SLD"};
};

TEST_F(SymbolFileMoveTest, TheNameIsWhatFollowsTheLastBackslash) {
    EXPECT_EQ(PathToFnam("A\\B\\C.PDF"), "C.PDF");
    EXPECT_EQ(PathToFnam("C.PDF"), "C.PDF");
    EXPECT_EQ(PathToFnam("A\\"), "");
    EXPECT_EQ(PathToFnam(""), "");
}

TEST_F(SymbolFileMoveTest, MovesPdfAndSlideOfEachEntryAndStoresTheirNames) {
    Move();
    EXPECT_EQ(FileNames(), (QStringList{"N\\M10.PDF", "N\\M10.SLD", "N\\M12.PDF", "N\\M12.SLD"}));
    EXPECT_EQ(folder.Read("home\\N\\M12.SLD"), "content of A\\M12.SLD");
    EXPECT_EQ(Entries(), movedEntries);
    EXPECT_EQ(Folders(), rootFolders);
    EXPECT_EQ(told + asked, QStringList());
    EXPECT_EQ(progress, (QStringList{"0/4", "1/4", "2/4", "3/4"}));
    EXPECT_EQ(Leftovers(), QStringList());
}

TEST_F(SymbolFileMoveTest, OnlyTheSelectedOnesMove) {
    MoveSymbolFiles(state, {FolderContent(state).at(1)}, callbacks);
    EXPECT_EQ(FileNames(), (QStringList{"A\\M10.PDF", "A\\M10.SLD", "N\\M12.PDF", "N\\M12.SLD"}));
    EXPECT_EQ(Entries(), (QStringList{firstEntries[0], movedEntries[1]}));
}

TEST_F(SymbolFileMoveTest, AFolderThatEndsInABackslashGetsNoSecondOne) {
    state.PickedDir += '\\';
    Move();
    EXPECT_EQ(Entries(), movedEntries);
}

TEST_F(SymbolFileMoveTest, TheEntriesHoldTheFolderAsItWasPicked) {
    state.LibRoot = state.LibRoot.toUpper();
    state.PickedDir = state.PickedDir.toUpper() + "\\";
    QDir(NativePath(state.HomeDir)).rename("N", "n");
    Move();
    EXPECT_EQ(Entries(), movedEntries);
    EXPECT_EQ(QDir(NativePath(state.HomeDir + "n")).entryList(QDir::Files).size(), 4);
}

TEST_F(SymbolFileMoveTest, AFolderWhoseNameIsTheRootsInUpperCaseIsAnother) {
    folder.Write("HOME\\N\\M10.PDF", "not ours");
    WriteFile("N\\M12.SLD", "old");
    state.PickedDir = folder.Path() + "HOME\\N\\";
    Move();
    EXPECT_EQ(asked, QStringList{state.PickedDir + "M12.SLDはすでに存在します\r上書きしてよろしいですか"});
    EXPECT_EQ(FileNames(), (QStringList{"N\\M10.PDF", "N\\M10.SLD", "N\\M12.PDF", "N\\M12.SLD"}));
    EXPECT_EQ(Entries(), movedEntries);
    EXPECT_EQ(folder.Read("HOME\\N\\M10.PDF"), "not ours");
    EXPECT_EQ(QDir(NativePath(folder.Path() + "HOME\\N")).entryList(QDir::Files), QStringList{"M10.PDF"});
}

TEST_F(SymbolFileMoveTest, NamesAreCutByTheLengthOfTheRootWhereverTheFolderIs) {
    state.PickedDir = folder.Path();
    Move();
    EXPECT_EQ(folder.Read("M10.PDF"), "content of A\\M10.PDF");
    const qsizetype root = state.LibRoot.size();
    EXPECT_EQ(Entries()[0], "1|2|M10|" + (folder.Path() + "M10.PDF").mid(root) + "|" +
                                (folder.Path() + "M10.SLD").mid(root));
}

TEST_F(SymbolFileMoveTest, AnEmptyNameIsPassedOver) {
    Execute("UPDATE PDFFileTable SET SLDFileName='' WHERE ID=1");
    Execute("UPDATE PDFFileTable SET PDFFileName=NULL WHERE ID=2");
    Move();
    EXPECT_EQ(FileNames(), (QStringList{"A\\M10.SLD", "A\\M12.PDF", "N\\M10.PDF", "N\\M12.SLD"}));
    EXPECT_EQ(told + asked, QStringList());
}

TEST_F(SymbolFileMoveTest, AMissingFileIsToldAndTheOthersMove) {
    DeleteFile(Root("A\\M10.SLD"));
    Move();
    EXPECT_EQ(told, QStringList{Root("A\\M10.SLD") + "が見つかりません"});
    EXPECT_EQ(Entries(), (QStringList{"1|2|M10|N\\M10.PDF|A\\M10.SLD", movedEntries[1]}));
}

TEST_F(SymbolFileMoveTest, AFolderOfTheNameIsNoFile) {
    Execute("UPDATE PDFFileTable SET PDFFileName='A' WHERE ID=1");
    Move();
    EXPECT_EQ(told, QStringList{Root("A") + "が見つかりません"});
}

TEST_F(SymbolFileMoveTest, WithoutAnyFileNothingIsTouched) {
    QDir(NativePath(Root("A"))).removeRecursively();
    Move();
    EXPECT_EQ(told.size(), 4);
    EXPECT_EQ(progress, QStringList());
    EXPECT_EQ(Entries(), firstEntries);
}

TEST_F(SymbolFileMoveTest, ItAsksOnceForEachFileThatIsThere) {
    WriteFile("N\\M10.PDF", "old pdf");
    WriteFile("N\\m10.sld", "old slide");
    refused = {1};
    Move();
    const QString question = QStringLiteral("はすでに存在します\r上書きしてよろしいですか");
    EXPECT_EQ(asked, (QStringList{Root("N\\M10.PDF") + question, Root("N\\M10.SLD") + question}));
    EXPECT_EQ(folder.Read("home\\A\\M10.PDF"), "content of A\\M10.PDF");
    EXPECT_EQ(folder.Read("home\\N\\M10.PDF"), "old pdf");
    EXPECT_EQ(folder.Read("home\\N\\m10.sld"), "content of A\\M10.SLD");
    EXPECT_EQ(Entries(), (QStringList{"1|2|M10|A\\M10.PDF|N\\M10.SLD", movedEntries[1]}));
}

TEST_F(SymbolFileMoveTest, AFileThatAnEarlierEntryTakesAwayIsMissing) {
    {
        Database database = Open();
        AddEntry(database, 2, "again", "A\\M10.PDF", "A\\m12.sld");
    }
    Move();
    EXPECT_EQ(told, (QStringList{Root("A\\M10.PDF") + "が見つかりません",
                                 Root("A\\m12.sld") + "が見つかりません"}));
    EXPECT_EQ(Entries(), movedEntries + QStringList{"3|2|again|N\\M10.PDF|A\\m12.sld"})
        << "equal names are all changed, others not";
}

TEST_F(SymbolFileMoveTest, OtherColumnsAndOtherCategoriesKeepTheName) {
    {
        Database database = Open();
        AddEntry(database, 3, "elsewhere", "A\\M10.PDF", "A\\M10.SLD");
        AddEntry(database, 2, "crossed", "A\\M10.SLD", "A\\M10.PDF");
    }
    const std::vector<ContentRow> rows = FolderContent(state);
    MoveSymbolFiles(state, {rows.at(0)}, callbacks);
    EXPECT_EQ(Entries(), (QStringList{movedEntries[0], firstEntries[1], "3|3|elsewhere|A\\M10.PDF|A\\M10.SLD",
                                      "4|2|crossed|A\\M10.SLD|A\\M10.PDF"}));
}

TEST_F(SymbolFileMoveTest, AFileThatAnEarlierEntryBringsIsThere) {
    WriteFile("B\\m10.pdf", "another");
    {
        Database database = Open();
        AddEntry(database, 2, "another", "B\\m10.pdf", "N\\M12.SLD");
    }
    Move();
    EXPECT_EQ(asked.size(), 1) << "the file that entry 1 brings is there then";
    EXPECT_TRUE(asked.value(0).startsWith(Root("N\\m10.pdf")));
    EXPECT_EQ(told, QStringList()) << "so is the slide that entry 2 brings, and it is in its place";
    EXPECT_EQ(folder.Read("home\\N\\M10.PDF"), "another");
    EXPECT_EQ(Entries(), movedEntries + QStringList{"3|2|another|N\\m10.pdf|N\\M12.SLD"});
}

TEST_F(SymbolFileMoveTest, AFileThatIsThereAlreadyStaysWithoutAQuestion) {
    state.PickedDir = Root("a");
    Move();
    ASSERT_EQ(::symlink("A", QFile::encodeName(NativePath(state.LibRoot) + "L").constData()), 0);
    state.PickedDir = Root("L");
    Move();
    EXPECT_EQ(told + asked + progress, QStringList());
    EXPECT_EQ(Entries(), firstEntries);
    EXPECT_EQ(FileNames().size(), 4);
}

TEST_F(SymbolFileMoveTest, AHardLinkOfTheFileIsTheFile) {
    ASSERT_EQ(::link(QFile::encodeName(NativePath(Root("A\\M10.PDF"))).constData(),
                     QFile::encodeName(NativePath(Root("N")) + "/M10.PDF").constData()),
              0);
    Move();
    EXPECT_EQ(asked, QStringList());
    EXPECT_EQ(Entries(), (QStringList{"1|2|M10|A\\M10.PDF|N\\M10.SLD", movedEntries[1]}));
}

TEST_F(SymbolFileMoveTest, AQuoteInANameIsTextLikeAnyOther) {
    const QString name = QStringLiteral("it's \"3%\" ボルト.PDF");
    WriteFile("A\\" + name, "odd");
    {
        Database database = Open();
        AddEntry(database, 2, "odd", "A\\" + name, {});
    }
    Move();
    EXPECT_EQ(folder.Read("home\\N\\" + name), "odd");
    EXPECT_EQ(Entries()[2], "3|2|odd|N\\" + name + "|");
}

TEST_F(SymbolFileMoveTest, StoppingKeepsWhatWasMoved) {
    stopAt = 3;
    Move();
    EXPECT_EQ(FileNames(), (QStringList{"A\\M12.SLD", "N\\M10.PDF", "N\\M10.SLD", "N\\M12.PDF"}));
    EXPECT_EQ(Entries(), (QStringList{movedEntries[0], "2|2|M12|N\\M12.PDF|A\\M12.SLD"}));
    EXPECT_EQ(Leftovers(), QStringList());
    stopAt = 0;
    Move();
    EXPECT_EQ(FileNames().size(), 4);
}

// Three hundred entries with a file each, two of which have a namesake in the target.
class ManyFilesTest : public SymbolFileMoveTest {
protected:
    ManyFilesTest() {
        Execute("DELETE FROM PDFFileTable");
        Database database = Open();
        Transaction adding(database);
        for (int i = 0; i < count; ++i) {
            const QString name = QStringLiteral("P%1.PDF").arg(i);
            WriteFile("A\\" + name, "x");
            AddEntry(database, 2, name, "A\\" + name, {});
        }
        adding.Commit();
        for (const char* name : {"N\\p7.pdf", "N\\P250.PDF"})
            WriteFile(name, "old");
    }
    static constexpr int count = 300;
};

TEST_F(ManyFilesTest, LookingAtThemIsToldBeforeTheFirstQuestion) {
    QStringList toldBefore;
    callbacks.ask = [&](const QString&) {
        if (toldBefore.isEmpty())
            toldBefore = progress;
        EXPECT_EQ(progress, toldBefore);
        return true;
    };
    Move();
    EXPECT_EQ(toldBefore.value(0), "0/600");
    EXPECT_EQ(toldBefore.value(1), "64/600");
    EXPECT_EQ(toldBefore.value(toldBefore.size() - 1), "600/600")
        << "what shows it is closed before the question";
    EXPECT_EQ(progress.value(toldBefore.size()), "0/300");
    EXPECT_EQ(progress.last(), "299/300");
    EXPECT_EQ(folder.Read("home\\N\\p7.pdf"), "x");
}

TEST_F(ManyFilesTest, StoppingWhileTheyAreLookedAtChangesNothing) {
    const QMap<QString, QByteArray> before = Files();
    for (const qint64 stop : {64, 600}) {
        stopAt = stop;
        Move();
        EXPECT_EQ(progress.value(progress.size() - 1), QStringLiteral("%1/600").arg(stop));
    }
    EXPECT_EQ(asked, QStringList());
    EXPECT_EQ(Files(), before);
}

// A folder that was read for every file would take minutes.
TEST_F(ManyFilesTest, ALargeTargetIsReadOnce) {
    for (int i = 0; i < 10'000; ++i)
        WriteFile(QStringLiteral("N\\other%1.pdf").arg(i), {});
    refused = {1, 2};
    QElapsedTimer timer;
    timer.start();
    qint64 planned = -1;
    callbacks.progress = [&](qint64 done, qint64 total) {
        const bool isMoving = total == count - 2;
        if (isMoving && done == 0)
            planned = timer.elapsed();
        return !isMoving;
    };
    Move();
    EXPECT_GE(planned, 0);
    EXPECT_LT(planned, 2000);
    EXPECT_EQ(asked.size(), 2);
}

TEST_F(SymbolFileMoveTest, AFullDiskAtTheThirdFileKeepsTheFirstTwo) {
    WriteFile("A\\M12.PDF", QByteArray(3'000'000, 'x'));
    try {
        const FailingDisk full(1'000'000);
        Move();
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::DiskFull);
        EXPECT_EQ(error.File(), Root("N\\M12.PDF"));
    }
    EXPECT_EQ(FileNames(), (QStringList{"A\\M12.PDF", "A\\M12.SLD", "N\\M10.PDF", "N\\M10.SLD"}));
    EXPECT_EQ(Files()["A\\M12.PDF"].size(), 3'000'000);
    EXPECT_EQ(Entries(), (QStringList{movedEntries[0], firstEntries[1]}));
    EXPECT_EQ(Leftovers(), QStringList());
}

TEST_F(SymbolFileMoveTest, ADiskWithoutRoomForTheNoteMovesNothing) {
    const QMap<QString, QByteArray> before = Files();
    {
        const FailingDisk full(100);
        EXPECT_THROW(Move(), RuntimeError);
    }
    EXPECT_EQ(Files(), before);
    EXPECT_EQ(Entries(), firstEntries);
    EXPECT_EQ(Leftovers(), QStringList());
}

TEST_F(SymbolFileMoveTest, AFileThatVanishesMeanwhileEndsTheMoveWithWhatWasMoved) {
    callbacks.progress = [this](qint64 done, qint64) {
        if (done == 2)
            DeleteFile(Root("A\\M12.PDF"));
        return true;
    };
    try {
        Move();
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::FileNotFound);
        EXPECT_EQ(error.File(), Root("A\\M12.PDF"));
    }
    EXPECT_EQ(Entries(), (QStringList{movedEntries[0], firstEntries[1]}));
}

TEST_F(SymbolFileMoveTest, AFileThatAppearsMeanwhileIsNotOverwritten) {
    callbacks.progress = [this](qint64 done, qint64) {
        if (done == 1)
            WriteFile("N\\M10.SLD", "from elsewhere");
        return true;
    };
    EXPECT_EQ(Failure([&] { Move(); }), ErrorNumber::PathFileAccess);
    EXPECT_EQ(folder.Read("home\\N\\M10.SLD"), "from elsewhere");
    EXPECT_EQ(Entries()[0], "1|2|M10|N\\M10.PDF|A\\M10.SLD");
}

TEST_F(SymbolFileMoveTest, AFolderThatIsGoneIsTold) {
    state.PickedDir = Root("GONE");
    EXPECT_EQ(Failure([&] { Move(); }), ErrorNumber::PathNotFound);
    EXPECT_EQ(Entries(), firstEntries);
    EXPECT_EQ(Leftovers(), QStringList());
}

TEST_F(SymbolFileMoveTest, AFolderOfTheNameIsNotReplaced) {
    QDir(NativePath(Root("N"))).mkdir("M10.PDF");
    EXPECT_EQ(Failure([&] { Move(); }), ErrorNumber::PathFileAccess);
    EXPECT_EQ(Entries(), firstEntries);
}

TEST_F(SymbolFileMoveTest, ANewNameThatIsTooLongIsFoundBeforeTheFirstFile) {
    const QString deep = QString("N\\%1\\%1").arg(QString(100, 'd'));
    QDir(NativePath(state.LibRoot)).mkpath(NativePath(Root(deep)));
    state.PickedDir = Root(deep);
    const QString longName = "A\\" + QString(100, 'n');
    WriteFile(longName, "long");
    {
        Database database = Open();
        AddEntry(database, 2, "long", {}, longName);
    }
    try {
        Move();
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::TextTooLong);
        EXPECT_EQ(error.File(), Root(deep) + '\\' + QString(100, 'n'));
    }
    EXPECT_EQ(Entries().first(2), firstEntries);
    EXPECT_TRUE(folder.Exists("home\\A\\M10.PDF"));
}

TEST_F(SymbolFileMoveTest, APdfDoesNotGoWhereTheCadSideCouldNotFindIt) {
    QDir(NativePath(state.LibRoot)).mkdir("É");
    state.PickedDir = Root("É");
    try {
        Move();
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::InvalidArgument);
        EXPECT_TRUE(error.Detail().contains("É"));
    }
    EXPECT_EQ(Entries(), firstEntries);
    EXPECT_EQ(FileNames().size(), 4);
}

TEST_F(SymbolFileMoveTest, ABusyLibraryIsFoundBeforeAnythingIsMovedOrAsked) {
    WriteFile("N\\M10.PDF", "old");
    const QMap<QString, QByteArray> before = Files();
    {
        const BusyWriter other(state.LibraryDb);
        EXPECT_EQ(Failure([&] { Move(); }), ErrorNumber::DatabaseLocked);
    }
    EXPECT_EQ(asked, QStringList());
    EXPECT_EQ(Files(), before);
}

TEST_F(SymbolFileMoveTest, ALibraryThatBecomesBusyIsFoundBeforeAnythingIsMoved) {
    WriteFile("N\\M10.PDF", "old");
    const QMap<QString, QByteArray> before = Files();
    std::optional<BusyWriter> other;
    callbacks.ask = [&](const QString&) {
        other.emplace(state.LibraryDb);
        return true;
    };
    EXPECT_EQ(Failure([&] { Move(); }), ErrorNumber::DatabaseLocked);
    EXPECT_EQ(Files(), before);
    EXPECT_FALSE(folder.Exists("home\\VelmoUsr.mdb.move"));
}

TEST_F(SymbolFileMoveTest, ATargetWithoutWritePermissionIsTold) {
    if (!OtherUser::IsPossible())
        GTEST_SKIP() << "only the superuser can be another user";
    OpenTo("A");
    const OtherUser other(NativePath(state.HomeDir));
    ASSERT_TRUE(other.Changed());
    ExpectTold(Root("N\\M10.PDF"));
}

TEST_F(SymbolFileMoveTest, ASourceThatCannotBeDeletedLeavesNoCopy) {
    if (!OtherUser::IsPossible())
        GTEST_SKIP() << "only the superuser can be another user";
    OpenTo("N");
    const OtherUser other(NativePath(state.HomeDir));
    ASSERT_TRUE(other.Changed());
    ExpectTold(Root("A\\M10.PDF"));
}

} // namespace
} // namespace velmo
