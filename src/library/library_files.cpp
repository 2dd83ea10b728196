#include "library/library_files.h"

#include "library/library_database.h"
#include "library/list_file_import.h"
#include "platform/files.h"
#include "platform/numbers.h"
#include "platform/runtime_error.h"
#include "platform/text_file.h"
#include "startup/settings_keys.h"

#include <QFileInfo>

namespace velmo {

namespace {

namespace keys = settings_keys;

// Lines between two reports of progress.
constexpr int LinesPerReport = 256;

// The category that a new library begins with: its root.
constexpr std::int16_t FirstCategory = 1;

QString SystemLibraryPath(const GlobalState& state) {
    return state.HomeDir + QStringLiteral("velmo2.mdb");
}

QString UserLibraryPath(const GlobalState& state) {
    return state.HomeDir + QStringLiteral("VelmoUsr.mdb");
}

// What a library that is there lacks.
enum class Lack { Nothing, Categories, Root };

Lack LackOf(const QString& path) {
    // The engine takes an empty file for a database without tables.
    if (QFileInfo(NativePath(path)).size() == 0)
        return Lack::Categories;
    Database library(path, Database::Access::Read);
    if (!RootCategories(library).Eof())
        return Lack::Nothing;
    return AllCategories(library).Eof() ? Lack::Categories : Lack::Root;
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

// For the CAD side.
void RecordPath(SettingsStore& settings, const QString& key, const QString& path) {
    settings.Save(key, path);
    settings.Flush();
}

void MakeSystemLibrary(const GlobalState& state, SettingsStore& settings, const LibraryCallbacks& callbacks,
                       const std::function<Making()>& wanted) {
    const QString path = SystemLibraryPath(state);
    const QString listFile = state.HomeDir + QStringLiteral("syst\\vlmsymlib.lst");
    MakeLibrary({path, wanted, [&](Database& library) { ImportListFile(library, listFile, callbacks); },
                 callbacks.wait, [&] { RecordPath(settings, keys::VelmoDB, path); }});
}

void AddRoot(Database& library, const QString& name) {
    RecordSet folders(library, QStringLiteral("FolderTable"));
    folders.AddNew();
    // What was below a root that was deleted is below it again.
    folders.SetNumber(u"ID", FirstCategory);
    folders.SetNumber(u"ParentID", 0);
    folders.Set(u"SLDFileName", u"");
    folders.Set(u"FolderName", name);
    folders.Update();
}

void MakeUserLibrary(const GlobalState& state, SettingsStore& settings, const LibraryCallbacks& callbacks,
                     const std::function<Making()>& wanted) {
    const QString path = UserLibraryPath(state);
    MakeLibrary({path, wanted, [](Database& library) { AddRoot(library, UserRootName); }, callbacks.wait,
                 [&] { RecordPath(settings, keys::UsrDB, path); }});
}

// The first category becomes the root again, wherever it was; where it is gone, it is added.
void MendRoot(const QString& path, const QString& name) {
    Database library(path, Database::Access::Write);
    Transaction transaction(library);
    // Another program may have done it while the user was asked.
    if (RootCategories(library).Eof()) {
        RecordSet first = CategoryWithId(library, FirstCategory);
        if (first.Eof()) {
            AddRoot(library, name);
        } else {
            first.Edit();
            first.SetNumber(u"ParentID", 0);
            first.Update();
        }
    }
    transaction.Commit();
}

// Makes a library that is not there, unless another program does.
std::function<Making()> IfMissing(const QString& path) {
    return [path] { return FileExists(path) ? Making::Nothing : Making::New; };
}

// Makes an empty one anew, unless another program has done so.
std::function<Making()> IfEmpty(const QString& path) {
    return [path] {
        if (!FileExists(path))
            return Making::New;
        return LackOf(path) == Lack::Categories ? Making::Replacement : Making::Nothing;
    };
}

bool MayMendRoot(const QString& path, const LibraryCallbacks& callbacks) {
    return callbacks.ask(
        path + QStringLiteral(" には最上位の分類がありません。\n\n最上位の分類を作り直してよろしいですか"));
}

// Makes the system library when it is missing, or empty and the user wants it. True when it was made.
bool ProvideSystemLibrary(const GlobalState& state, SettingsStore& settings, const QString& path,
                          const LibraryCallbacks& callbacks) {
    if (!FileExists(path)) {
        MakeSystemLibrary(state, settings, callbacks, IfMissing(path));
        return true;
    }
    ClearMakingRemains(path);
    const Lack lack = LackOf(path);
    if (lack == Lack::Root && MayMendRoot(path, callbacks))
        MendRoot(path, SystemRootName);
    if (lack != Lack::Categories ||
        !callbacks.ask(path + QStringLiteral(" には分類がありません。\n\n"
                                             "一覧ファイルからライブラリを作り直してよろしいですか")))
        return false;
    MakeSystemLibrary(state, settings, callbacks, IfEmpty(path));
    return true;
}

// The same for the user library, whose categories are nowhere else: only its root is made anew.
bool ProvideUserLibrary(const GlobalState& state, SettingsStore& settings, const QString& path,
                        const LibraryCallbacks& callbacks) {
    if (!FileExists(path)) {
        MakeUserLibrary(state, settings, callbacks, IfMissing(path));
        return true;
    }
    ClearMakingRemains(path);
    if (LackOf(path) == Lack::Nothing || !MayMendRoot(path, callbacks))
        return false;
    if (QFileInfo(NativePath(path)).size() == 0)
        MakeUserLibrary(state, settings, callbacks, IfEmpty(path));
    else
        MendRoot(path, UserRootName);
    return false;
}

// Whether a library is to be made: there is none, or the user wants a new one.
Making AskFor(const QString& path, const LibraryCallbacks& callbacks) {
    if (!FileExists(path))
        return Making::New;
    if (callbacks.ask(path + QStringLiteral(" はすでに存在します。更新してよろしいですか")))
        return Making::Replacement;
    return Making::Nothing;
}

} // namespace

void OpenLibraries(GlobalState& state, SettingsStore& settings, const LibraryCallbacks& callbacks) {
    const QString system = state.HomeDir + QStringLiteral("Velmo2.mdb");
    const auto saved = [&settings](const QString& key) {
        return ToIntegerOr(settings.Get(key), FirstCategory);
    };
    if (!state.UserLibrary) {
        state.LibraryDb = system;
        const bool isNew = ProvideSystemLibrary(state, settings, system, callbacks);
        state.CurFolderID = isNew ? FirstCategory : saved(keys::TreeLast);
        return;
    }
    if (state.RunMode == run_mode::UserLibrary) {
        state.CurFolderID = saved(keys::EdtTreeLast);
        state.SystemTreeFirst = ToNumberOr(settings.Get(keys::Tree2nd1st), 0) != 0;
        state.SystemDb = system;
        if (ProvideSystemLibrary(state, settings, system, callbacks) && state.SystemTreeFirst) {
            state.CurFolderID = FirstCategory;
            state.SystemTreeFirst = false;
        }
    } else {
        state.CurFolderID = saved(keys::UsrTreeLast);
    }
    state.LibraryDb = UserLibraryPath(state);
    if (ProvideUserLibrary(state, settings, state.LibraryDb, callbacks) && !state.SystemTreeFirst)
        state.CurFolderID = FirstCategory;
}

void CreateSystemLibrary(const GlobalState& state, SettingsStore& settings,
                         const LibraryCallbacks& callbacks) {
    const Making making = AskFor(SystemLibraryPath(state), callbacks);
    if (making == Making::Nothing)
        RecordPath(settings, keys::VelmoDB, SystemLibraryPath(state));
    else
        MakeSystemLibrary(state, settings, callbacks, [making] { return making; });
}

void CreateUserLibrary(const GlobalState& state, SettingsStore& settings, const LibraryCallbacks& callbacks) {
    const Making making = AskFor(UserLibraryPath(state), callbacks);
    if (making == Making::Nothing)
        RecordPath(settings, keys::UsrDB, UserLibraryPath(state));
    else
        MakeUserLibrary(state, settings, callbacks, [making] { return making; });
}

} // namespace velmo
