#include "platform/busy_cursor.h"

#include <QGuiApplication>
#include <gtest/gtest.h>

namespace velmo {
namespace {

TEST(BusyCursorTest, IsShownUntilEventsAreHandled) {
    ShowBusyCursor();
    ASSERT_TRUE(QGuiApplication::overrideCursor());
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    QCoreApplication::processEvents();
    EXPECT_FALSE(QGuiApplication::overrideCursor());
}

} // namespace
} // namespace velmo
