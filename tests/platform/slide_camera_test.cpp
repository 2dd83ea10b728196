#include "platform/slide_camera.h"
#include "platform/slide_writer.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

constexpr QSize wide(400, 200);

// A rectangle's diagonal on a canvas of 1001 by 801 dots.
Slide Diagonal(QPoint from, QPoint to) {
    SlideWriter writer(1000, 800);
    writer.AddLine(from, to);
    return ReadSlide(writer.Bytes());
}

class SlideCameraTest : public testing::Test {
protected:
    SlideCameraTest() { camera.SetView(slide, wide); }

    SlideFit Fit() const { return {slide, QRect({}, view), camera.Look()}; }
    QPointF DotAt(QPointF point) const {
        const SlideFit fit = Fit();
        return {fit.DotAtX(point.x()), fit.DotAtY(point.y())};
    }
    // Where the middle of the drawing is seen.
    QPointF Seen() const {
        const SlideFit fit = Fit();
        return {fit.X(500), fit.Y(400)};
    }

    const Slide slide = Diagonal({300, 300}, {700, 500}); // as wide as the view
    QSize view = wide;
    SlideCamera camera;
};

TEST_F(SlideCameraTest, BeginsFitted) {
    EXPECT_TRUE(camera.IsFitted());
    const SlideFit fit = Fit();
    EXPECT_EQ(fit, SlideFit(slide, QRect({}, wide)));
    EXPECT_TRUE(fit.IsWhole());
    EXPECT_NEAR(fit.X(300), 0.04 * 400, 1e-6);
    EXPECT_NEAR(fit.X(700), 0.96 * 400, 1e-6);
    EXPECT_NEAR(fit.Y(500), 0.04 * 200, 1e-6);
    EXPECT_NEAR(fit.Drawn().width(), 0.92 * 400, 1e-6);
    EXPECT_NEAR(fit.Drawn().height(), 0.92 * 200, 1e-6);
}

TEST_F(SlideCameraTest, ANotchEnlargesByAQuarter) {
    const double dot = Fit().DotWidth();
    camera.ZoomAround({200, 100}, SlideCamera::notch);
    EXPECT_DOUBLE_EQ(camera.Look().zoom, 1.25);
    EXPECT_NEAR(Fit().DotWidth(), 1.25 * dot, 1e-9);
    EXPECT_FALSE(camera.IsFitted());
    EXPECT_FALSE(Fit().IsWhole());
    camera.ZoomAround({200, 100}, -SlideCamera::notch);
    EXPECT_TRUE(camera.IsFitted());
}

TEST_F(SlideCameraTest, PartsOfANotchAddUp) {
    for (int i = 0; i < 8; ++i)
        camera.ZoomAround({40, 30}, SlideCamera::notch / 8);
    EXPECT_DOUBLE_EQ(camera.Look().zoom, 1.25);
    for (int i = 0; i < SlideCamera::notch; ++i) {
        EXPECT_FALSE(camera.IsFitted());
        camera.ZoomAround({40, 30}, -1);
    }
    EXPECT_TRUE(camera.IsFitted());
    EXPECT_EQ(Fit(), SlideFit(slide, QRect({}, wide)));
}

TEST_F(SlideCameraTest, StaysBetweenFittedAndFifty) {
    camera.ZoomAround({0, 0}, -1000);
    EXPECT_TRUE(camera.IsFitted());
    camera.ZoomAround({200, 100}, 1'000'000'000);
    camera.ZoomAround({200, 100}, 2'000'000'000);
    EXPECT_DOUBLE_EQ(camera.Look().zoom, SlideCamera::mostZoom);
    camera.ZoomAround({200, 100}, -SlideCamera::notch);
    EXPECT_NEAR(camera.Look().zoom, 40, 0.1);
    camera.ZoomAround({200, 100}, -2'000'000'000);
    EXPECT_TRUE(camera.IsFitted());
}

TEST_F(SlideCameraTest, TheDotUnderThePointStays) {
    for (const QPointF point : {QPointF(17, 9), QPointF(380, 40), QPointF(200, 100), QPointF(90, 190)}) {
        camera.Fit();
        const QPointF dot = DotAt(point);
        for (int i = 0; i < 20; ++i) {
            camera.ZoomAround(point, SlideCamera::notch);
            EXPECT_NEAR(DotAt(point).x(), dot.x(), 1e-6) << i;
            EXPECT_NEAR(DotAt(point).y(), dot.y(), 1e-6) << i;
        }
    }
}

TEST_F(SlideCameraTest, PanMovesThePictureByTheDistance) {
    camera.ZoomAround({200, 100}, 5 * SlideCamera::notch);
    const QPointF before = Seen();
    camera.Pan({31, -17});
    EXPECT_NEAR(Seen().x(), before.x() + 31, 1e-6);
    EXPECT_NEAR(Seen().y(), before.y() - 17, 1e-6);
}

TEST_F(SlideCameraTest, NothingMovesWhileFitted) {
    camera.Pan({100, 100});
    EXPECT_EQ(Fit(), SlideFit(slide, QRect({}, wide)));
}

TEST_F(SlideCameraTest, AtFirstTheFittedViewFillsTheView) {
    camera.ZoomAround({200, 100}, SlideCamera::notch);
    camera.Pan({9999, 9999});
    EXPECT_NEAR(Fit().X(300), 1.25 * 0.04 * 400, 1e-6) << "the margin grew with the drawing";
    EXPECT_NEAR(Fit().Y(500), 1.25 * 0.04 * 200, 1e-6);
    camera.Pan({-9999, -9999});
    EXPECT_NEAR(Fit().X(700), 400 - 1.25 * 0.04 * 400, 1e-6);
    EXPECT_NEAR(Fit().Y(300), 200 - 1.25 * 0.04 * 200, 1e-6);
}

TEST_F(SlideCameraTest, TheMiddleOfTheViewStaysOnTheDrawing) {
    for (const QSize size : {wide, QSize(200, 400), QSize(1000, 50)}) {
        view = size;
        camera.SetView(slide, view);
        for (const int notches : {1, 2, 4, 8, 18}) {
            camera.Fit();
            camera.ZoomAround({0, 0}, notches * SlideCamera::notch);
            for (const QPointF far : {QPointF(1e6, 0), QPointF(0, 1e6), QPointF(-1e6, 0), QPointF(0, -1e6)}) {
                camera.Pan(far);
                const QPointF dot = DotAt(QPointF(view.width(), view.height()) / 2);
                EXPECT_GE(dot.x(), 300 - 1e-6);
                EXPECT_LE(dot.x(), 700 + 1e-6);
                EXPECT_GE(dot.y(), 300 - 1e-6);
                EXPECT_LE(dot.y(), 500 + 1e-6);
            }
        }
    }
}

TEST_F(SlideCameraTest, ZoomingOutLeadsBackIntoTheLimits) {
    camera.ZoomAround({17, 9}, 10 * SlideCamera::notch);
    camera.Pan({9999, 9999});
    for (int i = 0; i < 9; ++i)
        camera.ZoomAround({390, 190}, -SlideCamera::notch);
    EXPECT_GE(Fit().X(300), 0);
    EXPECT_LE(Fit().X(300), 1.25 * 0.04 * 400 + 1e-6);
}

TEST_F(SlideCameraTest, AnotherSizeKeepsZoomAndMiddle) {
    camera.ZoomAround({120, 70}, 6 * SlideCamera::notch);
    const QPointF middle = DotAt({200, 100});
    view = QSize(900, 300);
    camera.SetView(slide, view);
    EXPECT_NEAR(DotAt({450, 150}).x(), middle.x(), 1e-6);
    EXPECT_NEAR(DotAt({450, 150}).y(), middle.y(), 1e-6);
    EXPECT_NEAR(Fit().DotWidth(), SlideFit(slide, QRect({}, view)).DotWidth() * camera.Look().zoom, 1e-9);
    camera.SetView(slide, QSize(0, 300));
    view = wide;
    camera.SetView(slide, view);
    EXPECT_NEAR(DotAt({200, 100}).x(), middle.x(), 1e-6) << "a view without size changes nothing";
}

TEST(SlideCamera, ALoneDotAndNoSlideStayInTheMiddle) {
    SlideWriter writer(1000, 800);
    writer.AddDot({3, 4});
    for (const Slide& slide : {ReadSlide(writer.Bytes()), Slide{}}) {
        SlideCamera camera;
        camera.SetView(slide, wide);
        camera.ZoomAround({10, 10}, 7 * SlideCamera::notch);
        camera.Pan({50, 50});
        EXPECT_EQ(camera.Look().middle, QPointF());
    }
}

TEST(SlideCamera, KnowsNoViewAtFirst) {
    SlideCamera camera;
    camera.ZoomAround({10, 10}, SlideCamera::notch);
    camera.Pan({5, 5});
    EXPECT_EQ(camera.Look().middle, QPointF());
    EXPECT_DOUBLE_EQ(camera.Look().zoom, 1.25);
}

} // namespace
} // namespace velmo
