#include "drawing/drawing.h"

#include "drawing/annotation.h"
#include "drawing/dash_pattern.h"
#include "drawing/shape_reader.h"
#include "drawing/stroke_font.h"

#include <algorithm>

namespace velmo {
namespace {

// Dimension letters are this part of the larger side of what is drawn.
constexpr double kLettersPerSide = 22;

template <class... Handlers>
struct Overloaded : Handlers... {
    using Handlers::operator()...;
};
template <class... Handlers>
Overloaded(Handlers...) -> Overloaded<Handlers...>;

// The smallest rectangle around points.
class Bounds {
public:
    void Add(QPointF point) {
        if (isEmpty_)
            low_ = high_ = point;
        isEmpty_ = false;
        low_ = {std::min(low_.x(), point.x()), std::min(low_.y(), point.y())};
        high_ = {std::max(high_.x(), point.x()), std::max(high_.y(), point.y())};
    }
    void Add(const Points& points) {
        for (const QPointF point : points)
            Add(point);
    }
    QRectF Rectangle() const { return {low_, high_}; }
    double LargerSide() const { return std::max(high_.x() - low_.x(), high_.y() - low_.y()); }

private:
    QPointF low_;
    QPointF high_;
    bool isEmpty_ = true;
};

// The larger side of the outlines; of everything when there are only annotations.
double SizeOf(const std::vector<Shape>& shapes) {
    Bounds outlines;
    Bounds everything;
    for (const Shape& shape : shapes) {
        std::visit(Overloaded{
                       [&](const PathShape& path) { outlines.Add(path.points); },
                       [&](const AreaShape& area) { outlines.Add(area.points); },
                       [&](const DimensionShape& dimension) {
                           everything.Add(dimension.from);
                           everything.Add(dimension.to);
                       },
                       [&](const LeaderShape& leader) {
                           everything.Add(leader.tip);
                           everything.Add(leader.end);
                       },
                       [&](const LetteringShape& lettering) {
                           everything.Add(lettering.at);
                           everything.Add(lettering.at + QPointF(0, lettering.height));
                       },
                   },
                   shape);
    }
    const double size = outlines.LargerSide();
    return size > 0 ? size : everything.LargerSide();
}

VariableValues AllValues(const SymbolGeometry& geometry, const VariableValues& values) {
    VariableValues all;
    for (const DrawingVariable& variable : geometry.variables)
        all.insert(variable.name, values.value(variable.name, variable.initial).trimmed());
    return all;
}

void AddPath(Drawing& drawing, const PathShape& path) {
    for (const Points& stroke : StyledStrokes(path.points, path.style, drawing.letterHeight)) {
        for (std::size_t i = 1; i < stroke.size(); ++i)
            drawing.primitives.emplace_back(DrawnLine{path.colour, stroke[i - 1], stroke[i]});
    }
}

// Every corner of a polyline; of a curve its ends and quarters.
void AddCorners(Drawing& drawing, const Points& points) {
    constexpr std::size_t mostCorners = 24;
    const std::size_t step = points.size() > mostCorners ? (points.size() - 1) / 4 : 1;
    for (std::size_t i = 0; i < points.size(); i += step)
        drawing.corners.push_back(points[i]);
}

} // namespace

Drawing MakeDrawing(const SymbolGeometry& geometry, const VariableValues& values,
                    DimensionText dimensionText) {
    const VariableValues all = AllValues(geometry, values);
    DrawingNames names;
    for (auto value = all.cbegin(); value != all.cend(); ++value)
        names.DefineText(value.key(), value.value());
    const std::vector<Shape> shapes = ReadShapes(geometry, std::move(names));

    const auto lettering = [&](const QString& text) {
        const bool withValue = dimensionText == DimensionText::LettersAndValues && all.contains(text);
        return withValue ? text + u'=' + all.value(text) : text;
    };
    Drawing drawing;
    drawing.letterHeight = SizeOf(shapes) / kLettersPerSide;
    for (const Shape& shape : shapes) {
        std::visit(Overloaded{
                       [&](const PathShape& path) {
                           AddPath(drawing, path);
                           AddCorners(drawing, path.points);
                       },
                       [&](const AreaShape& area) {
                           drawing.primitives.emplace_back(DrawnArea{area.colour, area.points});
                       },
                       [&](const DimensionShape& dimension) {
                           AddDimension(drawing, dimension, lettering(dimension.text));
                       },
                       [&](const LeaderShape& leader) { AddLeader(drawing, leader, lettering(leader.text)); },
                       [&](const LetteringShape& text) {
                           drawing.primitives.emplace_back(
                               DrawnText{text.colour, text.at, text.height, 0, lettering(text.text)});
                       },
                   },
                   shape);
    }
    return drawing;
}

Drawing WithStrokedTexts(const Drawing& drawing) {
    Drawing result;
    result.letterHeight = drawing.letterHeight;
    result.corners = drawing.corners;
    for (const Primitive& primitive : drawing.primitives) {
        const auto* text = std::get_if<DrawnText>(&primitive);
        if (!text) {
            result.primitives.push_back(primitive);
            continue;
        }
        for (const Points& stroke : StrokeFont::Strokes(text->text, text->at, text->height, text->angle)) {
            for (std::size_t i = 1; i < stroke.size(); ++i)
                result.primitives.emplace_back(DrawnLine{text->colour, stroke[i - 1], stroke[i]});
        }
    }
    return result;
}

QRectF DrawingBounds(const Drawing& drawing) {
    Bounds bounds;
    for (const Primitive& primitive : WithStrokedTexts(drawing).primitives) {
        if (const auto* line = std::get_if<DrawnLine>(&primitive)) {
            bounds.Add(line->from);
            bounds.Add(line->to);
        } else if (const auto* area = std::get_if<DrawnArea>(&primitive)) {
            bounds.Add(area->points);
        }
    }
    return bounds.Rectangle();
}

} // namespace velmo
