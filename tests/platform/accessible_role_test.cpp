#include "platform/accessible_role.h"
#include "platform/slide_view.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

TEST(AccessibleRoleTest, AControlHasTheRoleItWasGiven) {
    QWidget control;
    SetAccessibleRole(control, QAccessible::Splitter);
    control.setAccessibleName("bar");
    QAccessibleInterface* told = QAccessible::queryAccessibleInterface(&control);
    EXPECT_EQ(told->role(), QAccessible::Splitter);
    EXPECT_EQ(told->text(QAccessible::Name), "bar");
}

TEST(AccessibleRoleTest, ASlideIsAGraphic) {
    SlideView slide;
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&slide)->role(), QAccessible::Graphic);
    const QWidget other;
    EXPECT_NE(QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&other))->role(),
              QAccessible::Graphic);
}

} // namespace
} // namespace velmo
