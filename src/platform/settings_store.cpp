#include "platform/settings_store.h"

#include "platform/numbers.h"
#include "platform/plain_settings.h"
#include "platform/runtime_error.h"

#include <QStandardPaths>

#include <utility>

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
    const auto pending = pending_.constFind(key);
    return pending != pending_.constEnd() ? *pending : settings_.value(StoreKey(key), fallback).toString();
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
    pending_.insert(key, value);
}

void SettingsStore::Flush() {
    const QMap<QString, QString> saved = std::exchange(pending_, {});
    // The error of such an object is never taken back, so each flush has its own.
    QSettings writer(settings_.fileName(), settings_.format());
    QMap<QString, QVariant> before;
    for (auto entry = saved.begin(); entry != saved.end(); ++entry) {
        const QString key = StoreKey(entry.key());
        before.insert(key, writer.value(key));
        writer.setValue(key, entry.value());
    }
    writer.sync();
    if (writer.status() == QSettings::NoError)
        return;
    // Objects of one file share what is not written yet: taken back, or the next one would write it after
    // all.
    for (auto entry = before.begin(); entry != before.end(); ++entry) {
        if (entry->isValid())
            writer.setValue(entry.key(), *entry);
        else
            writer.remove(entry.key());
    }
    throw RuntimeError(ErrorNumber::PathFileAccess).InFile(settings_.fileName());
}

} // namespace velmo
