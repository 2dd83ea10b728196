#include "driver_plugin.h"

#include "desktop_look.h"
#include "test_driver.h"

namespace velmo::driver {

QObject* DriverPlugin::create(const QString& name, const QString&) {
    const QString server = qEnvironmentVariable("VELMO_TEST_SERVER");
    if (name != "velmotestdriver" || server.isEmpty())
        return nullptr;
    UseDesktopLook();
    return new TestDriver(server);
}

} // namespace velmo::driver
