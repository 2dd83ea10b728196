#pragma once

#include "platform/settings_store.h"
#include "startup/global_state.h"

#include <functional>

namespace velmo {

inline const QString UserRootName = QStringLiteral("VELMOデータ");

// What the making of a library asks and tells while it runs.
struct LibraryCallbacks {
    // A question to the user; true means yes.
    std::function<bool(const QString& question)> ask;
    // Bytes of the list file read so far and in all; false stops the import.
    std::function<bool(qint64 done, qint64 total)> progress;
};

// The user stopped an import; nothing of it is left.
struct ImportCancelled {};

// Chooses the library database (in run mode 3 both), makes those that are missing, and sets the category to
// restore. Fails as CreateSystemLibrary does.
void OpenLibraries(GlobalState& state, SettingsStore& settings, const LibraryCallbacks& callbacks);

// Makes the system library from the list file and records its path. An existing file is replaced only when
// the user says yes. The database appears when it is whole. Throws 53, 75 or 76 when the list file cannot be
// read, an error that names its line when it cannot be understood, or ImportCancelled.
void CreateSystemLibrary(const GlobalState& state, SettingsStore& settings,
                         const LibraryCallbacks& callbacks);

// Makes the user library with its root category and records its path, with the same question.
void CreateUserLibrary(const GlobalState& state, SettingsStore& settings, const LibraryCallbacks& callbacks);

} // namespace velmo
