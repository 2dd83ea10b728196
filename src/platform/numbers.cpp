#include "platform/numbers.h"

#include "platform/runtime_error.h"

#include <QLocale>

#include <cmath>
#include <limits>
#include <optional>

namespace velmo {

namespace {

// Digits, sign, point and exponent only: no "inf", no "nan", no grouping.
std::optional<double> ParseNumber(QStringView text) {
    const QStringView trimmed = TrimBlanks(text);
    for (const QChar c : trimmed) {
        const bool digit = c >= u'0' && c <= u'9';
        if (!digit && c != u'+' && c != u'-' && c != u'.' && c != u'e' && c != u'E')
            return std::nullopt;
    }
    bool ok = false;
    const double value = QLocale::c().toDouble(trimmed, &ok);
    if (!ok || !std::isfinite(value))
        return std::nullopt;
    return value;
}

bool FitsInteger(double value) {
    return value >= std::numeric_limits<std::int16_t>::min() &&
           value <= std::numeric_limits<std::int16_t>::max();
}

double RoundHalfToEven(double value) {
    return value - std::remainder(value, 1.0);
}

} // namespace

std::int16_t ToInteger(QStringView text) {
    const double rounded = RoundHalfToEven(ToNumber(text));
    if (!FitsInteger(rounded))
        throw RuntimeError(ErrorNumber::Overflow, QStringLiteral("値: %1").arg(text.toString()));
    return std::int16_t(rounded);
}

std::int16_t ToIntegerOr(QStringView text, std::int16_t fallback) {
    const std::optional<double> value = ParseNumber(text);
    if (!value || !FitsInteger(RoundHalfToEven(*value)))
        return fallback;
    return std::int16_t(RoundHalfToEven(*value));
}

double ToNumber(QStringView text) {
    const std::optional<double> value = ParseNumber(text);
    if (!value)
        throw RuntimeError(ErrorNumber::TypeMismatch, QStringLiteral("値: %1").arg(text.toString()));
    return *value;
}

double ToNumberOr(QStringView text, double fallback) {
    return ParseNumber(text).value_or(fallback);
}

QStringView TrimBlanks(QStringView text) {
    while (!text.isEmpty() && text.front() == u' ')
        text = text.sliced(1);
    while (!text.isEmpty() && text.back() == u' ')
        text.chop(1);
    return text;
}

} // namespace velmo
