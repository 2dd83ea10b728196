#include "platform/folder_images.h"

#include "platform/svg_icon.h"

namespace velmo {

QList<QIcon> FolderImages() {
    return {PlatformIcon(QStringLiteral("folder_open")), PlatformIcon(QStringLiteral("folder_closed"))};
}

} // namespace velmo
