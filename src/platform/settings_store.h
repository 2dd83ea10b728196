#pragma once

#include "platform/settings_backend.h"

#include <optional>

namespace velmo {

// The settings that the program shares with the CAD side: texts under keys, in section "Settings" of
// application "Kestova2019\Velmo2". On Linux a file of lines Key=value whose values are verbatim, on Windows
// the registry.
class SettingsStore {
public:
    // The current user's store.
    SettingsStore();
    // A store in a file of its own.
    explicit SettingsStore(const QString& nativePath);

    // The stored text, or fallback when there is none. Throws 57 or 75, naming the store, when it cannot be
    // read.
    QString Get(const QString& key, const QString& fallback = {}) const;

    // Stores a text, which is on disk after the next Flush. Throws 5 when it holds a line break; what was
    // saved since the last Flush is forgotten then.
    void Save(const QString& key, const QString& value);
    void Save(const QString& key, int value) { Save(key, QString::number(value)); }

    // Puts everything saved so far on disk in one step. Throws 57, 61, 70 or 75, naming the store, when that
    // fails; what was saved since the last Flush is forgotten then.
    void Flush();

    // Flush around something that is not to happen when the settings cannot be saved: everything saved so far
    // is written beside the store, then action runs, then the settings take their place. A failure of either
    // is thrown; what was saved is forgotten then.
    template <typename Action>
    void FlushAround(Action&& action) {
        const std::unique_ptr<SettingsChange> change = Prepare();
        std::forward<Action>(action)();
        Commit(*change);
    }

private:
    std::unique_ptr<SettingsChange> Prepare();
    void Commit(SettingsChange& change);
    SettingsValues& Values() const;

    std::unique_ptr<SettingsBackend> backend_;
    // What the store held when it was looked into first, and what was put there since.
    mutable std::optional<SettingsValues> values_;
    // Saved, but not flushed.
    SettingsValues pending_;
    SettingsValues flushing_;
};

} // namespace velmo
