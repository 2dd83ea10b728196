#include "library/browser_icons.h"

#include "platform/svg_icon.h"

// A static library's resources are not registered by themselves; outside any namespace, as the macro demands.
static void RegisterLibraryIcons() {
    Q_INIT_RESOURCE(library_icons);
}

namespace velmo {

namespace {

QIcon Icon(const char* name) {
    RegisterLibraryIcons();
    return SvgIcon(QStringLiteral(":/library/icons/%1.svg").arg(QLatin1String(name)));
}

} // namespace

QIcon SymbolIcon() {
    return Icon("symbol");
}

QIcon OpenIcon() {
    return Icon("open");
}

QIcon CancelIcon() {
    return Icon("cancel");
}

} // namespace velmo
