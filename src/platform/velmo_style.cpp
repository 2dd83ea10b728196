#include "platform/velmo_style.h"

#include "platform/svg_icon.h"

namespace velmo {

QIcon VelmoStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
    switch (icon) {
    case SP_ToolBarHorizontalExtensionButton:
        return PlatformIcon(QStringLiteral("more_right"));
    case SP_ToolBarVerticalExtensionButton:
        return PlatformIcon(QStringLiteral("more_below"));
    default:
        return QProxyStyle::standardIcon(icon, option, widget);
    }
}

} // namespace velmo
