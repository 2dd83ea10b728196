#pragma once

#include <QIcon>

namespace velmo {

// An icon from an SVG resource, drawn sharp for every size and screen scale. "currentColor" in it is the text
// colour of the surroundings. Unlike QIcon(path) it needs none of Qt's image plugins, whose loading is felt
// when the program starts.
QIcon SvgIcon(const QString& resource);

// The same for an icon of this folder, named without its ending.
QIcon PlatformIcon(const QString& name);

} // namespace velmo
