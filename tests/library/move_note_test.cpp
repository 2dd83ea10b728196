#include "library/move_note.h"
#include "library/symbol_file_move.h"
#include "support/failure.h"
#include "support/other_user.h"
#include "symbol_library.h"

#include <QElapsedTimer>

namespace velmo {
namespace {

// What a killed move leaves is made by hand here.
class MoveNoteTest : public SymbolLibrary {
protected:
    MoveNoteTest() : note(state.LibraryDb) {
        callbacks.inform = [this](const QString& text) { told << text; };
        callbacks.ask = [](const QString&) { return true; };
    }

    // As a killed move leaves it: the file moved, its name not stored.
    void Carry(const QString& from, const QString& to) const {
        ASSERT_TRUE(QFile::rename(NativePath(state.LibRoot + from),
                                  NativePath(state.LibRoot) + QString(to).replace('\\', '/')));
    }
    void Finish() const { FinishInterruptedMove(state.LibraryDb, state.LibRoot); }
    void WriteNote(const QByteArray& bytes) const { folder.Write("home\\VelmoUsr.mdb.move", bytes); }
    QByteArray ReadNote() const { return folder.Read("home\\VelmoUsr.mdb.move"); }

    MoveNote note;
    FileMoveCallbacks callbacks;
    QStringList told;
    const std::vector<NameChange> bothOfM10 = {{PdfField, "A\\M10.PDF", "N\\M10.PDF"},
                                               {SlideField, "A\\M10.SLD", "N\\M10.SLD"}};
    const QString movedM10 = "1|2|M10|N\\M10.PDF|N\\M10.SLD";
};

TEST_F(MoveNoteTest, TellsWhatWasWritten) {
    EXPECT_FALSE(note.Exists());
    const QString odd = "it's \"odd\"\t\n\\ボルト😀";
    note.Write({{PdfField, odd, "b"}, {SlideField, "", odd}});
    EXPECT_TRUE(note.Exists());
    const std::vector<NameChange> read = MoveNote(state.LibraryDb.toUpper()).Read();
    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[0].field, PdfField);
    EXPECT_EQ(read[0].oldName, odd);
    EXPECT_EQ(read[0].newName, "b");
    EXPECT_EQ(read[1].newName, odd);
    note.Remove();
    EXPECT_FALSE(note.Exists());
    note.Remove();
}

TEST_F(MoveNoteTest, ANoteOfAnotherProgramIsNotRemoved) {
    note.Write(bothOfM10);
    MoveNote other(state.LibraryDb);
    other.Write({bothOfM10[0]});
    note.Remove();
    EXPECT_TRUE(note.Exists());
    other.Remove();
    EXPECT_FALSE(note.Exists());
}

TEST_F(MoveNoteTest, WithoutANoteFinishingTouchesNothing) {
    DeleteFile(state.LibraryDb);
    Finish();
    EXPECT_EQ(QDir(NativePath(state.LibRoot)).entryList(QDir::Files), QStringList{"readme"});
}

TEST_F(MoveNoteTest, FinishingStoresWhatWasMovedAndOnlyThat) {
    note.Write(bothOfM10);
    Carry("A\\M10.PDF", "N\\M10.PDF");
    Finish();
    EXPECT_EQ(Entries(), (QStringList{"1|2|M10|N\\M10.PDF|A\\M10.SLD", firstEntries[1]}));
    EXPECT_EQ(Leftovers(), QStringList());
}

TEST_F(MoveNoteTest, AFileInBothPlacesWasNotMovedAndOneInNeitherIsLost) {
    note.Write(bothOfM10);
    WriteFile("N\\M10.PDF", "copy");
    DeleteFile(state.LibRoot + "A\\M10.SLD");
    Finish();
    EXPECT_EQ(Entries(), firstEntries);
    EXPECT_EQ(Leftovers(), QStringList());
}

TEST_F(MoveNoteTest, AnEntryIsFoundInWhateverCategoryItIsNow) {
    note.Write(bothOfM10);
    Carry("A\\M10.PDF", "N\\M10.PDF");
    Execute("UPDATE PDFFileTable SET FolderID=3 WHERE ID=1");
    Finish();
    EXPECT_EQ(Entries()[0], "1|3|M10|N\\M10.PDF|A\\M10.SLD");
}

TEST_F(MoveNoteTest, HalfCopiedFilesAreSweptAway) {
    note.Write(bothOfM10);
    WriteFile("N\\M10.PDF.moving", "half");
    WriteFile("N\\other.moving", "not ours");
    Finish();
    EXPECT_FALSE(folder.Exists("home\\N\\M10.PDF.moving"));
    EXPECT_TRUE(folder.Exists("home\\N\\other.moving"));
}

TEST_F(MoveNoteTest, ANoteThatCannotBeUnderstoodStaysAndKeepsFilesFromMoving) {
    Carry("A\\M10.PDF", "N\\M10.PDF");
    note.Write(bothOfM10);
    const QByteArray good = ReadNote();
    QByteArrayList bad = {good.chopped(1),
                          good + '\n',
                          good + "x\n",
                          good + R"(["PDFFileName","a"])" + '\n',
                          good + R"(["PDFFileName","a","b","c"])" + '\n',
                          good + R"(["PDFFileName","a",1])" + '\n',
                          good + R"(["PDFName","a","b"])" + '\n',
                          good + "[\"PDFFileName\",\"\xFF\",\"b\"]\n",
                          QByteArray(3000, '\0')};
    for (const QByteArray& bytes : bad) {
        WriteNote(bytes);
        Finish();
        EXPECT_EQ(ReadNote(), bytes);
        EXPECT_EQ(Entries(), firstEntries) << bytes.toStdString();
        try {
            MoveSymbolFiles(state, FolderContent(state), callbacks);
            ADD_FAILURE() << "no error";
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), ErrorNumber::PathFileAccess);
            EXPECT_EQ(error.File(), state.LibraryDb + ".move");
        }
        EXPECT_EQ(ReadNote(), bytes);
        EXPECT_EQ(FileNames().size(), 4);
    }
    DeleteFile(state.LibraryDb + ".move");
    QDir(NativePath(state.LibRoot)).mkdir("VelmoUsr.mdb.move");
    Finish();
    EXPECT_EQ(Failure([&] { MoveSymbolFiles(state, FolderContent(state), callbacks); }),
              ErrorNumber::PathFileAccess);
}

TEST_F(MoveNoteTest, ANoteThatCannotBeReadIsFoundBeforeTheFirstQuestion) {
    WriteNote("x\n");
    WriteFile("N\\M10.PDF", "in the way");
    DeleteFile(state.LibRoot + "A\\M12.PDF");
    bool isAsked = false;
    callbacks.ask = [&](const QString&) { return isAsked = true; };
    EXPECT_EQ(Failure([&] { MoveSymbolFiles(state, FolderContent(state), callbacks); }),
              ErrorNumber::PathFileAccess);
    EXPECT_FALSE(isAsked);
    EXPECT_EQ(told, QStringList());
}

TEST_F(MoveNoteTest, AnEmptyNoteIsDone) {
    WriteNote({});
    Finish();
    EXPECT_FALSE(note.Exists());
}

TEST_F(MoveNoteTest, WhileAnotherProgramWritesTheNoteStaysAndNobodyWaits) {
    note.Write(bothOfM10);
    Carry("A\\M10.PDF", "N\\M10.PDF");
    {
        const BusyWriter other(state.LibraryDb);
        QElapsedTimer timer;
        timer.start();
        Finish();
        EXPECT_LT(timer.elapsed(), 2000) << "not the usual patience with a busy library";
    }
    EXPECT_TRUE(note.Exists());
    EXPECT_EQ(Entries(), firstEntries);
    Finish();
    EXPECT_FALSE(note.Exists());
    EXPECT_EQ(Entries()[0], "1|2|M10|N\\M10.PDF|A\\M10.SLD");
}

TEST_F(MoveNoteTest, ALibraryThatCannotBeWrittenKeepsItsNote) {
    if (!OtherUser::IsPossible())
        GTEST_SKIP() << "only the superuser can be another user";
    note.Write(bothOfM10);
    Carry("A\\M10.PDF", "N\\M10.PDF");
    Permit(state.LibraryDb, everyoneReads);
    {
        const OtherUser other(NativePath(folder.Path()));
        ASSERT_TRUE(other.Changed());
        Finish();
    }
    EXPECT_TRUE(note.Exists());
    EXPECT_EQ(Entries(), firstEntries);
}

TEST_F(MoveNoteTest, TheNextMoveFinishesTheOneBefore) {
    note.Write(bothOfM10);
    Carry("A\\M10.PDF", "N\\M10.PDF");
    Carry("A\\M10.SLD", "N\\M10.SLD");
    MoveSymbolFiles(state, {FolderContent(state).at(1)}, callbacks);
    EXPECT_EQ(Entries(), (QStringList{movedM10, "2|2|M12|N\\M12.PDF|N\\M12.SLD"}));
    EXPECT_EQ(Leftovers(), QStringList());
}

TEST_F(MoveNoteTest, TwoMovesAtOnceDoNotDisturbEachOther) {
    bool tried = false;
    callbacks.progress = [&](qint64 done, qint64) {
        if (done != 1)
            return true;
        tried = true;
        const QByteArray mine = ReadNote();
        Finish();
        GlobalState theirs = state;
        theirs.PickedDir = state.LibRoot + "A\\B";
        EXPECT_EQ(Failure([&] {
                      MoveSymbolFiles(theirs, FolderContent(theirs), {callbacks.inform, callbacks.ask, {}});
                  }),
                  ErrorNumber::DatabaseLocked);
        EXPECT_EQ(ReadNote(), mine);
        return true;
    };
    MoveSymbolFiles(state, FolderContent(state), callbacks);
    EXPECT_TRUE(tried);
    EXPECT_EQ(Entries(), (QStringList{movedM10, "2|2|M12|N\\M12.PDF|N\\M12.SLD"}));
    EXPECT_EQ(Leftovers(), QStringList());
}

} // namespace
} // namespace velmo
