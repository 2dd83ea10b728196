#pragma once

#include "platform/slide_damage.h"
#include "platform/slide_drawing.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace velmo {

// A vector snapshot of a drawing screen. A default value is no slide at all: it shows nothing.
struct Slide {
    bool isSlide = false;
    int highX = 0;     // width of the canvas in dots minus 1
    int highY = 0;     // height of the canvas in dots minus 1
    double aspect = 1; // physical width / height of the canvas, always finite and above 0
    SlideDrawing drawing;
    std::optional<SlideDamage> damage; // set when not all was read; drawing holds what was

    // Physical width / height of one dot.
    double DotShape() const;
};

// Reads a slide of either level and byte order. Never fails: the damage tells why it holds less than it
// should, or nothing.
Slide ReadSlide(const QByteArray& bytes);

// So much of a file is read: far above the largest slide that any drawing program writes.
inline constexpr qint64 LargestSlideFile = qint64{16} << 20;

// The same from a file (stored path). An empty or missing name or a folder gives a default value without
// damage. Only a regular file is opened.
Slide LoadSlide(const QString& stored);

} // namespace velmo
