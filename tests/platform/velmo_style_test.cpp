#include "platform/velmo_style.h"

#include <QAbstractItemView>
#include <QBuffer>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QSvgGenerator>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace velmo {
namespace {

// A list with a selected item, and a field that can take the focus from it.
class VelmoStyleTest : public testing::Test {
protected:
    VelmoStyleTest() {
        auto* layout = new QVBoxLayout(&window_);
        layout->addWidget(&list_);
        layout->addWidget(&field_);
        for (QWidget* control : {static_cast<QWidget*>(&list_), static_cast<QWidget*>(&field_)})
            control->setStyle(&style_);
        list_.addItem("M");
        list_.setCurrentRow(0);
        window_.resize(200, 200);
        window_.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
    }
    ~VelmoStyleTest() override {
        list_.setParent(nullptr);
        field_.setParent(nullptr);
    }

    // The ground of the selected item, right of its text.
    QColor Ground() {
        const QRect item = list_.visualItemRect(list_.item(0));
        return list_.viewport()->grab().toImage().pixelColor(item.right() - 4, item.center().y());
    }
    static double Distance(const QColor& a, const QColor& b) {
        return std::abs(a.redF() - b.redF()) + std::abs(a.greenF() - b.greenF()) +
               std::abs(a.blueF() - b.blueF());
    }

    VelmoStyle style_;
    QWidget window_;
    QListWidget list_;
    QLineEdit field_;
};

TEST_F(VelmoStyleTest, OnlyTheViewWithTheFocusShowsItsSelectionInFullColour) {
    list_.setFocus();
    const QColor full = Ground();
    field_.setFocus();
    const QColor faded = Ground();
    const QColor base = list_.palette().color(QPalette::Base);
    EXPECT_LT(Distance(faded, base), Distance(full, base) / 2);
    EXPECT_GT(Distance(faded, base), 0.05) << "it is still seen";
    list_.setFocus();
    EXPECT_EQ(Ground(), full);
}

TEST_F(VelmoStyleTest, HintsAreReadableOnADarkGround) {
    QPalette dark;
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    style_.polish(dark);
    EXPECT_GT(dark.color(QPalette::PlaceholderText).lightnessF(), 0.9);
    EXPECT_GT(dark.color(QPalette::PlaceholderText).alphaF(), 0.5);
}

TEST_F(VelmoStyleTest, AMenuShowsItsTextsWholeInEveryFont) {
    for (const int points : {9, 12, 18, 24, 36}) {
        QMenu menu;
        menu.setStyle(&style_);
        QFont font = menu.font();
        font.setPointSize(points);
        menu.setFont(font);
        menu.addAction("新規登録(&I)")->setShortcut(Qt::Key_Insert);
        menu.addAction("フォルダコピー(&C)");
        menu.resize(menu.sizeHint());
        QBuffer drawn;
        QSvgGenerator painted;
        painted.setOutputDevice(&drawn);
        menu.render(&painted);
        EXPECT_GT(drawn.data().count("<text"), 0);
        EXPECT_FALSE(QString::fromUtf8(drawn.data()).contains(u'…')) << points;
    }
}

TEST_F(VelmoStyleTest, IconsGrowWithTheFont) {
    const int usual = style_.pixelMetric(QStyle::PM_ListViewIconSize, nullptr, &list_);
    EXPECT_EQ(usual, QProxyStyle().pixelMetric(QStyle::PM_ListViewIconSize, nullptr, &list_));
    QFont font = list_.font();
    font.setPixelSize(40);
    list_.setFont(font);
    EXPECT_GE(style_.pixelMetric(QStyle::PM_ListViewIconSize, nullptr, &list_), 2 * usual);
}

TEST_F(VelmoStyleTest, ButtonsOfARowAreOfOneHeightInWhateverScript) {
    QPushButton latin("&OK");
    QPushButton japanese("キャンセル");
    for (QPushButton* button : {&latin, &japanese})
        button->setStyle(&style_);
    EXPECT_EQ(latin.sizeHint().height(), japanese.sizeHint().height());
    EXPECT_GE(field_.sizeHint().height(), field_.fontMetrics().size(Qt::TextSingleLine, "漢字").height());
}

TEST_F(VelmoStyleTest, ADroppedDownListHasAFrameOnEveryGround) {
    for (const bool dark : {false, true}) {
        const QColor ground = dark ? QColor(0x2A, 0x2E, 0x32) : QColor(0xEF, 0xEF, 0xEF);
        QPalette colours(ground);
        if (dark)
            colours.setColor(QPalette::Base, QColor(0x1B, 0x1E, 0x20));
        for (const bool editable : {false, true}) {
            QComboBox box(&window_);
            box.setStyle(&style_);
            box.setPalette(colours);
            box.setEditable(editable);
            box.addItems({"10", "20"});
            box.show();
            box.showPopup();
            QWidget* list = box.view()->window();
            list->setStyle(&style_);
            list->setPalette(colours);
            const QImage picture = list->grab().toImage();
            const QColor frame = picture.pixelColor(0, picture.height() / 2);
            EXPECT_EQ(picture.pixelColor(picture.width() / 2, picture.height() - 1), frame);
            for (const QPalette::ColorRole role : {QPalette::Window, QPalette::Base})
                EXPECT_GT(Distance(frame, colours.color(role)), 0.5) << dark << editable << role;
            box.hidePopup();
            box.setParent(nullptr);
        }
    }
}

} // namespace
} // namespace velmo
