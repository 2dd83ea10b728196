#include "library/entry_removal.h"
#include "maintained_library.h"
#include "support/failing_disk.h"
#include "support/failure.h"
#include "support/other_user.h"

#include <functional>

namespace velmo {
namespace {

const QString HasSubfolders = QStringLiteral("サブフォルダが存在するため削除出来ません");
const QString HasEntries = QStringLiteral("PDFが登録されているため削除出来ません");
const QString Failed = QStringLiteral("del Tbl Error");

class EntryRemovalTest : public MaintainedLibrary {
protected:
    EntryRemovalTest() {
        callbacks.inform = [this](const QString& text) {
            ExpectFree();
            told << text;
        };
        callbacks.ask = [this](const QString& text, const QString& title) {
            ExpectFree();
            asked << title + ": " + text;
            if (meanwhile)
                meanwhile();
            return answer;
        };
    }

    // No connection of ours is open while the user reads.
    void ExpectFree() const {
        if (!checksFree)
            return;
        Database database = Open();
        database.Execute("BEGIN EXCLUSIVE");
        database.Execute("ROLLBACK");
    }
    bool DeleteNuts(int shown = 0) {
        state.CurFolderID = 3;
        state.CurFolderName = "nuts";
        return DeleteFolder(state, shown, callbacks);
    }
    bool DeleteEntry(const QString& name) { return DeletePdfEntry(state, name, callbacks); }

    RemovalCallbacks callbacks;
    QStringList told;
    QStringList asked;
    bool answer = true;
    bool checksFree = true;
    // What another program does while the user is asked.
    std::function<void()> meanwhile;
};

TEST_F(EntryRemovalTest, DeletesAnEmptyFolderAndSelectsItsParent) {
    EXPECT_TRUE(DeleteNuts());
    EXPECT_EQ(asked, QStringList{"VELMO分類ツリー削除: nutsを削除します。よろしいですか"});
    EXPECT_EQ(told, QStringList());
    EXPECT_EQ(Folders(), rootFolders.first(2));
    EXPECT_EQ(state.CurFolderID, 1);
}

TEST_F(EntryRemovalTest, AFolderWithSubfoldersIsRefusedFirst) {
    state.CurFolderID = 1;
    EXPECT_FALSE(DeleteFolder(state, 3, callbacks));
    EXPECT_EQ(told, QStringList{HasSubfolders});
    EXPECT_EQ(asked, QStringList());
    EXPECT_EQ(Folders(), rootFolders);
    EXPECT_EQ(state.CurFolderID, 1);
}

TEST_F(EntryRemovalTest, AFolderWhoseListShowsEntriesIsRefused) {
    EXPECT_FALSE(DeleteNuts(1));
    EXPECT_EQ(told, QStringList{HasEntries});
    EXPECT_EQ(asked, QStringList());
    EXPECT_EQ(Folders(), rootFolders);
}

TEST_F(EntryRemovalTest, TheListOnScreenCountsNotTheTable) {
    EXPECT_TRUE(DeleteFolder(state, 0, callbacks));
    EXPECT_EQ(Folders(), (QStringList{rootFolders[0], rootFolders[2]}));
    EXPECT_EQ(Entries(), firstEntries);
}

TEST_F(EntryRemovalTest, TheLastRootStays) {
    Execute("DELETE FROM FolderTable WHERE ID<>1");
    state.CurFolderID = 1;
    EXPECT_FALSE(DeleteFolder(state, 0, callbacks));
    EXPECT_EQ(told, QStringList{"最後のルートフォルダは削除出来ません"});
    EXPECT_EQ(asked, QStringList());
    Execute("INSERT INTO FolderTable (ParentID,FolderName) VALUES (0,'second')");
    EXPECT_TRUE(DeleteFolder(state, 0, callbacks)) << "another root is left";
}

TEST_F(EntryRemovalTest, NoLeavesTheFolder) {
    answer = false;
    EXPECT_FALSE(DeleteNuts());
    EXPECT_EQ(Folders(), rootFolders);
    EXPECT_EQ(state.CurFolderID, 3);
    EXPECT_EQ(told, QStringList());
}

TEST_F(EntryRemovalTest, ASubfolderAddedWhileTheUserIsAskedKeepsTheFolder) {
    meanwhile = [this] { Execute("INSERT INTO FolderTable (ParentID,FolderName) VALUES (3,'new')"); };
    EXPECT_FALSE(DeleteNuts());
    EXPECT_EQ(told, QStringList{HasSubfolders});
    EXPECT_EQ(Folders(), rootFolders + QStringList{"4|3|new|"});
    EXPECT_EQ(state.CurFolderID, 3);
}

TEST_F(EntryRemovalTest, AFolderThatVanishesIsAnError) {
    meanwhile = [this] { Execute("DELETE FROM FolderTable WHERE ID=3"); };
    EXPECT_FALSE(DeleteNuts());
    EXPECT_EQ(told, QStringList{Failed});
    EXPECT_EQ(state.CurFolderID, 3);
}

TEST_F(EntryRemovalTest, AFolderThatIsItsOwnParentHasASubfolder) {
    Execute("UPDATE FolderTable SET ParentID=3 WHERE ID=3");
    EXPECT_FALSE(DeleteNuts());
    EXPECT_EQ(told, QStringList{HasSubfolders});
}

TEST_F(EntryRemovalTest, AParentNumberBeyondSixteenBitsIsAnErrorAndDeletesNothing) {
    Execute("UPDATE FolderTable SET ParentID=40000 WHERE ID=3");
    EXPECT_FALSE(DeleteNuts());
    EXPECT_EQ(told, QStringList{Failed});
    EXPECT_EQ(Folders().size(), 3);
}

TEST_F(EntryRemovalTest, DeletesAnEntryByItsName) {
    state.CurPdfID = 1;
    EXPECT_TRUE(DeleteEntry("M12"));
    EXPECT_EQ(asked, QStringList{"VelmoPDFリスト削除: M12 を削除します。よろしいですか"});
    EXPECT_EQ(Entries(), firstEntries.first(1));
}

TEST_F(EntryRemovalTest, OfEqualNamesTheFirstOfTheFolderGoes) {
    {
        Database database = Open();
        AddEntry(database, 3, "same", "1", "1");
        AddEntry(database, 2, "same", "2", "2");
        AddEntry(database, 2, "same", "3", "3");
    }
    EXPECT_TRUE(DeleteEntry("same"));
    EXPECT_EQ(Entries(), firstEntries + (QStringList{"3|3|same|1|1", "5|2|same|3|3"}));
}

TEST_F(EntryRemovalTest, AnEqualNameInAnotherFolderIsNotTaken) {
    {
        Database database = Open();
        AddEntry(database, 3, "M10", "1", "1");
    }
    state.CurFolderID = 3;
    EXPECT_TRUE(DeleteEntry("M10"));
    EXPECT_EQ(Entries(), firstEntries);
    EXPECT_FALSE(DeleteEntry("M10"));
    EXPECT_EQ(told, QStringList{Failed});
    EXPECT_EQ(Entries(), firstEntries);
}

TEST_F(EntryRemovalTest, NoLeavesTheEntry) {
    answer = false;
    EXPECT_FALSE(DeleteEntry("M12"));
    EXPECT_EQ(Entries(), firstEntries);
    EXPECT_EQ(told, QStringList());
}

TEST_F(EntryRemovalTest, AnEntryThatIsNotThereIsAnError) {
    EXPECT_FALSE(DeleteEntry("nothing"));
    EXPECT_EQ(told, QStringList{Failed});
    EXPECT_EQ(asked, QStringList());
}

TEST_F(EntryRemovalTest, AQuoteInTheNameIsAnErrorAndFindsNoOtherEntry) {
    for (const char* name : {"it's", "6' 3'", "M10'--", "x' OR 'a'='a", "M10' OR PDFNAME='M10"}) {
        told.clear();
        EXPECT_FALSE(DeleteEntry(name)) << name;
        EXPECT_EQ(told, QStringList{Failed}) << name;
    }
    EXPECT_EQ(asked, QStringList());
    EXPECT_EQ(Entries(), firstEntries);
}

TEST_F(EntryRemovalTest, AnotherEntryOfTheNameIsNotTakenForTheOneThatVanished) {
    {
        Database database = Open();
        AddEntry(database, 2, "M10", "other", "other");
    }
    meanwhile = [this] { Execute("DELETE FROM PDFFileTable WHERE ID=1"); };
    EXPECT_FALSE(DeleteEntry("M10"));
    EXPECT_EQ(told, QStringList{Failed});
    EXPECT_EQ(Entries(), (QStringList{firstEntries[1], "3|2|M10|other|other"}));
}

TEST_F(EntryRemovalTest, AnEntryWhoseNumberExceedsSixteenBitsCanStillBeDeleted) {
    Execute("UPDATE PDFFileTable SET ID=40000 WHERE ID=2");
    EXPECT_TRUE(DeleteEntry("M12"));
    EXPECT_EQ(Entries(), firstEntries.first(1));
}

TEST_F(EntryRemovalTest, ALibraryThatIsGoneOrNoneIsTold) {
    checksFree = false;
    folder.Write("home\\VelmoUsr.mdb", QByteArray(5000, 'x'));
    EXPECT_FALSE(DeleteNuts());
    EXPECT_FALSE(DeleteEntry("M10"));
    DeleteFile(state.LibraryDb);
    EXPECT_FALSE(DeleteNuts());
    EXPECT_FALSE(DeleteEntry("M10"));
    EXPECT_EQ(told, QStringList(4, Failed));
    EXPECT_EQ(asked, QStringList());
}

TEST_F(EntryRemovalTest, ABusyLibraryIsToldBeforeTheQuestion) {
    checksFree = false;
    const BusyWriter other(state.LibraryDb);
    EXPECT_FALSE(DeleteNuts());
    EXPECT_EQ(told, QStringList{Failed});
    EXPECT_EQ(asked, QStringList());
}

TEST_F(EntryRemovalTest, ALibraryThatBecomesBusyIsToldAfterIt) {
    checksFree = false;
    std::optional<BusyWriter> other;
    meanwhile = [&] { other.emplace(state.LibraryDb); };
    EXPECT_FALSE(DeleteEntry("M10"));
    EXPECT_EQ(told, QStringList{Failed});
    other.reset();
    EXPECT_EQ(Entries(), firstEntries);
}

TEST_F(EntryRemovalTest, AFullDiskDeletesNothing) {
    std::optional<FailingDisk> full;
    meanwhile = [&] { full.emplace(0); };
    EXPECT_FALSE(DeleteNuts());
    full.reset();
    EXPECT_EQ(told, QStringList{Failed});
    EXPECT_EQ(Folders(), rootFolders);
}

TEST_F(EntryRemovalTest, ALibraryThatCanOnlyBeReadIsRefusedBeforeAnyQuestion) {
    if (!OtherUser::IsPossible())
        GTEST_SKIP() << "only the superuser can be another user";
    checksFree = false;
    Permit(state.LibraryDb, everyoneReads);
    const OtherUser other(NativePath(folder.Path()));
    ASSERT_TRUE(other.Changed());
    EXPECT_EQ(Failure([&] { DeleteNuts(); }), ErrorNumber::DatabaseReadOnly);
    EXPECT_EQ(Failure([&] { DeleteEntry("M10"); }), ErrorNumber::DatabaseReadOnly);
    EXPECT_EQ(told + asked, QStringList());
}

} // namespace
} // namespace velmo
