#include "variables/variable_icons.h"

#include "platform/svg_icon.h"

// A static library's resources are not registered by themselves; outside any namespace, as the macro demands.
static void RegisterVariableIcons() {
    Q_INIT_RESOURCE(variables_icons);
}

namespace velmo {

QIcon VariableIcon(const char* name) {
    RegisterVariableIcons();
    return SvgIcon(QStringLiteral(":/variables/icons/%1.svg").arg(QLatin1String(name)));
}

} // namespace velmo
