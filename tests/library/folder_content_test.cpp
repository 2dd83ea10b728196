#include "library/folder_content.h"
#include "maintained_library.h"
#include "support/failing_disk.h"
#include "support/failure.h"

namespace velmo {
namespace {

class FolderContentTest : public MaintainedLibrary {
protected:
    // Two subfolders and two entries in 2, which share numbers 4 and 5 with each other.
    void FillBolts() const {
        Database database = Open();
        AddCategory(database, 2, "short", "S.SLD");
        AddCategory(database, 2, "long");
        AddEntry(database, 3, "elsewhere", "E.PDF", "E.SLD");
        AddEntry(database, 2, "M14", "A\\M14.PDF");
        AddEntry(database, 2, "M16", "A\\M16.PDF", "A\\M16.SLD");
    }
    QStringList Content() const {
        QStringList texts;
        for (const ContentRow& row : FolderContent(state))
            texts << QStringList{row.isFolder ? "folder" : "entry", QString::number(row.id), row.name,
                                 row.pdf, row.slide}
                         .join('|');
        return texts;
    }
    void Move(const std::vector<size_t>& places, std::int16_t target) const {
        const std::vector<ContentRow> rows = FolderContent(state);
        std::vector<ContentRow> selected;
        selected.reserve(places.size());
        for (const size_t place : places)
            selected.push_back(rows.at(place));
        MoveToCategory(state, rows, selected, target);
    }
    // "ID>parent" of all subfolders, then of all entries.
    QStringList Parents() const {
        QStringList parents;
        for (const QString& row : Folders() + Entries())
            parents << row.section('|', 0, 0) + '>' + row.section('|', 1, 1);
        return parents;
    }
};

TEST_F(FolderContentTest, ListsSubfoldersFirst) {
    FillBolts();
    EXPECT_EQ(Content(),
              (QStringList{"folder|4|short||", "folder|5|long||", "entry|1|M10|A\\M10.PDF|A\\M10.SLD",
                           "entry|2|M12|A\\M12.PDF|A\\M12.SLD", "entry|4|M14|A\\M14.PDF|",
                           "entry|5|M16|A\\M16.PDF|A\\M16.SLD"}));
    state.CurFolderID = 99;
    EXPECT_EQ(Content(), QStringList());
}

TEST_F(FolderContentTest, ARowWhoseNumberExceedsSixteenBitsIsAnError) {
    Execute("UPDATE PDFFileTable SET ID=40000 WHERE ID=2");
    EXPECT_EQ(Failure([&] { Content(); }), ErrorNumber::Overflow);
}

TEST_F(FolderContentTest, MovesEntriesToAnotherCategory) {
    Move({1}, 3);
    EXPECT_EQ(Entries(), (QStringList{firstEntries[0], "2|3|M12|A\\M12.PDF|A\\M12.SLD"}));
    EXPECT_EQ(Folders(), rootFolders);
}

TEST_F(FolderContentTest, MovesEverything) {
    FillBolts();
    Move({0, 1, 2, 3, 4, 5}, 3);
    EXPECT_EQ(Parents(), (QStringList{"1>0", "2>1", "3>1", "4>3", "5>3", "1>3", "2>3", "3>3", "4>3", "5>3"}));
    EXPECT_EQ(Content(), QStringList());
}

TEST_F(FolderContentTest, OnlyNumbersCount) {
    FillBolts();
    Move({0}, 3);
    EXPECT_EQ(Parents(), (QStringList{"1>0", "2>1", "3>1", "4>3", "5>2", "1>2", "2>2", "3>3", "4>3", "5>2"}))
        << "the subfolder 4 takes the entry 4 with it";
    Move({4 - 1}, 1);
    EXPECT_EQ(Parents(), (QStringList{"1>0", "2>1", "3>1", "4>3", "5>1", "1>2", "2>2", "3>3", "4>3", "5>1"}))
        << "and the entry 5 the subfolder 5";
}

TEST_F(FolderContentTest, RowsOfAKindThatIsNotListedStay) {
    FillBolts();
    std::vector<ContentRow> rows = FolderContent(state);
    rows.erase(rows.begin(), rows.begin() + 2);
    MoveToCategory(state, rows, rows, 3);
    EXPECT_EQ(Parents().first(5), (QStringList{"1>0", "2>1", "3>1", "4>2", "5>2"}))
        << "subfolders that came after the listing";
    rows = {{true, 4, "short", {}, {}}};
    state.CurFolderID = 3;
    MoveToCategory(state, rows, rows, 1);
    EXPECT_EQ(Parents().mid(5), (QStringList{"1>3", "2>3", "3>3", "4>3", "5>3"}));
}

TEST_F(FolderContentTest, WhatWasMovedAwayMeanwhileStaysThere) {
    FillBolts();
    const std::vector<ContentRow> rows = FolderContent(state);
    Execute("UPDATE PDFFileTable SET FolderID=1 WHERE ID=1");
    Execute("DELETE FROM PDFFileTable WHERE ID=2");
    MoveToCategory(state, rows, rows, 3);
    EXPECT_EQ(Parents(), (QStringList{"1>0", "2>1", "3>1", "4>3", "5>3", "1>1", "3>3", "4>3", "5>3"}));
}

TEST_F(FolderContentTest, NoTargetIsRefused) {
    FillBolts();
    Move({0, 1, 2, 3, 4, 5}, 2);
    EXPECT_EQ(Content().size(), 6) << "where they are already";
    Move({0}, 4);
    EXPECT_EQ(Folders()[3], "4|4|short|S.SLD") << "into itself";
    Move({0}, 4000);
    EXPECT_EQ(Folders()[4], "5|4000|long|") << "where nothing is";
}

TEST_F(FolderContentTest, AFullDiskMovesNothing) {
    FillBolts();
    const QStringList before = Parents();
    {
        const FailingDisk full(0);
        EXPECT_THROW(Move({0, 1, 2, 3, 4, 5}, 3), RuntimeError);
    }
    EXPECT_EQ(Parents(), before);
}

TEST_F(FolderContentTest, ABusyLibraryIsTold) {
    const BusyWriter other(state.LibraryDb);
    EXPECT_EQ(Failure([&] { Move({0}, 3); }), ErrorNumber::DatabaseLocked);
}

} // namespace
} // namespace velmo
