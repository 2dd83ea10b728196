#pragma once

class QWidget;

namespace velmo {

// Logical units of length in settings and layout: 15 twips to a pixel at 100 %.
inline constexpr int TwipsPerPixel = 15;

constexpr int TwipsToPixels(double twips) {
    const double pixels = twips / TwipsPerPixel;
    return int(pixels < 0 ? pixels - 0.5 : pixels + 0.5);
}

constexpr int PixelsToTwips(int pixels) {
    return pixels * TwipsPerPixel;
}

// Puts a window above all others, those of other programs too, or takes it back among them. Place, size and
// visibility stay.
void SetTopmost(QWidget* window, bool topmost);

} // namespace velmo
