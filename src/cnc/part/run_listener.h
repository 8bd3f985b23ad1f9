// Who else wants to know of runs, beside the two observers of the program that has started them.
#pragma once

#include <span>
#include <vector>

#include "cnc/part/run_report.h"

namespace brenvik {

class RunListener {
  public:
    virtual ~RunListener() = default;
    /// At the start of each pass.
    virtual void OnPass(const RunProgress&) {}
    /// At the end of each run, whatever ended it.
    virtual void OnEnd(const RunReport&) {}
};

/// Until it is removed or the library is unloaded. Not within a call of a listener.
void AddRunListener(RunListener& listener);
void RemoveRunListener(RunListener& listener);
/// In the order in which they were added.
std::span<RunListener* const> RunListeners();

}  // namespace brenvik
