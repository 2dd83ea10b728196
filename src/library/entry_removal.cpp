#include "library/entry_removal.h"

#include "library/library_database.h"
#include "platform/runtime_error.h"

#include <optional>
#include <utility>

namespace velmo {

namespace {

const QString HasSubfolders = QStringLiteral("サブフォルダが存在するため削除出来ません");
// A library without a root category could not be opened any more.
const QString IsLastRoot = QStringLiteral("最後のルートフォルダは削除出来ません");
const QString HasEntries = QStringLiteral("PDFが登録されているため削除出来ません");

// Runs a step on the library. False after a failure, which is told.
template <typename Step>
bool Try(const RemovalCallbacks& callbacks, Step&& step) {
    try {
        std::forward<Step>(step)();
        return true;
    } catch (const RuntimeError& error) {
        // This one has something to say to the user.
        if (error.Number() == ErrorNumber::DatabaseReadOnly)
            throw;
    }
    callbacks.inform(QStringLiteral("del Tbl Error"));
    return false;
}

bool HasChildren(Database& library, int id) {
    return !ChildCategories(library, id).Eof();
}

// True when the category is the only one without a parent.
bool IsOnlyRoot(Database& library, int id) {
    RecordSet roots = RootCategories(library);
    if (roots.Eof() || roots.Integer(u"ID") != id)
        return false;
    roots.MoveNext();
    return roots.Eof();
}

void RequireCurrent(const RecordSet& row, const Database& library) {
    if (row.Eof())
        throw RuntimeError(ErrorNumber::NoCurrentRecord).InFile(library.Path());
}

// What a removal needs to know of an entry: a number of any size, as text, and the name.
struct FoundEntry {
    QString id;
    QString name;
};

FoundEntry FindEntry(const RecordSet& row, const Database& library) {
    RequireCurrent(row, library);
    return {row.Text(u"ID"), row.Text(u"PDFName")};
}

RecordSet SelectEntry(Database& library, const GlobalState& state, const QString& name) {
    // It would not always break the statement; some names would find another entry.
    if (name.contains(u'\''))
        throw RuntimeError(ErrorNumber::QuerySyntax).InFile(library.Path());
    return EntriesNamed(library, name, state.CurFolderID);
}

} // namespace

bool DeleteFolder(GlobalState& state, int shownEntries, const RemovalCallbacks& callbacks) {
    QString refusal;
    const auto look = [&] {
        RequireWritable(state.LibraryDb);
        Database library(state.LibraryDb, Database::Access::Read);
        if (HasChildren(library, state.CurFolderID))
            refusal = HasSubfolders;
        else if (shownEntries > 0)
            refusal = HasEntries;
        else if (IsOnlyRoot(library, state.CurFolderID))
            refusal = IsLastRoot;
    };
    if (!Try(callbacks, look))
        return false;
    if (!refusal.isEmpty()) {
        callbacks.inform(refusal);
        return false;
    }
    if (!callbacks.ask(state.CurFolderName + QStringLiteral("を削除します。よろしいですか"),
                       QStringLiteral("VELMO分類ツリー削除")))
        return false;
    std::int16_t parent = 0;
    const auto remove = [&] {
        Database library(state.LibraryDb, Database::Access::Write);
        Transaction transaction(library);
        // Another program may have added some while the user was asked.
        if (HasChildren(library, state.CurFolderID)) {
            refusal = HasSubfolders;
            return;
        }
        {
            RecordSet folder = CategoryWithId(library, state.CurFolderID);
            RequireCurrent(folder, library);
            parent = folder.Integer(u"ParentID");
            folder.Delete();
        }
        transaction.Commit();
    };
    if (!Try(callbacks, remove))
        return false;
    if (!refusal.isEmpty()) {
        callbacks.inform(refusal);
        return false;
    }
    state.CurFolderID = parent;
    return true;
}

bool DeletePdfEntry(const GlobalState& state, const QString& name, const RemovalCallbacks& callbacks) {
    FoundEntry found;
    const auto look = [&] {
        RequireWritable(state.LibraryDb);
        Database library(state.LibraryDb, Database::Access::Read);
        found = FindEntry(SelectEntry(library, state, name), library);
    };
    if (!Try(callbacks, look))
        return false;
    if (!callbacks.ask(found.name + QStringLiteral(" を削除します。よろしいですか"),
                       QStringLiteral("VelmoPDFリスト削除")))
        return false;
    return Try(callbacks, [&] {
        Database library(state.LibraryDb, Database::Access::Write);
        Transaction transaction(library);
        {
            RecordSet entry = SelectEntry(library, state, name);
            // The entry that was asked about may be gone, and another may bear its name.
            if (FindEntry(entry, library).id != found.id)
                throw RuntimeError(ErrorNumber::NoCurrentRecord).InFile(library.Path());
            entry.Delete();
        }
        transaction.Commit();
    });
}

} // namespace velmo
