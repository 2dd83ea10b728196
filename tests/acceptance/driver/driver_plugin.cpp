#include "driver_plugin.h"

#include "dark_colours.h"
#include "test_driver.h"

namespace velmo::driver {

QObject* DriverPlugin::create(const QString& name, const QString&) {
    const QString server = qEnvironmentVariable("VELMO_TEST_SERVER");
    if (name != "velmotestdriver" || server.isEmpty())
        return nullptr;
    if (qEnvironmentVariable("VELMO_TEST_COLOURS") == "dark")
        UseDarkColours();
    return new TestDriver(server);
}

} // namespace velmo::driver
