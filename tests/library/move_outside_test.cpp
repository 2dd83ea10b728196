#include "library/move_note.h"
#include "symbol_file_moving.h"

#include <unistd.h>

namespace velmo {
namespace {

// Rows, folders and notes that lead out of the home folder, beside which lie files that are not the
// library's.
class MoveOutsideTest : public SymbolFileMoveTest {
protected:
    MoveOutsideTest() {
        for (const char* name : {"outside\\x.PDF", "outside\\x.SLD", "x.PDF", "M10.PDF.moving"})
            folder.Write(name, "not ours");
    }
    void Link(const QString& to, const QString& name) const {
        ASSERT_EQ(::symlink(QFile::encodeName(to).constData(),
                            QFile::encodeName(NativePath(state.LibRoot) + name).constData()),
                  0);
    }
    void Name(int id, const QString& file) const {
        Execute(QStringLiteral("UPDATE PDFFileTable SET PDFFileName='%2' WHERE ID=%1").arg(id).arg(file));
    }
    void ExpectOutsideAsBefore() const {
        for (const char* name : {"outside\\x.PDF", "outside\\x.SLD", "x.PDF", "M10.PDF.moving"})
            EXPECT_EQ(folder.Read(name), "not ours") << name;
        EXPECT_EQ(QDir(NativePath(folder.Path("outside"))).entryList(QDir::Files),
                  (QStringList{"x.PDF", "x.SLD"}));
        EXPECT_EQ(QDir(NativePath(folder.Path())).entryList(QDir::Files),
                  (QStringList{"M10.PDF.moving", "x.PDF"}));
    }
    static QString Refusal(const QString& entry, const QString& file) {
        return QStringLiteral(
                   "「%1」のファイル %2 は、ライブラリのフォルダの外を指しているため移動できません。")
            .arg(entry, file);
    }
};

TEST_F(MoveOutsideTest, ARowThatLeadsOutIsRefusedByNameAndTheOthersMove) {
    Link("../outside", "OUT");
    for (const QString& file :
         {QStringLiteral("..\\x.PDF"), QStringLiteral("../x.PDF"),
          QStringLiteral("A\\..\\..\\outside\\x.PDF"), QStringLiteral("OUT\\x.PDF"), folder.Path("x.PDF"),
          QStringLiteral("C:\\x.PDF"), QStringLiteral("\\\\server\\x.PDF")}) {
        told.clear();
        Name(1, file);
        Move();
        EXPECT_EQ(told.value(0), Refusal("M10", file));
        ExpectOutsideAsBefore();
        EXPECT_EQ(Entries()[0], "1|2|M10|" + file + "|N\\M10.SLD");
        EXPECT_EQ(Entries()[1], movedEntries[1]);
    }
}

TEST_F(MoveOutsideTest, ARowThatLeadsOutIsRefusedAloneWhicheverSeparatorItHasAndWhereverItStands) {
    WriteFile("TOP.PDF", "of the top folder");
    Database(state.LibraryDb, Database::Access::Write)
        .Execute("INSERT INTO PDFFileTable (FolderID, PDFName, PDFFileName, SLDFileName) VALUES "
                 "(2, 'third', 'A\\M12.PDF', '')");
    for (const QString& file : {QStringLiteral("..\\outside\\x.PDF"), QStringLiteral("../outside/x.PDF")}) {
        for (const int bad : {1, 2}) {
            SCOPED_TRACE(file.toStdString() + " in row " + std::to_string(bad));
            const int good = 3 - bad;
            told.clear();
            WriteFile("TOP.PDF", "of the top folder");
            WriteFile("A\\M12.PDF", "of the third");
            Name(bad, file);
            Name(good, "TOP.PDF");
            Name(3, "A\\M12.PDF");
            for (const char* moved : {"N\\TOP.PDF", "N\\M12.PDF"})
                QFile::remove(NativePath(Root(moved)));
            Move();
            EXPECT_EQ(told, QStringList(Refusal(bad == 1 ? "M10" : "M12", file)));
            ExpectOutsideAsBefore();
            EXPECT_EQ(Entries()[bad - 1].section('|', 3, 3), file);
            EXPECT_EQ(Entries()[good - 1].section('|', 3, 3), "N\\TOP.PDF");
            EXPECT_EQ(Entries()[2].section('|', 3, 3), "N\\M12.PDF");
        }
    }
}

TEST_F(MoveOutsideTest, ALinkWithinTheHomeIsFine) {
    Link("A", "IN");
    Name(1, "IN\\M10.PDF");
    Move();
    EXPECT_EQ(told, QStringList());
    EXPECT_EQ(Entries(), movedEntries);
}

TEST_F(MoveOutsideTest, ATableGoesAlongFromItsSymbolsOwnFolderWhicheverSeparatorThatHas) {
    WriteFile("A\\M10.PMN", "table");
    WriteFile("M10.PMN", "of another symbol");
    QDir(NativePath(state.LibRoot)).mkpath("N/A");
    Name(1, "A/M10.PDF");
    Move();
    EXPECT_EQ(told, QStringList());
    EXPECT_EQ(folder.Read("home\\M10.PMN"), "of another symbol");
    EXPECT_EQ(folder.Read("home\\N\\A\\M10.PMN"), "table");
    EXPECT_FALSE(folder.Exists("home\\A\\M10.PMN"));
}

TEST_F(MoveOutsideTest, AHomeReachedByALinkIsFine) {
    ASSERT_EQ(::symlink("home", QFile::encodeName(NativePath(folder.Path("way"))).constData()), 0);
    state.LibRoot = folder.Path("way\\");
    state.PickedDir = state.LibRoot + "N";
    Move();
    EXPECT_EQ(told, QStringList());
    EXPECT_EQ(Entries(), movedEntries);
    Name(1, "..\\x.PDF");
    Move();
    EXPECT_EQ(told.value(0), Refusal("M10", "..\\x.PDF"));
    ExpectOutsideAsBefore();
}

TEST_F(MoveOutsideTest, ATargetOutsideIsRefusedBeforeAnyQuestion) {
    Link("../outside", "OUT");
    folder.Write("outside\\M10.PDF", "asked about");
    for (const QString& target : {folder.Path(), folder.Path("outside"), folder.Path("outside\\"),
                                  Root("OUT"), Root("OUT\\"), Root("..\\outside"), QStringLiteral("C:\\")}) {
        state.PickedDir = target;
        try {
            Move();
            ADD_FAILURE() << "no error";
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), ErrorNumber::PathFileAccess);
            EXPECT_EQ(error.File(), target);
        }
    }
    EXPECT_EQ(told + asked, QStringList());
    EXPECT_EQ(Entries(), firstEntries);
    EXPECT_EQ(FileNames().size(), 4);
    DeleteFile(folder.Path("outside\\M10.PDF"));
    ExpectOutsideAsBefore();
}

TEST_F(MoveOutsideTest, AFolderThatBecomesALinkMeanwhileEndsTheMove) {
    callbacks.progress = [this](qint64 done, qint64) {
        if (done == 2) {
            EXPECT_TRUE(QDir(NativePath(state.LibRoot)).rename("A", "B"));
            Link("../outside", "A");
            folder.Write("outside\\M12.PDF", "not ours");
        }
        return true;
    };
    try {
        Move();
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::PathFileAccess);
        EXPECT_EQ(error.File(), Root("A\\M12.PDF"));
    }
    EXPECT_EQ(folder.Read("outside\\M12.PDF"), "not ours");
    EXPECT_EQ(Entries(), (QStringList{movedEntries[0], firstEntries[1]}));
    EXPECT_EQ(Leftovers(), QStringList());
}

TEST_F(MoveOutsideTest, ATargetThatBecomesALinkMeanwhileEndsTheMove) {
    callbacks.progress = [this](qint64 done, qint64) {
        if (done == 2) {
            EXPECT_TRUE(QDir(NativePath(state.LibRoot)).rename("N", "N2"));
            Link("../outside", "N");
        }
        return true;
    };
    EXPECT_EQ(Failure([&] { Move(); }), ErrorNumber::PathFileAccess);
    ExpectOutsideAsBefore();
    EXPECT_TRUE(folder.Exists("home\\A\\M12.PDF"));
}

TEST_F(MoveOutsideTest, ANoteNeverReachesOut) {
    Link("../outside", "OUT");
    folder.Write("outside\\x.SLD.moving", "not ours");
    folder.Write("x.PDF.moving", "not ours");
    Name(1, "A\\gone.PDF");
    MoveNote(state.LibraryDb)
        .Write({{PdfField, "A\\gone.PDF", "..\\x.PDF"},
                {PdfField, "A\\gone.PDF", "..\\M10.PDF"},
                {SlideField, "A\\gone.SLD", "OUT\\x.SLD"},
                {PdfField, "..\\gone.PDF", "A\\M10.PDF"},
                {PdfField, "A\\gone.PDF", folder.Path("x.PDF")}});
    FinishInterruptedMove(state.LibraryDb, state.LibRoot);
    EXPECT_EQ(folder.Read("outside\\x.SLD.moving"), "not ours");
    EXPECT_EQ(folder.Read("x.PDF.moving"), "not ours");
    EXPECT_EQ(folder.Read("M10.PDF.moving"), "not ours");
    EXPECT_EQ(Entries()[0], "1|2|M10|A\\gone.PDF|A\\M10.SLD");
    EXPECT_EQ(Leftovers(), QStringList());
}

TEST_F(MoveOutsideTest, ANoteThatIsALinkIsNone) {
    const QString elsewhere = folder.Write("elsewhere", "");
    ASSERT_EQ(::symlink(QFile::encodeName(NativePath(elsewhere)).constData(),
                        QFile::encodeName(NativePath(state.LibraryDb) + ".move").constData()),
              0);
    EXPECT_EQ(Failure([&] { Move(); }), ErrorNumber::PathFileAccess);
    EXPECT_EQ(folder.Read("elsewhere"), "");
    EXPECT_EQ(FileNames().size(), 4);
}

} // namespace
} // namespace velmo
