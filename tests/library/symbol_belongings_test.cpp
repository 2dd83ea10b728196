#include "library/move_note.h"
#include "support/failing_disk.h"
#include "symbol_file_moving.h"

#include <unistd.h>

namespace velmo {
namespace {

// Symbols whose definition files have tables and other files of the same base name beside them.
class SymbolBelongingsTest : public SymbolFileMoveTest {
protected:
    SymbolBelongingsTest() {
        Execute("UPDATE PDFFileTable SET PDFFileName='A\\M10.TXT' WHERE ID=1");
        for (const char* name : {"A\\M10.TXT", "A\\M10.PMN", "A\\M10.lbl", "A\\M10.TMP", "A\\M10.PMN.moving",
                                 "A\\M10.TXT2", "A\\M1.PMN", "A\\M101.PMN"})
            WriteFile(name, QByteArray("content of ") + name);
        DeleteFile(Root("A\\M12.PDF"));
        DeleteFile(Root("A\\M12.SLD"));
        Execute("DELETE FROM PDFFileTable WHERE ID=2");
    }
    static QString Question(const QString& file) {
        return file + QStringLiteral("はすでに存在します\r上書きしてよろしいですか");
    }
    QString Shared(const QStringList& files, const QString& entry) const {
        QString list;
        for (const QString& file : files)
            list += Root(file) + u'\n';
        return list +
               QStringLiteral("\nこのファイルは「%1」も使用しています。一緒に移動すると「%1」から使用でき"
                              "なくなります。移動してよろしいですか")
                   .arg(entry);
    }
    const QStringList left = {"A\\M1.PMN", "A\\M10.PMN.moving", "A\\M10.TMP", "A\\M10.TXT2", "A\\M101.PMN"};
    const QStringList moved = {"N\\M10.PDF", "N\\M10.PMN", "N\\M10.SLD", "N\\M10.TXT", "N\\M10.lbl"};
};

TEST_F(SymbolBelongingsTest, WhatBelongsToTheSymbolGoesAlong) {
    Move();
    EXPECT_EQ(FileNames(), left + moved);
    EXPECT_EQ(folder.Read("home\\N\\M10.PMN"), "content of A\\M10.PMN");
    EXPECT_EQ(Entries(), QStringList{"1|2|M10|N\\M10.TXT|N\\M10.SLD"});
    EXPECT_EQ(told + asked, QStringList());
    EXPECT_EQ(Leftovers(), QStringList());
}

TEST_F(SymbolBelongingsTest, TheBaseNameIsTheNameWithoutItsLastFourCharacters) {
    WriteFile("A\\PLATE_DAT", "definition");
    WriteFile("A\\PLATE.PMN", "table");
    WriteFile("A\\.PMN", "of no symbol");
    WriteFile("A\\TXT", "short");
    Execute("UPDATE PDFFileTable SET PDFFileName='A\\PLATE_DAT', SLDFileName='' WHERE ID=1");
    {
        Database database = Open();
        AddEntry(database, 2, "short", "A\\TXT", {});
    }
    Move();
    EXPECT_EQ(folder.Read("home\\N\\PLATE.PMN"), "table");
    EXPECT_TRUE(folder.Exists("home\\N\\TXT"));
    EXPECT_TRUE(folder.Exists("home\\A\\.PMN"));
}

TEST_F(SymbolBelongingsTest, AnExistingFileIsAskedAboutLikeTheRest) {
    WriteFile("N\\M10.pmn", "old table");
    WriteFile("N\\M10.PDF", "old document");
    refused = {1};
    Move();
    EXPECT_EQ(asked, (QStringList{Question(Root("N\\M10.PMN")), Question(Root("N\\M10.PDF"))}));
    EXPECT_EQ(folder.Read("home\\N\\M10.pmn"), "old table");
    EXPECT_EQ(folder.Read("home\\A\\M10.PMN"), "content of A\\M10.PMN");
    EXPECT_EQ(folder.Read("home\\N\\M10.PDF"), "content of A\\M10.PDF");
}

TEST_F(SymbolBelongingsTest, WhereTheDefinitionStaysEverythingStays) {
    WriteFile("N\\M10.TXT", "another");
    refused = {1};
    Move();
    EXPECT_EQ(asked, QStringList{Question(Root("N\\M10.TXT"))});
    EXPECT_EQ(Entries(), QStringList{"1|2|M10|A\\M10.TXT|N\\M10.SLD"}) << "the slide has its own name";
    EXPECT_TRUE(folder.Exists("home\\A\\M10.PMN"));
    DeleteFile(Root("A\\M10.TXT"));
    Move();
    EXPECT_TRUE(folder.Exists("home\\A\\M10.PMN"));
}

TEST_F(SymbolBelongingsTest, WhatAnotherSymbolNeedsIsAskedAbout) {
    WriteFile("A\\M10.DEF", "another definition");
    {
        Database database = Open();
        AddEntry(database, 3, "other", "a\\m10.DEF", {});
    }
    refused = {1};
    Move();
    EXPECT_EQ(asked, QStringList{Shared({"A\\M10.PMN", "A\\M10.lbl", "A\\M10.PDF"}, "other")});
    EXPECT_EQ(Entries()[0], "1|2|M10|N\\M10.TXT|N\\M10.SLD");
    EXPECT_TRUE(folder.Exists("home\\A\\M10.PMN"));
    asked.clear();
    refused.clear();
    state.PickedDir = Root("A");
    Move();
    EXPECT_EQ(asked, QStringList());
    state.PickedDir = Root("N");
    Move();
    EXPECT_EQ(asked.size(), 1);
    EXPECT_TRUE(folder.Exists("home\\N\\M10.PMN"));
}

TEST_F(SymbolBelongingsTest, AnotherSymbolThatMovesTooIsNotAskedAbout) {
    WriteFile("A\\M10.DEF", "another definition");
    {
        Database database = Open();
        AddEntry(database, 2, "other", "A\\M10.DEF", {});
        AddEntry(database, 2, "document", "A\\M10.PDF", {});
        AddEntry(database, 3, "missing", "A\\M10.OLD", {});
    }
    Move();
    EXPECT_EQ(told + asked, QStringList());
    EXPECT_EQ(Entries(), (QStringList{"1|2|M10|N\\M10.TXT|N\\M10.SLD", "3|2|other|N\\M10.DEF|",
                                      "4|2|document|N\\M10.PDF|", "5|3|missing|A\\M10.OLD|"}));
    QStringList all = left + moved + QStringList{"N\\M10.DEF"};
    all.sort();
    EXPECT_EQ(FileNames(), all);
}

TEST_F(SymbolBelongingsTest, EveryEntryAndCategoryThatNamesAMovedFileFollowsIt) {
    {
        Database database = Open();
        AddEntry(database, 3, "same", "A\\M10.TXT", "a\\m10.sld");
        AddEntry(database, 3, "document", "A\\M10.PDF", {});
        AddEntry(database, 1, "crossed", "A\\M10.SLD", "A\\M10.TXT");
        AddEntry(database, 1, "another", "B\\M10.TXT", "A\\M10.SLD2");
    }
    Execute("UPDATE FolderTable SET SLDFileName='A\\M10.SLD' WHERE ID=3");
    Move();
    EXPECT_EQ(Entries(), (QStringList{"1|2|M10|N\\M10.TXT|N\\M10.SLD", "3|3|same|N\\M10.TXT|N\\M10.SLD",
                                      "4|3|document|N\\M10.PDF|", "5|1|crossed|N\\M10.SLD|N\\M10.TXT",
                                      "6|1|another|B\\M10.TXT|A\\M10.SLD2"}));
    EXPECT_EQ(Folders(), (QStringList{"1|0|root|", "2|1|bolts|B.SLD", "3|1|nuts|N\\M10.SLD"}));
}

TEST_F(SymbolBelongingsTest, AnotherFileWhoseNameDiffersOnlyInCaseKeepsItsRows) {
    WriteFile("A\\m10.txt", "another symbol");
    {
        Database database = Open();
        AddEntry(database, 3, "another", "A\\m10.txt", {});
    }
    Execute("UPDATE FolderTable SET SLDFileName='A\\m10.TXT' WHERE ID=3");
    Move();
    EXPECT_EQ(Entries(), (QStringList{"1|2|M10|N\\M10.TXT|N\\M10.SLD", "3|3|another|A\\m10.txt|"}));
    EXPECT_EQ(folder.Read("home\\A\\m10.txt"), "another symbol");
}

TEST_F(SymbolBelongingsTest, AFailureOfOneLeavesTheSymbolWhole) {
    WriteFile("A\\M10.PMN", QByteArray(3'000'000, 'x'));
    {
        const FailingDisk full(1'000'000);
        EXPECT_EQ(Failure([&] { Move(); }), ErrorNumber::DiskFull);
    }
    EXPECT_EQ(FileNames(),
              QStringList({"A\\M1.PMN", "A\\M10.PDF", "A\\M10.PMN", "A\\M10.PMN.moving", "A\\M10.SLD",
                           "A\\M10.TMP", "A\\M10.TXT", "A\\M10.TXT2", "A\\M10.lbl", "A\\M101.PMN"}));
    EXPECT_EQ(Entries(), QStringList{"1|2|M10|A\\M10.TXT|A\\M10.SLD"});
    EXPECT_EQ(Leftovers(), QStringList());
}

TEST_F(SymbolBelongingsTest, StoppingLeavesSymbolsWhole) {
    callbacks.progress = [](qint64 done, qint64) { return done == 0; };
    Move();
    EXPECT_TRUE(folder.Exists("home\\N\\M10.PMN"));
    EXPECT_EQ(Entries(), QStringList{"1|2|M10|N\\M10.TXT|A\\M10.SLD"});
}

// What a killed move leaves, made by hand.
TEST_F(SymbolBelongingsTest, AfterAKillTheFilesOfAMovedDefinitionAreNotTwice) {
    MoveNote(state.LibraryDb)
        .Write({{PdfField, "A\\M10.TXT", "N\\M10.TXT"},
                {PdfField, "A\\M10.PMN", "N\\M10.PMN"},
                {PdfField, "A\\M10.lbl", "N\\M10.lbl"},
                {PdfField, "A\\M10.PDF", "N\\M10.PDF"}});
    WriteFile("N\\M10.TXT", folder.Read("home\\A\\M10.TXT"));
    WriteFile("N\\M10.PMN", folder.Read("home\\A\\M10.PMN"));
    WriteFile("N\\M10.lbl", "changed since");
    DeleteFile(Root("A\\M10.TXT"));
    FinishInterruptedMove(state.LibraryDb, state.LibRoot);
    EXPECT_FALSE(folder.Exists("home\\A\\M10.PMN"));
    EXPECT_EQ(folder.Read("home\\N\\M10.PMN"), "content of A\\M10.PMN");
    EXPECT_EQ(folder.Read("home\\A\\M10.lbl"), "content of A\\M10.lbl") << "two that differ are both kept";
    EXPECT_EQ(folder.Read("home\\N\\M10.lbl"), "changed since");
    EXPECT_TRUE(folder.Exists("home\\A\\M10.PDF")) << "it was not copied";
    EXPECT_EQ(Entries(), QStringList{"1|2|M10|N\\M10.TXT|A\\M10.SLD"});
    EXPECT_EQ(Leftovers(), QStringList());
}

TEST_F(SymbolBelongingsTest, AfterAKillASlideThatMovedBeforeTakesNothingAlong) {
    MoveNote(state.LibraryDb)
        .Write({{SlideField, "A\\M10.SLD", "N\\M10.SLD"},
                {PdfField, "A\\M10.TXT", "N\\M10.TXT"},
                {PdfField, "A\\M10.PMN", "N\\M10.PMN"}});
    WriteFile("N\\M10.SLD", folder.Read("home\\A\\M10.SLD"));
    DeleteFile(Root("A\\M10.SLD"));
    WriteFile("N\\M10.TXT", folder.Read("home\\A\\M10.TXT"));
    FinishInterruptedMove(state.LibraryDb, state.LibRoot);
    EXPECT_TRUE(folder.Exists("home\\A\\M10.TXT")) << "its table is not there yet";
    EXPECT_EQ(Entries(), QStringList{"1|2|M10|A\\M10.TXT|N\\M10.SLD"});
}

TEST_F(SymbolBelongingsTest, AfterAKillWhatBelongsToAnUnmovedDefinitionStays) {
    MoveNote(state.LibraryDb)
        .Write({{PdfField, "A\\M10.TXT", "N\\M10.TXT"}, {PdfField, "A\\M10.PMN", "N\\M10.PMN"}});
    for (const char* name : {"M10.TXT", "M10.PMN"})
        WriteFile(QString("N\\") + name, folder.Read(QString("home\\A\\") + name));
    FinishInterruptedMove(state.LibraryDb, state.LibRoot);
    EXPECT_TRUE(folder.Exists("home\\A\\M10.TXT"));
    EXPECT_TRUE(folder.Exists("home\\A\\M10.PMN"));
    EXPECT_EQ(Entries(), QStringList{"1|2|M10|A\\M10.TXT|A\\M10.SLD"});
}

} // namespace
} // namespace velmo
