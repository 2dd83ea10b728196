#include "platform/slide_writer.h"

#include "platform/runtime_error.h"
#include "platform/slide_format.h"

#include <QtEndian>

#include <algorithm>
#include <limits>

namespace velmo {

namespace {

using namespace slide_format;

constexpr int greatestCoordinate = 0x7FFF;

void CheckCoordinates(QPoint point) {
    const auto isLegal = [](int value) { return value >= 0 && value <= greatestCoordinate; };
    if (!isLegal(point.x()) || !isLegal(point.y()))
        throw RuntimeError(ErrorNumber::Overflow,
                           QStringLiteral("スライドの座標 (%1,%2)").arg(point.x()).arg(point.y()));
}

bool FitsStep(QPoint step) {
    const auto fits = [](int value) { return value >= -128 && value <= 127; };
    return fits(step.x()) && fits(step.y());
}

// Turns a drawing into the bytes of one variant of the format.
class SlideEncoder {
public:
    explicit SlideEncoder(SlideEncoding encoding) : encoding_(encoding) {}

    void Header(int highX, int highY);
    void Drawing(const SlideDrawing& drawing);
    const QByteArray& Bytes() const { return bytes_; }

private:
    bool HighFirst() const { return encoding_.order == SlideByteOrder::HighByteFirst; }
    void Byte(int value) { bytes_.append(static_cast<char>(value)); }
    void Word(int value);
    // A record's first word: its low-order byte is data.
    void Head(std::uint8_t type, int low) { Word(type << 8 | (low & 0xFF)); }
    void Line(QPoint from, QPoint to);
    void Polygon(std::span<const QPoint> corners);
    void PolygonStep(int x, int y);

    SlideEncoding encoding_;
    QByteArray bytes_;
    QPoint lastPoint_;
    bool hasLastPoint_ = false;
};

void SlideEncoder::Header(int highX, int highY) {
    const double aspect = static_cast<double>(highX) / highY;
    bytes_.append(idString);
    Byte(typeIndicator);
    Byte(static_cast<int>(encoding_.level));
    Word(highX);
    Word(highY);
    char number[8];
    if (encoding_.level == SlideLevel::Old) {
        if (HighFirst())
            qToBigEndian(aspect, number);
        else
            qToLittleEndian(aspect, number);
        bytes_.append(number, 8);
        Word(hardwareFill);
        Byte(0);
    } else {
        constexpr double greatest = std::numeric_limits<std::uint32_t>::max();
        qToLittleEndian(static_cast<std::uint32_t>(std::min(aspect * aspectUnit, greatest)), number);
        bytes_.append(number, 4);
        Word(hardwareFill);
        Word(byteOrderTest);
    }
}

void SlideEncoder::Drawing(const SlideDrawing& drawing) {
    std::size_t line = 0;
    std::size_t dot = 0;
    std::size_t polygon = 0;
    for (const SlideRun& run : drawing.Runs()) {
        Head(newColour, run.colour);
        for (; polygon < run.polygonEnd; ++polygon)
            Polygon(drawing.Polygon(polygon));
        for (; line < run.lineEnd; ++line)
            Line(drawing.Lines()[line].p1(), drawing.Lines()[line].p2());
        for (; dot < run.dotEnd; ++dot)
            Line(drawing.Dots()[dot], drawing.Dots()[dot]);
    }
    Head(endOfFile, 0);
}

void SlideEncoder::Word(int value) {
    const int low = value & 0xFF;
    const int high = value >> 8 & 0xFF;
    Byte(HighFirst() ? high : low);
    Byte(HighFirst() ? low : high);
}

// The shortest record that can say it. The last point stays at the start of a line, but for a common end
// point.
void SlideEncoder::Line(QPoint from, QPoint to) {
    const QPoint fromStep = from - lastPoint_;
    const QPoint toStep = to - lastPoint_;
    if (hasLastPoint_ && fromStep.isNull() && FitsStep(toStep)) {
        Head(commonEndPoint, toStep.x());
        Byte(toStep.y());
        lastPoint_ = to;
        return;
    }
    if (hasLastPoint_ && FitsStep(fromStep) && FitsStep(toStep)) {
        Head(offsetVector, fromStep.x());
        Byte(fromStep.y());
        Byte(toStep.x());
        Byte(toStep.y());
    } else {
        Word(from.x());
        Word(from.y());
        Word(to.x());
        Word(to.y());
    }
    lastPoint_ = from;
    hasLastPoint_ = true;
}

// The closing record repeats the last corner with its y made negative.
void SlideEncoder::Polygon(std::span<const QPoint> corners) {
    PolygonStep(static_cast<int>(corners.size()) + 1, -2);
    for (const QPoint corner : corners)
        PolygonStep(corner.x(), corner.y());
    PolygonStep(corners.back().x(), std::min(-corners.back().y(), -1));
}

void SlideEncoder::PolygonStep(int x, int y) {
    Head(solidFill, 0);
    Word(x);
    Word(y);
}

} // namespace

SlideWriter::SlideWriter(int highX, int highY) : highX_(highX), highY_(highY), colour_(foreground) {
    if (std::min(highX, highY) < 1 || std::max(highX, highY) > greatestCoordinate)
        throw RuntimeError(ErrorNumber::InvalidArgument,
                           QStringLiteral("スライドの大きさ %1x%2").arg(highX).arg(highY));
}

void SlideWriter::AddLine(QPoint from, QPoint to) {
    CheckCoordinates(from);
    CheckCoordinates(to);
    drawing_.AddLine(colour_, QLine(from, to));
}

void SlideWriter::AddDot(QPoint dot) {
    AddLine(dot, dot);
}

void SlideWriter::AddPolygon(std::span<const QPoint> corners) {
    if (corners.size() < 3 || corners.size() >= greatestCoordinate)
        throw RuntimeError(ErrorNumber::InvalidArgument,
                           QStringLiteral("スライドの多角形の頂点数 %1").arg(corners.size()));
    std::ranges::for_each(corners, CheckCoordinates);
    drawing_.AddPolygon(colour_, corners);
}

QByteArray SlideWriter::Bytes(SlideEncoding encoding) const {
    SlideEncoder encoder(encoding);
    encoder.Header(highX_, highY_);
    encoder.Drawing(drawing_);
    return encoder.Bytes();
}

} // namespace velmo
