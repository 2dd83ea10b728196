#include "platform/busy_cursor.h"
#include "platform/database.h"
#include "support/temp_folder.h"

#include <QGuiApplication>
#include <gtest/gtest.h>

namespace velmo {
namespace {

// Gives a lock up as soon as somebody waits long for it.
class Courtesy : public QObject {
public:
    explicit Courtesy(Database& locked) : locked_(locked) {
        QCoreApplication::instance()->installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == LongWaitEvent)
            locked_.Execute("ROLLBACK");
        return false;
    }

private:
    Database& locked_;
};

TEST(BusyCursorTest, IsShownFromALongWaitUntilEventsAreHandled) {
    const TempFolder folder;
    Database other = Database::Create(folder.Path("test.mdb"));
    Database database(folder.Path("test.mdb"), Database::Access::Write);
    const BusyCursor cursor;
    database.Execute("CREATE TABLE T (Number integer);");
    QCoreApplication::processEvents();
    EXPECT_FALSE(QGuiApplication::overrideCursor());

    const Courtesy courtesy(other);
    other.Execute("BEGIN EXCLUSIVE");
    database.Execute("INSERT INTO T VALUES (1)");
    ASSERT_TRUE(QGuiApplication::overrideCursor());
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    QCoreApplication::processEvents();
    EXPECT_FALSE(QGuiApplication::overrideCursor());
}

} // namespace
} // namespace velmo
