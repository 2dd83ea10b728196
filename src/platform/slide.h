#pragma once

#include "platform/slide_drawing.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace velmo {

// Why a slide could not be read to its end.
enum class SlideFault {
    MissingEnd,    // the data ends between two records, without an end-of-file record
    CutShort,      // the data ends within a record
    UnknownRecord, // a record of a type whose length nobody knows
};

struct SlideDamage {
    SlideFault fault = SlideFault::MissingEnd;
    qsizetype offset = 0; // of the record that could not be read, from the first byte

    bool operator==(const SlideDamage&) const = default;
};

// A vector snapshot of a drawing screen. A default value is "not a slide": it shows nothing.
struct Slide {
    bool isSlide = false;
    int highX = 0;     // width of the canvas in dots minus 1
    int highY = 0;     // height of the canvas in dots minus 1
    double aspect = 1; // physical width / height of the canvas, always finite and above 0
    SlideDrawing drawing;
    std::optional<SlideDamage> damage; // set when reading stopped early; drawing holds what came before

    // Physical width / height of one dot.
    double DotShape() const;
};

// Reads a slide of either level and byte order. Never fails: bytes that are no slide give a default value,
// damaged ones what could be read.
Slide ReadSlide(const QByteArray& bytes);

// The same from a file (stored path). An empty or missing name, a folder or an unreadable file gives a
// default value. At most the first 16 MiB are read.
Slide LoadSlide(const QString& stored);

} // namespace velmo
