#include "platform/slide_view.h"
#include "platform/slide_writer.h"
#include "slide_images.h"
#include "support/temp_folder.h"

#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QWheelEvent>
#include <gtest/gtest.h>

namespace velmo {
namespace {

// What passes by a widget, as a window sees it that listens.
class Listener : public QObject {
public:
    explicit Listener(QWidget& widget) { widget.installEventFilter(this); }

    QList<QEvent::Type> heard;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonRelease ||
            event->type() == QEvent::MouseButtonDblClick)
            heard << event->type();
        return false;
    }
};

// A picture with something to see everywhere.
QByteArray Lattice(int lines) {
    SlideWriter writer(1000, 800);
    for (int i = 0; i < lines; ++i) {
        writer.SetColour(static_cast<std::uint8_t>(1 + i % 7));
        writer.AddLine({i * 37 % 1000, 0}, {(i * 53 + 20) % 1000, 800});
        writer.AddLine({0, i * 41 % 800}, {1000, i * 41 % 800});
    }
    return writer.Bytes();
}

// A window as the windowing system moves its mouse and presses its keys.
class SlideZoomTest : public testing::Test {
protected:
    SlideZoomTest() {
        view.resize(size);
        view.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&view));
        Show("A.SLD", Frame({100, 100}, {900, 700}));
    }

    void Show(const char* name, const QByteArray& bytes) {
        view.ShowSlide(folder.Write(QLatin1String(name), bytes));
    }

    QWindow* Window() { return view.windowHandle(); }
    // The picture alone, without what shows the focus.
    QImage Shot() {
        view.clearFocus();
        return view.grab().toImage().convertToFormat(QImage::Format_RGB32);
    }
    SlideFit Seen() const { return {view.Shown(), QRect({}, view.size()), view.Look()}; }
    QPointF DotAt(QPointF point) const { return {Seen().DotAtX(point.x()), Seen().DotAtY(point.y())}; }
    bool IsFitted() const { return view.Look().zoom == 1; }

    bool Wheel(QPointF at, QPoint angle, QPoint pixels = {}) {
        QWheelEvent event(at, view.mapToGlobal(at), pixels, angle, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&view, &event);
        return event.isAccepted();
    }
    void ZoomIn(int notches, QPointF at = {160, 120}) { Wheel(at, {0, 120 * notches}); }

    void Drag(QPoint from, QPoint to, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mousePress(Window(), button, {}, from);
        QTest::mouseMove(Window(), (from + to) / 2);
        QTest::mouseMove(Window(), to);
        QTest::mouseRelease(Window(), button, {}, to);
    }

    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&view, key, modifiers); }
    QAction* FitAction() { return view.findChild<QAction*>("SlideFit"); }

    const QSize size{320, 240};
    TempFolder folder;
    SlideView view;
};

TEST_F(SlideZoomTest, TheWheelZoomsAroundThePointer) {
    for (const QPointF at : {QPointF(40, 50), QPointF(160, 120), QPointF(290.5, 200.25)}) {
        Key(Qt::Key_Home);
        const QPointF dot = DotAt(at);
        for (int i = 1; i <= 6; ++i) {
            EXPECT_TRUE(Wheel(at, {0, 120}));
            EXPECT_NEAR(view.Look().zoom, std::pow(1.25, i), 1e-9);
            EXPECT_NEAR(DotAt(at).x(), dot.x(), 1e-6);
            EXPECT_NEAR(DotAt(at).y(), dot.y(), 1e-6);
        }
    }
}

TEST_F(SlideZoomTest, EverythingTurnedBackIsThePictureBefore) {
    const QImage fitted = Shot();
    ZoomIn(3, {30, 200});
    EXPECT_NE(Shot(), fitted);
    Wheel({300, 20}, {0, -200});
    Wheel({20, 20}, {0, -160});
    EXPECT_TRUE(IsFitted());
    EXPECT_EQ(Shot(), fitted);
    Wheel({20, 20}, {0, -120});
    EXPECT_EQ(Shot(), fitted) << "no smaller than fitted";
}

TEST_F(SlideZoomTest, FineWheelsAndTouchpadsCount) {
    for (int i = 0; i < 40; ++i)
        Wheel({100, 100}, {0, 3});
    EXPECT_DOUBLE_EQ(view.Look().zoom, 1.25);
    Wheel({100, 100}, {0, -120}, {0, -500});
    EXPECT_TRUE(IsFitted()) << "the pixels only repeat the angle";
    for (int i = 0; i < 20; ++i)
        Wheel({100, 100}, {}, {0, 3});
    EXPECT_DOUBLE_EQ(view.Look().zoom, 1.25);
    EXPECT_FALSE(Wheel({100, 100}, {120, 0})) << "sideways";
    EXPECT_DOUBLE_EQ(view.Look().zoom, 1.25);
}

TEST_F(SlideZoomTest, FiftyTimesIsTheMost) {
    ZoomIn(100);
    EXPECT_DOUBLE_EQ(view.Look().zoom, 50);
    EXPECT_EQ(Shot().size(), size * view.devicePixelRatio());
}

TEST_F(SlideZoomTest, EnlargedLinesAreAsSharpAsFittedOnes) {
    const QPointF corner(Seen().X(100), Seen().Y(700));
    const int pen = static_cast<int>(view.devicePixelRatio());
    for (const int notches : {1, 4, 9, 18}) {
        Key(Qt::Key_0);
        ZoomIn(notches, corner);
        const QImage image = Shot();
        const QRect ink = Ink(image);
        EXPECT_NEAR(ink.left() / view.devicePixelRatio(), corner.x(), 1.01);
        EXPECT_NEAR(ink.top() / view.devicePixelRatio(), corner.y(), 1.01);
        const QRect inner = ink.adjusted(pen, pen, 0, 0);
        EXPECT_EQ(Count(image, ink, white), Area(ink) - Area(inner)) << notches;
        EXPECT_EQ(Count(image, inner, ground), Area(inner)) << notches;
    }
}

TEST_F(SlideZoomTest, DraggingMovesThePictureWithThePointer) {
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton}) {
        Key(Qt::Key_Home);
        ZoomIn(8);
        EXPECT_EQ(view.cursor().shape(), Qt::OpenHandCursor);
        const QPointF dot = DotAt({100, 100});
        QTest::mousePress(Window(), button, {}, {100, 100});
        EXPECT_EQ(view.cursor().shape(), Qt::OpenHandCursor) << "a press is no drag yet";
        QTest::mouseMove(Window(), {140, 90});
        EXPECT_EQ(view.cursor().shape(), Qt::ClosedHandCursor);
        EXPECT_NEAR(DotAt({140, 90}).x(), dot.x(), 1e-6);
        QTest::mouseMove(Window(), {142, 61});
        EXPECT_NEAR(DotAt({142, 61}).x(), dot.x(), 1e-6) << "small steps too";
        EXPECT_NEAR(DotAt({142, 61}).y(), dot.y(), 1e-6);
        QTest::mouseRelease(Window(), button, {}, {142, 61});
        EXPECT_EQ(view.cursor().shape(), Qt::OpenHandCursor);
        QTest::mouseMove(Window(), {10, 10});
        EXPECT_NEAR(DotAt({142, 61}).x(), dot.x(), 1e-6);
    }
    Key(Qt::Key_Home);
    EXPECT_EQ(view.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(SlideZoomTest, APictureIsNeverLostFromSight) {
    for (const int notches : {1, 5, 18}) {
        for (const QPoint far : {QPoint(9999, 0), QPoint(-9999, 0), QPoint(0, 9999), QPoint(0, -9999)}) {
            Key(Qt::Key_Home);
            ZoomIn(notches);
            Drag({160, 120}, QPoint(160, 120) + far);
            Drag({160, 120}, QPoint(160, 120) + far);
            EXPECT_FALSE(Ink(Shot()).isNull()) << notches << ' ' << far.x() << ' ' << far.y();
        }
    }
}

TEST_F(SlideZoomTest, AFittedPictureIsNotDragged) {
    const QImage fitted = Shot();
    QTest::mousePress(Window(), Qt::LeftButton, {}, {100, 100});
    QTest::mouseMove(Window(), {200, 150});
    EXPECT_EQ(view.cursor().shape(), Qt::ArrowCursor);
    QTest::mouseRelease(Window(), Qt::LeftButton, {}, {200, 150});
    EXPECT_EQ(Shot(), fitted);
}

TEST_F(SlideZoomTest, ATremblingClickMovesNothing) {
    ZoomIn(8);
    const SlideFit before = Seen();
    Drag({100, 100}, QPoint(100, 100) + QPoint(QApplication::startDragDistance() - 1, 0));
    EXPECT_EQ(Seen(), before);
    EXPECT_EQ(view.cursor().shape(), Qt::OpenHandCursor);
}

TEST_F(SlideZoomTest, ADoubleClickIsHeardAndMovesNothing) {
    const QList<QEvent::Type> expected = {QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
                                          QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease};
    for (const int notches : {0, 8}) {
        Key(Qt::Key_Home);
        ZoomIn(notches);
        const SlideFit before = Seen();
        Listener listener(view);
        QTest::mouseDClick(Window(), Qt::LeftButton, {}, {100, 100});
        EXPECT_EQ(listener.heard, expected) << notches;
        EXPECT_EQ(Seen(), before);
    }
}

TEST_F(SlideZoomTest, TheSecondPressOfADoubleClickGripsNothing) {
    ZoomIn(8);
    const SlideFit before = Seen();
    for (const QEvent::Type type :
         {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick}) {
        QMouseEvent event(type, QPointF(100, 100), view.mapToGlobal(QPointF(100, 100)), Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, {});
        QApplication::sendEvent(&view, &event);
    }
    QMouseEvent move(QEvent::MouseMove, QPointF(200, 150), view.mapToGlobal(QPointF(200, 150)), Qt::NoButton,
                     Qt::LeftButton, {});
    QApplication::sendEvent(&view, &move);
    EXPECT_EQ(Seen(), before);
    EXPECT_EQ(view.cursor().shape(), Qt::OpenHandCursor);
}

TEST_F(SlideZoomTest, ADragIsNoFirstHalfOfADoubleClick) {
    ZoomIn(8);
    Listener listener(view);
    Drag({100, 100}, {150, 120});
    QTest::mouseClick(Window(), Qt::LeftButton, {}, {150, 120});
    EXPECT_FALSE(listener.heard.contains(QEvent::MouseButtonDblClick));
    EXPECT_EQ(listener.heard.count(QEvent::MouseButtonRelease), 2) << "no release is swallowed";
}

TEST_F(SlideZoomTest, TheMenuFitsAgain) {
    ASSERT_TRUE(FitAction());
    EXPECT_EQ(FitAction()->text(), QStringLiteral("全体を表示(&F)"));
    EXPECT_FALSE(FitAction()->isEnabled()) << "fitted";
    ZoomIn(2);
    EXPECT_TRUE(FitAction()->isEnabled());
    view.activateWindow();
    view.setFocus();
    for (const bool byKey : {false, true}) {
        ZoomIn(2);
        if (byKey) {
            QContextMenuEvent event(QContextMenuEvent::Keyboard, {160, 0}, view.mapToGlobal(QPoint(160, 0)));
            QApplication::sendEvent(&view, &event);
        } else {
            QTest::mouseClick(Window(), Qt::RightButton, {}, {100, 100});
            QContextMenuEvent event(QContextMenuEvent::Mouse, {100, 100}, view.mapToGlobal(QPoint(100, 100)));
            if (!QApplication::activePopupWidget())
                QApplication::sendEvent(&view, &event);
        }
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_TRUE(menu);
        EXPECT_EQ(menu->actions(), QList<QAction*>{FitAction()});
        QTest::keyClick(menu, Qt::Key_F);
        EXPECT_FALSE(QApplication::activePopupWidget());
        EXPECT_TRUE(IsFitted());
        EXPECT_FALSE(FitAction()->isEnabled());
    }
    ZoomIn(2);
    view.Clear();
    EXPECT_FALSE(FitAction()->isEnabled()) << "nothing to fit";
}

TEST_F(SlideZoomTest, KeysDoWhatTheMouseDoes) {
    const QPointF middle = DotAt({160, 120});
    Key(Qt::Key_Plus);
    Key(Qt::Key_Plus, Qt::ShiftModifier);
    Key(Qt::Key_Plus, Qt::KeypadModifier);
    EXPECT_DOUBLE_EQ(view.Look().zoom, 1.25 * 1.25 * 1.25);
    EXPECT_NEAR(DotAt({160, 120}).x(), middle.x(), 1e-6);
    Key(Qt::Key_Minus);
    EXPECT_DOUBLE_EQ(view.Look().zoom, 1.25 * 1.25);
    const QPointF dot = DotAt({200, 150});
    Key(Qt::Key_Right);
    EXPECT_NEAR(DotAt({160, 150}).x(), dot.x(), 1e-6) << "what is to the right comes nearer";
    Key(Qt::Key_Left);
    Key(Qt::Key_Down);
    EXPECT_NEAR(DotAt({200, 120}).y(), dot.y(), 1e-6);
    Key(Qt::Key_Up);
    EXPECT_NEAR(DotAt({200, 150}).y(), dot.y(), 1e-6);
    Key(Qt::Key_0);
    EXPECT_TRUE(IsFitted());
    Key(Qt::Key_Plus);
    Key(Qt::Key_Home);
    EXPECT_TRUE(IsFitted());
    Key(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_TRUE(IsFitted()) << "left to the window";
}

TEST_F(SlideZoomTest, ClickAndTabGiveTheFocusTheWheelDoesNot) {
    QWidget window;
    auto* other = new SlideView(&window);
    other->setGeometry(0, 0, 100, 100);
    auto* field = new QLineEdit(&window);
    field->setGeometry(0, 100, 100, 30);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    field->setFocus();
    QWheelEvent event(QPointF(5, 5), window.mapToGlobal(QPointF(5, 5)), {}, {0, 120}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(other, &event);
    EXPECT_TRUE(field->hasFocus());
    QTest::keyClick(field, Qt::Key_Tab);
    EXPECT_TRUE(other->hasFocus());
    field->setFocus();
    const QImage before = other->grab().toImage();
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, {50, 50});
    EXPECT_TRUE(other->hasFocus());
    EXPECT_NE(other->grab().toImage(), before) << "the focus shows";
}

TEST_F(SlideZoomTest, AnotherSlideIsFitted) {
    const QImage fitted = Shot();
    ZoomIn(5, {20, 20});
    Show("A.SLD", Frame({100, 100}, {900, 700}));
    EXPECT_TRUE(IsFitted());
    EXPECT_EQ(Shot(), fitted) << "the same again too";
    ZoomIn(5, {20, 20});
    view.Clear();
    EXPECT_TRUE(IsFitted());
    EXPECT_FALSE(Wheel({20, 20}, {0, 120}));
    Key(Qt::Key_Plus);
    EXPECT_TRUE(IsFitted()) << "an empty view has nothing to enlarge";
}

TEST_F(SlideZoomTest, ASlideShownWhileDraggingIsNotDragged) {
    ZoomIn(8);
    QTest::mousePress(Window(), Qt::LeftButton, {}, {100, 100});
    QTest::mouseMove(Window(), {150, 100});
    Show("B.SLD", Lattice(10));
    EXPECT_EQ(view.cursor().shape(), Qt::ArrowCursor);
    ZoomIn(8);
    const SlideFit before = Seen();
    QTest::mouseMove(Window(), {200, 100});
    QTest::mouseRelease(Window(), Qt::LeftButton, {}, {200, 100});
    EXPECT_EQ(Seen(), before);
}

TEST_F(SlideZoomTest, AnotherSizeKeepsWhatIsInTheMiddle) {
    ZoomIn(5, {60, 70});
    const QPointF dot = DotAt({160, 120});
    view.resize(500, 400);
    EXPECT_NEAR(DotAt({250, 200}).x(), dot.x(), 1e-6);
    EXPECT_NEAR(DotAt({250, 200}).y(), dot.y(), 1e-6);
    view.resize(size);
    EXPECT_NEAR(DotAt({160, 120}).x(), dot.x(), 1e-6);
}

TEST_F(SlideZoomTest, ABigSlideIsStretchedAtOnceAndSharpSoon) {
    Show("Big.SLD", Lattice(20000));
    Shot();
    const auto sharp = [this] {
        SlideView fresh;
        fresh.resize(view.size());
        fresh.ShowSlide(view.SlideFile());
        return fresh.grab().toImage().convertToFormat(QImage::Format_RGB32);
    };
    for (const QSize next : {QSize(420, 300), QSize(200, 160)}) {
        view.resize(next);
        const QImage expected = sharp();
        const QImage stretched = Shot();
        EXPECT_NE(stretched, expected) << "not drawn anew while it moves";
        EXPECT_NEAR(Ink(stretched).width(), Ink(expected).width(), 4);
        EXPECT_NEAR(Ink(stretched).height(), Ink(expected).height(), 4);
        EXPECT_TRUE(QTest::qWaitFor([&] { return Shot() == expected; }));
    }
}

TEST_F(SlideZoomTest, ASmallSlideIsSharpAtOnce) {
    Show("Small.SLD", Lattice(30));
    Shot();
    view.resize(420, 300);
    const QImage image = Shot();
    SlideView fresh;
    fresh.resize(420, 300);
    fresh.ShowSlide(view.SlideFile());
    EXPECT_EQ(image, fresh.grab().toImage().convertToFormat(QImage::Format_RGB32));
}

} // namespace
} // namespace velmo
