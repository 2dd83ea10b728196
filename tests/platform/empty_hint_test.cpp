#include "platform/empty_hint.h"

#include <QListView>
#include <QStringListModel>
#include <QTest>
#include <gtest/gtest.h>

namespace velmo {
namespace {

TEST(EmptyHintTest, IsSeenAsLongAsTheViewIsEmpty) {
    QStringListModel names;
    QListView view;
    view.setModel(&names);
    EmptyHint hint(view);
    hint.SetText("nothing here");
    view.resize(200, 150);
    view.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&view));
    EXPECT_TRUE(hint.IsSeen());
    EXPECT_EQ(view.accessibleDescription(), "nothing here");
    const auto* label = view.viewport()->findChild<QLabel*>();
    EXPECT_EQ(label->size(), view.viewport()->size());

    names.setStringList({"one"});
    EXPECT_FALSE(hint.IsSeen());
    EXPECT_EQ(view.accessibleDescription(), "");
    names.removeRows(0, 1);
    EXPECT_TRUE(hint.IsSeen());
}

// Without a row there is nothing else that could show it.
TEST(EmptyHintTest, IsFramedWhenTheViewHasTheFocus) {
    QStringListModel names;
    QWidget window;
    auto* view = new QListView(&window);
    auto* other = new QListView(&window);
    other->move(210, 0);
    view->setModel(&names);
    view->setObjectName("Names");
    EmptyHint hint(*view);
    hint.SetText("empty");
    window.resize(420, 200);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const auto edge = [&] { return view->viewport()->grab().toImage().pixelColor(0, 20); };
    view->setFocus();
    EXPECT_EQ(edge(), view->palette().color(QPalette::Highlight));
    other->setFocus();
    EXPECT_EQ(edge(), view->palette().color(QPalette::Base));
    EXPECT_TRUE(view->findChild<QLabel*>("NamesHint"));
}

} // namespace
} // namespace velmo
