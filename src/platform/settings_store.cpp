#include "platform/settings_store.h"

#include "platform/plain_settings.h"
#include "platform/runtime_error.h"

#ifdef Q_OS_WIN
#include "platform/registry_settings.h"
#else
#include <QStandardPaths>
#endif

#include <utility>

namespace velmo {

namespace {

std::unique_ptr<SettingsBackend> UserStore() {
#ifdef Q_OS_WIN
    return std::make_unique<RegistrySettings>(
        QStringLiteral("HKEY_CURRENT_USER\\Software\\VB and VBA Program Settings\\Kestova2019\\Velmo2"));
#else
    return std::make_unique<PlainSettings>(
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
        QStringLiteral("/Kestova2019/Velmo2.ini"));
#endif
}

} // namespace

SettingsStore::SettingsStore() : backend_(UserStore()) {}

SettingsStore::SettingsStore(const QString& nativePath)
    : backend_(std::make_unique<PlainSettings>(nativePath)) {}

SettingsValues& SettingsStore::Values() const {
    if (!values_)
        values_ = backend_->Read();
    return *values_;
}

QString SettingsStore::Get(const QString& key, const QString& fallback) const {
    const auto pending = pending_.constFind(key);
    return pending != pending_.constEnd() ? *pending : Values().value(key, fallback);
}

void SettingsStore::Save(const QString& key, const QString& value) {
    if (value.contains(u'\n') || value.contains(u'\r')) {
        // What was saved with it belongs to the same action, which fails.
        pending_.clear();
        throw RuntimeError(ErrorNumber::InvalidArgument).InFile(backend_->Name()).InField(key);
    }
    pending_.insert(key, value);
}

void SettingsStore::Flush() {
    FlushAround([] {});
}

std::unique_ptr<SettingsChange> SettingsStore::Prepare() {
    flushing_ = std::exchange(pending_, {});
    return backend_->Prepare(flushing_);
}

void SettingsStore::Commit(SettingsChange& change) {
    change.Commit();
    SettingsValues& values = Values();
    values.insert(std::exchange(flushing_, {}));
}

} // namespace velmo
