#include "platform/settings_store.h"

#include "platform/numbers.h"
#include "platform/plain_settings.h"
#include "platform/runtime_error.h"

#include <QStandardPaths>

namespace velmo {

namespace {

QString UserStore() {
#ifdef Q_OS_WIN
    return QStringLiteral("HKEY_CURRENT_USER\\Software\\VB and VBA Program Settings\\Kestova2019\\Velmo2");
#else
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/Kestova2019/Velmo2.ini");
#endif
}

QSettings::Format StoreFormat() {
#ifdef Q_OS_WIN
    return QSettings::NativeFormat;
#else
    return PlainSettingsFormat();
#endif
}

QString StoreKey(const QString& key) {
    return QStringLiteral("Settings/") + key;
}

} // namespace

SettingsStore::SettingsStore() : settings_(UserStore(), StoreFormat()) {}

SettingsStore::SettingsStore(const QString& nativePath) : settings_(nativePath, PlainSettingsFormat()) {}

QString SettingsStore::Get(const QString& key, const QString& fallback) const {
    return settings_.value(StoreKey(key), fallback).toString();
}

std::int16_t SettingsStore::GetInteger(const QString& key, std::int16_t fallback) const {
    const QString text = Get(key);
    try {
        return text.isEmpty() ? fallback : ToInteger(text);
    } catch (RuntimeError& error) {
        throw error.InFile(settings_.fileName()).InField(key);
    }
}

double SettingsStore::GetNumber(const QString& key, double fallback) const {
    const QString text = Get(key);
    try {
        return text.isEmpty() ? fallback : ToNumber(text);
    } catch (RuntimeError& error) {
        throw error.InFile(settings_.fileName()).InField(key);
    }
}

void SettingsStore::Save(const QString& key, const QString& value) {
    if (value.contains(u'\n') || value.contains(u'\r'))
        throw RuntimeError(ErrorNumber::InvalidArgument).InFile(settings_.fileName()).InField(key);
    settings_.setValue(StoreKey(key), value);
}

void SettingsStore::Flush() {
    settings_.sync();
    if (settings_.status() != QSettings::NoError)
        throw RuntimeError(ErrorNumber::PathFileAccess).InFile(settings_.fileName());
}

} // namespace velmo
