#include "drawing/dash_pattern.h"
#include "drawing/drawing.h"
#include "drawing/stroke_font.h"

#include <gmock/gmock.h>

#include <cmath>

namespace velmo {
namespace {

using testing::ElementsAre;

SymbolGeometry Geometry(const QStringList& lines) {
    SymbolGeometry geometry;
    geometry.path = QStringLiteral("A.TXT");
    geometry.variables = {{1, QStringLiteral("d"), QStringLiteral(" 10")},
                          {2, QStringLiteral("L"), QStringLiteral("44")}};
    for (const QString& line : lines)
        geometry.lines.push_back({static_cast<qint64>(geometry.lines.size()) + 1, line});
    return geometry;
}

template <class T>
std::vector<T> All(const Drawing& drawing) {
    std::vector<T> found;
    for (const Primitive& primitive : drawing.primitives) {
        if (const T* one = std::get_if<T>(&primitive))
            found.push_back(*one);
    }
    return found;
}

TEST(Drawing, VariablesHaveTheirInitialOrTheGivenValues) {
    const SymbolGeometry geometry = Geometry({"LINE 0 0 L d"});
    EXPECT_EQ(All<DrawnLine>(MakeDrawing(geometry))[0].to, QPointF(44, 10));
    EXPECT_EQ(All<DrawnLine>(MakeDrawing(geometry, {{"L", "60"}}))[0].to, QPointF(60, 10));
}

TEST(Drawing, LettersFollowTheSizeOfTheOutlines) {
    const Drawing drawing = MakeDrawing(Geometry({"RECT 0 0 L d", R"(DIM 0 0 L 0 -500 "L")"}));
    EXPECT_DOUBLE_EQ(drawing.letterHeight, 2);
    EXPECT_DOUBLE_EQ(All<DrawnText>(drawing)[0].height, 2);
}

TEST(Drawing, DimensionStandsOffToTheLeftOrRight) {
    for (const double offset : {6.0, -6.0}) {
        const Drawing drawing =
            MakeDrawing(Geometry({"RECT 0 0 L d", QStringLiteral("DIM 0 0 L 0 %1 \"L\"").arg(offset)}));
        const std::vector<DrawnArea> arrows = All<DrawnArea>(drawing);
        ASSERT_EQ(arrows.size(), 2u);
        EXPECT_EQ(arrows[0].points[0], QPointF(0, offset));
        EXPECT_EQ(arrows[1].points[0], QPointF(44, offset));
        // Enough room: the arrows lie between the extension lines, the text in the middle above the line.
        EXPECT_GT(arrows[0].points[1].x(), 0);
        const DrawnText text = All<DrawnText>(drawing)[0];
        EXPECT_NEAR(text.at.x() + StrokeFont::Width(text.text, text.height) / 2, 22, 1e-9);
        EXPECT_GT(text.at.y(), offset);
    }
}

TEST(Drawing, DimensionTooShortForItsArrowsHasThemOutside) {
    const Drawing drawing = MakeDrawing(Geometry({"RECT 0 0 L d", R"(DIM 10 0 11 0 6 "d")"}));
    const std::vector<DrawnArea> arrows = All<DrawnArea>(drawing);
    EXPECT_LT(arrows[0].points[1].x(), 10);
    EXPECT_GT(arrows[1].points[1].x(), 11);
    EXPECT_GT(All<DrawnText>(drawing)[0].at.x(), 11);
}

TEST(Drawing, DimensionTextReadsFromBelowOrFromTheRight) {
    const auto angle = [](const char* line) {
        return All<DrawnText>(MakeDrawing(Geometry({"RECT 0 0 L L", QString::fromLatin1(line)})))[0].angle;
    };
    EXPECT_NEAR(angle(R"(DIM 0 0 40 0 5 "d")"), 0, 1e-9);
    EXPECT_NEAR(angle(R"(DIM 40 0 0 0 5 "d")"), 0, 1e-9);
    EXPECT_NEAR(angle(R"(DIM 0 0 0 40 5 "d")"), 90, 1e-9);
    EXPECT_NEAR(angle(R"(DIM 0 40 0 0 5 "d")"), 90, 1e-9);
    EXPECT_NEAR(angle(R"(DIM 40 40 0 0 5 "d")"), 45, 1e-9);
}

TEST(Drawing, ValuesJoinTheLettersOfVariablesOnly) {
    const SymbolGeometry geometry =
        Geometry({"RECT 0 0 L d", R"(DIM 0 0 L 0 -9 "L")", R"(TEXT 0 0 2 "M10")", R"(LEADER 1 1 2 2 "d")"});
    const auto texts = [&](DimensionText mode) {
        QStringList found;
        for (const DrawnText& text : All<DrawnText>(MakeDrawing(geometry, {{"L", "50"}}, mode)))
            found.push_back(text.text);
        return found;
    };
    EXPECT_THAT(texts(DimensionText::Letters), ElementsAre(u"L", u"M10", u"d"));
    EXPECT_THAT(texts(DimensionText::LettersAndValues), ElementsAre(u"L=50", u"M10", u"d=10"));
}

TEST(Drawing, LeaderPointsAtItsTip) {
    const Drawing drawing = MakeDrawing(Geometry({"RECT 0 0 L d", R"(LEADER 5 5 -5 15 "A")"}));
    EXPECT_EQ(All<DrawnArea>(drawing)[0].points[0], QPointF(5, 5));
    EXPECT_LT(All<DrawnText>(drawing)[0].at.x(), -5);
}

TEST(Drawing, StrokedTextsLeaveLinesAndAreas) {
    const Drawing drawing = MakeDrawing(Geometry({R"(TEXT 0 0 12 "L")"}));
    const Drawing stroked = WithStrokedTexts(drawing);
    EXPECT_TRUE(All<DrawnText>(stroked).empty());
    EXPECT_EQ(All<DrawnLine>(stroked).size(), 2u);
    EXPECT_NEAR(DrawingBounds(drawing).height(), 12, 1e-9);
}

TEST(Drawing, CornersAreWhereOneMeasures) {
    EXPECT_THAT(MakeDrawing(Geometry({"LINE 0 0 L d"})).corners, ElementsAre(QPointF(0, 0), QPointF(44, 10)));
    EXPECT_EQ(MakeDrawing(Geometry({"CIRCLE 0 0 d"})).corners.size(), 5u);
}

TEST(DashPattern, BeginsAndEndsWithADashAndKeepsToTheLine) {
    for (const LineStyle style : {LineStyle::Center, LineStyle::Hidden}) {
        const std::vector<Points> strokes = StyledStrokes({{0, 0}, {30, 0}, {30, 40}}, style, 2);
        ASSERT_GT(strokes.size(), 3u);
        EXPECT_EQ(strokes.front().front(), QPointF(0, 0));
        EXPECT_NEAR(strokes.back().back().y(), 40, 1e-9);
        double drawn = 0;
        for (const Points& stroke : strokes) {
            for (std::size_t i = 0; i < stroke.size(); ++i) {
                EXPECT_TRUE(stroke[i].y() == 0 || stroke[i].x() == 30);
                if (i > 0)
                    drawn += std::hypot(stroke[i].x() - stroke[i - 1].x(), stroke[i].y() - stroke[i - 1].y());
            }
        }
        EXPECT_GT(drawn, 35);
        EXPECT_LT(drawn, 62);
    }
}

TEST(DashPattern, AShortOrSolidLineIsDrawnWhole) {
    EXPECT_EQ(StyledStrokes({{0, 0}, {1, 0}}, LineStyle::Center, 2).size(), 1u);
    EXPECT_EQ(StyledStrokes({{0, 0}, {100, 0}}, LineStyle::Solid, 2).size(), 1u);
}

} // namespace
} // namespace velmo
