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

TEST_F(FolderContentTest, WhatTheTreeWouldLoseIsAskedAbout) {
    FillBolts();
    Execute("INSERT INTO FolderTable (ParentID, FolderName) VALUES (4, 'deep'), (99, 'astray')");
    const std::vector<ContentRow> rows = FolderContent(state);
    const auto question = [&](const std::vector<size_t>& selected, std::int16_t target) {
        std::vector<ContentRow> chosen;
        for (const size_t row : selected)
            chosen.push_back(rows.at(row));
        return QuestionBeforeMove(state, rows, chosen, target);
    };
    const QString loss =
        "移動先は、移動する分類「%1」の中にあります。\n\n移動すると、「%1」とその下の分類とシンボルは"
        "ツリーに表示されなくなります。移動してよろしいですか";
    const QString nowhere = "移動先の分類が選択されていないか、ツリーにありません。\n\n"
                            "移動すると、選択した分類とシンボルはツリーに表示されなくなります。"
                            "移動してよろしいですか";
    for (const std::int16_t reached : std::initializer_list<std::int16_t>{1, 2, 3})
        EXPECT_EQ(question({0, 1, 2, 3, 4, 5}, reached), "") << reached;
    EXPECT_EQ(question({1}, 4), "") << "below another one";
    EXPECT_EQ(question({0}, 4), loss.arg("short")) << "into itself";
    EXPECT_EQ(question({1, 0}, 6), loss.arg("short")) << "below itself";
    EXPECT_EQ(question({2 + 3}, 5), loss.arg("long")) << "the entry 5 takes the subcategory 5 with it";
    EXPECT_EQ(question({2}, 4), "");
    for (const std::int16_t lost : std::initializer_list<std::int16_t>{0, 7, 4000})
        EXPECT_EQ(question({2}, lost), nowhere) << lost;
    Execute("UPDATE FolderTable SET ParentID=6 WHERE ID=4");
    EXPECT_EQ(question({2}, 6), nowhere) << "a circle";
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
