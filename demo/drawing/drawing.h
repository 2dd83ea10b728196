#pragma once

#include "drawing/shape.h"
#include "drawing/symbol_geometry.h"

#include <QHash>
#include <QRectF>

namespace velmo {

// What a drawing consists of in the end. Points in millimetres.
struct DrawnLine {
    int colour = 7;
    QPointF from;
    QPointF to;
};

// A filled convex polygon.
struct DrawnArea {
    int colour = 7;
    Points points;
};

struct DrawnText {
    int colour = 7;
    // Left end of the base line; it runs at angle (degrees, counter-clockwise).
    QPointF at;
    double height = 0;
    double angle = 0;
    QString text;
};

using Primitive = std::variant<DrawnLine, DrawnArea, DrawnText>;

// Primitives in drawing order: later ones paint over earlier ones.
struct Drawing {
    std::vector<Primitive> primitives;
    // Height of dimension letters, and what arrows and dashes follow.
    double letterHeight = 0;
    // Corners of the outlines, where a user would measure from.
    Points corners;
};

// Values of variables by their display names.
using VariableValues = QHash<QString, QString>;

enum class DimensionText {
    Letters,          // as the file has it: "d"
    LettersAndValues, // "d=10" where the text is a variable's name
};

// Draws the file's instructions with the given values; a variable without one has its initial value.
// Throws 5 or 13 naming file and line.
Drawing MakeDrawing(const SymbolGeometry& geometry, const VariableValues& values = {},
                    DimensionText dimensionText = DimensionText::Letters);

// The same with texts as strokes: lines and areas only.
Drawing WithStrokedTexts(const Drawing& drawing);

// The rectangle that holds every line, area and text; null for an empty drawing. Its top is the smallest y.
QRectF DrawingBounds(const Drawing& drawing);

} // namespace velmo
