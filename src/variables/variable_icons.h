#pragma once

#include <QIcon>

namespace velmo {

// A picture of the variable window, by the name of its drawing.
QIcon VariableIcon(const char* name);

} // namespace velmo
