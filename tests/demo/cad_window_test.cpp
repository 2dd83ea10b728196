#include "cad_side/cad_window.h"
#include "cad_side/drawing_view.h"
#include "demo_session.h"

#include <QDoubleSpinBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>
#include <gtest/gtest.h>

namespace velmo {
namespace {

class CadWindowTest : public testing::Test {
protected:
    CadWindowTest() {
        window_.show();
        runner_.program = [this] {
            demo_.WriteAnswer(QStringLiteral("75"));
            return 0;
        };
    }

    template <class T>
    T* Find(const char* name) {
        return window_.findChild<T*>(QString::fromLatin1(name));
    }
    void Click(const char* button) { QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton); }
    QString Status() { return Find<QLabel>("status")->text(); }
    QImage Picture() { return Find<DrawingView>("drawing")->grab().toImage(); }

    DemoSession demo_;
    FakeRunner runner_;
    CadConversation conversation_{demo_.Session(), runner_};
    CadWindow window_{conversation_};
};

TEST_F(CadWindowTest, ShowsAndDrawsTheAnswer) {
    EXPECT_FALSE(Find<QPushButton>("reopenSymbol")->isEnabled());
    EXPECT_FALSE(Find<QWidget>("measuredDistance")->isVisible());
    const QImage empty = Picture();
    Click("chooseSymbol");
    EXPECT_EQ(Find<QLabel>("answerSymbol")->text(), u"SMB\\BOLT.TXT");
    EXPECT_EQ(Find<QLabel>("answerLibrary")->text(), QStringLiteral("システムライブラリ (TOLVIKS)"));
    const auto* table = Find<QTableWidget>("answerVariables");
    ASSERT_EQ(table->rowCount(), 2);
    EXPECT_EQ(table->item(1, 0)->text(), u"V2(L)");
    EXPECT_EQ(table->item(1, 1)->text(), u"75");
    EXPECT_TRUE(Find<QPushButton>("reopenSymbol")->isEnabled());
    EXPECT_NE(Picture(), empty);
}

TEST_F(CadWindowTest, EachCommandAsksForItsMode) {
    Click("chooseSymbol");
    EXPECT_TRUE(demo_.Settings().contains(QStringLiteral("VlmMode=2")));
    EXPECT_TRUE(demo_.Settings().contains(QStringLiteral("VlmNxt=0")));
    Click("reopenSymbol");
    EXPECT_TRUE(demo_.Settings().contains(QStringLiteral("VlmNxt=1")));
    Click("editTables");
    EXPECT_TRUE(demo_.Settings().contains(QStringLiteral("VlmMode=3")));
    EXPECT_EQ(runner_.starts, 3);
}

TEST_F(CadWindowTest, NothingChosenSaysSoAndKeepsTheDrawing) {
    Click("chooseSymbol");
    const QImage before = Picture();
    runner_.program = [this] {
        demo_.WriteExchange(QStringLiteral("velmo.ret2"), {"NO SELECT"});
        return 0;
    };
    Click("chooseSymbol");
    EXPECT_EQ(Find<QLabel>("answerSymbol")->text(), QStringLiteral("選択なし (NO SELECT)"));
    EXPECT_TRUE(Status().contains(QStringLiteral("選ばれませんでした")));
    EXPECT_EQ(Picture(), before);
}

TEST_F(CadWindowTest, MeasuresWithTwoClicksAndGoesOn) {
    runner_.program = [this] {
        demo_.WriteAnswer(QStringLiteral("40"));
        demo_.ReplaceSetting(QStringLiteral("VlmMode=2"), QStringLiteral("VlmMode=4\nDistNo=2"));
        return 0;
    };
    Click("chooseSymbol");
    auto* distance = Find<QDoubleSpinBox>("measuredDistance");
    ASSERT_TRUE(distance->isVisible());
    EXPECT_FALSE(Find<QPushButton>("returnDistance")->isEnabled());

    auto* view = Find<DrawingView>("drawing");
    const QImage before = Picture();
    // Near the corners (0, 5) and (40, 5): the pointer snaps to them.
    QTest::mouseClick(view, Qt::LeftButton, {}, view->ToWidget({0, 5}).toPoint() + QPoint(4, 3));
    QTest::mouseMove(view, view->ToWidget({20, 5}).toPoint());
    EXPECT_NE(Picture(), before);
    QTest::mouseClick(view, Qt::LeftButton, {}, view->ToWidget({40, 5}).toPoint() + QPoint(-3, 4));
    EXPECT_DOUBLE_EQ(distance->value(), 40);

    distance->setValue(55.5);
    runner_.program = [this] {
        EXPECT_TRUE(demo_.Settings().contains(QStringLiteral("VlmDist=55.5")));
        EXPECT_TRUE(demo_.Settings().contains(QStringLiteral("VlmMode=4")));
        demo_.ReplaceSetting(QStringLiteral("VlmMode=4"), QStringLiteral("VlmMode=2\nTBLLast=1"));
        demo_.WriteAnswer(QStringLiteral("55.5"));
        return 0;
    };
    Click("returnDistance");
    EXPECT_FALSE(distance->isVisible());
    EXPECT_EQ(Find<QTableWidget>("answerVariables")->item(1, 1)->text(), u"55.5");
}

TEST_F(CadWindowTest, GoesBackWithoutADistance) {
    runner_.program = [this] {
        demo_.WriteAnswer(QStringLiteral("40"));
        demo_.ReplaceSetting(QStringLiteral("VlmMode=2"), QStringLiteral("VlmMode=4"));
        return 0;
    };
    Click("chooseSymbol");
    runner_.program = [] { return 0; };
    Click("returnWithoutDistance");
    EXPECT_TRUE(demo_.Settings().contains(QStringLiteral("VlmDist=0")));
    EXPECT_EQ(runner_.starts, 2);
}

TEST_F(CadWindowTest, AValueThatCannotBeDrawnNamesTheLine) {
    runner_.program = [this] {
        demo_.WriteAnswer(QStringLiteral("long"));
        return 0;
    };
    const QImage before = Picture();
    Click("chooseSymbol");
    EXPECT_EQ(Status(), QStringLiteral("この値では描けません。"));
    EXPECT_NE(Picture(), before);
}

TEST_F(CadWindowTest, StaysOpenWhileTheProgramIs) {
    runner_.program = [this] {
        EXPECT_FALSE(Find<QPushButton>("chooseSymbol")->isEnabled());
        EXPECT_FALSE(window_.close());
        return 0;
    };
    Click("chooseSymbol");
    EXPECT_TRUE(window_.isVisible());
    EXPECT_TRUE(window_.close());
}

TEST(DrawingView, ZoomsAboutThePointerAndShowsAllAgain) {
    DrawingView view;
    view.resize(600, 400);
    Drawing drawing;
    drawing.primitives.push_back(DrawnLine{7, {0, 0}, {100, 50}});
    view.ShowDrawing(drawing);
    const QPointF corner = view.ToWidget({100, 50});
    EXPECT_TRUE(QRectF(view.rect()).contains(corner));
    QWheelEvent wheel(corner, corner, {}, {0, 240}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&view, &wheel);
    EXPECT_NEAR(view.ToWidget({100, 50}).x(), corner.x(), 1e-6);
    EXPECT_LT(view.ToWidget({0, 0}).x(), 0);
    QTest::mouseDClick(&view, Qt::LeftButton);
    EXPECT_NEAR(view.ToWidget({100, 50}).x(), corner.x(), 1e-6);
    EXPECT_GT(view.ToWidget({0, 0}).x(), 0);
}

} // namespace
} // namespace velmo
