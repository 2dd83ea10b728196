#pragma once

#include <QByteArrayView>

#include <cstdint>

// The slide format's own numbers, for those who read and write it.
namespace velmo::slide_format {

inline constexpr QByteArrayView idString("AutoCAD Slide\r\n\x1A\0", 17);
inline constexpr std::uint8_t typeIndicator = 0x56;
inline constexpr std::uint16_t hardwareFill = 2;
inline constexpr std::uint16_t byteOrderTest = 0x1234;
inline constexpr double aspectUnit = 1e7;

// Offsets in the header.
inline constexpr qsizetype levelAt = 18;
inline constexpr qsizetype highXAt = 19;
inline constexpr qsizetype highYAt = 21;
inline constexpr qsizetype aspectAt = 23;
inline constexpr qsizetype byteOrderAt = 29;

inline constexpr qsizetype headerLength = 31;
inline constexpr qsizetype oldHeaderLength = 34;

// Record types: the high-order byte of a record's first word. All values up to lastVector are vectors, whose
// first word is x0 itself.
inline constexpr std::uint8_t lastVector = 0x7F;
inline constexpr std::uint8_t offsetVector = 0xFB;
inline constexpr std::uint8_t endOfFile = 0xFC;
inline constexpr std::uint8_t solidFill = 0xFD;
inline constexpr std::uint8_t commonEndPoint = 0xFE;
inline constexpr std::uint8_t newColour = 0xFF;

// The colour of a slide that sets none.
inline constexpr std::uint8_t foreground = 7;
inline constexpr std::uint8_t background = 0;

} // namespace velmo::slide_format
