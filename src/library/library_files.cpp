#include "library/library_files.h"

#include "library/library_database.h"
#include "library/list_file_import.h"
#include "platform/files.h"
#include "platform/numbers.h"
#include "platform/runtime_error.h"
#include "platform/text_file.h"
#include "startup/settings_keys.h"

#include <QScopeGuard>

namespace velmo {

namespace {

namespace keys = settings_keys;

// Lines between two reports of progress.
constexpr int LinesPerReport = 256;

// A database is made under this name and gets its own when it is whole.
QString WorkName(const QString& path) {
    return path + QStringLiteral(".new");
}

// What a program that was killed may have left beside a database.
void DeleteJournals(const QString& path) {
    for (const char* ending : {"-journal", "-wal", "-shm"})
        DeleteFileIfAny(path + QLatin1String(ending));
}

void DeleteWorkFiles(const QString& path) {
    DeleteFileIfAny(WorkName(path));
    DeleteJournals(WorkName(path));
}

// Makes a library under its work name, lets fill fill it in one transaction, and puts it in place.
template <typename Fill>
void MakeLibrary(const QString& path, Fill&& fill) {
    DeleteWorkFiles(path);
    auto leaveNothing = qScopeGuard([&path] {
        try {
            DeleteWorkFiles(path);
        } catch (const RuntimeError&) {
            // The failure under way says more than this one, and the next attempt begins with deleting it.
        }
    });
    CreateLibraryFile(WorkName(path));
    {
        Database database(WorkName(path), Database::Access::Write);
        Transaction transaction(database);
        fill(database);
        transaction.Commit();
    }
    // A journal of an old database would be played into the new one.
    DeleteJournals(path);
    RenameOver(WorkName(path), path);
    leaveNothing.dismiss();
}

// True when the library is to be made: there is none, or the user wants a new one.
bool MayCreate(const QString& path, const LibraryCallbacks& callbacks) {
    return !FileExists(path) ||
           callbacks.ask(path + QStringLiteral(" はすでに存在します。更新してよろしいですか"));
}

void ImportListFile(Database& database, const QString& listFile, const LibraryCallbacks& callbacks) {
    TextReader file(listFile);
    ListFileImport import(database);
    try {
        while (!file.AtEnd()) {
            import.ImportListLine(file.ReadLine());
            if (file.LineNumber() % LinesPerReport == 0 && callbacks.progress &&
                !callbacks.progress(file.Position(), file.Size()))
                throw ImportCancelled();
        }
    } catch (const RuntimeError& error) {
        // What the line itself caused is told with the list's line, what the database caused with the
        // database.
        if (!error.File().isEmpty() && error.Number() != ErrorNumber::TextTooLong)
            throw;
        throw RuntimeError(error.Number(), error.Detail())
            .InFile(listFile)
            .AtLine(file.LineNumber())
            .InField(error.Field());
    }
    if (import.CategoryCount() == 0)
        throw RuntimeError(ErrorNumber::NoCurrentRecord, QStringLiteral("分類がひとつもありません。"))
            .InFile(listFile);
}

} // namespace

void OpenLibraries(GlobalState& state, SettingsStore& settings, const LibraryCallbacks& callbacks) {
    const QString system = state.HomeDir + QStringLiteral("Velmo2.mdb");
    if (!state.UserLibrary) {
        state.LibraryDb = system;
        state.CurFolderID = 1;
        if (FileExists(system))
            state.CurFolderID = ToIntegerOr(settings.Get(keys::TreeLast), 1);
        else
            CreateSystemLibrary(state, settings, callbacks);
        return;
    }
    if (state.RunMode == run_mode::UserLibrary) {
        state.CurFolderID = ToIntegerOr(settings.Get(keys::EdtTreeLast), 1);
        state.SystemTreeFirst = ToNumberOr(settings.Get(keys::Tree2nd1st), 0) != 0;
        state.SystemDb = system;
        if (!FileExists(system)) {
            CreateSystemLibrary(state, settings, callbacks);
            if (state.SystemTreeFirst) {
                state.CurFolderID = 1;
                state.SystemTreeFirst = false;
            }
        }
    } else {
        state.CurFolderID = ToIntegerOr(settings.Get(keys::UsrTreeLast), 1);
    }
    state.LibraryDb = state.HomeDir + QStringLiteral("VelmoUsr.mdb");
    if (!FileExists(state.LibraryDb)) {
        CreateUserLibrary(state, settings, callbacks);
        if (!state.SystemTreeFirst)
            state.CurFolderID = 1;
    }
}

void CreateSystemLibrary(const GlobalState& state, SettingsStore& settings,
                         const LibraryCallbacks& callbacks) {
    const QString path = state.HomeDir + QStringLiteral("velmo2.mdb");
    if (MayCreate(path, callbacks)) {
        const QString listFile = state.HomeDir + QStringLiteral("syst\\vlmsymlib.lst");
        MakeLibrary(path, [&](Database& database) { ImportListFile(database, listFile, callbacks); });
    }
    settings.Save(keys::VelmoDB, path);
    settings.Flush();
}

void CreateUserLibrary(const GlobalState& state, SettingsStore& settings, const LibraryCallbacks& callbacks) {
    const QString path = state.HomeDir + QStringLiteral("VelmoUsr.mdb");
    if (MayCreate(path, callbacks)) {
        MakeLibrary(path, [](Database& database) {
            RecordSet folders(database, QStringLiteral("FolderTable"));
            folders.AddNew();
            folders.SetNumber(u"ParentID", 0);
            folders.Set(u"SLDFileName", u"");
            folders.Set(u"FolderName", UserRootName);
            folders.Update();
        });
    }
    settings.Save(keys::UsrDB, path);
    settings.Flush();
}

} // namespace velmo
