#include "drawing/shape_reader.h"
#include "platform/runtime_error.h"
#include "support/temp_folder.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using testing::ElementsAre;

SymbolGeometry Geometry(const QStringList& lines) {
    SymbolGeometry geometry;
    geometry.path = QStringLiteral("A.TXT");
    qint64 number = 10;
    for (const QString& line : lines)
        geometry.lines.push_back({++number, line});
    return geometry;
}

std::vector<Shape> Shapes(const QStringList& lines) {
    DrawingNames names;
    names.DefineText(QStringLiteral("d"), QStringLiteral("10"));
    return ReadShapes(Geometry(lines), std::move(names));
}

template <class T>
T Only(const QStringList& lines) {
    const std::vector<Shape> shapes = Shapes(lines);
    if (shapes.size() != 1 || !std::holds_alternative<T>(shapes[0])) {
        ADD_FAILURE() << "not one shape of the wanted kind";
        return {};
    }
    return std::get<T>(shapes[0]);
}

QString Failure(const QStringList& lines) {
    try {
        Shapes(lines);
    } catch (const RuntimeError& error) {
        return QStringLiteral("%1:%2 %3").arg(error.File()).arg(error.Line()).arg(error.Detail());
    }
    return QStringLiteral("no error");
}

TEST(ShapeReader, SkipsBlankLinesAndComments) {
    EXPECT_TRUE(
        Shapes({QString(), QStringLiteral("   "), QStringLiteral("; LINE 1 2 3"), QStringLiteral(";LINE")})
            .empty());
}

TEST(ShapeReader, LinesAndPolygons) {
    EXPECT_THAT(Only<PathShape>({"LINE 0 -d/2 d 5"}).points, ElementsAre(QPointF(0, -5), QPointF(10, 5)));
    EXPECT_THAT(Only<PathShape>({"POLY 0 0 1 0 1 1"}).points,
                ElementsAre(QPointF(0, 0), QPointF(1, 0), QPointF(1, 1)));
    EXPECT_THAT(Only<PathShape>({"CLOSED 0 0 1 0 1 1"}).points,
                ElementsAre(QPointF(0, 0), QPointF(1, 0), QPointF(1, 1), QPointF(0, 0)));
    EXPECT_THAT(Only<PathShape>({"RECT 1 2 3 5"}).points,
                ElementsAre(QPointF(1, 2), QPointF(3, 2), QPointF(3, 5), QPointF(1, 5), QPointF(1, 2)));
    EXPECT_THAT(Only<AreaShape>({"FILL 0 0 1 0 1 1"}).points,
                ElementsAre(QPointF(0, 0), QPointF(1, 0), QPointF(1, 1)));
}

TEST(ShapeReader, CirclesAndArcsStayOnTheirRadius) {
    const Points circle = Only<PathShape>({"CIRCLE 3 4 d/2"}).points;
    EXPECT_GE(circle.size(), 64u);
    for (const QPointF point : circle)
        EXPECT_NEAR(std::hypot(point.x() - 3, point.y() - 4), 5, 1e-9);
    const Points arc = Only<PathShape>({"ARC 0 0 2 0 90"}).points;
    EXPECT_NEAR(arc.front().x(), 2, 1e-9);
    EXPECT_NEAR(arc.back().y(), 2, 1e-9);
    EXPECT_NEAR(arc.back().x(), 0, 1e-9);
}

TEST(ShapeReader, ArcGoesCounterClockwisePastZero) {
    const Points arc = Only<PathShape>({"ARC 0 0 1 270 90"}).points;
    EXPECT_NEAR(arc.front().y(), -1, 1e-9);
    EXPECT_NEAR(arc[arc.size() / 2].x(), 1, 1e-9);
    EXPECT_NEAR(arc.back().y(), 1, 1e-9);
}

TEST(ShapeReader, HatchFillsTheInsideAtFortyFiveDegrees) {
    const std::vector<Shape> shapes = Shapes({"HATCH 1 0 0 4 0 4 4 0 4"});
    ASSERT_GE(shapes.size(), 4u);
    for (const Shape& shape : shapes) {
        const Points& points = std::get<PathShape>(shape).points;
        ASSERT_EQ(points.size(), 2u);
        const QPointF way = points[1] - points[0];
        EXPECT_NEAR(way.x(), way.y(), 1e-9);
        for (const QPointF point : points) {
            EXPECT_TRUE(point.x() > -1e-9 && point.x() < 4 + 1e-9);
            EXPECT_TRUE(point.y() > -1e-9 && point.y() < 4 + 1e-9);
        }
    }
}

TEST(ShapeReader, HatchLeavesTheNotchOfAPolygonEmpty) {
    // A U: the line y = x crosses both legs.
    const std::vector<Shape> shapes = Shapes({"HATCH 100 0 0 9 0 9 9 6 9 6 1 1 1 1 9 0 9"});
    ASSERT_EQ(shapes.size(), 2u);
    EXPECT_NEAR(std::get<PathShape>(shapes[0]).points[1].x(), 1, 1e-9);
    EXPECT_NEAR(std::get<PathShape>(shapes[1]).points[0].x(), 6, 1e-9);
}

TEST(ShapeReader, DimensionsLeadersAndTexts) {
    const auto dimension = Only<DimensionShape>({R"(DIM 0 0 d 0 -8 "d")"});
    EXPECT_EQ(dimension.to, QPointF(10, 0));
    EXPECT_DOUBLE_EQ(dimension.offset, -8);
    EXPECT_EQ(dimension.text, u"d");
    const auto leader = Only<LeaderShape>({QStringLiteral("LEADER 0 0 5 5 \"2×φ10 H7\"")});
    EXPECT_EQ(leader.end, QPointF(5, 5));
    EXPECT_EQ(leader.text, QStringLiteral("2×φ10 H7"));
    const auto text = Only<LetteringShape>({R"(TEXT 1 2 3.5 "A-A")"});
    EXPECT_EQ(text.at, QPointF(1, 2));
    EXPECT_DOUBLE_EQ(text.height, 3.5);
}

TEST(ShapeReader, ColourAndStyleHoldForWhatFollows) {
    const std::vector<Shape> shapes = Shapes({"LINE 0 0 1 0", "COLOR 1", "STYLE center", "LINE 0 0 1 0",
                                              "STYLE hidden", "LINE 0 0 1 0", "STYLE solid", "LINE 0 0 1 0"});
    ASSERT_EQ(shapes.size(), 4u);
    EXPECT_EQ(std::get<PathShape>(shapes[0]).colour, 7);
    EXPECT_EQ(std::get<PathShape>(shapes[0]).style, LineStyle::Solid);
    EXPECT_EQ(std::get<PathShape>(shapes[1]).colour, 1);
    EXPECT_EQ(std::get<PathShape>(shapes[1]).style, LineStyle::Center);
    EXPECT_EQ(std::get<PathShape>(shapes[2]).style, LineStyle::Hidden);
    EXPECT_EQ(std::get<PathShape>(shapes[3]).style, LineStyle::Solid);
}

TEST(ShapeReader, LetNamesAValue) {
    EXPECT_THAT(Only<PathShape>({"LET r d/2", "LET r2 r*r", "LINE 0 0 r r2"}).points,
                ElementsAre(QPointF(0, 0), QPointF(5, 25)));
}

TEST(ShapeReader, LinesUnderAConditionCountWhenItIsPositive) {
    const QStringList body = {"LINE 0 0 1 1", "LET hidden 1", "END"};
    EXPECT_EQ(Shapes(QStringList{"IF d-9"} + body).size(), 1u);
    EXPECT_TRUE(Shapes(QStringList{"IF d-10"} + body).empty());
    EXPECT_EQ(Shapes(QStringList{"IF 0"} + body + QStringList{"LINE 0 0 1 1"}).size(), 1u);
}

TEST(ShapeReader, ErrorsNameFileAndLine) {
    EXPECT_EQ(Failure({"COLOR 7", "LINES 1 2 3 4"}),
              QStringLiteral("A.TXT:12 「LINES」という命令はありません。"));
    EXPECT_EQ(Failure({"LINE 1 2 3"}), QStringLiteral("A.TXT:11 LINE の引数は 4 個です (3 個あります)。"));
    EXPECT_EQ(Failure({"POLY 0 0 1 0 1"}),
              QStringLiteral("A.TXT:11 POLY には x と y の組が 2 組以上要ります。"));
    EXPECT_EQ(Failure({"CLOSED 0 0 1 0"}),
              QStringLiteral("A.TXT:11 CLOSED には x と y の組が 3 組以上要ります。"));
    EXPECT_EQ(Failure({"LINE 0 0 q 0"}), QStringLiteral("A.TXT:11 「q」という名前の変数はありません。"));
    EXPECT_EQ(Failure({"CIRCLE 0 0 d-10"}), QStringLiteral("A.TXT:11 半径 0 は正の値ではありません。"));
    EXPECT_EQ(Failure({"COLOR 256"}),
              QStringLiteral("A.TXT:11 色番号 256 は 0 から 255 の整数ではありません。"));
    EXPECT_EQ(Failure({"STYLE dotted"}),
              QStringLiteral("A.TXT:11 線種「dotted」は solid, center, hidden のどれでもありません。"));
    EXPECT_EQ(Failure({"HATCH 0 0 0 1 0 1 1"}), QStringLiteral("A.TXT:11 ハッチングの間隔は正の値です。"));
    EXPECT_EQ(Failure({"HATCH 0.0001 0 0 1 0 1 1"}),
              QStringLiteral("A.TXT:11 ハッチングの間隔が細かすぎます。"));
    EXPECT_EQ(Failure({"HATCH"}), QStringLiteral("A.TXT:11 HATCH の引数は 7 個です (0 個あります)。"));
    EXPECT_EQ(Failure({R"(DIM 1 1 1 1 5 "d")"}), QStringLiteral("A.TXT:11 寸法の 2 点が同じ位置です。"));
    EXPECT_EQ(Failure({"TEXT 0 0 3 d"}),
              QStringLiteral("A.TXT:11 TEXT の 4 番目の引数は \" で囲んだ文字列です。"));
    EXPECT_EQ(Failure({R"(TEXT 0 0 3 "d)"}), QStringLiteral("A.TXT:11 文字列の終わりの \" がありません。"));
    EXPECT_EQ(Failure({QStringLiteral("TEXT 0 0 3 \"径\"")}),
              QStringLiteral("A.TXT:11 図面の文字に「径」はありません。"));
    EXPECT_EQ(Failure({R"(LINE 0 0 "d" 1)"}),
              QStringLiteral("A.TXT:11 LINE の 3 番目の引数は文字列ではいけません。"));
    EXPECT_EQ(Failure({"LET 2x 1"}), QStringLiteral("A.TXT:11 「2x」は名前になりません。"));
    EXPECT_EQ(Failure({"IF 1", "IF 1"}), QStringLiteral("A.TXT:12 IF の中に IF は書けません。"));
    EXPECT_EQ(Failure({"END"}), QStringLiteral("A.TXT:11 END に対する IF がありません。"));
    EXPECT_EQ(Failure({"IF 1", "COLOR 1"}), QStringLiteral("A.TXT:12 IF に対する END がありません。"));
}

TEST(SymbolGeometry, ReadsVariablesAndInstructionsWithTheirLines) {
    const TempFolder folder;
    const QString path = folder.WriteLines(
        QStringLiteral("A.TXT"), {QStringLiteral("六角ボルト"), "LINE", "$VAR", "V1=PRO(\"d\",10)", "V2=5",
                                  "; V3", "V12=2*PRO(\"L\", 40)/2", "$GEO", "COLOR 7", "LINE 0 0 1 1"});
    const SymbolGeometry geometry = ReadSymbolGeometry(path);
    ASSERT_EQ(geometry.variables.size(), 2u);
    EXPECT_EQ(geometry.variables[0].name, u"d");
    EXPECT_EQ(geometry.variables[1].number, 12);
    EXPECT_EQ(geometry.variables[1].initial, u" 40");
    EXPECT_TRUE(geometry.hasGeometry);
    ASSERT_EQ(geometry.lines.size(), 2u);
    EXPECT_EQ(geometry.lines[1].number, 10);
    EXPECT_EQ(geometry.lines[1].text, u"LINE 0 0 1 1");
}

TEST(SymbolGeometry, ADrawingFileNeedsNoSections) {
    const TempFolder folder;
    const QStringList lines = {"COLOR 7", "LINE 0 0 1 1"};
    EXPECT_EQ(ReadSymbolGeometry(folder.WriteLines(QStringLiteral("A.geo"), lines)).lines.size(), 2u);
    EXPECT_FALSE(ReadSymbolGeometry(folder.WriteLines(QStringLiteral("A.TXT"), lines)).hasGeometry);
    const SymbolGeometry both = ReadSymbolGeometry(
        folder.WriteLines(QStringLiteral("B.GEO"), QStringList{"$VAR", "V1=PRO(\"d\",1)", "$GEO"} + lines));
    EXPECT_EQ(both.variables.size(), 1u);
    EXPECT_EQ(both.lines.size(), 2u);
}

TEST(SymbolGeometry, NamesTheLineOfABadVariable) {
    const TempFolder folder;
    const QString path = folder.WriteLines(QStringLiteral("A.TXT"), {"$VAR", "Vx=PRO(\"d\",10)"});
    try {
        ReadSymbolGeometry(path);
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Line(), 2);
        EXPECT_EQ(error.File(), path);
    }
}

} // namespace
} // namespace velmo
