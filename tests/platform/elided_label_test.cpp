#include "platform/elided_label.h"

#include <QHelpEvent>
#include <QTest>
#include <QToolTip>
#include <gtest/gtest.h>

namespace velmo {
namespace {

const QString Long = QString(QChar(u'長')).repeated(60) + "<b>x</b>";

class ElidedLabelTest : public testing::Test {
protected:
    ElidedLabelTest() {
        label_.resize(120, 30);
        label_.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&label_));
    }

    // The mouse rests on the label.
    void RestOn() {
        QHelpEvent help(QEvent::ToolTip, QPoint(3, 3), label_.mapToGlobal(QPoint(3, 3)));
        QCoreApplication::sendEvent(&label_, &help);
    }

    ElidedLabel label_;
};

TEST_F(ElidedLabelTest, AShortTextIsShownWhole) {
    label_.setText("<b>&A</b>");
    EXPECT_EQ(label_.ShownText(), "<b>&A</b>");
    RestOn();
    EXPECT_FALSE(QToolTip::isVisible());
}

TEST_F(ElidedLabelTest, ALongTextLosesItsMiddleOnTheScreenOnly) {
    label_.setText(Long);
    EXPECT_EQ(label_.text(), Long);
    const QString shown = label_.ShownText();
    EXPECT_TRUE(shown.contains(QChar(0x2026))) << shown.toStdString();
    EXPECT_TRUE(shown.startsWith(Long.first(1)) && shown.endsWith(Long.last(1)));
    EXPECT_LE(label_.fontMetrics().horizontalAdvance(shown), label_.width());
    RestOn();
    ASSERT_TRUE(QToolTip::isVisible());
    EXPECT_TRUE(QToolTip::text().contains(Long.toHtmlEscaped()));
    label_.setText("A");
    RestOn();
    EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); })) << "the text before is gone";
}

TEST_F(ElidedLabelTest, PaintsTheShortenedTextInsideItsFrame) {
    label_.setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    label_.setText(Long);
    const QImage cut = label_.grab().toImage();
    label_.setText(label_.ShownText());
    EXPECT_EQ(cut, label_.grab().toImage());
    label_.setText({});
    EXPECT_NE(cut, label_.grab().toImage());
}

} // namespace
} // namespace velmo
