#pragma once

#include "platform/slide_writer.h"

#include <QImage>

namespace velmo {

inline constexpr QRgb ground = 0xFF1B1F24;
inline constexpr QRgb white = 0xFFFFFFFF;
inline constexpr QRgb red = 0xFFFF0000;

// The rectangle that holds every pixel unlike the ground.
inline QRect Ink(const QImage& image) {
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != ground)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

inline int Count(const QImage& image, const QRect& area, QRgb colour) {
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            count += image.pixel(x, y) == colour ? 1 : 0;
    }
    return count;
}

inline int Area(const QRect& rectangle) {
    return rectangle.width() * rectangle.height();
}

// A rectangle drawn with four lines on a canvas of 1001 by 801 dots.
inline QByteArray Frame(QPoint from, QPoint to) {
    SlideWriter writer(1000, 800);
    writer.AddLine(from, {to.x(), from.y()});
    writer.AddLine({to.x(), from.y()}, to);
    writer.AddLine(to, {from.x(), to.y()});
    writer.AddLine({from.x(), to.y()}, from);
    return writer.Bytes();
}

} // namespace velmo
