#pragma once

#include <QFocusEvent>
#include <QKeyEvent>

namespace velmo {

// How the editors over cells understand keys and a lost focus.

// With Ctrl it is the window's.
inline bool IsEnter(const QKeyEvent& event) {
    return (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) &&
           !event.modifiers().testFlag(Qt::ControlModifier);
}

// Not because a menu or another window came in front.
inline bool IsLeftByUser(const QFocusEvent& event) {
    return event.reason() == Qt::MouseFocusReason || event.reason() == Qt::TabFocusReason ||
           event.reason() == Qt::BacktabFocusReason;
}

} // namespace velmo
