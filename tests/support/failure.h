#pragma once

#include "platform/runtime_error.h"

#include <gtest/gtest.h>

#include <utility>

namespace velmo {

// The number of the run-time error that an action ends in; an action that does not fail fails the test.
template <typename Action>
ErrorNumber Failure(Action&& action) {
    try {
        std::forward<Action>(action)();
    } catch (const RuntimeError& error) {
        return error.Number();
    }
    ADD_FAILURE() << "no error";
    return ErrorNumber::DeviceIo;
}

} // namespace velmo
