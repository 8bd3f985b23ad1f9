// Catching the failure that a test expects.
#pragma once

#include <gtest/gtest.h>

#include "base/failure.h"

namespace brenvik {

/// The failure that `statement` ends with; none is a failed test.
template <typename Statement>
Failure FailureOf(Statement&& statement) {
    try {
        statement();
    } catch (const Failure& failure) {
        return failure;
    }
    ADD_FAILURE() << "a failure was expected";
    return Failure(0, "", "");
}

}  // namespace brenvik
