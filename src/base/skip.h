// "Resume at the next statement" as named helpers, each around one statement of a sequence, so that a
// reader sees at a glance which statements may fail without ending the sequence. Only a Failure is
// swallowed: any other exception is a defect and passes through.
#pragma once

#include <functional>
#include <optional>
#include <utility>

#include "base/failure.h"

namespace brenvik {

/// Runs one statement; a failure ends the statement and nothing else. Returns whether it succeeded.
template <typename Statement>
bool Skip(Statement&& statement) {
    try {
        std::invoke(std::forward<Statement>(statement));
        return true;
    } catch (const Failure&) {
        return false;
    }
}

/// Runs one statement and returns its failure, or null if it succeeded: for a sequence that continues and
/// checks the failure's number or description afterwards.
template <typename Statement>
[[nodiscard]] std::optional<Failure> Attempt(Statement&& statement) {
    try {
        std::invoke(std::forward<Statement>(statement));
        return std::nullopt;
    } catch (const Failure& failure) {
        return failure;
    }
}

/// Runs one statement; on a failure calls `show(failure)` first and then returns to the sequence.
/// Returns whether the statement succeeded. What `show` throws passes through.
template <typename Show, typename Statement>
bool ShowAndResume(Show&& show, Statement&& statement) {
    const std::optional<Failure> failure = Attempt(std::forward<Statement>(statement));
    if (!failure) return true;
    std::invoke(std::forward<Show>(show), *failure);
    return false;
}

}  // namespace brenvik
