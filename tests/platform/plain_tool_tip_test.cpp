#include "platform/keyed_tree_model.h"
#include "platform/plain_tool_tip.h"

#include <QLabel>
#include <QTextDocument>
#include <gtest/gtest.h>

namespace velmo {
namespace {

TEST(PlainToolTipTest, HarmlessTextsStayAsTheyAre) {
    for (const char* text : {"", "M10", "A < B & C", "一行目\n二行目"})
        EXPECT_EQ(PlainToolTip(QString::fromUtf8(text)), QString::fromUtf8(text));
}

TEST(PlainToolTipTest, MarkupIsReadAsItIsWritten) {
    for (const char* text : {"<b>x</b>", "a  <i>&lt;</i>  b", "<p>\n</p>"}) {
        const QString tip = PlainToolTip(text);
        ASSERT_TRUE(Qt::mightBeRichText(tip));
        QTextDocument document;
        document.setHtml(tip);
        EXPECT_EQ(document.toPlainText(), text);
    }
}

TEST(PlainToolTipTest, ALongTextIsBrokenIntoLines) {
    const QString text = QString("六角ボルト<M10> ").repeated(20);
    const QString tip = PlainToolTip(text);
    QTextDocument document;
    document.setHtml(tip);
    EXPECT_EQ(document.toPlainText(), text);
    // As the toolkit shows it.
    QLabel shown(tip);
    shown.setWordWrap(Qt::mightBeRichText(tip));
    EXPECT_LT(shown.sizeHint().width(), shown.fontMetrics().horizontalAdvance(text) / 2);
}

TEST(PlainToolTipTest, TheNodesOfATreeUseIt) {
    KeyedTreeModel model;
    model.Add({}, {NewNode{"key", "<b>x</b>", 0, {}}});
    EXPECT_EQ(model.Find("key").data().toString(), "<b>x</b>");
    EXPECT_EQ(model.Find("key").data(Qt::ToolTipRole).toString(), PlainToolTip("<b>x</b>"));
}

} // namespace
} // namespace velmo
