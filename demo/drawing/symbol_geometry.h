#pragma once

#include <QString>

#include <vector>

namespace velmo {

// A variable line of the $VAR section: V<number>=PRO("<name>",<initial>).
struct DrawingVariable {
    int number = 0;
    QString name;
    QString initial;
};

struct GeometryLine {
    // 1-based line of the file.
    qint64 number = 0;
    QString text;
};

// What a drawing needs of a definition file.
struct SymbolGeometry {
    QString path;
    std::vector<DrawingVariable> variables;
    std::vector<GeometryLine> lines;
    // False when a definition file has no $GEO line.
    bool hasGeometry = false;
};

// Reads a definition file (stored path) in code page 932, or a drawing file ".GEO", which is all drawing when
// it has no $GEO line. Throws 53, 75 or 76 when it cannot be opened, 13 or 5 naming the line when a variable
// line cannot be taken apart.
SymbolGeometry ReadSymbolGeometry(const QString& path);

} // namespace velmo
