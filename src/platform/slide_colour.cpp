#include "platform/slide_colour.h"

#include <array>

namespace velmo {

namespace {

// A channel of 0..1, rounded down as the table does; the small addend takes out the noise of binary
// fractions.
constexpr std::uint32_t Channel(double value) {
    return static_cast<std::uint32_t>(255 * value + 1e-6);
}

constexpr std::uint32_t Colour(double red, double green, double blue) {
    return Channel(red) << 16 | Channel(green) << 8 | Channel(blue);
}

// hue in steps of 15 degrees, 0..23
constexpr std::uint32_t HsvColour(int hue, double saturation, double value) {
    const int sector = hue / 4;
    const double within = hue % 4 / 4.0;
    const double low = value * (1 - saturation);
    const double falling = value * (1 - saturation * within);
    const double rising = value * (1 - saturation * (1 - within));
    switch (sector) {
    case 0:
        return Colour(value, rising, low);
    case 1:
        return Colour(falling, value, low);
    case 2:
        return Colour(low, value, rising);
    case 3:
        return Colour(low, falling, value);
    case 4:
        return Colour(rising, low, value);
    default:
        return Colour(value, low, falling);
    }
}

constexpr std::array<std::uint32_t, 256> MakeTable() {
    constexpr std::array<std::uint32_t, 10> plain = {0x000000, 0xFF0000, 0xFFFF00, 0x00FF00, 0x00FFFF,
                                                     0x0000FF, 0xFF00FF, 0xFFFFFF, 0x808080, 0xC0C0C0};
    constexpr std::array<double, 5> values = {1.00, 0.65, 0.50, 0.30, 0.15};
    std::array<std::uint32_t, 256> table{};
    for (std::size_t i = 0; i < plain.size(); ++i)
        table[i] = plain[i];
    for (int i = 10; i < 250; ++i) {
        const double saturation = i % 2 == 0 ? 1.0 : 0.5;
        table[static_cast<std::size_t>(i)] =
            HsvColour((i - 10) / 10, saturation, values[static_cast<std::size_t>(i % 10 / 2)]);
    }
    for (int i = 250; i < 256; ++i) {
        const double grey = 0.33 + 0.134 * (i - 250);
        table[static_cast<std::size_t>(i)] = Colour(grey, grey, grey);
    }
    return table;
}

} // namespace

std::uint32_t SlideColour(std::uint8_t number) {
    static constexpr std::array<std::uint32_t, 256> table = MakeTable();
    return table[number];
}

} // namespace velmo
