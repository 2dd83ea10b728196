#pragma once

#include "platform/message_boxes.h"

#include <exception>
#include <new>
#include <utility>

namespace velmo {

// The edge between the toolkit's events and the program: runs an action; a run-time error ends the action and
// is shown over the window. Whatever else is thrown is shown, too, and ends the program, for nobody knows
// what it left undone. Nothing else catches an error to show it.
template <typename Action>
void RunGuarded(MessageBoxes& messages, QWidget* window, Action&& action) {
    try {
        std::forward<Action>(action)();
    } catch (const RuntimeError& error) {
        messages.ShowError(window, error);
    } catch (const std::bad_alloc&) {
        messages.ShowError(window, RuntimeError(ErrorNumber::OutOfMemory).EndsProgram());
    } catch (const std::exception& error) {
        messages.ShowError(
            window, RuntimeError(ErrorNumber::Internal, QString::fromUtf8(error.what())).EndsProgram());
    } catch (...) {
        messages.ShowError(window, RuntimeError(ErrorNumber::Internal).EndsProgram());
    }
}

} // namespace velmo
