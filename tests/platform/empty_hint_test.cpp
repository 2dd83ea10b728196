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

} // namespace
} // namespace velmo
