#include "platform/slide.h"

#include "platform/files.h"
#include "platform/slide_format.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <algorithm>
#include <cmath>

namespace velmo {

namespace {

using namespace slide_format;

// Far outside every canvas; keeps endless relative records from running out of integers.
constexpr int coordinateLimit = 1 << 20;

// Aspects beyond these are damage, not the shape of a screen.
constexpr double leastAspect = 0.1;
constexpr double greatestAspect = 10;

// Bytes in a record of that type; 0 when nobody knows.
qsizetype RecordLength(std::uint8_t type) {
    if (type <= lastVector)
        return 8;
    switch (type) {
    case offsetVector:
        return 5;
    case endOfFile:
    case newColour:
        return 2;
    case solidFill:
        return 6;
    case commonEndPoint:
        return 3;
    default:
        return 0;
    }
}

class SlideReader {
public:
    explicit SlideReader(QByteArrayView bytes) : bytes_(bytes) {}

    Slide Read() {
        if (ReadHeader())
            ReadRecords();
        else
            slide_.damage = SlideDamage{SlideFault::NoSlide, 0};
        return std::move(slide_);
    }

private:
    bool ReadHeader();
    bool IsOldLevelHighFirst() const;
    int OldLevelLikelihood(bool highFirst) const;

    void ReadRecords();
    void ReadRecord(std::uint8_t type);
    void ReadVector();
    void ReadOffsetVector();
    void ReadCommonEndPoint();
    void ReadPolygonStep();
    void ClosePolygon();

    std::uint8_t Byte(qsizetype at) const { return static_cast<std::uint8_t>(bytes_[at]); }
    std::uint16_t Word(qsizetype at, bool highFirst) const;
    double Double(qsizetype at, bool highFirst) const;
    // A signed word of the current record.
    int Coordinate(qsizetype within) const {
        return static_cast<std::int16_t>(Word(at_ + within, highFirst_));
    }
    // A signed byte of the current record.
    int Step(qsizetype within) const { return static_cast<std::int8_t>(Byte(at_ + within)); }
    // Where the low-order byte of a record's first word stands.
    qsizetype LowByte() const { return highFirst_ ? 1 : 0; }
    QPoint FromLastPoint(int dx, int dy) const;

    QByteArrayView bytes_;
    qsizetype at_ = 0;
    bool highFirst_ = false;
    std::uint8_t colour_ = foreground;
    QPoint lastPoint_;
    bool inPolygon_ = false;
    std::vector<QPoint> corners_;
    Slide slide_;
};

bool SlideReader::ReadHeader() {
    if (bytes_.size() < headerLength || !bytes_.startsWith(idString))
        return false;
    double aspect = 0;
    if (Byte(levelAt) == 1) {
        if (bytes_.size() < oldHeaderLength)
            return false;
        highFirst_ = IsOldLevelHighFirst();
        aspect = Double(aspectAt, highFirst_);
        at_ = oldHeaderLength;
    } else {
        highFirst_ = Word(byteOrderAt, true) == byteOrderTest;
        // Four-byte numbers have their low byte first in either byte order.
        aspect = qFromLittleEndian<std::uint32_t>(bytes_.data() + aspectAt) / aspectUnit;
        at_ = headerLength;
    }
    slide_.isSlide = true;
    slide_.highX = Word(highXAt, highFirst_);
    slide_.highY = Word(highYAt, highFirst_);
    if (aspect >= leastAspect && aspect <= greatestAspect)
        slide_.aspect = aspect;
    else if (slide_.highX > 0 && slide_.highY > 0)
        slide_.aspect = static_cast<double>(slide_.highX) / slide_.highY;
    return true;
}

// The old level does not say its byte order: the likelier one is taken.
bool SlideReader::IsOldLevelHighFirst() const {
    return OldLevelLikelihood(true) > OldLevelLikelihood(false);
}

int SlideReader::OldLevelLikelihood(bool highFirst) const {
    const auto isScreen = [](int high) { return high >= 50 && high <= 8191; };
    int likelihood = 0;
    if (isScreen(Word(highXAt, highFirst)) && isScreen(Word(highYAt, highFirst)))
        likelihood += 1;
    // A double read in the wrong order is hardly ever of this size.
    const double aspect = Double(aspectAt, highFirst);
    if (aspect >= 0.2 && aspect <= 5)
        likelihood += 2;
    if (bytes_.size() >= oldHeaderLength + 2) {
        const auto type = static_cast<std::uint8_t>(Word(oldHeaderLength, highFirst) >> 8);
        if (type == newColour || type == endOfFile)
            likelihood += 1;
    }
    return likelihood;
}

void SlideReader::ReadRecords() {
    const qsizetype first = at_;
    std::optional<SlideFault> fault;
    bool ended = false;
    while (!ended && !fault && at_ < bytes_.size()) {
        const qsizetype left = bytes_.size() - at_;
        if (left < 2) {
            fault = SlideFault::CutShort;
            break;
        }
        const auto type = static_cast<std::uint8_t>(Word(at_, highFirst_) >> 8);
        const qsizetype length = RecordLength(type);
        if (length == 0) {
            fault = SlideFault::UnknownRecord;
        } else if (length > left) {
            fault = SlideFault::CutShort;
        } else if (type == endOfFile) {
            ended = true;
        } else {
            ReadRecord(type);
            at_ += length;
        }
    }
    // A header alone is an empty slide, not a damaged one.
    if (!ended && !fault && at_ > first)
        fault = SlideFault::MissingEnd;
    ClosePolygon();
    if (fault)
        slide_.damage = SlideDamage{*fault, at_};
}

void SlideReader::ReadRecord(std::uint8_t type) {
    if (type == solidFill) {
        ReadPolygonStep();
        return;
    }
    ClosePolygon();
    if (type == newColour)
        colour_ = Byte(at_ + LowByte());
    else if (type == offsetVector)
        ReadOffsetVector();
    else if (type == commonEndPoint)
        ReadCommonEndPoint();
    else
        ReadVector();
}

void SlideReader::ReadVector() {
    const QPoint from(Coordinate(0), Coordinate(2));
    slide_.drawing.AddLine(colour_, QLine(from, QPoint(Coordinate(4), Coordinate(6))));
    lastPoint_ = from;
}

// Both ends count from the last point as it was; the from point becomes the new one.
void SlideReader::ReadOffsetVector() {
    const QPoint from = FromLastPoint(Step(LowByte()), Step(2));
    slide_.drawing.AddLine(colour_, QLine(from, FromLastPoint(Step(3), Step(4))));
    lastPoint_ = from;
}

void SlideReader::ReadCommonEndPoint() {
    const QPoint to = FromLastPoint(Step(LowByte()), Step(2));
    slide_.drawing.AddLine(colour_, QLine(lastPoint_, to));
    lastPoint_ = to;
}

// A negative y opens a polygon and the next one closes it. Neither the count in the opening record nor the
// point in the closing one can be trusted: writers differ.
void SlideReader::ReadPolygonStep() {
    const QPoint corner(Coordinate(2), Coordinate(4));
    if (corner.y() >= 0) {
        inPolygon_ = true;
        corners_.push_back(corner);
    } else if (inPolygon_) {
        ClosePolygon();
    } else {
        inPolygon_ = true;
    }
}

void SlideReader::ClosePolygon() {
    slide_.drawing.AddPolygon(colour_, corners_);
    corners_.clear();
    inPolygon_ = false;
}

std::uint16_t SlideReader::Word(qsizetype at, bool highFirst) const {
    const char* const bytes = bytes_.data() + at;
    return highFirst ? qFromBigEndian<std::uint16_t>(bytes) : qFromLittleEndian<std::uint16_t>(bytes);
}

double SlideReader::Double(qsizetype at, bool highFirst) const {
    const char* const bytes = bytes_.data() + at;
    return highFirst ? qFromBigEndian<double>(bytes) : qFromLittleEndian<double>(bytes);
}

QPoint SlideReader::FromLastPoint(int dx, int dy) const {
    return {std::clamp(lastPoint_.x() + dx, -coordinateLimit, coordinateLimit),
            std::clamp(lastPoint_.y() + dy, -coordinateLimit, coordinateLimit)};
}

} // namespace

double Slide::DotShape() const {
    return highX > 0 && highY > 0 ? aspect * highY / highX : 1;
}

Slide ReadSlide(const QByteArray& bytes) {
    return SlideReader(bytes).Read();
}

Slide LoadSlide(const QString& stored) {
    const QFileInfo info(NativePath(stored));
    if (stored.isEmpty() || !info.exists() || info.isDir())
        return {};
    QFile file(info.filePath());
    QByteArray bytes;
    if (OpenRegularFile(file, QIODevice::ReadOnly))
        bytes = file.read(LargestSlideFile);
    if (!file.isOpen() || file.error() != QFileDevice::NoError) {
        Slide none;
        none.damage = SlideDamage{SlideFault::Unreadable, 0};
        return none;
    }
    Slide slide = ReadSlide(bytes);
    if (slide.damage && slide.damage->fault != SlideFault::UnknownRecord && slide.isSlide && !file.atEnd())
        slide.damage->fault = SlideFault::TooLarge;
    return slide;
}

} // namespace velmo
