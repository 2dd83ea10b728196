#pragma once

#include <QMap>
#include <QSettings>
#include <QString>

#include <cstdint>

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

    // The stored text, or fallback when there is none.
    QString Get(const QString& key, const QString& fallback = {}) const;

    // The stored text as a 16-bit integer or a number; an empty or missing one gives fallback. Throws 13 or
    // 6, naming file and key, when it is none.
    std::int16_t GetInteger(const QString& key, std::int16_t fallback) const;
    double GetNumber(const QString& key, double fallback) const;

    // Stores a text. Throws 5 when it holds a line break. What was saved is on disk after the next Flush.
    void Save(const QString& key, const QString& value);
    void Save(const QString& key, int value) { Save(key, QString::number(value)); }

    // Puts everything saved so far on disk in one step. Throws 75, naming the file, when that fails; what was
    // saved since the last Flush is forgotten then.
    void Flush();

private:
    QSettings settings_;
    // Saved, but not flushed.
    QMap<QString, QString> pending_;
};

} // namespace velmo
