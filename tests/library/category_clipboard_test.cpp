#include "library/category_clipboard.h"
#include "maintained_library.h"
#include "support/failing_disk.h"
#include "support/failure.h"

namespace velmo {
namespace {

class CategoryClipboardTest : public MaintainedLibrary {
protected:
    void CopyFolder(std::int16_t id) {
        state.CurFolderID = id;
        clipboard.Copy(state);
    }
    void CutFolder(std::int16_t id) {
        state.CurFolderID = id;
        clipboard.Cut(state);
    }
    void PasteOn(std::int16_t id) {
        state.CurFolderID = id;
        clipboard.Paste(state);
    }

    CategoryClipboard clipboard;
};

TEST_F(CategoryClipboardTest, CutAndCopyChangeNothing) {
    EXPECT_FALSE(clipboard.HasFolder());
    CutFolder(2);
    EXPECT_TRUE(clipboard.HasFolder());
    CopyFolder(3);
    EXPECT_TRUE(clipboard.HasFolder());
    EXPECT_EQ(Folders(), rootFolders);
    EXPECT_EQ(Entries(), firstEntries);
}

TEST_F(CategoryClipboardTest, ACutFolderMovesWithEverythingBelowIt) {
    {
        Database database = Open();
        AddCategory(database, 2, "below");
    }
    CutFolder(2);
    PasteOn(3);
    EXPECT_EQ(Folders(), (QStringList{"1|0|root|", "2|3|bolts|B.SLD", "3|1|nuts|N.SLD", "4|2|below|"}));
    EXPECT_EQ(Entries(), firstEntries);
    EXPECT_EQ(state.CurFolderID, 3);
}

TEST_F(CategoryClipboardTest, ACopyIsOneRowAndItsEntriesAreDoubledWhereTheyAre) {
    {
        Database database = Open();
        AddCategory(database, 2, "below");
    }
    CopyFolder(2);
    PasteOn(3);
    EXPECT_EQ(Folders(), rootFolders + (QStringList{"4|2|below|", "5|3|bolts|B.SLD"}));
    EXPECT_EQ(Entries(),
              firstEntries + (QStringList{"3|2|M10|A\\M10.PDF|A\\M10.SLD", "4|2|M12|A\\M12.PDF|A\\M12.SLD"}));
}

TEST_F(CategoryClipboardTest, ACopyOfAFolderWithoutEntriesAddsOneRow) {
    CopyFolder(3);
    PasteOn(1);
    EXPECT_EQ(Folders(), rootFolders + QStringList{"4|1|nuts|N.SLD"});
    EXPECT_EQ(Entries(), firstEntries);
}

TEST_F(CategoryClipboardTest, ACutThatTheTreeWouldLoseIsAskedAbout) {
    const auto question = [this](std::int16_t target) {
        state.CurFolderID = target;
        return clipboard.QuestionBeforePaste(state);
    };
    Execute("INSERT INTO FolderTable (ParentID, FolderName) VALUES (2, 'below')");
    EXPECT_EQ(question(2), "") << "nothing is remembered";
    CopyFolder(2);
    for (const std::int16_t target : std::initializer_list<std::int16_t>{2, 4, 99})
        EXPECT_EQ(question(target), "") << "a copy loses nothing";
    CutFolder(2);
    EXPECT_EQ(question(1), "");
    EXPECT_EQ(question(3), "");
    const QString loss =
        "移動先は、移動する分類「bolts」の中にあります。\n\n移動すると、「bolts」とその下の分類と"
        "シンボルはツリーに表示されなくなります。移動してよろしいですか";
    EXPECT_EQ(question(2), loss);
    EXPECT_EQ(question(4), loss);
    EXPECT_TRUE(question(99).startsWith("貼り付け先の分類はツリーにありません。"));
    Execute("DELETE FROM FolderTable WHERE ID=2");
    EXPECT_EQ(question(4), "") << "what was cut is gone";
    EXPECT_TRUE(clipboard.HasFolder());
}

TEST_F(CategoryClipboardTest, ASecondPasteCopiesOnceMore) {
    CopyFolder(2);
    PasteOn(3);
    PasteOn(1);
    EXPECT_EQ(Folders(), rootFolders + (QStringList{"4|3|bolts|B.SLD", "5|1|bolts|B.SLD"}));
    EXPECT_EQ(Entries().size(), 8) << "each paste doubles what is there";
    EXPECT_TRUE(clipboard.HasFolder());
}

TEST_F(CategoryClipboardTest, WhatWasCutIsPastedOnceAndThenCopied) {
    CutFolder(3);
    PasteOn(2);
    PasteOn(1);
    EXPECT_EQ(Folders(), (QStringList{"1|0|root|", "2|1|bolts|B.SLD", "3|2|nuts|N.SLD", "4|1|nuts|N.SLD"}));
}

TEST_F(CategoryClipboardTest, ALaterCutReplacesWhatWasRemembered) {
    CopyFolder(2);
    CutFolder(3);
    PasteOn(2);
    EXPECT_EQ(Folders(), (QStringList{"1|0|root|", "2|1|bolts|B.SLD", "3|2|nuts|N.SLD"}));
    EXPECT_EQ(Entries(), firstEntries);
}

TEST_F(CategoryClipboardTest, AFolderMayBePutIntoItselfOrBelowItself) {
    CutFolder(3);
    PasteOn(3);
    EXPECT_EQ(Folders()[2], "3|3|nuts|N.SLD");
    CutFolder(1);
    PasteOn(2);
    EXPECT_EQ(Folders()[0], "1|2|root|") << "1 and 2 are each other's parents now";
    CopyFolder(2);
    PasteOn(2);
    EXPECT_EQ(Folders()[3], "4|2|bolts|B.SLD");
}

TEST_F(CategoryClipboardTest, WithNothingRememberedNothingIsAdded) {
    PasteOn(2);
    EXPECT_EQ(Folders(), rootFolders);
    EXPECT_EQ(Entries(), firstEntries);
}

TEST_F(CategoryClipboardTest, ADeletedFolderLeavesItsEntriesToBeDoubled) {
    CopyFolder(2);
    Execute("DELETE FROM FolderTable WHERE ID=2");
    PasteOn(3);
    EXPECT_EQ(Folders(), (QStringList{rootFolders[0], rootFolders[2]}));
    EXPECT_EQ(Entries().size(), 4);
    CutFolder(2);
    PasteOn(3);
    EXPECT_EQ(Folders().size(), 2);
}

TEST_F(CategoryClipboardTest, NamesAreCopiedAsTheyAre) {
    Execute("UPDATE FolderTable SET FolderName='it''s', SLDFileName=NULL WHERE ID=3");
    CopyFolder(3);
    PasteOn(1);
    EXPECT_EQ(Folders()[3], "4|1|it's|");
}

TEST_F(CategoryClipboardTest, NumbersBeyondSixteenBitsAreNotGiven) {
    Execute("UPDATE sqlite_sequence SET seq=32766");
    CopyFolder(2);
    EXPECT_EQ(Failure([&] { PasteOn(3); }), ErrorNumber::Overflow) << "room for one entry only";
    EXPECT_EQ(Folders(), rootFolders);
    EXPECT_EQ(Entries(), firstEntries);
}

TEST_F(CategoryClipboardTest, AFailedPasteChangesNothingAndCanBeRepeated) {
    CutFolder(3);
    {
        const FailingDisk full(0);
        EXPECT_THROW(PasteOn(2), RuntimeError);
    }
    EXPECT_EQ(Folders(), rootFolders);
    PasteOn(2);
    EXPECT_EQ(Folders()[2], "3|2|nuts|N.SLD") << "it is still cut";
}

TEST_F(CategoryClipboardTest, ABusyLibraryIsTold) {
    CopyFolder(2);
    const BusyWriter other(state.LibraryDb);
    EXPECT_EQ(Failure([&] { PasteOn(3); }), ErrorNumber::DatabaseLocked);
}

} // namespace
} // namespace velmo
