// Tells what each CNC run of a command came to: as it goes, and its report at its end. The boxes of a run are
// told by the dialogs; here stands what they leave open, such as which part one of them was about.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "cnc/part/run_report.h"
#include "reports/teller.h"
#include "reports/terminal_progress.h"

namespace brenvik::app {

/// What a program that tells of runs has to know.
struct RunWatch {
    /// How the program is called for this home.
    std::string programWords = {};
    /// Whether a box has told of trouble since the last call.
    std::function<bool()> takeTrouble = {};
    /// The journal checks boxes itself, so a part skipped by a box it expected doesn't make the command
    /// incomplete.
    bool boxesAreLookedAt = false;
    /// Where the lines go, standard error being part of it; without one they go through the teller.
    std::function<void(const std::string&)> line = {};
};

/// What every command that runs start from tells of its option.
inline constexpr std::string_view NoProofHelp =
    "Don't compare each part with what its files leave of the sheet";

class RunTeller {
  public:
    /// Watches every run until it goes.
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
