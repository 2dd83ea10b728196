#pragma once

#include <QGenericPlugin>

namespace velmo::driver {

// Qt loads this into a program that was started with QT_QPA_GENERIC_PLUGINS=velmotestdriver;
// VELMO_TEST_SERVER names the line to the test.
class DriverPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "driver_plugin.json")

public:
    QObject* create(const QString& name, const QString& parameters) override;
};

} // namespace velmo::driver
