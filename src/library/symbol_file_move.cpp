#include "library/symbol_file_move.h"

#include "library/file_move_plan.h"
#include "library/file_survey.h"
#include "library/library_database.h"
#include "library/moved_names.h"
#include "platform/files.h"
#include "platform/runtime_error.h"

#include <QFile>
#include <QHash>

#include <algorithm>
#include <exception>
#include <optional>

namespace velmo {

namespace {

// A file of the note that is gone from its old place and there in its new one.
bool WasMoved(const NameChange& change, const QString& libRoot) {
    return !FileExists(libRoot + change.oldName) && FileExists(libRoot + change.newName);
}

// What belongs to a definition file is complete in its new place before that is gone from its old one. So
// where the definition was moved, what is left of the others in the old place is deleted, if it can be.
void FinishBelongings(const std::vector<NameChange>& noted, const QString& libRoot) {
    QHash<QString, bool> definitionMoved;
    for (const NameChange& change : noted) {
        const QString base = BaseName(change.oldName).toCaseFolded();
        const auto definition = definitionMoved.constFind(base);
        if (definition == definitionMoved.constEnd()) {
            if (change.field == PdfField)
                definitionMoved.insert(base, WasMoved(change, libRoot));
        } else if (*definition && HaveSameBytes(libRoot + change.oldName, libRoot + change.newName) &&
                   !IsSameFile(NativePath(libRoot + change.oldName), NativePath(libRoot + change.newName))) {
            QFile::remove(NativePath(libRoot + change.oldName));
        }
    }
}

// Stores what a killed move had moved. The rows may be in another category by now. Returns the number of
// changed rows.
int StoreNoted(Database& library, MoveNote& note, const QString& libRoot) {
    std::vector<NameChange> noted = note.Read();
    // No move leads out of the library's root; a line that does is nobody's.
    std::erase_if(noted, [&libRoot](const NameChange& change) {
        return !IsBelow(libRoot + change.oldName, libRoot) || !IsBelow(libRoot + change.newName, libRoot);
    });
    for (const NameChange& change : noted)
        DeleteMoveRemains(libRoot + change.newName);
    FinishBelongings(noted, libRoot);
    std::erase_if(noted, [&libRoot](const NameChange& change) { return !WasMoved(change, libRoot); });
    return noted.empty() ? 0 : StoreMovedNames(library, libRoot, noted);
}

// The library holds the names, so the note only says what is known. Another program that writes the library
// in the meantime puts its own note there or removes this one.
void Remove(const MoveNote& note, Database& library) {
    const Transaction held(library);
    note.Remove();
}

// Stores what a killed move had moved and takes its note away. The note goes after the commit, so not even a
// loss of power may take that back.
void Finish(Database& library, MoveNote& note, const QString& libRoot) {
    library.Execute(QStringLiteral("PRAGMA synchronous=EXTRA"));
    {
        Transaction transaction(library);
        // Another program may have done it while one waited for the library.
        if (note.Exists())
            StoreNoted(library, note, libRoot);
        transaction.Commit();
    }
    Remove(note, library);
}

// What another move left unfinished is finished before this one is planned. Throws 75 when its note cannot be
// read: the user is not to answer questions in vain.
void FinishFirst(const GlobalState& state) {
    MoveNote note(state.LibraryDb);
    if (!note.Exists())
        return;
    Database library(state.LibraryDb, Database::Access::Write);
    Finish(library, note, state.LibRoot);
}

// Begins the transaction of a move; what another one left unfinished is stored first.
void Begin(std::optional<Transaction>& transaction, Database& library, MoveNote& note,
           const QString& libRoot) {
    for (;;) {
        transaction.emplace(library);
        if (!note.Exists() || StoreNoted(library, note, libRoot) == 0)
            return;
        transaction->Commit();
    }
}

// A folder on the way may have become a link since the files were looked at.
void RequireBelow(const FileToMove& file, const QString& libRoot) {
    for (const QString& path : {file.source, file.destination}) {
        if (!IsBelow(path, libRoot))
            throw RuntimeError(ErrorNumber::PathFileAccess,
                               QStringLiteral("ライブラリのフォルダの外を指しているため、移動できません。"))
                .InFile(path);
    }
}

// What belongs together moves together. Returns a file that is in its new place and could not be deleted from
// its old one, which ended the move; empty when there is none.
QString MoveAll(const std::vector<PlannedMove>& plan, const QString& libRoot,
                const FileMoveCallbacks& callbacks, std::vector<NameChange>& moved) {
    for (auto at = plan.begin(); at != plan.end();) {
        if (callbacks.progress && !callbacks.progress(qint64(at - plan.begin()), qint64(plan.size())))
            return {};
        const auto end =
            std::find_if(at + 1, plan.end(), [](const PlannedMove& move) { return !move.goesAlong; });
        std::vector<FileToMove> files;
        for (auto move = at; move != end; ++move)
            files.push_back(move->file);
        for (const FileToMove& file : files)
            RequireBelow(file, libRoot);
        const QStringList left = MoveTogether(files);
        for (; at != end; ++at)
            moved.push_back(at->change);
        if (!left.isEmpty())
            return left.first();
    }
    return {};
}

} // namespace

void MoveSymbolFiles(const GlobalState& state, const std::vector<ContentRow>& selected,
                     const FileMoveCallbacks& callbacks) {
    RequireWritable(state.LibraryDb);
    FinishFirst(state);
    const std::vector<PlannedMove> plan = PlanFileMoves(state, selected, callbacks);
    if (plan.empty())
        return;

    std::vector<NameChange> changes;
    changes.reserve(plan.size());
    for (const PlannedMove& move : plan)
        changes.push_back(move.change);
    Database library(state.LibraryDb, Database::Access::Write);
    // The note goes after the commit, so not even a loss of power may take that back.
    library.Execute(QStringLiteral("PRAGMA synchronous=EXTRA"));
    MoveNote note(state.LibraryDb);
    std::optional<Transaction> transaction;
    Begin(transaction, library, note, state.LibRoot);
    note.Write(changes);

    std::vector<NameChange> moved;
    QString left;
    std::exception_ptr failure;
    try {
        left = MoveAll(plan, state.LibRoot, callbacks, moved);
    } catch (...) {
        failure = std::current_exception();
    }
    try {
        StoreMovedNames(library, state.LibRoot, moved);
        transaction->Commit();
        // With the note what was left there is deleted the next time.
        if (left.isEmpty())
            Remove(note, library);
    } catch (const RuntimeError&) {
        // The first failure caused this one, and what is not stored now is so from the note.
        if (!failure)
            throw;
    }
    if (failure)
        std::rethrow_exception(failure);
    if (!left.isEmpty())
        throw RuntimeError(ErrorNumber::PermissionDenied,
                           QStringLiteral("移動元のファイルを削除できません。"))
            .InFile(left);
}

void FinishInterruptedMove(const QString& library, const QString& libRoot) {
    try {
        MoveNote note(library);
        if (!note.Exists())
            return;
        Database database(library, Database::Access::Write);
        // Whoever is writing the library now may be the one who wrote the note: no waiting for him.
        database.Execute(QStringLiteral("PRAGMA busy_timeout=0"));
        Finish(database, note, libRoot);
    } catch (const RuntimeError&) {
        // The note stays for the next time.
    }
}

} // namespace velmo
