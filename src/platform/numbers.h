#pragma once

#include <QStringView>

#include <cstdint>

namespace velmo {

// Text to a 16-bit integer: blanks trimmed, decimal, fractions rounded half to even.
// Throws 13 when the text is no number, 6 when it is out of range.
std::int16_t ToInteger(QStringView text);

// The same without failing: what is no 16-bit number gives fallback.
std::int16_t ToIntegerOr(QStringView text, std::int16_t fallback);

// Text to a number: blanks trimmed, decimal point. Throws 13 when the text is no number.
double ToNumber(QStringView text);

// The same without failing.
double ToNumberOr(QStringView text, double fallback);

// Takes blanks (U+0020 only) off both ends.
QStringView TrimBlanks(QStringView text);

} // namespace velmo
