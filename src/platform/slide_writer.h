#pragma once

#include "platform/slide_drawing.h"

#include <QByteArray>

#include <cstdint>
#include <span>

namespace velmo {

enum class SlideLevel : std::uint8_t { Old = 1, New = 2 };
enum class SlideByteOrder { LowByteFirst, HighByteFirst };

// The variants of the format; the default is what every drawing program of today writes.
struct SlideEncoding {
    SlideLevel level = SlideLevel::New;
    SlideByteOrder order = SlideByteOrder::LowByteFirst;
};

// Collects a picture in screen dots and writes it as a slide. The origin is the lower left dot, y grows
// upward. A coordinate outside 0..32767 throws 6.
class SlideWriter {
public:
    // A canvas of highX + 1 by highY + 1 square dots. Throws 5 unless both are 1..32767.
    SlideWriter(int highX, int highY);

    // Colour number of what is added from now on; 7 (the foreground) before the first call.
    void SetColour(std::uint8_t colour) { colour_ = colour; }
    void AddLine(QPoint from, QPoint to);
    void AddDot(QPoint dot);
    // A filled polygon. Throws 5 unless it has 3 to 32766 corners.
    void AddPolygon(std::span<const QPoint> corners);

    const SlideDrawing& Drawing() const { return drawing_; }
    QByteArray Bytes(SlideEncoding encoding = {}) const;

private:
    int highX_;
    int highY_;
    std::uint8_t colour_;
    SlideDrawing drawing_;
};

} // namespace velmo
