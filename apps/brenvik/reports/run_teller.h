// Reports each CNC run of a command: its progress, and its result at the end. The dialogs show the run's
// message boxes; this adds what they leave open, such as which part a box was about.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "cnc/part/run_report.h"
#include "reports/teller.h"
#include "reports/terminal_progress.h"

namespace brenvik::app {

/// What a program that reports runs has to know.
struct RunWatch {
    /// How the program is called for this home.
    std::string programWords = {};
    /// Whether a box has reported trouble since the last call.
    std::function<bool()> takeTrouble = {};
    /// The journal checks boxes itself, so a part skipped by a box it expected doesn't make the command
    /// incomplete.
    bool boxesAreLookedAt = false;
    /// Where the lines go, standard error being part of it; without one they go through the teller.
    std::function<void(const std::string&)> line = {};
};

/// The help for this option, the same in every command that starts runs.
inline constexpr std::string_view NoProofHelp =
    "Don't compare each part with what its files leave of the sheet";

class RunTeller {
  public:
    /// Watches every run as long as it lives.
    RunTeller(Teller& commandTeller, RunWatch runWatch);
    ~RunTeller();
    RunTeller(const RunTeller&) = delete;
    RunTeller& operator=(const RunTeller&) = delete;

    int Runs() const { return mRuns; }

  private:
    void TellReport(const RunReport& report);
    void Line(const std::string& text, bool lost);

    Teller& mTeller;
    RunWatch mWatch;
    TerminalProgress mProgress;
    int mRuns = 0;
};
}  // namespace brenvik::app
