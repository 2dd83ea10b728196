#pragma once

#include <QPointF>
#include <QString>

#include <variant>
#include <vector>

namespace velmo {

// Points in millimetres, x to the right, y up.
using Points = std::vector<QPointF>;

enum class LineStyle { Solid, Center, Hidden };

// What the instructions of a drawing give once their expressions have values; sizes that depend on the whole
// drawing (dashes, arrows, dimension letters) are not settled yet.
struct PathShape {
    int colour = 7;
    LineStyle style = LineStyle::Solid;
    Points points;
};

struct AreaShape {
    int colour = 7;
    Points points;
};

struct DimensionShape {
    int colour = 7;
    QPointF from;
    QPointF to;
    // Distance of the dimension line to the left of from -> to.
    double offset = 0;
    QString text;
};

struct LeaderShape {
    int colour = 7;
    QPointF tip;
    QPointF end;
    QString text;
};

struct LetteringShape {
    int colour = 7;
    // Left end of the base line.
    QPointF at;
    double height = 0;
    QString text;
};

using Shape = std::variant<PathShape, AreaShape, DimensionShape, LeaderShape, LetteringShape>;

} // namespace velmo
