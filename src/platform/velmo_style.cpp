#include "platform/velmo_style.h"

#include "platform/svg_icon.h"

// A static library's resources are not registered by themselves; outside any namespace, as the macro demands.
static void RegisterPlatformIcons() {
    Q_INIT_RESOURCE(platform_icons);
}

namespace velmo {

QIcon VelmoStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
    if (icon != SP_ToolBarHorizontalExtensionButton && icon != SP_ToolBarVerticalExtensionButton)
        return QProxyStyle::standardIcon(icon, option, widget);
    RegisterPlatformIcons();
    return SvgIcon(icon == SP_ToolBarHorizontalExtensionButton
                       ? QStringLiteral(":/platform/icons/more_right.svg")
                       : QStringLiteral(":/platform/icons/more_below.svg"));
}

} // namespace velmo
