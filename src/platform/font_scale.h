#pragma once

#include <QFontMetrics>

namespace velmo {

// How much larger than usual things beside a text of this font are: 1 for every usual font.
inline double FontScale(const QFontMetrics& font) {
    constexpr int HighestUsualLine = 20; // Pixels.
    return qMax(1.0, double(font.height()) / HighestUsualLine);
}

} // namespace velmo
