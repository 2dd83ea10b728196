#include "symbol_file_moving.h"

#include <unistd.h>

namespace velmo {
namespace {

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

TEST_F(SymbolFileMoveTest, AnEmptyNameIsPassedOver) {
    Execute("UPDATE PDFFileTable SET SLDFileName='' WHERE ID=1");
    Execute("UPDATE PDFFileTable SET PDFFileName=NULL WHERE ID=2");
    Move();
    EXPECT_EQ(FileNames(), (QStringList{"A\\M12.PDF", "N\\M10.PDF", "N\\M10.SLD", "N\\M12.SLD"}))
        << "a slide of the symbol's name goes with its file, but not the other way round";
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
    EXPECT_EQ(Entries(), movedEntries + QStringList{"3|2|again|N\\M10.PDF|N\\M12.SLD"})
        << "all that name a moved file follow it";
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

} // namespace
} // namespace velmo
