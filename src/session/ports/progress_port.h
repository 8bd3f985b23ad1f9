// What a user is told while long work goes on, and how they end it.
#pragma once

#include <string_view>

namespace brenvik {

/// A piece of long work, counted in steps such as parts or rows.
struct ProgressTask {
    /// For people: "CNC run".
    std::string_view what;
    int steps = 0;
    /// Work that leaves nothing half done when it is ended between two steps. Of any other nobody should be
    /// offered to cancel it.
    bool canCancel = false;
};

/// Every `Begin` has its `End`, by a failure too. Tasks nest: a step of one may be a task of its own. Message
/// boxes and forms may be shown between the calls.
class ProgressPort {
  public:
    virtual ~ProgressPort() = default;
    virtual void Begin(const ProgressTask& task) = 0;
    /// Ahead of each step of the innermost task, which comes thousands of times in a second: `step` counts
    /// from 1, `name` is what is worked on and may be blank. False when the user wants the work ended, which
    /// is heeded for tasks that can be cancelled alone.
    virtual bool Step(int step, std::string_view name) = 0;
    virtual void End() = 0;
};

}  // namespace brenvik
