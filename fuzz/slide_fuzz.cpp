#include "platform/slide.h"
#include "platform/slide_painter.h"

#include <QImage>
#include <QPainter>

#include <cstdint>

// Any bytes are read without fail, and what was read is painted without fail.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Not a copy, which would have a byte behind its end.
    const QByteArray bytes =
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const velmo::Slide slide = velmo::ReadSlide(bytes);
    QImage image(48, 36, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    velmo::PaintSlide(painter, slide, image.rect(), {Qt::black, 1 + static_cast<int>(size % 2)});
    return 0;
}
