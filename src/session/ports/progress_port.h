// What a user sees of long work, and how they end it.
#pragma once

#include <string_view>

namespace brenvik {

/// A piece of long work, counted in steps such as parts or rows.
struct ProgressTask {
    /// For people: "CNC run".
    std::string_view what;
    int steps = 0;
    /// Such work leaves nothing half done if it is ended between two steps. Don't offer Cancel for any other
    /// work.
    bool canCancel = false;
};

/// Every `Begin` has its `End`, by a failure too. Tasks nest: a step of one may be a task of its own. Message
/// boxes and forms may be shown between the calls.
class ProgressPort {
  public:
    virtual ~ProgressPort() = default;
    virtual void Begin(const ProgressTask& task) = 0;
    /// Called before each step of the innermost task, thousands of times a second: `step` counts from 1,
    /// `name` is the item in work and may be blank. False if the user wants to end the work; only tasks that
    /// can be cancelled heed that.
    virtual bool Step(int step, std::string_view name) = 0;
    virtual void End() = 0;
};

}  // namespace brenvik
