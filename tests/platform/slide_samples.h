#pragma once

#include <QByteArray>

namespace velmo {

// Slides written out by hand, byte for byte. All have a canvas of 20 by 10 dots.

inline QByteArray Hex(const char* digits) {
    return QByteArray::fromHex(digits);
}

// Header of a slide of the new level, low byte first; records follow.
inline QByteArray SlideHeader() {
    return Hex(
        "41 75 74 6F 43 41 44 20 53 6C 69 64 65 0D 0A 1A 00 56 02 13 00 09 00 47 21 42 01 02 00 34 12");
}

// The same high byte first.
inline QByteArray SlideHeaderHighFirst() {
    return Hex(
        "41 75 74 6F 43 41 44 20 53 6C 69 64 65 0D 0A 1A 00 56 02 00 13 00 09 47 21 42 01 00 02 12 34");
}

// Header of a slide of the old level, low byte first.
inline QByteArray OldSlideHeader() {
    return Hex("41 75 74 6F 43 41 44 20 53 6C 69 64 65 0D 0A 1A 00 56 01 13 00 09 00"
               "39 8E E3 38 8E E3 00 40 02 00 00");
}

// The old level high byte first.
inline QByteArray OldSlideHeaderHighFirst() {
    return Hex("41 75 74 6F 43 41 44 20 53 6C 69 64 65 0D 0A 1A 00 56 01 00 13 00 09"
               "40 00 E3 8E 38 E3 8E 39 00 02 00");
}

// A red box: 2,2 - 10,2, then 2,2 - 2,7, 2,2 - 10,7 and 10,7 - 2,7, by every record that draws a line.
inline QByteArray BoxRecords() {
    return Hex("01 FF 02 00 02 00 0A 00 02 00 00 FB 00 00 05 08 FE 05 F8 FE 00 00 FC");
}

inline QByteArray BoxRecordsHighFirst() {
    return Hex("FF 01 00 02 00 02 00 0A 00 02 FB 00 00 00 05 FE 08 05 FE F8 00 FC 00");
}

// A green triangle 2,1 - 10,1 - 6,8.
inline QByteArray TriangleRecords() {
    return Hex("03 FF 00 FD 04 00 FE FF 00 FD 02 00 01 00 00 FD 0A 00 01 00 00 FD 06 00 08 00"
               "00 FD 06 00 F8 FF 00 FC");
}

} // namespace velmo
