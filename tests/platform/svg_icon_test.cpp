#include "platform/files.h"
#include "platform/svg_icon.h"
#include "platform/velmo_style.h"
#include "support/temp_folder.h"

#include <QApplication>
#include <QPainter>
#include <gtest/gtest.h>

namespace velmo {
namespace {

constexpr QRgb Nothing = 0;

class SvgIconTest : public testing::Test {
protected:
    // An icon whose upper half has one colour.
    QIcon HalfIn(const QByteArray& colour) {
        folder_.Write("half.svg", "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 16 16\">"
                                  "<rect width=\"16\" height=\"8\" fill=\"" +
                                      colour + "\"/></svg>");
        return SvgIcon(NativePath(folder_.Path("half.svg")));
    }

    TempFolder folder_;
};

TEST_F(SvgIconTest, IsSharpAtEverySize) {
    const QIcon icon = HalfIn("#2f9e58");
    for (const int size : {16, 24, 48, 200}) {
        const QImage picture = icon.pixmap(QSize(size, size), 1.0).toImage();
        ASSERT_EQ(picture.size(), QSize(size, size));
        EXPECT_EQ(picture.pixel(size / 2, size / 2 - 1), qRgb(0x2f, 0x9e, 0x58)) << size;
        EXPECT_EQ(picture.pixel(size / 2, size / 2), Nothing) << size;
    }
}

TEST_F(SvgIconTest, IsDrawnWithThePixelsOfTheScreen) {
    const QPixmap picture = HalfIn("#2f9e58").pixmap(QSize(16, 16), 2.0);
    EXPECT_EQ(picture.size(), QSize(32, 32));

    QImage screen(32, 32, QImage::Format_ARGB32_Premultiplied);
    screen.fill(Qt::white);
    screen.setDevicePixelRatio(2);
    QPainter painter(&screen);
    HalfIn("#2f9e58").paint(&painter, QRect(0, 0, 16, 16));
    painter.end();
    EXPECT_EQ(screen.pixel(16, 15), qRgb(0x2f, 0x9e, 0x58));
    EXPECT_EQ(screen.pixel(16, 16), qRgb(255, 255, 255));
}

TEST_F(SvgIconTest, CurrentColourIsThatOfTexts) {
    const QIcon icon = HalfIn("currentColor");
    const QPalette before = QApplication::palette();
    for (const QColor& colour : {QColor(Qt::black), QColor(Qt::yellow)}) {
        QPalette palette = before;
        palette.setColor(QPalette::ButtonText, colour);
        QApplication::setPalette(palette);
        EXPECT_EQ(icon.pixmap(QSize(16, 16), 1.0).toImage().pixelColor(8, 2), colour);
    }
    QApplication::setPalette(before);
}

TEST_F(SvgIconTest, IsGreyWhenDisabled) {
    const QColor shown =
        HalfIn("#ff0000").pixmap(QSize(16, 16), 1.0, QIcon::Disabled).toImage().pixelColor(8, 2);
    EXPECT_LT(shown.saturation(), 128);
    EXPECT_GT(shown.alpha(), 0);
}

TEST_F(SvgIconTest, ADrawingThatIsMissingIsEmpty) {
    const QImage picture = SvgIcon(NativePath(folder_.Path("none.svg"))).pixmap(QSize(16, 16), 1.0).toImage();
    ASSERT_EQ(picture.size(), QSize(16, 16));
    EXPECT_EQ(picture.pixel(8, 8), Nothing);
}

TEST(VelmoStyle, TheExtensionsOfBarsAreDrawn) {
    const VelmoStyle style;
    const QIcon right = style.standardIcon(QStyle::SP_ToolBarHorizontalExtensionButton, nullptr, nullptr);
    const QIcon below = style.standardIcon(QStyle::SP_ToolBarVerticalExtensionButton, nullptr, nullptr);
    const QImage rightPicture = right.pixmap(QSize(16, 16), 1.0).toImage();
    const QImage belowPicture = below.pixmap(QSize(16, 16), 1.0).toImage();
    EXPECT_EQ(qAlpha(rightPicture.pixel(0, 0)), 0);
    EXPECT_GT(qAlpha(rightPicture.pixel(7, 8)), 0);
    EXPECT_NE(rightPicture, belowPicture);
    EXPECT_FALSE(style.standardIcon(QStyle::SP_MessageBoxWarning, nullptr, nullptr).isNull());
}

} // namespace
} // namespace velmo
