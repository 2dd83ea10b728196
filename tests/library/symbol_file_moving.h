#pragma once

#include "library/symbol_file_move.h"
#include "support/failure.h"
#include "support/other_user.h"
#include "symbol_library.h"

namespace velmo {

// A category whose entries' files are moved into another folder, and what the user is told and answers
// meanwhile.
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

} // namespace velmo
