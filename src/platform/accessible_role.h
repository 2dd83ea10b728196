#pragma once

#include <QAccessible>

class QWidget;

namespace velmo {

// What a control of the program's own is to those who do not see it. To be told before anything else about
// the control's accessibility.
void SetAccessibleRole(QWidget& control, QAccessible::Role role);

} // namespace velmo
