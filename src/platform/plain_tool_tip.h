#pragma once

#include <QString>

namespace velmo {

// What to hand out as a tooltip so that it reads exactly as the text: one that looks like markup is wrapped.
QString PlainToolTip(const QString& text);

} // namespace velmo
