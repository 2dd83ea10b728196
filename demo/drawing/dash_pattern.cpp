#include "drawing/dash_pattern.h"

#include <algorithm>
#include <cmath>

namespace velmo {
namespace {

// Lengths of dash, gap, dash, gap ... in letter heights; the first dash also ends the line.
std::vector<double> Pattern(LineStyle style) {
    if (style == LineStyle::Center)
        return {1.5, 0.3, 0.3, 0.3};
    return {0.55, 0.3};
}

double Distance(QPointF a, QPointF b) {
    return std::hypot(b.x() - a.x(), b.y() - a.y());
}

// Walks along a polyline and keeps what lies under the dashes.
class DashWalker {
public:
    explicit DashWalker(std::vector<double> lengths) : lengths_(std::move(lengths)), left_(lengths_[0]) {}

    void Walk(QPointF from, QPointF to) {
        const double length = Distance(from, to);
        double done = 0;
        if (IsDash() && (strokes_.empty() || startsStroke_))
            Begin(from);
        while (length - done > left_) {
            done += left_;
            const QPointF at = from + (to - from) * (done / length);
            if (IsDash())
                strokes_.back().push_back(at);
            index_ = (index_ + 1) % lengths_.size();
            left_ = lengths_[index_];
            if (IsDash())
                Begin(at);
        }
        left_ -= length - done;
        if (IsDash())
            strokes_.back().push_back(to);
    }

    std::vector<Points> Strokes() && { return std::move(strokes_); }

private:
    bool IsDash() const { return index_ % 2 == 0; }

    void Begin(QPointF at) {
        strokes_.push_back({at});
        startsStroke_ = false;
    }

    std::vector<double> lengths_;
    std::size_t index_ = 0;
    double left_;
    bool startsStroke_ = true;
    std::vector<Points> strokes_;
};

} // namespace

std::vector<Points> StyledStrokes(const Points& path, LineStyle style, double unit) {
    double length = 0;
    for (std::size_t i = 1; i < path.size(); ++i)
        length += Distance(path[i - 1], path[i]);
    std::vector<double> lengths = Pattern(style);
    double period = 0;
    for (double& part : lengths) {
        part *= unit;
        period += part;
    }
    // One period and its closing dash have to fit, else the line is too short for a pattern.
    if (style == LineStyle::Solid || !(period > 0) || length < (period + lengths[0]) * 0.6)
        return {path};
    const double periods = std::max(1.0, std::round((length - lengths[0]) / period));
    const double stretch = length / (periods * period + lengths[0]);
    for (double& part : lengths)
        part *= stretch;
    DashWalker walker(std::move(lengths));
    for (std::size_t i = 1; i < path.size(); ++i)
        walker.Walk(path[i - 1], path[i]);
    return std::move(walker).Strokes();
}

} // namespace velmo
