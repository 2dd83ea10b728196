#include "drawing/symbol_geometry.h"

#include "platform/numbers.h"
#include "platform/runtime_error.h"
#include "platform/text_file.h"

#include <optional>

namespace velmo {
namespace {

// Nothing when the line declares no variable.
std::optional<DrawingVariable> ReadVariable(const QString& line) {
    if (!line.startsWith(u'V'))
        return std::nullopt;
    const qsizetype equals = line.indexOf(u'=');
    if (equals < 0)
        throw RuntimeError(ErrorNumber::InvalidArgument, QStringLiteral("変数の行に「=」がありません。"));
    DrawingVariable variable;
    variable.number = ToInteger(QStringView(line).mid(1, equals - 1));
    const qsizetype call = line.indexOf(QStringLiteral("PRO("), equals);
    if (call < 0)
        return std::nullopt;
    const qsizetype open = line.indexOf(u'"', call);
    const qsizetype close = open < 0 ? -1 : line.indexOf(u'"', open + 1);
    if (close >= 0)
        variable.name = line.mid(open + 1, close - open - 1);
    const qsizetype comma = line.indexOf(u',', close >= 0 ? close : call);
    if (comma >= 0) {
        const qsizetype end = line.indexOf(u')', comma);
        variable.initial = line.mid(comma + 1, end < 0 ? -1 : end - comma - 1);
    }
    return variable;
}

} // namespace

SymbolGeometry ReadSymbolGeometry(const QString& path) {
    SymbolGeometry geometry;
    geometry.path = path;
    TextReader reader(path);
    // A drawing without variables needs no sections.
    const bool isBareDrawing = path.endsWith(QStringLiteral(".geo"), Qt::CaseInsensitive);
    std::vector<GeometryLine> allLines;
    bool inVariables = false;
    while (!reader.AtEnd()) {
        const QString line = reader.ReadLine();
        if (isBareDrawing)
            allLines.push_back({reader.LineNumber(), line});
        if (geometry.hasGeometry) {
            geometry.lines.push_back({reader.LineNumber(), line});
        } else if (line == u"$GEO") {
            geometry.hasGeometry = true;
        } else if (line == u"$VAR") {
            inVariables = true;
        } else if (inVariables) {
            try {
                if (auto variable = ReadVariable(line))
                    geometry.variables.push_back(std::move(*variable));
            } catch (RuntimeError& error) {
                throw error.InFile(path).AtLine(reader.LineNumber());
            }
        }
    }
    if (isBareDrawing && !geometry.hasGeometry) {
        geometry.hasGeometry = true;
        geometry.lines = std::move(allLines);
    }
    return geometry;
}

} // namespace velmo
