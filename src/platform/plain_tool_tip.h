#pragma once

#include <QString>

namespace velmo {

// What to hand out as a tooltip so that it reads exactly as the text, even one that looks like markup; a text
// too long for one line is broken into several.
QString PlainToolTip(const QString& text);

} // namespace velmo
