#include "drawing/stroke_font.h"

#include "drawing/curve.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velmo::StrokeFont {
namespace {

// Capitals are 12 units high, small letters 8; descenders reach to -4.
constexpr double kCapitals = 12;
constexpr double kSpacing = 2.8;

struct Glyph {
    char16_t letter;
    double width;
    // M x y: lift the pen and go there. L x y ...: lines. A cx cy rx ry from to: elliptical arc, joined to
    // what came before. O with the same numbers: elliptical arc that starts a new stroke.
    const char* strokes;
};

constexpr Glyph kGlyphs[] = {
    {u' ', 3.2, ""},
    {u'A', 8.4, "M 0 0 L 4.2 12 8.4 0 M 1.4 4 L 7 4"},
    {u'B', 7.6,
     "M 4.2 6.4 L 0 6.4 M 0 0 L 0 12 4.2 12 A 4.2 9.2 2.8 2.8 90 -90 M 4.2 6.4 A 4.4 3.2 3.2 3.2 90 -90 L 0 "
     "0"},
    {u'C', 8, "O 4.6 6 4.6 6 48 312"},
    {u'D', 8, "M 0 0 L 0 12 3 12 A 3 6 5 6 90 -90 L 0 0"},
    {u'E', 6.8, "M 6.8 12 L 0 12 0 0 6.8 0 M 0 6.3 L 5.6 6.3"},
    {u'F', 6.6, "M 6.6 12 L 0 12 0 0 M 0 6.3 L 5.4 6.3"},
    {u'G', 8.4, "O 4.6 6 4.6 6 48 322 L 8.22 5.6 5 5.6"},
    {u'H', 8, "M 0 0 L 0 12 M 8 0 L 8 12 M 0 6.2 L 8 6.2"},
    {u'I', 0, "M 0 0 L 0 12"},
    {u'J', 5.6, "M 5.6 12 L 5.6 2.9 A 2.8 2.9 2.8 2.9 0 -165"},
    {u'K', 7.8, "M 0 0 L 0 12 M 7.4 12 L 0 4.6 M 2.7 7.3 L 7.8 0"},
    {u'L', 6.4, "M 0 12 L 0 0 6.4 0"},
    {u'M', 9.6, "M 0 0 L 0 12 4.8 3.4 9.6 12 9.6 0"},
    {u'N', 8, "M 0 0 L 0 12 8 0 8 12"},
    {u'O', 9.2, "O 4.6 6 4.6 6 0 360"},
    {u'P', 7.2, "M 0 0 L 0 12 4 12 A 4 8.8 3.2 3.2 90 -90 L 0 5.6"},
    {u'Q', 9.2, "O 4.6 6 4.6 6 0 360 M 5.6 3 L 9.2 -1"},
    {u'R', 7.6, "M 0 0 L 0 12 4 12 A 4 8.8 3.2 3.2 90 -90 L 0 5.6 M 3.8 5.6 L 7.6 0"},
    {u'S', 7.4, "O 3.7 9.1 3.3 2.9 28 270 A 3.7 3.1 3.7 3.1 90 -152"},
    {u'T', 8, "M 0 12 L 8 12 M 4 12 L 4 0"},
    {u'U', 7.8, "M 0 12 L 0 3.9 A 3.9 3.9 3.9 3.9 180 360 L 7.8 12"},
    {u'V', 8.2, "M 0 12 L 4.1 0 8.2 12"},
    {u'W', 11.6, "M 0 12 L 2.9 0 5.8 10 8.7 0 11.6 12"},
    {u'X', 7.8, "M 0 12 L 7.8 0 M 7.8 12 L 0 0"},
    {u'Y', 8, "M 0 12 L 4 6 8 12 M 4 6 L 4 0"},
    {u'Z', 7.6, "M 0 12 L 7.6 12 0 0 7.6 0"},
    {u'a', 6.2, "O 3.1 4 3.1 4 0 360 M 6.2 8 L 6.2 0"},
    {u'b', 6.2, "O 3.1 4 3.1 4 0 360 M 0 12 L 0 0"},
    {u'c', 5.6, "O 3.1 4 3.1 4 48 312"},
    {u'd', 6.2, "O 3.1 4 3.1 4 0 360 M 6.2 12 L 6.2 0"},
    {u'e', 6.2, "M 0 4.2 L 6.18 4.2 A 3.1 4 3.1 4 3 318"},
    {u'f', 4, "M 1.5 0 L 1.5 9.4 A 4.1 9.4 2.6 2.6 180 85 M 0 7.6 L 3.8 7.6"},
    {u'g', 6.2, "O 3.1 4 3.1 4 0 360 M 6.2 8 L 6.2 -1 A 3.1 -1 3.1 3 0 -155"},
    {u'h', 6, "M 0 12 L 0 0 M 0 4.6 A 3 5 3 3 180 0 L 6 0"},
    {u'i', 0, "M 0 8 L 0 0 M 0 11 L 0 11.8"},
    {u'j', 2.2, "M 2.2 8 L 2.2 -1.8 A 0 -1.8 2.2 2.2 0 -90 M 2.2 11 L 2.2 11.8"},
    {u'k', 5.8, "M 0 12 L 0 0 M 5.4 8 L 0 3 M 2 4.85 L 5.8 0"},
    {u'l', 2, "M 0 12 L 0 2 A 2 2 2 2 180 275"},
    {u'm', 9.6,
     "M 0 8 L 0 0 M 0 5 A 2.4 5.6 2.4 2.4 180 0 L 4.8 0 M 4.8 5.6 A 7.2 5.6 2.4 2.4 180 0 L 9.6 0"},
    {u'n', 6, "M 0 8 L 0 0 M 0 4.6 A 3 5 3 3 180 0 L 6 0"},
    {u'o', 6.2, "O 3.1 4 3.1 4 0 360"},
    {u'p', 6.2, "O 3.1 4 3.1 4 0 360 M 0 8 L 0 -4"},
    {u'q', 6.2, "O 3.1 4 3.1 4 0 360 M 6.2 8 L 6.2 -4"},
    {u'r', 4, "M 0 8 L 0 0 M 0 4.6 A 3 5 3 3 180 65"},
    {u's', 5.2, "O 2.6 6.05 2.4 1.95 28 270 A 2.6 2.05 2.6 2.05 90 -152"},
    {u't', 4, "M 1.5 11.2 L 1.5 2.2 A 3.7 2.2 2.2 2.2 180 285 M 0 7.6 L 3.9 7.6"},
    {u'u', 6, "M 0 8 L 0 3 A 3 3 3 3 180 360 M 6 8 L 6 0"},
    {u'v', 6, "M 0 8 L 3 0 6 8"},
    {u'w', 8.8, "M 0 8 L 2.2 0 4.4 7 6.6 0 8.8 8"},
    {u'x', 5.8, "M 0 8 L 5.8 0 M 5.8 8 L 0 0"},
    {u'y', 6, "M 0 8 L 3 0 M 6 8 L 1.5 -4"},
    {u'z', 5.6, "M 0 8 L 5.6 8 0 0 5.6 0"},
    {u'0', 7, "O 3.5 6 3.5 6 0 360"},
    {u'1', 3.4, "M 0 9.4 L 3.4 12 3.4 0"},
    {u'2', 7, "O 3.5 8.6 3.4 3.4 165 -35 L 0 0 7 0"},
    {u'3', 7, "O 3.4 9.1 3.1 2.9 150 -90 A 3.4 3.1 3.6 3.1 90 -152"},
    {u'4', 7.2, "M 5.4 0 L 5.4 12 0 3.6 7.2 3.6"},
    {u'5', 7, "M 6.4 12 L 1.2 12 0.6 6.4 A 3.3 3.8 3.7 3.8 138 -150"},
    {u'6', 7, "O 5.4 3.8 5.4 8.2 88 180 A 3.5 3.8 3.5 3.8 180 540"},
    {u'7', 7, "M 0 12 L 7 12 2.4 0"},
    {u'8', 7, "O 3.5 9.2 2.9 2.8 -90 270 A 3.5 3.2 3.5 3.2 90 450"},
    {u'9', 7, "O 3.5 8.2 3.5 3.8 0 360 A 1.6 8.2 5.4 8.2 0 -92"},
    {u'.', 0.6, "M 0 0 L 0.6 0 0.6 0.6 0 0.6 0 0"},
    {u',', 1, "M 1 1 L 0 -2"},
    {u':', 0.6, "M 0 0.6 L 0.6 0.6 0.6 1.2 0 1.2 0 0.6 M 0 7 L 0.6 7 0.6 7.6 0 7.6 0 7"},
    {u'-', 5, "M 0 5.4 L 5 5.4"},
    {u'_', 6, "M 0 -1.4 L 6 -1.4"},
    {u'+', 7, "M 0 5.4 L 7 5.4 M 3.5 1.9 L 3.5 8.9"},
    {u'=', 6.6, "M 0 7 L 6.6 7 M 0 3.8 L 6.6 3.8"},
    {u'/', 5.6, "M 0 -1 L 5.6 13"},
    {u'(', 2.4, "O 8 5.5 8 9.6 136 224"},
    {u')', 2.4, "O -5.6 5.5 8 9.6 44 -44"},
    {u'#', 8.8, "M 2 0 L 3.8 12 M 5.2 0 L 7 12 M 0 3.8 L 8.2 3.8 M 0.6 8.2 L 8.8 8.2"},
    {u'*', 5.6, "M 2.8 4.6 L 2.8 11 M 0 6.2 L 5.6 9.4 M 0 9.4 L 5.6 6.2"},
    {u'\u00D7', 6, "M 0 2.6 L 6 8.6 M 6 2.6 L 0 8.6"},
    {u'\u03C6', 7.8, "O 3.9 6 3.9 3.9 0 360 M 1.6 0 L 6.2 12"},
    {u'\u00B0', 3.2, "O 1.6 10.4 1.6 1.6 0 360"},
    {u'\u00B1', 7, "M 0 7 L 7 7 M 3.5 3.5 L 3.5 10.5 M 0 1 L 7 1"},
};

constexpr Glyph kMissing = {u'\0', 6, "M 0 0 L 6 0 6 12 0 12 0 0"};

const Glyph* Find(QChar letter) {
    const auto* const found = std::find_if(std::begin(kGlyphs), std::end(kGlyphs),
                                           [&](const Glyph& glyph) { return glyph.letter == letter; });
    return found == std::end(kGlyphs) ? nullptr : found;
}

const Glyph& GlyphOf(QChar letter) {
    const Glyph* glyph = Find(letter);
    return glyph ? *glyph : kMissing;
}

// Reads a glyph's strokes, in units from its lower left corner.
std::vector<Points> GlyphStrokes(const Glyph& glyph) {
    const QStringList words = QString::fromLatin1(glyph.strokes).split(u' ', Qt::SkipEmptyParts);
    std::vector<Points> strokes;
    QChar command;
    for (qsizetype i = 0; i < words.size();) {
        if (words[i][0].isLetter())
            command = words[i++][0];
        const auto number = [&](qsizetype offset) { return words[i + offset].toDouble(); };
        if (command == u'M' || command == u'O')
            strokes.emplace_back();
        if (command == u'M' || command == u'L') {
            strokes.back().push_back({number(0), number(1)});
            i += 2;
        } else {
            const Points arc = EllipseArc({number(0), number(1)}, number(2), number(3), number(4), number(5));
            strokes.back().insert(strokes.back().end(), arc.begin(), arc.end());
            i += 6;
        }
    }
    return strokes;
}

} // namespace

bool Has(QChar letter) {
    return Find(letter) != nullptr;
}

double Width(const QString& text, double height) {
    double width = 0;
    for (const QChar letter : text)
        width += GlyphOf(letter).width + kSpacing;
    return std::max(0.0, width - kSpacing) * height / kCapitals;
}

std::vector<Points> Strokes(const QString& text, QPointF at, double height, double angle) {
    const double scale = height / kCapitals;
    const double radians = angle * std::numbers::pi / 180;
    const QPointF right(std::cos(radians) * scale, std::sin(radians) * scale);
    const QPointF up(-right.y(), right.x());
    std::vector<Points> strokes;
    double pen = 0;
    for (const QChar letter : text) {
        const Glyph& glyph = GlyphOf(letter);
        for (Points& stroke : GlyphStrokes(glyph)) {
            for (QPointF& point : stroke)
                point = at + right * (pen + point.x()) + up * point.y();
            strokes.push_back(std::move(stroke));
        }
        pen += glyph.width + kSpacing;
    }
    return strokes;
}

} // namespace velmo::StrokeFont
