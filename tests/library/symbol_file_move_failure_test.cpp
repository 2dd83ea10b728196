#include "support/failing_disk.h"
#include "symbol_file_moving.h"

namespace velmo {
namespace {

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
