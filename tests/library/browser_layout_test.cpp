#include "library/browser_layout.h"
#include "platform/files.h"
#include "support/temp_folder.h"

#include <QApplication>
#include <QScopeGuard>
#include <QTest>
#include <gtest/gtest.h>

namespace velmo {
namespace {

constexpr QSize WindowSize(500, 400);
constexpr int Bar = 4;

class BrowserLayoutTest : public testing::Test {
protected:
    BrowserLayoutTest() : settings_(NativePath(folder_.Path("velmo.ini"))) {}

    BrowserLayout& Layout() {
        if (!layout_) {
            layout_.emplace(&tree_, &treeSlide_, &entrySlide_, &entryList_);
            layout_->Restore(settings_);
            layout_->resize(WindowSize);
            layout_->show();
            EXPECT_TRUE(QTest::qWaitForWindowExposed(&*layout_));
        }
        return *layout_;
    }
    ~BrowserLayoutTest() override { Forget(); }

    // The panes are the test's own.
    void Forget() {
        for (QWidget* pane : {&tree_, &treeSlide_, &entrySlide_, &entryList_})
            pane->setParent(nullptr);
        layout_.reset();
    }

    QWidget& Part(const char* name) {
        auto* part = Layout().findChild<QWidget*>(QLatin1String(name));
        EXPECT_TRUE(part) << name;
        return *part;
    }

    // Takes hold of a splitter in its middle and moves it, the button still down.
    void StartDrag(const char* name, const QPoint& by) {
        QWidget& bar = Part(name);
        start_ = bar.rect().center();
        QTest::mousePress(&bar, Qt::LeftButton, Qt::NoModifier, start_);
        QTest::mouseMove(&bar, start_ + by);
    }
    void Drag(const char* name, const QPoint& by) {
        StartDrag(name, by);
        QTest::mouseRelease(&Part(name), Qt::LeftButton, Qt::NoModifier, start_ + by);
    }

    void ExpectAdjacent() {
        const QRect frame = Part("SplitImg").geometry();
        EXPECT_EQ(frame.height(), Layout().height());
        for (const QWidget* left : {&tree_, &treeSlide_, &Part("TreeImg")})
            EXPECT_EQ(left->geometry().right() + 1, frame.left());
        for (const QWidget* right : {&entrySlide_, &entryList_, &Part("PDFImg")}) {
            EXPECT_EQ(right->x(), frame.right() + 1);
            EXPECT_EQ(right->geometry().right() + 1, Layout().width());
        }
        EXPECT_EQ(tree_.geometry().bottom() + 1, Part("TreeImg").y());
        EXPECT_EQ(Part("TreeImg").geometry().bottom() + 1, treeSlide_.y());
        EXPECT_EQ(entrySlide_.geometry().bottom() + 1, Part("PDFImg").y());
        EXPECT_EQ(Part("PDFImg").geometry().bottom() + 1, entryList_.y());
        EXPECT_EQ(treeSlide_.geometry().bottom() + 1, Layout().height());
        EXPECT_EQ(entryList_.geometry().bottom() + 1, Layout().height());
    }

    TempFolder folder_;
    SettingsStore settings_;
    QWidget tree_;
    QWidget treeSlide_;
    QWidget entrySlide_;
    QWidget entryList_;
    std::optional<BrowserLayout> layout_;
    QPoint start_;
};

TEST_F(BrowserLayoutTest, WithoutSettingsThePanesShareTheWindow) {
    Layout();
    ExpectAdjacent();
    EXPECT_EQ(Part("SplitImg").width(), Bar);
    for (const QWidget* pane : {&tree_, &treeSlide_, &entrySlide_, &entryList_}) {
        EXPECT_GE(pane->width(), 150);
        EXPECT_GE(pane->height(), 120);
    }
    Layout().resize(1000, 800);
    ExpectAdjacent();
    EXPECT_GT(tree_.width(), 300) << "the shares grow with the window";
}

TEST_F(BrowserLayoutTest, WhileItIsDraggedOnlyThePictureMoves) {
    Layout();
    EXPECT_FALSE(Part("SplitPic").isVisible());
    EXPECT_EQ(Part("SplitPic").geometry(), Part("SplitImg").geometry());
    const QRect before = Part("SplitImg").geometry();
    StartDrag("SplitImg", {40, 25});
    EXPECT_TRUE(Part("SplitPic").isVisible());
    EXPECT_EQ(Part("SplitPic").geometry(), before.translated(40, 0));
    EXPECT_EQ(Part("SplitImg").geometry(), before);
    QTest::mouseRelease(&Part("SplitImg"), Qt::LeftButton, Qt::NoModifier, start_ + QPoint(40, 25));
    EXPECT_FALSE(Part("SplitPic").isVisible());
    EXPECT_EQ(Part("SplitImg").geometry(), before.translated(40, 0));
    ExpectAdjacent();
}

TEST_F(BrowserLayoutTest, TheLyingSplittersMoveUpAndDown) {
    Layout();
    const int tree = Part("TreeImg").y();
    const int list = Part("PDFImg").y();
    Drag("TreeImg", {30, -50});
    Drag("PDFImg", {-30, 60});
    EXPECT_EQ(Part("TreeImg").y(), tree - 50);
    EXPECT_EQ(Part("PDFImg").y(), list + 60);
    ExpectAdjacent();
}

TEST_F(BrowserLayoutTest, EscapeGivesADragUp) {
    Layout();
    const QRect before = Part("PDFImg").geometry();
    StartDrag("PDFImg", {0, 50});
    QTest::keyClick(&Part("PDFImg"), Qt::Key_Escape);
    EXPECT_FALSE(Part("PdfPic").isVisible());
    QTest::mouseRelease(&Part("PDFImg"), Qt::LeftButton, Qt::NoModifier, start_ + QPoint(0, 50));
    EXPECT_EQ(Part("PDFImg").geometry(), before);
}

TEST_F(BrowserLayoutTest, ArrowKeysMoveASplitterThatHasTheFocus) {
    Layout();
    QWidget& bar = Part("SplitImg");
    const int before = bar.x();
    bar.setFocus();
    QTest::keyClick(&bar, Qt::Key_Right);
    QTest::keyClick(&bar, Qt::Key_Right);
    EXPECT_GT(bar.x(), before + 8);
    QTest::keyClick(&bar, Qt::Key_Up);
    QTest::keyClick(&bar, Qt::Key_Left);
    EXPECT_EQ(bar.x(), before + 8);
    const int list = Part("PDFImg").y();
    QTest::keyClick(&Part("PDFImg"), Qt::Key_Down);
    EXPECT_EQ(Part("PDFImg").y(), list + 8);
    ExpectAdjacent();
}

TEST_F(BrowserLayoutTest, NoPaneIsSqueezedOut) {
    Layout();
    Drag("SplitImg", {-1000, 0});
    EXPECT_GE(tree_.width(), 60);
    Drag("SplitImg", {2000, 0});
    EXPECT_GE(entryList_.width(), 60);
    Drag("TreeImg", {0, 1000});
    EXPECT_GE(treeSlide_.height(), 60);
    Drag("PDFImg", {0, -1000});
    EXPECT_GE(entrySlide_.height(), 60);
    ExpectAdjacent();
    Layout().resize(80, 60);
    ExpectAdjacent();
    for (const QWidget* pane : {&tree_, &treeSlide_, &entrySlide_, &entryList_}) {
        EXPECT_GT(pane->width(), 20);
        EXPECT_GT(pane->height(), 20);
    }
}

TEST_F(BrowserLayoutTest, ASplitterComesBackWhenTheWindowGrowsAgain) {
    Layout();
    Drag("SplitImg", {150, 0});
    const int place = Part("SplitImg").x();
    Layout().resize(200, 150);
    EXPECT_LT(Part("SplitImg").x(), place);
    Layout().resize(WindowSize);
    EXPECT_EQ(Part("SplitImg").x(), place);
    EXPECT_EQ(Part("SplitPic").geometry(), Part("SplitImg").geometry());
}

TEST_F(BrowserLayoutTest, TheRectanglesAreSavedInTwipsAndComeBack) {
    Drag("SplitImg", {37, 0});
    Drag("TreeImg", {0, -21});
    Drag("PDFImg", {0, 13});
    const QRect frame = Part("SplitImg").geometry();
    const QRect tree = Part("TreeImg").geometry();
    const QRect list = Part("PDFImg").geometry();
    Layout().Save(settings_);
    EXPECT_EQ(settings_.Get("FrameSplitLeft"), QString::number(frame.x() * 15));
    EXPECT_EQ(settings_.Get("FrameSplitTop"), "0");
    EXPECT_EQ(settings_.Get("FrameSplitWidth"), "60");
    EXPECT_EQ(settings_.Get("FrameSplitHeight"), QString::number(frame.height() * 15));
    EXPECT_EQ(settings_.Get("TreeSplitLeft"), "0");
    EXPECT_EQ(settings_.Get("TreeSplitTop"), QString::number(tree.y() * 15));
    EXPECT_EQ(settings_.Get("TreeSplitWidth"), QString::number(tree.width() * 15));
    EXPECT_EQ(settings_.Get("TreeSplitHeight"), "60");
    EXPECT_EQ(settings_.Get("PdfSplitLeft"), QString::number(list.x() * 15));
    EXPECT_EQ(settings_.Get("PdfSplitTop"), QString::number(list.y() * 15));
    EXPECT_EQ(settings_.Get("PdfSplitWidth"), QString::number(list.width() * 15));
    EXPECT_EQ(settings_.Get("PdfSplitHeight"), "60");

    Forget();
    EXPECT_EQ(Part("SplitImg").geometry(), frame);
    EXPECT_EQ(Part("TreeImg").geometry(), tree);
    EXPECT_EQ(Part("PDFImg").geometry(), list);
    EXPECT_EQ(Part("PdfPic").geometry(), list);
}

TEST_F(BrowserLayoutTest, AStoredPlaceOutsideTheWindowIsBroughtBack) {
    settings_.Save("FrameSplitLeft", "99999");
    settings_.Save("TreeSplitTop", "-500");
    settings_.Save("FrameSplitWidth", "5000");
    Layout();
    ExpectAdjacent();
    EXPECT_GE(entryList_.width(), 60);
    EXPECT_GE(tree_.height(), 60);
}

TEST_F(BrowserLayoutTest, AStoredNumberThatIsNoneIsAsIfThereWereNone) {
    Layout();
    const QRect bar = Part("SplitImg").geometry();
    const QRect list = entryList_.geometry();
    Forget();
    for (const char* key :
         {"PdfSplitTop", "PdfSplitHeight", "FrameSplitLeft", "FrameSplitTop", "FrameSplitWidth"})
        settings_.Save(key, "low");
    Layout();
    EXPECT_EQ(Part("SplitImg").geometry(), bar);
    EXPECT_EQ(entryList_.geometry(), list);
}

TEST_F(BrowserLayoutTest, ALargeFontNeedsLargerPanes) {
    const auto restore = qScopeGuard([font = QApplication::font()] { QApplication::setFont(font); });
    QFont large = QApplication::font();
    large.setPixelSize(24);
    QApplication::setFont(large);
    Drag("SplitImg", {-1000, 0});
    EXPECT_GE(tree_.width(), 8 * 24);
    Drag("PDFImg", {0, 1000});
    EXPECT_GE(entryList_.height(), 4 * 24);
}

} // namespace
} // namespace velmo
