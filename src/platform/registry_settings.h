#pragma once

#include "platform/settings_backend.h"

#include <QSettings>

namespace velmo {

// Settings in a key of the registry, as string values.
class RegistrySettings : public SettingsBackend {
public:
    explicit RegistrySettings(const QString& key) : settings_(key, QSettings::NativeFormat) {}

    QString Name() const override { return settings_.fileName(); }
    SettingsValues Read() const override;
    std::unique_ptr<SettingsChange> Prepare(const SettingsValues& changes) override;

private:
    QSettings settings_;
};

} // namespace velmo
