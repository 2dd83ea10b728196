#include "platform/files.h"
#include "platform/slide.h"
#include "platform/slide_colour.h"
#include "slide_samples.h"
#include "support/temp_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace velmo {

void PrintTo(const SlideDamage& damage, std::ostream* out) {
    *out << "fault " << static_cast<int>(damage.fault) << " at " << damage.offset;
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Points = std::vector<QPoint>;

std::vector<QLine> Lines(const Slide& slide) {
    return {slide.drawing.Lines().begin(), slide.drawing.Lines().end()};
}

Points Dots(const Slide& slide) {
    return {slide.drawing.Dots().begin(), slide.drawing.Dots().end()};
}

Points Corners(const Slide& slide, std::size_t polygon) {
    const std::span<const QPoint> corners = slide.drawing.Polygon(polygon);
    return {corners.begin(), corners.end()};
}

// A slide of these records (low byte first, hex digits) that ends as it should.
Slide ReadRecords(const char* records) {
    const Slide slide = ReadSlide(SlideHeader() + Hex(records) + Hex("00 FC"));
    EXPECT_TRUE(slide.isSlide);
    EXPECT_EQ(slide.damage, std::nullopt);
    return slide;
}

void ExpectDamage(const Slide& slide, SlideFault fault, qsizetype offset) {
    EXPECT_TRUE(slide.isSlide);
    EXPECT_EQ(slide.damage, (SlideDamage{fault, offset}));
}

void ExpectBox(const Slide& slide) {
    EXPECT_TRUE(slide.isSlide);
    EXPECT_EQ(slide.damage, std::nullopt);
    EXPECT_EQ(slide.highX, 19);
    EXPECT_EQ(slide.highY, 9);
    EXPECT_NEAR(slide.aspect, 19.0 / 9, 1e-7);
    EXPECT_NEAR(slide.DotShape(), 1, 1e-7);
    ASSERT_EQ(slide.drawing.Runs().size(), 1U);
    EXPECT_EQ(slide.drawing.Runs()[0].colour, 1);
    EXPECT_THAT(Lines(slide),
                ElementsAre(QLine(2, 2, 10, 2), QLine(2, 2, 2, 7), QLine(2, 2, 10, 7), QLine(10, 7, 2, 7)));
    EXPECT_EQ(slide.drawing.Bounds(), QRect(QPoint(2, 2), QPoint(10, 7)));
}

TEST(Slide, ReadsEveryLineRecordLowByteFirst) {
    ExpectBox(ReadSlide(SlideHeader() + BoxRecords()));
}

TEST(Slide, ReadsEveryLineRecordHighByteFirst) {
    ExpectBox(ReadSlide(SlideHeaderHighFirst() + BoxRecordsHighFirst()));
}

TEST(Slide, ReadsTheOldLevel) {
    ExpectBox(ReadSlide(OldSlideHeader() + BoxRecords()));
    ExpectBox(ReadSlide(OldSlideHeaderHighFirst() + BoxRecordsHighFirst()));
}

TEST(Slide, ReadsAPolygonOfTheOldLevel) {
    const QByteArray bytes = OldSlideHeader() + TriangleRecords();
    ASSERT_EQ(bytes.size(), 68);
    const Slide slide = ReadSlide(bytes);
    EXPECT_EQ(slide.damage, std::nullopt);
    ASSERT_EQ(slide.drawing.PolygonCount(), 1U);
    EXPECT_THAT(Corners(slide, 0), ElementsAre(QPoint(2, 1), QPoint(10, 1), QPoint(6, 8)));
    EXPECT_EQ(slide.drawing.Runs()[0].colour, 3);
    EXPECT_DOUBLE_EQ(slide.aspect, 19.0 / 9);
}

TEST(Slide, OffsetVectorCountsBothEndsFromTheOldLastPoint) {
    const Slide slide = ReadRecords("02 00 02 00 0A 00 02 00  03 FB 04 05 06  01 FE 00");
    EXPECT_THAT(Lines(slide), ElementsAre(QLine(2, 2, 10, 2), QLine(5, 6, 7, 8), QLine(5, 6, 6, 6)))
        << "both ends from 2,2; then on from the offset vector's start";
}

TEST(Slide, StepsAreSigned) {
    const Slide slide = ReadRecords("C8 00 C8 00 C9 00 C8 00  80 FE 7F  FF FB FE FD FC");
    EXPECT_THAT(Lines(slide),
                ElementsAre(QLine(200, 200, 201, 200), QLine(200, 200, 72, 327), QLine(71, 325, 69, 323)));
}

TEST(Slide, PolygonsAndColoursKeepTheLastPoint) {
    const Slide slide =
        ReadRecords("02 00 02 00 0A 00 02 00  00 FD 03 00 FE FF 00 FD 00 00 00 00 00 FD 05 00 00 00"
                    "00 FD 05 00 05 00 00 FD 00 00 FF FF  04 FF  01 FE 01");
    EXPECT_THAT(Lines(slide), ElementsAre(QLine(2, 2, 10, 2), QLine(2, 2, 3, 3)));
    EXPECT_EQ(slide.drawing.PolygonCount(), 1U);
}

TEST(Slide, StepsBeforeAnyVectorCountFromTheOrigin) {
    EXPECT_THAT(Lines(ReadRecords("05 FE 03")), ElementsAre(QLine(0, 0, 5, 3)));
    EXPECT_THAT(Lines(ReadRecords("05 FB 03 01 02")), ElementsAre(QLine(5, 3, 1, 2)));
}

TEST(Slide, LinesWithoutLengthAreDots) {
    const Slide slide = ReadRecords("04 00 05 00 04 00 05 00  00 FE 00");
    EXPECT_THAT(Lines(slide), IsEmpty());
    EXPECT_THAT(Dots(slide), ElementsAre(QPoint(4, 5), QPoint(4, 5)));
    EXPECT_EQ(slide.drawing.Bounds(), QRect(4, 5, 1, 1));
}

TEST(Slide, ColoursMakeRunsInDrawingOrder) {
    const Slide slide = ReadRecords(
        "01 00 01 00 05 00 01 00  03 FF 00 FE 04  03 FF 00 FE 04  04 FF  07 FF 01 FE 00 00 FE 00");
    ASSERT_EQ(slide.drawing.Runs().size(), 3U) << "repeated and unused colours make no runs";
    EXPECT_EQ(slide.drawing.Runs()[0], (SlideRun{7, 1, 0, 0})) << "the foreground before any colour";
    EXPECT_EQ(slide.drawing.Runs()[1], (SlideRun{3, 3, 0, 0}));
    EXPECT_EQ(slide.drawing.Runs()[2], (SlideRun{7, 4, 1, 0}));
}

// Opening records count the corners or the corners and the end; ends differ by writer.
TEST(Slide, PolygonsEndWithAnyNegativeY) {
    for (const char* const start :
         {"03 00 FE FF", "04 00 FE FF", "04 00 FF FF", "FF 7F FE FF", "00 00 FF FF"}) {
        for (const char* const end : {"00 00 FF FF", "00 00 F7 FF", "06 00 F8 FF", "06 00 FF FF"}) {
            const QByteArray triangle =
                QByteArray("00FD") + start + "00FD 0200 0100 00FD 0A00 0100 00FD 0600 0800" + "00FD" + end;
            const Slide slide = ReadRecords(triangle + triangle);
            ASSERT_EQ(slide.drawing.PolygonCount(), 2U) << start << " ... " << end;
            for (const std::size_t polygon : {0U, 1U})
                EXPECT_THAT(Corners(slide, polygon), ElementsAre(QPoint(2, 1), QPoint(10, 1), QPoint(6, 8)));
        }
    }
}

TEST(Slide, PolygonsHaveAnyNumberOfCorners) {
    const Slide slide = ReadRecords("00 FD 05 00 FE FF 00 FD 00 00 00 00 00 FD 09 00 00 00 00 FD 09 00 09 00"
                                    "00 FD 00 00 09 00 00 FD 00 00 F7 FF");
    EXPECT_THAT(Corners(slide, 0), ElementsAre(QPoint(0, 0), QPoint(9, 0), QPoint(9, 9), QPoint(0, 9)));
}

TEST(Slide, BrokenPolygonShowsWithThreeCorners) {
    const char* const three = "00 FD 04 00 FE FF 00 FD 02 00 01 00 00 FD 0A 00 01 00 00 FD 06 00 08 00";
    const char* const two = "00 FD 04 00 FE FF 00 FD 02 00 01 00 00 FD 0A 00 01 00";
    const QByteArray line = "01 00 01 00 05 00 01 00";
    EXPECT_EQ(ReadRecords(three + line).drawing.PolygonCount(), 1U);
    EXPECT_EQ(ReadRecords(three + QByteArray("05 FF")).drawing.Runs()[0].colour, 7);
    EXPECT_EQ(ReadRecords(three).drawing.PolygonCount(), 1U);
    EXPECT_EQ(ReadSlide(SlideHeader() + Hex(three)).drawing.PolygonCount(), 1U) << "by the end of the data";
    EXPECT_EQ(ReadRecords(two + line).drawing.PolygonCount(), 0U);
    EXPECT_EQ(ReadRecords(two + line + three).drawing.PolygonCount(), 1U) << "the next one starts afresh";
}

TEST(Slide, WhatIsNoSlideIsEmpty) {
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("x"), SlideHeader().left(30), OldSlideHeader().left(33),
          QByteArray("<?xml version=\"1.0\"?><StyledLayerDescriptor/>"), QByteArray(100, '\0')}) {
        const Slide slide = ReadSlide(bytes);
        EXPECT_FALSE(slide.isSlide);
        EXPECT_TRUE(slide.drawing.IsEmpty());
        EXPECT_EQ(slide.damage, (SlideDamage{SlideFault::NoSlide, 0}));
    }
    for (int at = 0; at < 17; ++at) {
        QByteArray bytes = SlideHeader() + BoxRecords();
        bytes[at] = static_cast<char>(bytes[at] ^ 1);
        EXPECT_FALSE(ReadSlide(bytes).isSlide) << at;
    }
}

TEST(Slide, EmptySlideIsNotDamaged) {
    for (const QByteArray& records : {Hex("00 FC"), Hex("00 FC 00 00"), QByteArray()}) {
        const Slide slide = ReadSlide(SlideHeader() + records);
        EXPECT_TRUE(slide.isSlide);
        EXPECT_TRUE(slide.drawing.IsEmpty());
        EXPECT_TRUE(slide.drawing.Bounds().isNull());
        EXPECT_EQ(slide.damage, std::nullopt);
    }
    EXPECT_EQ(ReadSlide(OldSlideHeader()).damage, std::nullopt);
}

TEST(Slide, IgnoresWhatNobodyNeeds) {
    QByteArray bytes = SlideHeader() + BoxRecords() + Hex("00 00 00 1A 1A 80 80");
    bytes[17] = 0;    // type indicator
    bytes[27] = 0x55; // hardware fill
    ExpectBox(ReadSlide(bytes));
}

TEST(Slide, UnknownLevelReadsAsTheNewOne) {
    QByteArray bytes = SlideHeader() + BoxRecords();
    for (const char level : {'\0', '\3', '\xFF'}) {
        bytes[18] = level;
        ExpectBox(ReadSlide(bytes));
    }
}

TEST(Slide, UnknownByteOrderReadsLowByteFirst) {
    QByteArray bytes = SlideHeader() + BoxRecords();
    bytes[29] = 0;
    bytes[30] = 0;
    ExpectBox(ReadSlide(bytes));
}

TEST(Slide, MissingEndKeepsThePicture) {
    const QByteArray whole = SlideHeader() + BoxRecords();
    const Slide slide = ReadSlide(whole.chopped(2));
    ExpectDamage(slide, SlideFault::MissingEnd, whole.size() - 2);
    EXPECT_EQ(Lines(slide).size(), 4U);
}

TEST(Slide, RecordCutShortKeepsThePictureBefore) {
    const QByteArray whole = SlideHeader() + BoxRecords();
    ExpectDamage(ReadSlide(whole.chopped(1)), SlideFault::CutShort, whole.size() - 2);
    const Slide slide = ReadSlide(whole.chopped(3));
    ExpectDamage(slide, SlideFault::CutShort, whole.size() - 5);
    EXPECT_EQ(Lines(slide).size(), 3U);
    ExpectDamage(ReadSlide(SlideHeader() + Hex("05")), SlideFault::CutShort, 31);
}

TEST(Slide, UnknownRecordStopsThere) {
    for (const char* const record : {"00 80", "00 FA", "01 9C 02 00 02 00"}) {
        const Slide slide =
            ReadSlide(SlideHeader() + Hex("02 00 02 00 0A 00 02 00") + Hex(record) + BoxRecords());
        ExpectDamage(slide, SlideFault::UnknownRecord, 39);
        EXPECT_THAT(Lines(slide), ElementsAre(QLine(2, 2, 10, 2)));
    }
}

TEST(Slide, CoordinatesOutsideTheCanvasStay) {
    EXPECT_THAT(Lines(ReadRecords("FF 7F 00 80 0A 00 FF FF")), ElementsAre(QLine(32767, -32768, 10, -1)));
    EXPECT_THAT(Lines(ReadRecords("FB FE FD")), ElementsAre(QLine(0, 0, -5, -3)));
}

TEST(Slide, EndlessStepsStayWithinIntegers) {
    QByteArray records;
    for (int i = 0; i < 20000; ++i)
        records += Hex("7F FE 80");
    const Slide slide = ReadSlide(SlideHeader() + records + Hex("00 FC"));
    EXPECT_EQ(slide.damage, std::nullopt);
    EXPECT_EQ(slide.drawing.Bounds(), QRect(QPoint(0, -(1 << 20)), QPoint(1 << 20, 0)));
}

Slide SlideOfAspect(std::uint16_t highX, std::uint16_t highY, std::uint32_t aspect) {
    QByteArray bytes = SlideHeader() + BoxRecords();
    const auto put = [&bytes](qsizetype at, std::uint32_t value, int count) {
        for (int i = 0; i < count; ++i)
            bytes[at + i] = static_cast<char>(value >> (8 * i));
    };
    put(19, highX, 2);
    put(21, highY, 2);
    put(23, aspect, 4);
    return ReadSlide(bytes);
}

TEST(Slide, AspectGivesTheShapeOfADot) {
    const Slide slide = SlideOfAspect(573, 413, 15229969);
    EXPECT_DOUBLE_EQ(slide.aspect, 1.5229969);
    EXPECT_NEAR(slide.DotShape(), 1.098, 0.001);
}

TEST(Slide, SenselessAspectMeansSquareDots) {
    for (const std::uint32_t aspect : {0U, 999'999U, 100'000'001U, 0xFFFFFFFFU})
        EXPECT_DOUBLE_EQ(SlideOfAspect(640, 480, aspect).DotShape(), 1) << aspect;
    EXPECT_DOUBLE_EQ(SlideOfAspect(640, 480, 1'000'000).aspect, 0.1);
    EXPECT_DOUBLE_EQ(SlideOfAspect(640, 480, 100'000'000).aspect, 10);
    QByteArray notANumber = OldSlideHeader() + BoxRecords();
    notANumber.replace(23, 8, Hex("00 00 00 00 00 00 F8 7F"));
    EXPECT_DOUBLE_EQ(ReadSlide(notANumber).DotShape(), 1);
}

TEST(Slide, CanvasWithoutExtentIsHarmless) {
    for (const auto& [highX, highY] : {std::pair(0, 0), std::pair(0, 9), std::pair(19, 0)}) {
        for (const std::uint32_t aspect : {0U, 10'000'000U}) {
            const Slide slide =
                SlideOfAspect(static_cast<std::uint16_t>(highX), static_cast<std::uint16_t>(highY), aspect);
            EXPECT_DOUBLE_EQ(slide.DotShape(), 1);
            EXPECT_DOUBLE_EQ(slide.aspect, 1);
            EXPECT_EQ(Lines(slide).size(), 4U);
        }
    }
    EXPECT_EQ(SlideOfAspect(65535, 65535, 10'000'000).highX, 65535);
}

TEST(SlideFile, LoadsByStoredPath) {
    const TempFolder folder;
    ExpectBox(LoadSlide(folder.Write(QStringLiteral("SMB\\BOLT\\M10.sld"), SlideHeader() + BoxRecords())));
    ExpectBox(LoadSlide(folder.Path(QStringLiteral("smb\\bolt\\M10.SLD"))));
}

TEST(SlideFile, MissingFilesAndFoldersAreNoDamage) {
    const TempFolder folder;
    for (const QString& name : {QString(), folder.Path(), folder.Path(QStringLiteral("none.SLD"))}) {
        EXPECT_FALSE(LoadSlide(name).isSlide) << name.toStdString();
        EXPECT_EQ(LoadSlide(name).damage, std::nullopt) << name.toStdString();
    }
}

TEST(SlideFile, AnEmptyFileIsNoSlide) {
    const TempFolder folder;
    EXPECT_EQ(LoadSlide(folder.Write(QStringLiteral("empty.SLD"), {})).damage,
              (SlideDamage{SlideFault::NoSlide, 0}));
}

// A slide of that many bytes whose last line stands right before its end.
QByteArray SlideOfSize(qsizetype size) {
    const QByteArray line = Hex("02 00 02 00 0A 00 02 00");
    const QByteArray end = Hex("00 FC");
    QByteArray bytes = SlideHeader() + Hex("00 FB 00 00 05");
    const QByteArray colour = Hex("01 FF");
    bytes += colour.repeated((size - bytes.size() - line.size() - end.size()) / colour.size());
    return bytes + line + end;
}

TEST(SlideFile, SixteenMebibytesAreReadAndNoByteMore) {
    constexpr qsizetype most = qsizetype{16} << 20;
    EXPECT_EQ(most, LargestSlideFile);
    const TempFolder folder;
    const auto load = [&folder](qsizetype size) {
        const QByteArray bytes = SlideOfSize(size);
        EXPECT_EQ(bytes.size(), size);
        return LoadSlide(folder.Write(QStringLiteral("LARGE.SLD"), bytes));
    };
    const Slide whole = load(most);
    EXPECT_TRUE(whole.isSlide);
    EXPECT_FALSE(whole.damage);
    const Slide endless = load(most + 2);
    EXPECT_EQ(endless.damage, (SlideDamage{SlideFault::TooLarge, most}));
    const Slide cut = load(most + 4);
    EXPECT_EQ(cut.damage, (SlideDamage{SlideFault::TooLarge, most - 6}));
    const QByteArray padded = SlideOfSize(1001) + QByteArray(most, '\0');
    EXPECT_EQ(LoadSlide(folder.Write(QStringLiteral("PADDED.SLD"), padded)).damage, std::nullopt)
        << "the slide itself is whole";
}

#ifdef Q_OS_UNIX
TEST(SlideFile, OnlyARegularFileIsOpened) {
    const TempFolder folder;
    const QString pipe = folder.Path(QStringLiteral("pipe.SLD"));
    ASSERT_EQ(mkfifo(NativePath(pipe).toLocal8Bit().constData(), 0600), 0);
    for (const QString& name : {pipe, QStringLiteral("/dev/zero")})
        EXPECT_EQ(LoadSlide(name).damage, (SlideDamage{SlideFault::Unreadable, 0})) << name.toStdString();
}
#endif

TEST(SlideDamage, TellsWhatAndWhere) {
    const SlideDamage cut{SlideFault::CutShort, 1234};
    EXPECT_EQ(cut.Text(), QStringLiteral("スライドが壊れています"));
    EXPECT_EQ(
        cut.Detail(),
        QStringLiteral("スライドが壊れています。データが途中で切れています。\n位置: 先頭から 1234 バイト"));
    EXPECT_EQ((SlideDamage{SlideFault::NoSlide, 0}).Detail(),
              QStringLiteral("スライドのファイルではありません。"));
    for (const SlideFault fault : {SlideFault::Unreadable, SlideFault::NoSlide, SlideFault::TooLarge,
                                   SlideFault::MissingEnd, SlideFault::CutShort, SlideFault::UnknownRecord})
        EXPECT_TRUE((SlideDamage{fault, 0}).Detail().startsWith(SlideDamage{fault, 0}.Text()));
}

TEST(SlideColour, FollowsTheTable) {
    const std::vector<std::pair<std::uint8_t, std::uint32_t>> expected = {
        {0, 0x000000},   {1, 0xFF0000},   {2, 0xFFFF00},   {3, 0x00FF00},   {4, 0x00FFFF},   {5, 0x0000FF},
        {6, 0xFF00FF},   {7, 0xFFFFFF},   {8, 0x808080},   {9, 0xC0C0C0},   {10, 0xFF0000},  {11, 0xFF7F7F},
        {12, 0xA50000},  {13, 0xA55252},  {14, 0x7F0000},  {16, 0x4C0000},  {18, 0x260000},  {19, 0x261313},
        {20, 0xFF3F00},  {22, 0xA52900},  {23, 0xA56752},  {30, 0xFF7F00},  {40, 0xFFBF00},  {42, 0xA57C00},
        {43, 0xA59152},  {49, 0x262113},  {90, 0x00FF00},  {131, 0x7FFFFF}, {174, 0x00007F}, {210, 0xFF00FF},
        {219, 0x261326}, {240, 0xFF003F}, {249, 0x261317}, {250, 0x545454}, {251, 0x767676}, {252, 0x989898},
        {253, 0xBABABA}, {254, 0xDCDCDC}, {255, 0xFFFFFF}};
    for (const auto& [number, colour] : expected)
        EXPECT_EQ(SlideColour(number), colour) << int{number};
}

} // namespace
} // namespace velmo
