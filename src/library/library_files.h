#pragma once

#include "library/library_maker.h"
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
    // Another program is making the library, which takes long; false stops the waiting.
    std::function<bool()> wait = {};
};

// Chooses the library database (in run mode 3 both), makes those that are missing, and sets the category to
// restore. Of one without a category it asks whether to make it anew from the list file, of one without a
// root whether to make that anew; without a yes it stays as it is. Fails as CreateSystemLibrary does, and as
// opening a library does.
void OpenLibraries(GlobalState& state, SettingsStore& settings, const LibraryCallbacks& callbacks);

// Makes the system library from the list file and records its path. An existing file is replaced only when
// the user says yes. Of several programs one makes it. The database appears when it is whole. Throws 53, 75
// or 76 when the list file cannot be read, an error that names its line when it cannot be understood, or
// ImportCancelled.
void CreateSystemLibrary(const GlobalState& state, SettingsStore& settings,
                         const LibraryCallbacks& callbacks);

// Makes the user library with its root category and records its path, with the same question.
void CreateUserLibrary(const GlobalState& state, SettingsStore& settings, const LibraryCallbacks& callbacks);

} // namespace velmo
