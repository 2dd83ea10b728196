#pragma once

#include "platform/message_boxes.h"

#include <utility>

namespace velmo {

// The edge between the toolkit's events and the program: runs an action; a run-time error ends the action and
// is shown over the window. Nothing else catches an error to show it.
template <typename Action>
void RunGuarded(MessageBoxes& messages, QWidget* window, Action&& action) {
    try {
        std::forward<Action>(action)();
    } catch (const RuntimeError& error) {
        messages.ShowError(window, error);
    }
}

} // namespace velmo
