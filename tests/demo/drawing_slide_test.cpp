#include "platform/slide.h"
#include "slide_generator/drawing_slide.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

Drawing Rectangle(double width, double height) {
    Drawing drawing;
    const QPointF corners[] = {{0, 0}, {width, 0}, {width, height}, {0, height}};
    for (int i = 0; i < 4; ++i)
        drawing.primitives.push_back(DrawnLine{3, corners[i], corners[(i + 1) % 4]});
    return drawing;
}

TEST(DrawingSlide, FitsTheDrawingInTheMiddleOfTheCanvas) {
    for (const double width : {1.0, 300.0}) {
        const Slide slide = ReadSlide(DrawingSlide(Rectangle(width, 30)));
        ASSERT_TRUE(slide.isSlide);
        EXPECT_FALSE(slide.damage.has_value());
        EXPECT_EQ(slide.highX, 1599);
        EXPECT_EQ(slide.highY, 1199);
        const QRect bounds = slide.drawing.Bounds();
        EXPECT_NEAR(bounds.left() + bounds.right(), 1599, 1);
        EXPECT_NEAR(bounds.top() + bounds.bottom(), 1199, 1);
        EXPECT_GE(bounds.left(), 40);
        EXPECT_GE(bounds.top(), 40);
        EXPECT_TRUE(bounds.left() <= 60 || bounds.top() <= 60);
        EXPECT_EQ(slide.drawing.Runs()[0].colour, 3);
    }
}

TEST(DrawingSlide, AreasBecomeTrianglesAndTextsLines) {
    Drawing drawing = Rectangle(100, 100);
    drawing.primitives.push_back(DrawnArea{1, {{10, 10}, {20, 10}, {20, 20}, {10, 20}}});
    drawing.primitives.push_back(DrawnText{2, {30, 30}, 10, 0, QStringLiteral("L")});
    const Slide slide = ReadSlide(DrawingSlide(drawing));
    EXPECT_EQ(slide.drawing.PolygonCount(), 2u);
    EXPECT_EQ(slide.drawing.Lines().size(), 6u);
}

TEST(DrawingSlide, AnEmptyDrawingOrAPointIsASlideToo) {
    EXPECT_TRUE(ReadSlide(DrawingSlide({})).isSlide);
    Drawing point;
    point.primitives.push_back(DrawnLine{7, {5, 5}, {5, 5}});
    EXPECT_EQ(ReadSlide(DrawingSlide(point)).drawing.Dots().size(), 1u);
}

TEST(DrawingSlide, PiecesShorterThanADotLeaveNoDots) {
    Drawing drawing = Rectangle(100, 100);
    drawing.primitives.push_back(DrawnLine{3, {50, 50}, {50.001, 50}});
    EXPECT_TRUE(ReadSlide(DrawingSlide(drawing)).drawing.Dots().empty());
}

} // namespace
} // namespace velmo
