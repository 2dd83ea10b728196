#include "benchmarks/lazy.h"
#include "benchmarks/ratio_table.h"
#include "benchmarks/ratios.h"
#include "platform/slide_colour.h"
#include "platform/slide_fit.h"
#include "platform/slide_painter.h"
#include "platform/slide_writer.h"

#include <QImage>

#include <cmath>
#include <map>

namespace velmo::bench {

namespace {

constexpr int Vectors = 200'000;
constexpr int HighX = 3'000;
constexpr int HighY = 2'000;
const QSize Picture(1200, 800);

// Short strokes in seven colours all over the canvas.
Slide DenseSlide() {
    SlideWriter writer(HighX, HighY);
    for (int i = 0; i < Vectors; ++i) {
        if (i % 5000 == 0)
            writer.SetColour(std::uint8_t(1 + i / 5000 % 7));
        const int x = 10 + i * 37 % (HighX - 60);
        const int y = 10 + i / 90 % (HighY - 60);
        writer.AddLine({x, y}, {x + 7 + i % 30, y + 5 + i % 23});
    }
    return ReadSlide(writer.Bytes());
}

double Paint(const Slide& slide) {
    QImage image(Picture, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    return Seconds([&] { PaintSlide(painter, slide, image.rect(), {Qt::black, 1}); });
}

double DrawBare(const Slide& slide) {
    // The same lines where the slide painter puts them, ready to be drawn.
    const SlideFit fit(slide, QRect({}, Picture));
    std::map<std::uint8_t, QList<QLineF>> byColour;
    size_t line = 0;
    for (const SlideRun& run : slide.drawing.Runs()) {
        for (; line < run.lineEnd; ++line) {
            const QLine& vector = slide.drawing.Lines()[line];
            byColour[run.colour] << QLineF(
                std::floor(fit.X(vector.x1())) + 0.5, std::floor(fit.Y(vector.y1())) + 0.5,
                std::floor(fit.X(vector.x2())) + 0.5, std::floor(fit.Y(vector.y2())) + 0.5);
        }
    }
    QImage image(Picture, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    return Seconds([&] {
        for (const auto& [colour, lines] : byColour) {
            painter.setPen(QPen(QColor(QRgb(SlideColour(colour))), 1));
            painter.drawLines(lines);
        }
    });
}

} // namespace

void AddSlides() {
    const Lazy<Slide> slide([] { return std::make_unique<Slide>(DenseSlide()); });
    AddRatio(
        "6 paint a slide of 200,000 vectors", 1.5, [slide] { return Paint(*slide); },
        [slide] { return DrawBare(*slide); });
}

} // namespace velmo::bench
