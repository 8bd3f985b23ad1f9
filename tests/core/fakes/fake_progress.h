// Notes the progress of long work, and cancels it where the test says.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "session/ports/progress_port.h"

namespace brenvik::fakes {

class FakeProgress : public ProgressPort {
  public:
    /// "Export of 2", "1 Door", "End".
    std::vector<std::string> told;
    /// A task, and the step at which the user cancels it.
    std::pair<std::string, int> cancelAt;

    void Begin(const ProgressTask& task) override {
        mTasks.emplace_back(task.what);
        told.push_back(mTasks.back() + " of " + std::to_string(task.steps) +
                       (task.canCancel ? "" : ", for good"));
    }
    bool Step(int step, std::string_view name) override {
        told.push_back(std::to_string(step) + " " + std::string(name));
        return std::pair(mTasks.back(), step) != cancelAt;
    }
    void End() override {
        mTasks.pop_back();
        told.emplace_back("End");
    }

  private:
    std::vector<std::string> mTasks;
};

}  // namespace brenvik::fakes
