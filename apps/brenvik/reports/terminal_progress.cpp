// A line that is written over, no more often than an eye can follow.
#include "reports/terminal_progress.h"

#include "session/progress.h"

namespace brenvik::app {

namespace {

constexpr auto LeastTime = std::chrono::milliseconds(50);

}  // namespace

TerminalProgress::TerminalProgress(Teller& commandTeller) : mTeller(commandTeller) { ShowProgressBy(this); }

TerminalProgress::~TerminalProgress() { ShowProgressBy(nullptr); }

void TerminalProgress::Begin(const ProgressTask& task) {
    mTasks.push_back({std::string(task.what), task.steps});
    mShown = {};
}

bool TerminalProgress::Step(int step, std::string_view name) {
    const auto now = std::chrono::steady_clock::now();
    if (now - mShown < LeastTime) return true;
    mShown = now;
    const Task& task = mTasks.back();
    mTeller.Progress(task.what + ": " + std::to_string(step) + " of " + std::to_string(task.steps) +
                     (name.empty() ? "" : ", " + std::string(name)));
    return true;
}

void TerminalProgress::End() {
    mTasks.pop_back();
    mTeller.Wipe();
}

}  // namespace brenvik::app
