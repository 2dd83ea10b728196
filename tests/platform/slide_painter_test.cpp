#include "platform/slide_fit.h"
#include "platform/slide_painter.h"
#include "platform/slide_writer.h"
#include "slide_images.h"
#include "slide_samples.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace velmo {
namespace {

QImage Painted(const Slide& slide, QSize size, int penWidth = 1) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(ground);
    QPainter painter(&image);
    PaintSlide(painter, slide, image.rect(), {QColor::fromRgb(ground), penWidth});
    return image;
}

QImage Painted(const SlideWriter& writer, QSize size, int penWidth = 1) {
    return Painted(ReadSlide(writer.Bytes()), size, penWidth);
}

TEST(SlidePainter, DotsCloseUpWhenEnlarged) {
    SlideWriter writer(400, 300);
    for (int x = 100; x < 130; ++x) {
        for (int y = 100; y < 120; ++y)
            writer.AddDot({x, y});
    }
    for (const QSize size : {QSize(60, 40), QSize(333, 250), QSize(1000, 701)}) {
        const QImage image = Painted(writer, size);
        const QRect ink = Ink(image);
        EXPECT_EQ(Count(image, ink, white), Area(ink)) << size.width();
        EXPECT_NEAR(1.0 * ink.width() / ink.height(), 1.5, 0.06);
    }
}

TEST(SlidePainter, ALoneDotShows) {
    SlideWriter writer(400, 300);
    writer.AddLine({0, 0}, {400, 0});
    writer.SetColour(1);
    writer.AddDot({200, 300});
    EXPECT_EQ(Count(Painted(writer, {100, 80}), {0, 0, 100, 80}, red), 1);
    EXPECT_EQ(Count(Painted(writer, {100, 80}, 2), {0, 0, 100, 80}, red), 4);
    SlideWriter only(400, 300);
    only.AddDot({200, 150});
    const QRect ink = Ink(Painted(only, {400, 300}));
    EXPECT_GE(ink.width(), 1);
    EXPECT_LE(ink.width(), 400 / 10) << "a dot is not blown up to a wall";
}

TEST(SlidePainter, TrianglesLeaveNoSeam) {
    SlideWriter writer(400, 300);
    const QPoint middle(203, 151);
    const std::vector<QPoint> rim = {{100, 100}, {300, 100}, {300, 200}, {211, 200}, {100, 200}};
    for (std::size_t i = 0; i < rim.size(); ++i)
        writer.AddPolygon(std::vector<QPoint>{middle, rim[i], rim[(i + 1) % rim.size()]});
    for (const QSize size : {QSize(90, 70), QSize(601, 407)}) {
        for (const int pen : {1, 2}) {
            const QImage image = Painted(writer, size, pen);
            const QRect inside = Ink(image).adjusted(4, 4, -4, -4);
            EXPECT_EQ(Count(image, inside, white), Area(inside)) << size.width();
        }
    }
}

TEST(SlidePainter, TrianglesWithoutAreaShow) {
    SlideWriter writer(400, 300);
    writer.AddPolygon(std::vector<QPoint>{{100, 100}, {300, 100}, {300, 100}});
    writer.AddPolygon(std::vector<QPoint>{{100, 200}, {100, 200}, {100, 200}});
    const QImage image = Painted(writer, {200, 150});
    const QRect ink = Ink(image);
    EXPECT_NEAR(ink.width(), 184, 3);
    EXPECT_EQ(image.pixel(ink.topLeft()), white) << "the one of a single dot";
    EXPECT_EQ(image.pixel(ink.center().x(), ink.bottom()), white);
}

TEST(SlidePainter, LaterRecordsPaintOverEarlierOnes) {
    SlideWriter writer(100, 100);
    writer.AddPolygon(std::vector<QPoint>{{0, 0}, {100, 0}, {100, 100}, {0, 100}});
    writer.SetColour(0);
    writer.AddPolygon(std::vector<QPoint>{{25, 25}, {75, 25}, {75, 75}, {25, 75}});
    writer.SetColour(1);
    writer.AddDot({50, 50});
    const QImage image = Painted(writer, {100, 100});
    EXPECT_EQ(image.pixel(10, 50), white);
    EXPECT_EQ(image.pixel(40, 50), ground) << "colour 0 is the background";
    EXPECT_EQ(image.pixel(50, 50), red);
}

TEST(SlidePainter, KeepsTheShapeOfOldScreensDots) {
    QByteArray bytes = Frame({100, 100}, {500, 500});
    // 1000 by 800 dots on a screen of 2.5 to 1: a dot is twice as wide as high.
    bytes.replace(23, 4, Hex("40 78 7D 01"));
    const QRect ink = Ink(Painted(ReadSlide(bytes), {400, 400}));
    EXPECT_NEAR(1.0 * ink.width() / ink.height(), 2, 0.02);
}

TEST(SlidePainter, NothingShowsOutsideTheCanvas) {
    // Canvas 20 by 10; a line along its left part and one that goes far beyond it.
    const Slide slide =
        ReadSlide(SlideHeader() + Hex("07 FF 00 00 00 00 05 00 00 00 03 00 03 00 FF 7F FF 7F 00 FC"));
    EXPECT_EQ(slide.drawing.Lines().size(), 2U);
    const SlideFit fit(slide, {0, 0, 400, 400});
    EXPECT_NEAR(fit.X(19), 384, 1) << "the canvas bounds what is fitted";
    const QRect ink = Ink(Painted(slide, {400, 400}));
    EXPECT_LE(ink.right(), fit.X(19.5) + 3);
    EXPECT_GE(ink.top(), fit.Y(9.5) - 3);
    EXPECT_GE(ink.height(), 100) << "up to the edge it shows";
}

// From the lower left corner of a canvas a line and a triangle below it go as far out as coordinates can.
TEST(SlidePainter, ShapesFarBeyondTheCanvasKeepTheirDirection) {
    for (const char* const canvas : {"01 00 01 00 80 96 98 00", "E7 03 E7 03 80 96 98 00"}) {
        QByteArray header = SlideHeader();
        header.replace(19, 8, Hex(canvas));
        const Slide line = ReadSlide(header + Hex("01 FF 00 00 00 00 FE 7F FF 3F 00 FC"));
        const Slide triangle =
            ReadSlide(header + Hex("01 FF 00 FD 04 00 FE FF 00 FD 00 00 00 00"
                                   "00 FD FE 7F 00 00 00 FD FE 7F FF 3F 00 FD 00 00 FF FF 00 FC"));
        for (const int size : {400, 2000}) {
            const SlideFit fit(line, {0, 0, size, size});
            const auto at = [&](double x, double y) {
                return QPoint(static_cast<int>(fit.X(x * line.highX)),
                              static_cast<int>(fit.Y(y * line.highY)));
            };
            const QImage thin = Painted(line, {size, size});
            const QImage filled = Painted(triangle, {size, size});
            // The triangle's edge is a dot wide: half a canvas or next to nothing.
            const double edge = 0.57 / line.highX + 0.01;
            for (const double x : {0.1, 0.4, 0.7}) {
                EXPECT_NE(thin.pixel(at(x, x / 2)), ground) << canvas << x;
                EXPECT_EQ(thin.pixel(at(x, x / 2 + 0.02)), ground) << canvas << x;
                EXPECT_EQ(thin.pixel(at(x, x / 2 - 0.02)), ground) << canvas << x;
                EXPECT_EQ(filled.pixel(at(x, x / 2 + edge)), ground) << canvas << x;
                EXPECT_EQ(filled.pixel(at(x, x / 2 - 0.02)), red) << canvas << x;
            }
        }
    }
}

TEST(SlidePainter, PensLieOnTheirLines) {
    SlideWriter writer(100, 100);
    writer.AddLine({50, 0}, {50, 100});
    writer.AddLine({0, 50}, {100, 50});
    for (const auto& [pen, size] : {std::pair(1, 301), std::pair(2, 300), std::pair(3, 301)}) {
        const QImage image = Painted(writer, {size, size}, pen);
        const int first = (size - pen) / 2;
        for (int i = 0; i < size; ++i) {
            const QRgb expected = i >= first && i < first + pen ? white : ground;
            EXPECT_EQ(image.pixel(i, 30), expected) << pen << ' ' << i;
            EXPECT_EQ(image.pixel(30, i), expected) << pen << ' ' << i;
        }
    }
}

TEST(SlidePainter, ManyLinesCoverTheSamePlaces) {
    SlideWriter few(1000, 800);
    SlideWriter many(1000, 800);
    few.AddLine({100, 100}, {900, 700});
    for (int i = 0; i < 25000; ++i)
        many.AddLine({100, 100}, {900, 700});
    const QImage smooth = Painted(few, {500, 400});
    const QImage plain = Painted(many, {500, 400});
    EXPECT_GT(Count(plain, plain.rect(), white), 300);
    for (int y = 0; y < plain.height(); ++y) {
        for (int x = 0; x < plain.width(); ++x) {
            ASSERT_TRUE(plain.pixel(x, y) == ground || smooth.pixel(x, y) != ground) << x << ',' << y;
        }
    }
}

// The middle of a picture three times as large is what a view shows that enlarges three times.
TEST(SlidePainter, EnlargingShowsAPartOfALargerPicture) {
    std::mt19937 random(3);
    SlideWriter writer(900, 600);
    const auto dot = [&random] { return QPoint(int(random() % 901), int(random() % 601)); };
    for (int i = 0; i < 200; ++i) {
        writer.SetColour(static_cast<std::uint8_t>(1 + i % 7));
        const QPoint at = dot();
        writer.AddLine(at, dot());
        writer.AddLine(at, {at.x(), dot().y()});
        writer.AddDot(dot());
        writer.AddPolygon(std::vector<QPoint>{at, at + QPoint(15, 3), at + QPoint(4, 12)});
    }
    const Slide slide = ReadSlide(writer.Bytes());
    for (const int pen : {1, 2}) {
        const QImage larger = Painted(slide, {900, 600}, pen);
        QImage part(300, 200, QImage::Format_RGB32);
        part.fill(ground);
        QPainter painter(&part);
        PaintSlide(painter, slide, SlideFit(slide, part.rect(), {3, {}}), {QColor::fromRgb(ground), pen});
        painter.end();
        int unlike = 0;
        for (int y = 0; y < 200; ++y) {
            for (int x = 0; x < 300; ++x) {
                const QColor one(part.pixel(x, y));
                const QColor other(larger.pixel(300 + x, 200 + y));
                const int difference =
                    std::max({std::abs(one.red() - other.red()), std::abs(one.green() - other.green()),
                              std::abs(one.blue() - other.blue())});
                // Smooth lines that are cut elsewhere are rounded otherwise.
                unlike += difference > 16 ? 1 : 0;
            }
        }
        EXPECT_LE(unlike, 60) << pen;
    }
}

double Distance(QPointF point, QPointF from, QPointF to) {
    const QPointF edge = to - from;
    const double along =
        std::clamp(QPointF::dotProduct(point - from, edge) / QPointF::dotProduct(edge, edge), 0.0, 1.0);
    const QPointF away = point - (from + along * edge);
    return std::hypot(away.x(), away.y());
}

TEST(SlidePainter, EnlargedFillsHaveNoBumpsAtTheirCorners) {
    SlideWriter writer(400, 300);
    const std::vector<QPoint> corners = {{100, 100}, {130, 104}, {104, 112}};
    writer.AddPolygon(corners);
    const Slide slide = ReadSlide(writer.Bytes());
    for (const QSize size : {QSize(300, 200), QSize(1200, 800)}) {
        const SlideFit fit(slide, QRect({}, size));
        ASSERT_GT(fit.DotWidth(), 5);
        const QImage image = Painted(slide, size);
        QPolygonF shape;
        for (const QPoint corner : corners)
            shape << QPointF(fit.X(corner.x()), fit.Y(corner.y()));
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x) {
                const QPointF pixel(x + 0.5, y + 0.5);
                double away = 1e9;
                for (int i = 0; i < 3; ++i)
                    away = std::min(away, Distance(pixel, shape[i], shape[(i + 1) % 3]));
                const bool inside = shape.containsPoint(pixel, Qt::OddEvenFill);
                const double beyond = inside ? -away : away - fit.DotWidth() / 2;
                if (std::abs(beyond) > 2) {
                    ASSERT_EQ(image.pixel(x, y), beyond < 0 ? white : ground) << x << ',' << y;
                }
            }
        }
    }
}

TEST(SlidePainter, NothingIsPaintedThatIsDueAlready) {
    SlideWriter writer(100, 100);
    writer.AddLine({0, 0}, {100, 100});
    writer.AddDot({0, 50});
    writer.AddPolygon(std::vector<QPoint>{{0, 0}, {100, 0}, {100, 50}});
    const Slide slide = ReadSlide(writer.Bytes());
    QImage image(100, 100, QImage::Format_RGB32);
    image.fill(ground);
    QPainter painter(&image);
    EXPECT_FALSE(PaintSlide(painter, slide, image.rect(), {QColor::fromRgb(ground), 1, QDeadlineTimer(0)}));
    EXPECT_TRUE(Ink(image).isNull());
    EXPECT_TRUE(PaintSlide(painter, slide, image.rect(), {QColor::fromRgb(ground), 1}));
    EXPECT_FALSE(Ink(image).isNull());
}

// What nobody has the time for is left out, however little of it a clock could tell.
TEST(SlidePainter, APolygonOfAMillionCornersTakesNoTime) {
    constexpr int count = 1'000'000;
    std::mt19937 random(11);
    std::vector<QPoint> tangle;
    std::vector<QPoint> circle;
    for (int i = 0; i < count; ++i) {
        const double angle = 2 * M_PI * i / count;
        tangle.emplace_back(int(random() % 1001), int(random() % 801));
        circle.emplace_back(int(500 + 390 * std::cos(angle)), int(400 + 390 * std::sin(angle)));
    }
    Slide slide;
    slide.isSlide = true;
    slide.highX = 1000;
    slide.highY = 800;
    slide.aspect = 1.25;
    Slide other = slide;
    slide.drawing.AddPolygon(1, circle);
    const QRect ink = Ink(Painted(slide, {400, 300}));
    EXPECT_NEAR(ink.width(), ink.height(), 2);
    EXPECT_GT(Count(Painted(slide, {400, 300}), ink, red), 0.75 * Area(ink)) << "as filled as any circle";

    other.drawing.AddPolygon(1, tangle);
    QImage image(1600, 900, QImage::Format_RGB32);
    QPainter painter(&image);
    for (const double zoom : {1.0, 5.0})
        EXPECT_FALSE(PaintSlide(painter, other, SlideFit(other, image.rect(), {zoom, {}}), {Qt::black, 1}));
}

// The widest canvas, the smallest one and coordinates far off in every combination: nothing may overflow.
TEST(SlidePainter, SurvivesAnyBytes) {
    std::mt19937 random(7);
    const QByteArray header = SlideHeader();
    for (int round = 0; round < 3000; ++round) {
        QByteArray bytes = header;
        for (qsizetype at = 19; at < 27; ++at)
            bytes[at] = random() % 3 == 0 ? '\0' : static_cast<char>(random());
        for (int record = 0; record < 20; ++record) {
            static constexpr unsigned char types[] = {0x00, 0x7F, 0xFB, 0xFD, 0xFD, 0xFD, 0xFD, 0xFE};
            static constexpr int lengths[] = {6, 6, 3, 4, 4, 4, 4, 1};
            const std::size_t kind = random() % 8;
            bytes += static_cast<char>(random());
            bytes += static_cast<char>(types[kind]);
            for (int i = 0; i < lengths[kind]; ++i)
                bytes += static_cast<char>(random() >> 4);
        }
        const Slide slide = ReadSlide(bytes);
        ASSERT_FALSE(slide.drawing.IsEmpty());
        for (const int pen : {1, 2}) {
            Painted(slide, {40, 30}, pen);
            QImage image(40, 30, QImage::Format_RGB32);
            QPainter painter(&image);
            const SlideLook look{50, QPoint(int(random() % 100), int(random() % 100))};
            PaintSlide(painter, slide, SlideFit(slide, image.rect(), look), {Qt::black, pen});
        }
    }
}

} // namespace
} // namespace velmo
