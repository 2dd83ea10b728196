#include "platform/slide_painter.h"

#include "platform/slide_clip.h"
#include "platform/slide_colour.h"
#include "platform/slide_format.h"

#include <QPen>
#include <QPolygon>

#include <algorithm>
#include <cmath>
#include <optional>

namespace velmo {

namespace {

// Shapes are cut at this distance around what is visible, before a coordinate can grow too large for the
// device.
constexpr int reach = 4096;

// Enlarged antialiased lines are cut this close, since they cost by their length; what is cut off them shows
// nowhere.
constexpr int beside = 16;

// Up to this many lines of one pixel are antialiased, which takes 5 to 16 ms; wide ones cost more.
constexpr std::size_t mostSmoothLines = 20000;

// So many shapes are painted before the clock is looked at: they take some milliseconds.
constexpr std::size_t linesInSlice = 2048;
// So many are filled before their edges are drawn.
constexpr std::size_t polygonsInSlice = 64;

// A polygon whose edges cross more rows of pixels than this together is left out: filling one takes longer
// and longer with the edges that share a row, up to a sixth of a second for this.
constexpr qint64 mostCrossings = 1'500'000;
// What an edge costs beside, as rows.
constexpr int crossingsOfEdge = 4;

// Makes an antialiased pen of one pixel a little wider: the quick lines that Qt draws with it otherwise are
// too thin and up to half a pixel off when slanted.
constexpr double hair = 0.01;

// Rounds down a coordinate that a device can have; a library call for each would take longer than painting.
int Floor(double coordinate) {
    constexpr int bias = 1 << 24;
    return static_cast<int>(coordinate + bias) - bias;
}

// A rectangle of dots, edges included, outside of which nothing shows.
class DotArea {
public:
    // The dots of a fit's visible part and those around it whose pens reach into it.
    DotArea(const SlideFit& fit, int penWidth) {
        // Polygons have edges one dot wide.
        const double besideX = 2 + (penWidth + 2) / fit.DotWidth();
        const double besideY = 2 + (penWidth + 2) / fit.DotHeight();
        const QRectF shown = fit.Visible();
        left_ = Dot(fit.DotAtX(shown.left()) - besideX);
        right_ = Dot(fit.DotAtX(shown.right()) + besideX);
        bottom_ = Dot(fit.DotAtY(shown.bottom()) - besideY);
        top_ = Dot(fit.DotAtY(shown.top()) + besideY);
    }

    bool Contains(const QRect& dots) const {
        return dots.left() >= left_ && dots.right() <= right_ && dots.top() >= bottom_ &&
               dots.bottom() <= top_;
    }
    bool Contains(QPoint dot) const {
        return dot.x() >= left_ && dot.x() <= right_ && dot.y() >= bottom_ && dot.y() <= top_;
    }
    // False when all of these lie beyond the same edge.
    bool MayShow(const QLine& line) const {
        return std::max(line.x1(), line.x2()) >= left_ && std::min(line.x1(), line.x2()) <= right_ &&
               std::max(line.y1(), line.y2()) >= bottom_ && std::min(line.y1(), line.y2()) <= top_;
    }
    bool MayShow(std::span<const QPoint> corners) const {
        if (corners.empty())
            return false;
        const auto [left, right] = std::ranges::minmax_element(corners, {}, &QPoint::x);
        const auto [bottom, top] = std::ranges::minmax_element(corners, {}, &QPoint::y);
        return MayShow(QLine(left->x(), bottom->y(), right->x(), top->y()));
    }

private:
    // No dot of a slide lies as far out as the limit.
    static int Dot(double dot) { return static_cast<int>(std::clamp(dot, -1e9, 1e9)); }

    int left_ = 0;
    int right_ = 0;
    int bottom_ = 0;
    int top_ = 0;
};

class SlidePainter {
public:
    SlidePainter(QPainter& painter, const Slide& slide, const SlideFit& fit, const SlidePaint& paint)
        : painter_(painter),
          drawing_(slide.drawing),
          fit_(fit),
          paint_(paint),
          near_(fit, paint.penWidth),
          allNear_(near_.Contains(drawing_.Bounds())),
          reach_(fit_.Visible().adjusted(-reach, -reach, reach, reach)),
          inReach_(reach_.contains(Exact(drawing_.Bounds().topLeft())) &&
                   reach_.contains(Exact(drawing_.Bounds().bottomRight()))),
          besideVisible_(fit_.Visible().adjusted(-beside, -beside, beside, beside)),
          smooth_(IsSmooth()),
          whole_(paint.penWidth % 2 == 0 ? 0.5 : 0.0) {}

    // False when something was left out.
    bool Paint();

private:
    bool IsSmooth() const;
    // Calls paint(from, to) for one slice of begin to end after the other, as long as there is time.
    template <typename PaintSlice>
    void InSlices(std::size_t begin, std::size_t end, std::size_t slice, PaintSlice paint);
    void PaintRun(const SlideRun& begin, const SlideRun& run);
    void PaintPolygons(const QColor& colour, std::size_t begin, std::size_t end);
    void PaintPolygon(std::span<const QPoint> corners);
    void PaintEdges(const QColor& colour);
    void PaintLines(const QColor& colour, std::span<const QLine> lines);
    void PaintDots(const QColor& colour, std::span<const QPoint> dots);
    void PaintBlocks(const QColor& colour);
    QRect Block(QPoint from, QPoint to) const;

    QPointF Exact(QPoint dot) const { return {fit_.X(dot.x()), fit_.Y(dot.y())}; }
    // The line on the device, cut where it goes too far; nothing when all of it does.
    std::optional<QLineF> Exact(const QLine& line) const;
    // The pixel under a coordinate; for a pen of even width the border between two pixels next to it.
    int Snap(double coordinate) const { return Floor(coordinate + whole_); }
    QPoint Snap(QPointF point) const { return {Snap(point.x()), Snap(point.y())}; }

    QPainter& painter_;
    const SlideDrawing& drawing_;
    SlideFit fit_;
    SlidePaint paint_;
    DotArea near_;
    bool allNear_; // nothing needs to be left out
    QRectF reach_;
    bool inReach_; // nothing needs to be cut
    QRectF besideVisible_;
    bool smooth_;
    double whole_;
    std::vector<QLine> edges_;
    std::vector<QRect> blocks_;
    std::vector<QLine> slanted_;
    std::vector<QLineF> smoothSlanted_;
    bool isWhole_ = true;
};

// A square cap shows lines that have no length on the screen.
QPen LinePen(const QColor& colour, double width) {
    return {colour, width, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin};
}

// So does a round one, which does not stick out where two edges meet.
QPen EdgePen(const QColor& colour, int width) {
    const Qt::PenCapStyle cap = width > 1 ? Qt::RoundCap : Qt::SquareCap;
    return {colour, 1.0 * width, Qt::SolidLine, cap, Qt::RoundJoin};
}

// What filling a polygon takes.
qint64 Crossings(const QPolygon& polygon, const QRect& visible) {
    qint64 crossings = crossingsOfEdge * polygon.size();
    for (qsizetype i = 0; i < polygon.size(); ++i) {
        const int from = polygon[i].y();
        const int to = polygon[(i + 1) % polygon.size()].y();
        const int top = std::max(std::min(from, to), visible.top());
        crossings += std::max(0, std::min(std::max(from, to), visible.bottom()) - top);
    }
    return crossings;
}

// Whether so few lines show that antialiasing them takes no time.
bool SlidePainter::IsSmooth() const {
    const auto width = static_cast<std::size_t>(paint_.penWidth);
    const std::span<const QLine> lines = drawing_.Lines();
    const std::size_t most = mostSmoothLines / (width * width);
    if (fit_.IsWhole() || lines.size() <= most)
        return lines.size() <= most;
    const auto showing =
        std::ranges::count_if(lines, [this](const QLine& line) { return near_.MayShow(line); });
    return static_cast<std::size_t>(showing) <= most;
}

bool SlidePainter::Paint() {
    painter_.save();
    painter_.setClipRect(fit_.Visible());
    painter_.setRenderHint(QPainter::Antialiasing, false);
    SlideRun begin;
    for (const SlideRun& run : drawing_.Runs()) {
        PaintRun(begin, run);
        begin = run;
    }
    painter_.restore();
    return isWhole_;
}

void SlidePainter::PaintRun(const SlideRun& begin, const SlideRun& run) {
    const QColor colour =
        run.colour == slide_format::background ? paint_.ground : QColor::fromRgb(SlideColour(run.colour));
    InSlices(begin.polygonEnd, run.polygonEnd, polygonsInSlice,
             [&](std::size_t from, std::size_t to) { PaintPolygons(colour, from, to); });
    InSlices(begin.lineEnd, run.lineEnd, linesInSlice, [&](std::size_t from, std::size_t to) {
        PaintLines(colour, drawing_.Lines().subspan(from, to - from));
    });
    InSlices(begin.dotEnd, run.dotEnd, linesInSlice, [&](std::size_t from, std::size_t to) {
        PaintDots(colour, drawing_.Dots().subspan(from, to - from));
    });
}

template <typename PaintSlice>
void SlidePainter::InSlices(std::size_t begin, std::size_t end, std::size_t slice, PaintSlice paint) {
    for (std::size_t from = begin; from < end; from += slice) {
        if (paint_.due.hasExpired()) {
            isWhole_ = false;
            return;
        }
        paint(from, std::min(from + slice, end));
    }
}

// A polygon covers its edges too, one dot wide: many have no area at all. Without antialiasing, because
// shapes are cut into neighbouring triangles and smooth edges would leave seams between them.
void SlidePainter::PaintPolygons(const QColor& colour, std::size_t begin, std::size_t end) {
    edges_.clear();
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(colour);
    // A few can take as long as many.
    InSlices(begin, end, 1,
             [this](std::size_t polygon, std::size_t) { PaintPolygon(drawing_.Polygon(polygon)); });
    PaintEdges(colour);
}

void SlidePainter::PaintEdges(const QColor& colour) {
    const int dot = static_cast<int>(std::min({fit_.DotWidth(), fit_.DotHeight(), 1.0 * reach}));
    painter_.setPen(EdgePen(colour, std::max(paint_.penWidth, dot)));
    InSlices(0, edges_.size(), linesInSlice, [&](std::size_t from, std::size_t to) {
        painter_.drawLines(edges_.data() + from, static_cast<int>(to - from));
    });
}

void SlidePainter::PaintPolygon(std::span<const QPoint> corners) {
    if (!allNear_ && !near_.MayShow(corners))
        return;
    QPolygonF exact;
    exact.reserve(static_cast<qsizetype>(corners.size()));
    for (const QPoint corner : corners)
        exact.append(Exact(corner));
    if (!inReach_)
        exact = ClipPolygon(std::move(exact), reach_);
    if (exact.isEmpty())
        return;
    QPolygon polygon;
    polygon.reserve(exact.size());
    for (const QPointF corner : exact) {
        const QPoint snapped = Snap(corner);
        // Corners in the same place show nothing more.
        if (exact.size() == 3 || polygon.isEmpty() || polygon.back() != snapped)
            polygon.append(snapped);
    }
    if (Crossings(polygon, fit_.Visible()) > mostCrossings) {
        isWhole_ = false;
        return;
    }
    for (qsizetype i = 0; i < polygon.size(); ++i)
        edges_.emplace_back(polygon[i], polygon[(i + 1) % polygon.size()]);
    if (polygon.size() == 3)
        painter_.drawConvexPolygon(polygon);
    else
        painter_.drawPolygon(polygon, Qt::OddEvenFill);
}

// Horizontal and vertical lines are blocks of whole pixels, others keep their exact direction.
void SlidePainter::PaintLines(const QColor& colour, std::span<const QLine> lines) {
    blocks_.clear();
    slanted_.clear();
    smoothSlanted_.clear();
    for (const QLine& line : lines) {
        if (!allNear_ && !near_.MayShow(line))
            continue;
        std::optional<QLineF> exact = Exact(line);
        if (!exact)
            continue;
        if (line.dx() == 0 || line.dy() == 0)
            blocks_.push_back(Block(Snap(exact->p1()), Snap(exact->p2())));
        else if (!smooth_)
            slanted_.emplace_back(Snap(exact->p1()), Snap(exact->p2()));
        else if (fit_.IsWhole() || ClipLine(*exact, besideVisible_))
            smoothSlanted_.push_back(*exact);
    }
    PaintBlocks(colour);
    if (!slanted_.empty()) {
        painter_.setPen(LinePen(colour, paint_.penWidth));
        painter_.drawLines(slanted_.data(), static_cast<int>(slanted_.size()));
    }
    if (!smoothSlanted_.empty()) {
        painter_.setRenderHint(QPainter::Antialiasing, true);
        painter_.setPen(LinePen(colour, paint_.penWidth + hair));
        painter_.drawLines(smoothSlanted_.data(), static_cast<int>(smoothSlanted_.size()));
        painter_.setRenderHint(QPainter::Antialiasing, false);
    }
}

// When enlarged, dots grow and still touch their neighbours, so that pictures made of dots stay closed.
void SlidePainter::PaintDots(const QColor& colour, std::span<const QPoint> dots) {
    const auto extent = [this](double middle, double size) {
        if (size <= paint_.penWidth)
            return std::pair(Snap(middle) - paint_.penWidth / 2, paint_.penWidth);
        const auto begin = static_cast<int>(std::lround(middle - size / 2));
        return std::pair(begin, static_cast<int>(std::lround(middle + size / 2)) - begin);
    };
    blocks_.clear();
    for (const QPoint dot : dots) {
        if (!allNear_ && !near_.Contains(dot))
            continue;
        const QPointF middle = Exact(dot);
        const auto [left, width] = extent(middle.x(), fit_.DotWidth());
        const auto [top, height] = extent(middle.y(), fit_.DotHeight());
        blocks_.emplace_back(left, top, width, height);
    }
    PaintBlocks(colour);
}

void SlidePainter::PaintBlocks(const QColor& colour) {
    if (blocks_.empty())
        return;
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(colour);
    painter_.drawRects(blocks_.data(), static_cast<int>(blocks_.size()));
}

// What a pen covers from one snapped point to another beside or below it.
QRect SlidePainter::Block(QPoint from, QPoint to) const {
    const QPoint first(std::min(from.x(), to.x()), std::min(from.y(), to.y()));
    const QPoint step = from - to;
    const int half = paint_.penWidth / 2;
    return {first - QPoint(half, half),
            QSize(std::abs(step.x()) + paint_.penWidth, std::abs(step.y()) + paint_.penWidth)};
}

std::optional<QLineF> SlidePainter::Exact(const QLine& line) const {
    QLineF exact(Exact(line.p1()), Exact(line.p2()));
    if (!inReach_ && !ClipLine(exact, reach_))
        return std::nullopt;
    return exact;
}

} // namespace

bool PaintSlide(QPainter& painter, const Slide& slide, const SlideFit& fit, const SlidePaint& paint) {
    if (slide.drawing.IsEmpty() || fit.Visible().isEmpty())
        return true;
    return SlidePainter(painter, slide, fit, paint).Paint();
}

bool PaintSlide(QPainter& painter, const Slide& slide, const QRect& device, const SlidePaint& paint) {
    return device.isEmpty() || PaintSlide(painter, slide, SlideFit(slide, device), paint);
}

} // namespace velmo
