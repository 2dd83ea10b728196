#include "platform/runtime_error.h"
#include "platform/slide.h"
#include "platform/slide_writer.h"
#include "slide_samples.h"

#include <gtest/gtest.h>

#include <random>

namespace velmo {
namespace {

constexpr SlideEncoding everyEncoding[] = {{SlideLevel::New, SlideByteOrder::LowByteFirst},
                                           {SlideLevel::New, SlideByteOrder::HighByteFirst},
                                           {SlideLevel::Old, SlideByteOrder::LowByteFirst},
                                           {SlideLevel::Old, SlideByteOrder::HighByteFirst}};

void AddPolygon(SlideWriter& writer, const std::vector<QPoint>& corners) {
    writer.AddPolygon(corners);
}

// A picture of everything a slide can hold.
SlideWriter Picture(unsigned seed) {
    std::mt19937 random(seed);
    const auto below = [&random](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    SlideWriter writer(1919, 1079);
    QPoint at(500, 500);
    for (int i = 0; i < 300; ++i) {
        const QPoint to = below(3) == 0 ? QPoint(below(1920), below(1080))
                                        : QPoint(std::clamp(at.x() + below(300) - 150, 0, 1919),
                                                 std::clamp(at.y() + below(300) - 150, 0, 1079));
        if (below(4) == 0)
            writer.SetColour(static_cast<std::uint8_t>(below(256)));
        if (below(6) == 0)
            AddPolygon(writer, {at, to, {below(1920), below(1080)}, {below(1920), 0}});
        else if (below(6) == 0)
            writer.AddDot(to);
        else
            writer.AddLine(at, to);
        at = to;
    }
    return writer;
}

TEST(SlideWriter, WritesATriangleByteForByte) {
    SlideWriter writer(19, 9);
    writer.SetColour(3);
    AddPolygon(writer, {{2, 1}, {10, 1}, {6, 8}});
    EXPECT_EQ(writer.Bytes({SlideLevel::Old}).toHex(' '), (OldSlideHeader() + TriangleRecords()).toHex(' '));
    EXPECT_EQ(writer.Bytes().toHex(' '), (SlideHeader() + TriangleRecords()).toHex(' '));
}

TEST(SlideWriter, WritesTheShortestLineRecords) {
    SlideWriter writer(19, 9);
    writer.SetColour(1);
    writer.AddLine({2, 2}, {10, 2});
    writer.AddLine({2, 3}, {2, 7});
    writer.AddLine({2, 3}, {10, 7});
    writer.AddLine({10, 7}, {2, 7});
    writer.AddLine({130, 7}, {2, 7});
    writer.AddLine({130, 7}, {130, 134});
    writer.AddLine({130, 134}, {2, 6});
    writer.AddDot({2, 300});
    EXPECT_EQ(
        writer.Bytes().toHex(' '),
        (SlideHeader() + Hex("01 FF  02 00 02 00 0A 00 02 00  00 FB 01 00 05  08 FE 04  F8 FE 00"
                             "82 00 07 00 02 00 07 00  00 FE 7F  80 FE 80  02 00 2C 01 02 00 2C 01  00 FC"))
            .toHex(' '))
        << "steps reach from -128 to 127; a vector and an offset vector stay at their start";
}

TEST(SlideWriter, WritesTheSameLinesHighByteFirst) {
    SlideWriter writer(19, 9);
    writer.SetColour(1);
    writer.AddLine({2, 2}, {10, 2});
    writer.AddLine({3, 2}, {2, 7});
    writer.AddLine({3, 2}, {1, 3});
    EXPECT_EQ(
        writer.Bytes({SlideLevel::New, SlideByteOrder::HighByteFirst}).toHex(' '),
        (SlideHeaderHighFirst() + Hex("FF 01  00 02 00 02 00 0A 00 02  FB 01 00 00 05  FE FE 01  FC 00"))
            .toHex(' '));
    EXPECT_TRUE(
        writer.Bytes({SlideLevel::Old, SlideByteOrder::HighByteFirst}).startsWith(OldSlideHeaderHighFirst()));
}

TEST(SlideWriter, NothingDrawnIsAnEmptySlide) {
    SlideWriter writer(19, 9);
    writer.SetColour(4);
    EXPECT_EQ(writer.Bytes(), SlideHeader() + Hex("00 FC"));
}

TEST(SlideWriter, EveryVariantReadsBackTheSame) {
    for (unsigned seed = 0; seed < 20; ++seed) {
        const SlideWriter writer = Picture(seed);
        for (const SlideEncoding encoding : everyEncoding) {
            const Slide slide = ReadSlide(writer.Bytes(encoding));
            EXPECT_TRUE(slide.isSlide);
            EXPECT_EQ(slide.damage, std::nullopt);
            EXPECT_EQ(slide.highX, 1919);
            EXPECT_EQ(slide.highY, 1079);
            EXPECT_NEAR(slide.DotShape(), 1, 1e-6);
            EXPECT_TRUE(slide.drawing == writer.Drawing()) << "seed " << seed;
        }
    }
}

TEST(SlideWriter, RefusesWhatTheFormatCannotSay) {
    SlideWriter writer(19, 9);
    EXPECT_NO_THROW(writer.AddLine({0, 0}, {32767, 32767}));
    EXPECT_THROW(writer.AddLine({-1, 0}, {1, 1}), RuntimeError);
    EXPECT_THROW(writer.AddLine({0, 0}, {1, 32768}), RuntimeError);
    EXPECT_THROW(writer.AddDot({0, -1}), RuntimeError);
    EXPECT_THROW(AddPolygon(writer, {{0, 0}, {1, 1}}), RuntimeError);
    EXPECT_THROW(AddPolygon(writer, {{0, 0}, {1, 1}, {0, -1}}), RuntimeError);
    EXPECT_THROW(AddPolygon(writer, std::vector<QPoint>(32767, QPoint(1, 1))), RuntimeError);
    EXPECT_EQ(writer.Drawing().Lines().size(), 1U) << "what was refused is not half there";
    EXPECT_EQ(writer.Drawing().PolygonCount(), 0U);
    EXPECT_THROW(SlideWriter(0, 9), RuntimeError);
    EXPECT_THROW(SlideWriter(9, 32768), RuntimeError);
}

// What was read before the damage is a beginning of the picture, whatever the damage is.
TEST(SlideDamage, CutAnywhereKeepsTheBeginning) {
    for (const SlideEncoding encoding : everyEncoding) {
        const SlideWriter writer = Picture(3);
        const QByteArray whole = writer.Bytes(encoding);
        const qsizetype header = encoding.level == SlideLevel::New ? 31 : 34;
        std::size_t lines = 0;
        for (qsizetype size = 0; size < whole.size(); ++size) {
            // Memory of exactly this size, so that the sanitizers see a read behind its end.
            const std::vector<char> cut(whole.begin(), whole.begin() + size);
            const Slide slide = ReadSlide(QByteArray::fromRawData(cut.data(), size));
            ASSERT_EQ(slide.isSlide, size >= header) << size;
            ASSERT_EQ(slide.damage.has_value(), size != header) << size;
            ASSERT_GE(slide.drawing.Lines().size(), lines) << size;
            lines = slide.drawing.Lines().size();
            ASSERT_TRUE(std::ranges::equal(slide.drawing.Lines(), writer.Drawing().Lines().first(lines)));
        }
        EXPECT_EQ(lines, writer.Drawing().Lines().size());
    }
}

TEST(SlideDamage, FlippedBytesAreReadWithoutFail) {
    std::mt19937 random(1);
    for (const SlideEncoding encoding : everyEncoding) {
        const QByteArray whole = Picture(4).Bytes(encoding);
        for (int round = 0; round < 2000; ++round) {
            QByteArray bytes = whole.left(static_cast<qsizetype>(17 + random() % 2000));
            for (auto flips = 1 + random() % 20; flips > 0; --flips)
                bytes[static_cast<qsizetype>(17 + random() % static_cast<unsigned>(bytes.size() - 16)) - 1] =
                    static_cast<char>(random());
            const Slide slide = ReadSlide(bytes);
            ASSERT_TRUE(std::isfinite(slide.DotShape()));
            ASSERT_GT(slide.DotShape(), 0);
            ASSERT_LE(slide.damage.value_or(SlideDamage()).offset, bytes.size());
        }
    }
}

} // namespace
} // namespace velmo
