#include "slide_generator/slide_picture.h"

#include "platform/runtime_error.h"
#include "platform/slide_painter.h"

#include <QImage>

namespace velmo {

void SaveSlidePicture(const QString& slideFile, const QString& pictureFile) {
    const Slide slide = LoadSlide(slideFile);
    if (!slide.isSlide)
        throw RuntimeError(ErrorNumber::InvalidArgument, QStringLiteral("スライドではありません。"))
            .InFile(slideFile);
    constexpr QRgb ground = qRgb(0x18, 0x1C, 0x22);
    QImage image(800, 600, QImage::Format_RGB32);
    image.fill(ground);
    QPainter painter(&image);
    PaintSlide(painter, slide, image.rect(), {QColor(ground), 1});
    painter.end();
    if (!image.save(pictureFile))
        throw RuntimeError(ErrorNumber::PathFileAccess).InFile(pictureFile);
}

} // namespace velmo
