#pragma once

#include "platform/settings_backend.h"

namespace velmo {

// Settings in a file: UTF-8 lines Key=value below [Settings]; a value is everything after the first "=",
// verbatim. Every other line of the file, whatever it holds, survives a save byte for byte.
class PlainSettings : public SettingsBackend {
public:
    // path is the operating system's. A missing file is an empty store.
    explicit PlainSettings(QString path) : path_(std::move(path)) {}

    QString Name() const override { return path_; }
    // Throws 57 or 75 when the file is there and cannot be read.
    SettingsValues Read() const override;
    std::unique_ptr<SettingsChange> Prepare(const SettingsValues& changes) override;

private:
    QByteArray Bytes() const;

    QString path_;
};

// What a file says about each key; of a key that stands there twice the last line holds.
SettingsValues ReadPlainSettings(const QByteArray& file);
// The file with other values; a key that it does not have yet comes behind the last line of its section.
QByteArray WithPlainSettings(const QByteArray& file, const SettingsValues& changes);

} // namespace velmo
