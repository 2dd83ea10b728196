#include "platform/registry_settings.h"

#include "platform/runtime_error.h"

namespace velmo {

namespace {

const QString Group = QStringLiteral("Settings/");

class RegistryChange : public SettingsChange {
public:
    RegistryChange(QString key, SettingsValues changes)
        : key_(std::move(key)), changes_(std::move(changes)) {}

    void Commit() override {
        QSettings settings(key_, QSettings::NativeFormat);
        for (auto entry = changes_.cbegin(); entry != changes_.cend(); ++entry)
            settings.setValue(Group + entry.key(), *entry);
        settings.sync();
        if (settings.status() != QSettings::NoError)
            throw RuntimeError(ErrorNumber::PathFileAccess).InFile(key_);
    }

private:
    QString key_;
    SettingsValues changes_;
};

} // namespace

SettingsValues RegistrySettings::Read() const {
    SettingsValues values;
    for (const QString& key : settings_.allKeys()) {
        if (key.startsWith(Group))
            values.insert(key.sliced(Group.size()), settings_.value(key).toString());
    }
    return values;
}

std::unique_ptr<SettingsChange> RegistrySettings::Prepare(const SettingsValues& changes) {
    return std::make_unique<RegistryChange>(settings_.fileName(), changes);
}

} // namespace velmo
