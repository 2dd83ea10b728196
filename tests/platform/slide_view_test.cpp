#include "platform/slide_view.h"
#include "platform/slide_writer.h"
#include "slide_images.h"
#include "slide_samples.h"
#include "support/temp_folder.h"

#include <QFile>
#include <QTest>
#include <gtest/gtest.h>

#include <random>

namespace velmo {
namespace {

// The view's picture at some device pixel ratio, in device pixels.
QImage Shot(SlideView& view, double ratio = 1) {
    QImage image((QSizeF(view.size()) * ratio).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    view.render(&image);
    return image;
}

class SlideViewTest : public testing::Test {
protected:
    SlideViewTest() { view.resize(300, 200); }

    TempFolder folder;
    SlideView view;
};

TEST_F(SlideViewTest, ShowsASlideAndForgetsTheFile) {
    const QString file = folder.Write(QStringLiteral("A.SLD"), SlideHeader() + BoxRecords());
    view.ShowSlide(file);
    EXPECT_TRUE(view.HasPicture());
    EXPECT_EQ(view.SlideFile(), file);
    ASSERT_TRUE(QFile::remove(QString(file).replace(u'\\', u'/')));
    EXPECT_GT(Count(Shot(view), view.rect(), red), 100);
    view.resize(150, 100);
    const QImage smaller = Shot(view);
    EXPECT_GT(Count(smaller, view.rect(), red), 50) << "drawn anew from what was read";
    EXPECT_LT(Ink(smaller).width(), 150);
    EXPECT_GT(Ink(smaller).width(), 100);
}

TEST_F(SlideViewTest, WhatCannotBeShownEmptiesTheView) {
    const QString good = folder.Write(QStringLiteral("A.SLD"), SlideHeader() + BoxRecords());
    for (const QString& name : {QString(), folder.Path(), folder.Path(QStringLiteral("none.SLD")),
                                folder.Write(QStringLiteral("empty.SLD"), SlideHeader() + Hex("00 FC"))}) {
        view.ShowSlide(good);
        ASSERT_TRUE(view.HasPicture());
        view.ShowSlide(name);
        EXPECT_FALSE(view.HasPicture()) << name.toStdString();
        EXPECT_EQ(view.SlideFile(), name);
        EXPECT_TRUE(Ink(Shot(view)).isNull()) << "nothing but the ground";
    }
    view.ShowSlide(good);
    view.Clear();
    EXPECT_FALSE(view.HasPicture());
    EXPECT_EQ(view.SlideFile(), QString());
    EXPECT_TRUE(Ink(Shot(view)).isNull());
}

TEST_F(SlideViewTest, HintShowsOnlyWhileEmpty) {
    view.SetEmptyText(QStringLiteral("プレビューなし"));
    const QRect hint = Ink(Shot(view));
    ASSERT_FALSE(hint.isNull());
    EXPECT_NEAR(hint.center().x(), view.rect().center().x(), 10);
    EXPECT_NEAR(hint.center().y(), view.rect().center().y(), 10);
    const QString file = folder.Write(QStringLiteral("A.SLD"), SlideHeader() + BoxRecords());
    view.ShowSlide(file);
    const QImage withHint = Shot(view);
    view.SetEmptyText({});
    EXPECT_EQ(Shot(view), withHint);
}

TEST_F(SlideViewTest, FillsTheViewWithTheDrawingNotTheCanvas) {
    view.ShowSlide(folder.Write(QStringLiteral("A.SLD"), Frame({700, 500}, {900, 600})));
    for (const QSize size : {QSize(300, 200), QSize(200, 400), QSize(900, 150)}) {
        view.resize(size);
        const QRect ink = Ink(Shot(view));
        EXPECT_NEAR(1.0 * ink.width() / ink.height(), 2, 0.05) << "the proportions of the slide";
        EXPECT_NEAR(std::max(1.0 * ink.width() / size.width(), 1.0 * ink.height() / size.height()), 0.92,
                    0.02);
        EXPECT_NEAR(ink.center().x(), size.width() / 2, 1);
        EXPECT_NEAR(ink.center().y(), size.height() / 2, 1);
    }
}

TEST_F(SlideViewTest, UpIsUp) {
    SlideWriter writer(100, 100);
    writer.AddLine({0, 0}, {100, 0});
    writer.SetColour(1);
    writer.AddLine({0, 100}, {100, 100});
    view.ShowSlide(folder.Write(QStringLiteral("A.SLD"), writer.Bytes()));
    const QImage image = Shot(view);
    const QRect ink = Ink(image);
    EXPECT_EQ(image.pixel(ink.center().x(), ink.top()), red);
    EXPECT_EQ(image.pixel(ink.center().x(), ink.bottom()), white);
}

TEST_F(SlideViewTest, UprightLinesAreCrispAtEveryRatio) {
    view.ShowSlide(folder.Write(QStringLiteral("A.SLD"), Frame({101, 203}, {888, 777})));
    for (const double ratio : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        const int pen = static_cast<int>(std::lround(ratio));
        for (int width = 290; width < 300; ++width) {
            view.resize(width, 200);
            const QImage image = Shot(view, ratio);
            const QRect ink = Ink(image);
            const QRect inner = ink.adjusted(pen, pen, -pen, -pen);
            EXPECT_EQ(Count(image, ink, white), Area(ink) - Area(inner)) << "every edge is whole pixels";
            EXPECT_EQ(Count(image, inner, ground), Area(inner)) << ratio << ' ' << width;
        }
    }
}

TEST_F(SlideViewTest, RepaintsWhenTheRatioChanges) {
    view.ShowSlide(folder.Write(QStringLiteral("A.SLD"), Frame({100, 100}, {900, 700})));
    const QImage once = Shot(view, 1);
    EXPECT_EQ(Ink(Shot(view, 2)).width(), 2 * Ink(once).width());
    EXPECT_EQ(Shot(view, 1), once);
}

TEST_F(SlideViewTest, RepaintsForAnotherRatioOfAsManyPixels) {
    view.ShowSlide(folder.Write(QStringLiteral("A.SLD"), Frame({100, 100}, {900, 700})));
    const int thin = Count(Shot(view, 1), {0, 0, 300, 200}, white);
    view.resize(150, 100);
    EXPECT_NEAR(1.0 * Count(Shot(view, 2), {0, 0, 300, 200}, white) / thin, 2, 0.05);
}

TEST_F(SlideViewTest, AnotherSlideTakesThePlaceOfTheFirst) {
    view.ShowSlide(folder.Write(QStringLiteral("A.SLD"), Frame({100, 100}, {900, 700})));
    EXPECT_EQ(Count(Shot(view), view.rect(), red), 0);
    view.ShowSlide(folder.Write(QStringLiteral("B.SLD"), SlideHeader() + BoxRecords()));
    const QImage image = Shot(view);
    EXPECT_GT(Count(image, view.rect(), red), 100);
    EXPECT_EQ(Count(image, view.rect(), white), 0);
    view.ShowSlide(folder.Write(QStringLiteral("B.SLD"), Frame({100, 100}, {900, 700})));
    EXPECT_GT(Count(Shot(view), view.rect(), white), 100) << "the same name is read again";
}

TEST_F(SlideViewTest, ShowsADamagedSlideAsFarAsItWasReadAndSaysSo) {
    const QByteArray whole = Frame({100, 100}, {900, 700});
    view.ShowSlide(folder.Write(QStringLiteral("A.SLD"), whole));
    const QImage intact = Shot(view);
    EXPECT_EQ(view.toolTip(), QString());
    // Only the end-of-file record is missing.
    const QString file = folder.Write(QStringLiteral("B.SLD"), whole.chopped(2));
    view.ShowSlide(file);
    EXPECT_TRUE(view.HasPicture());
    EXPECT_EQ(view.Trouble(), view.Shown().damage->Text());
    EXPECT_TRUE(view.toolTip().contains(QStringLiteral("終わりの印がありません")));
    EXPECT_TRUE(view.toolTip().contains(QString::number(whole.size() - 2)));
    EXPECT_TRUE(view.toolTip().contains(file));
    EXPECT_TRUE(view.accessibleDescription().contains(view.Trouble()));
    const QImage damaged = Shot(view);
    const QRect above(0, 0, 300, 200 - 2 * view.fontMetrics().height());
    EXPECT_EQ(damaged.copy(above), intact.copy(above));
    EXPECT_NE(damaged, intact) << "the line below";
    view.ShowSlide(folder.Write(QStringLiteral("A.SLD"), whole));
    EXPECT_EQ(Shot(view), intact);
    EXPECT_EQ(view.toolTip(), QString());
}

TEST_F(SlideViewTest, WhatIsNoSlideSaysSoInsteadOfTheHint) {
    view.SetEmptyText(QStringLiteral("プレビューなし"));
    const QImage hint = Shot(view);
    view.ShowSlide(folder.Path(QStringLiteral("none.SLD")));
    EXPECT_EQ(Shot(view), hint) << "there is no such file";
    EXPECT_EQ(view.toolTip(), QString());
    const QString xml = folder.Write(QStringLiteral("xml.SLD"), "<?xml version=\"1.0\"?><a>no vectors</a>");
    view.ShowSlide(xml);
    EXPECT_FALSE(view.HasPicture());
    EXPECT_EQ(view.Trouble(), QStringLiteral("スライドのファイルではありません"));
    EXPECT_TRUE(view.toolTip().contains(xml));
    EXPECT_FALSE(Ink(Shot(view)).isNull());
    EXPECT_NE(Shot(view), hint);
}

TEST_F(SlideViewTest, AnEmptySlideIsAnEmptyCanvas) {
    view.SetEmptyText(QStringLiteral("プレビューなし"));
    view.ShowSlide(folder.Write(QStringLiteral("A.SLD"), SlideHeader() + Hex("00 FC")));
    EXPECT_TRUE(Ink(Shot(view)).isNull());
    EXPECT_EQ(view.Trouble(), QString());
    EXPECT_EQ(view.toolTip(), QString());
}

TEST_F(SlideViewTest, APictureThatWouldTakeTooLongSaysSo) {
    SlideWriter writer(1000, 800);
    std::mt19937 random(5);
    std::vector<QPoint> corners;
    for (int i = 0; i < 14000; ++i)
        corners.emplace_back(int(random() % 1001), int(random() % 801));
    writer.AddPolygon(corners);
    const QString file = folder.Write(QStringLiteral("A.SLD"), writer.Bytes());
    view.ShowSlide(file);
    view.resize(1000, 800);
    Shot(view);
    EXPECT_EQ(view.Trouble(), QStringLiteral("スライドの一部を省略しています"));
    EXPECT_TRUE(view.toolTip().contains(file));
    view.resize(40, 30);
    EXPECT_TRUE(QTest::qWaitFor([&] {
        Shot(view);
        return view.toolTip().isEmpty();
    })) << "a small picture takes less";
}

TEST_F(SlideViewTest, LeavesTheMouseToOthers) {
    class Listener : public QWidget {
    public:
        int doubleClicks = 0;

    protected:
        void mouseDoubleClickEvent(QMouseEvent*) override { ++doubleClicks; }
    };
    Listener parent;
    parent.resize(300, 200);
    view.setParent(&parent);
    parent.show();
    QTest::mouseDClick(&view, Qt::LeftButton);
    EXPECT_EQ(parent.doubleClicks, 1);
    view.setParent(nullptr);
}

TEST_F(SlideViewTest, FitsIntoALayout) {
    EXPECT_EQ(view.sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    EXPECT_EQ(view.sizePolicy().verticalPolicy(), QSizePolicy::Expanding);
    EXPECT_FALSE(view.minimumSizeHint().isEmpty());
    EXPECT_GT(view.sizeHint().width(), view.minimumSizeHint().width());
    EXPECT_FALSE(view.accessibleName().isEmpty());
}

} // namespace
} // namespace velmo
