#pragma once

#include <QMap>
#include <QString>

#include <memory>

namespace velmo {

using SettingsValues = QMap<QString, QString>;

// Changed settings that are certain to find room; without Commit they are given up.
class SettingsChange {
public:
    virtual ~SettingsChange() = default;
    // Puts them in place in one step. Throws 57, 61, 70 or 75, naming the store.
    virtual void Commit() = 0;
};

// Where the settings are kept.
class SettingsBackend {
public:
    virtual ~SettingsBackend() = default;
    // The file or the registry's key, for messages.
    virtual QString Name() const = 0;
    // All of them. Throws 57 or 75, naming the store, when it cannot be read.
    virtual SettingsValues Read() const = 0;
    // Gets ready to change some and to leave what else is in the store, also what other programs saved
    // meanwhile. Throws as Read and Commit do.
    virtual std::unique_ptr<SettingsChange> Prepare(const SettingsValues& changes) = 0;
};

} // namespace velmo
