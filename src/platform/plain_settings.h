#pragma once

#include <QSettings>

namespace velmo {

// The settings file's format: UTF-8 lines Key=value below [Settings]; a value is everything after the first
// "=", verbatim. Every other line of the file, whatever it holds, survives a save byte for byte.
QSettings::Format PlainSettingsFormat();

// What PlainSettingsFormat registers: the file's bytes to settings and back.
bool ReadPlainSettings(QIODevice& device, QSettings::SettingsMap& map);
bool WritePlainSettings(QIODevice& device, const QSettings::SettingsMap& map);

} // namespace velmo
