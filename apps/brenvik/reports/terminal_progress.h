// Long work on a terminal: the present item, its number, and the total.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "reports/teller.h"
#include "session/ports/progress_port.h"

namespace brenvik::app {

/// Shows the progress of the system on the teller's line for as long as it lives.
class TerminalProgress : public ProgressPort {
  public:
    explicit TerminalProgress(Teller& commandTeller);
    ~TerminalProgress() override;
    TerminalProgress(const TerminalProgress&) = delete;
    TerminalProgress& operator=(const TerminalProgress&) = delete;

    void Begin(const ProgressTask& task) override;
    bool Step(int step, std::string_view name) override;
    void End() override;

  private:
    struct Task {
        std::string what;
        int steps;
    };
    Teller& mTeller;
    std::vector<Task> mTasks;
    std::chrono::steady_clock::time_point mShown{};
};

}  // namespace brenvik::app
