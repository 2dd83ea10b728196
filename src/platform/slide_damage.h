#pragma once

#include <QString>

namespace velmo {

// Why a slide shows less than its file should hold.
enum class SlideFault {
    Unreadable,    // there is something of that name, but no file that can be read
    NoSlide,       // the bytes are something else, or not even a whole header
    TooLarge,      // only the beginning of the file was read
    MissingEnd,    // the data ends between two records, without an end-of-file record
    CutShort,      // the data ends within a record
    UnknownRecord, // a record of a type whose length nobody knows
};

struct SlideDamage {
    SlideFault fault = SlideFault::MissingEnd;
    qsizetype offset = 0; // of the record that could not be read, from the first byte

    // That something is wrong, in few words for the user.
    QString Text() const;
    // What is wrong and where.
    QString Detail() const;

    bool operator==(const SlideDamage&) const = default;
};

} // namespace velmo
