#pragma once

#include <QRect>

class QWidget;

namespace velmo {

// Logical units of length in settings and layout: 15 twips to a pixel at 100 %.
inline constexpr int TwipsPerPixel = 15;

// Rounded; what no screen can hold is cut to what one can.
constexpr int TwipsToPixels(double twips) {
    constexpr double farthest = 1 << 20;
    const double pixels = twips / TwipsPerPixel;
    const double cut = pixels < -farthest ? -farthest : pixels > farthest ? farthest : pixels;
    return int(cut < 0 ? cut - 0.5 : cut + 0.5);
}

constexpr int PixelsToTwips(int pixels) {
    return pixels * TwipsPerPixel;
}

// A window's place as it was remembered, moved and cut so that it can be seen and reached on some screen.
QRect BroughtOntoScreen(const QRect& place);

// Makes a window that is about to be shown small enough for its screen.
void KeepWithinScreen(QWidget* window);

// Puts a window above all others, those of other programs too, or takes it back among them. Place, size and
// visibility stay.
void SetTopmost(QWidget* window, bool topmost);

} // namespace velmo
