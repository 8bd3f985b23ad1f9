// The contents of the output folders at the end of a run, part by part, with the reports on each part.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "cnc/part/run_listener.h"

namespace brenvik {

struct OutcomePart {
    /// "Door" (2F), or the name of its file where the run hasn't said which part it is.
    std::string label;
    /// As the system writes paths; blank for a side without a file.
    std::string firstSide, secondSide;
    /// Lines of the run's report that are of this part.
    std::vector<std::string> messages;
};

struct RunOutcome {
    std::vector<OutcomePart> parts;  ///< In the order of the run.
    /// Lines that are of no part.
    std::vector<std::string> messages;
    std::vector<std::string> unknownMaterials;
    bool complete = false;

    std::size_t FileCount() const;
    std::size_t PartsToldOf() const;  ///< Parts with messages.
};

/// Listens to runs for as long as it lives, and holds what the last one came to.
class RunOutcomes : public RunListener {
  public:
    RunOutcomes();
    ~RunOutcomes() override;
    RunOutcomes(const RunOutcomes&) = delete;
    RunOutcomes& operator=(const RunOutcomes&) = delete;

    const RunOutcome& Last() const { return mLast; }
    /// True once for each run that has ended.
    bool TakeNews();

    void OnPass(const RunProgress& progress) override;
    void OnEnd(const RunReport& report) override;

  private:
    /// Labels by the parts' numbers, of the present run.
    std::map<int, std::string> mLabels;
    RunOutcome mLast;
    bool mNews = false;
};

}  // namespace brenvik
