#pragma once

#include <QIcon>

namespace velmo {

// The pictures of the library windows.
QIcon SymbolIcon();
QIcon OpenIcon();
QIcon CancelIcon();

} // namespace velmo
