#include "library/symbol_file_move.h"

#include "library/file_move_plan.h"
#include "library/library_database.h"
#include "platform/files.h"
#include "platform/runtime_error.h"

#include <QHash>

#include <exception>
#include <optional>

namespace velmo {

namespace {

// Stores the new names in every row that holds an old one exactly. Returns the number of changed rows.
int StoreNames(RecordSet rows, const std::vector<NameChange>& changes) {
    QHash<QString, QHash<QString, QString>> newNames;
    for (const NameChange& change : changes)
        newNames[change.field][change.oldName] = change.newName;
    int changed = 0;
    for (; !rows.Eof(); rows.MoveNext()) {
        rows.Edit();
        bool found = false;
        for (auto field = newNames.cbegin(); field != newNames.cend(); ++field) {
            const auto newName = field->constFind(rows.Text(field.key()));
            if (newName == field->cend())
                continue;
            rows.Set(field.key(), *newName);
            found = true;
        }
        rows.Update();
        changed += found ? 1 : 0;
    }
    return changed;
}

// Stores what a killed move had moved: the file is gone from its old place and there in its new one. The rows
// may be in another category by now. Returns the number of changed rows.
int StoreNoted(Database& library, MoveNote& note, const QString& libRoot) {
    std::vector<NameChange> moved;
    for (const NameChange& change : note.Read()) {
        const QString destination = libRoot + change.newName;
        DeleteMoveRemains(destination);
        if (!FileExists(libRoot + change.oldName) && FileExists(destination))
            moved.push_back(change);
    }
    return moved.empty() ? 0 : StoreNames(AllEntries(library), moved);
}

// The library holds the names, so the note only says what is known. Another program that writes the library
// in the meantime puts its own note there or removes this one.
void Remove(const MoveNote& note, Database& library) {
    const Transaction held(library);
    note.Remove();
}

// What another move left unfinished must be finished first, so its note must be one that can be read: the
// user is not to answer questions in vain. Throws 75 otherwise.
void RequireReadableNote(const QString& libraryFile) {
    MoveNote note(libraryFile);
    if (!note.Exists())
        return;
    Database library(libraryFile, Database::Access::Write);
    const Transaction held(library);
    if (note.Exists())
        note.Read();
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

void MoveAll(const std::vector<PlannedMove>& plan, const FileMoveCallbacks& callbacks,
             std::vector<NameChange>& moved) {
    for (const PlannedMove& move : plan) {
        if (callbacks.progress && !callbacks.progress(qint64(moved.size()), qint64(plan.size())))
            return;
        MoveFile(move.source, move.destination, move.ifThere);
        moved.push_back(move.change);
    }
}

} // namespace

void MoveSymbolFiles(const GlobalState& state, const std::vector<ContentRow>& selected,
                     const FileMoveCallbacks& callbacks) {
    RequireWritable(state.LibraryDb);
    RequireReadableNote(state.LibraryDb);
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
    std::exception_ptr failure;
    try {
        MoveAll(plan, callbacks, moved);
    } catch (...) {
        failure = std::current_exception();
    }
    try {
        StoreNames(EntriesOf(library, state.CurFolderID), moved);
        transaction->Commit();
        Remove(note, library);
    } catch (const RuntimeError&) {
        // The first failure caused this one, and what is not stored now is so from the note.
        if (!failure)
            throw;
    }
    if (failure)
        std::rethrow_exception(failure);
}

void FinishInterruptedMove(const QString& library, const QString& libRoot) {
    MoveNote note(library);
    if (!note.Exists())
        return;
    try {
        Database database(library, Database::Access::Write);
        // Whoever is writing the library now may be the one who wrote the note: no waiting for him.
        database.Execute(QStringLiteral("PRAGMA busy_timeout=0"));
        database.Execute(QStringLiteral("PRAGMA synchronous=EXTRA"));
        Transaction transaction(database);
        StoreNoted(database, note, libRoot);
        transaction.Commit();
        Remove(note, database);
    } catch (const RuntimeError&) {
        // The note stays for the next time.
    }
}

} // namespace velmo
