// The work lists of an earlier run against what its parts would give.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cnc/part/run_state.h"

namespace brenvik {

class WorkListProof {
  public:
    WorkListProof(RunForm form, std::string firstFolder, std::string secondFolder);

    /// The part has this file on a side, so that side's list has a line for it.
    void Expect(const RunState& run, const std::string& file, bool secondSide);
    /// What differs, in words, once all parts have been looked at.
    std::vector<std::string> Differences() const;

  private:
    struct Expected {
        std::string file, line;
        bool secondSide = false;
    };

    std::vector<std::string> LinesOf(const std::string& path) const;
    /// Takes the lines of the head off; tells one that another program has changed.
    void CompareHead(const std::string& list, std::vector<std::string>& lines,
                     std::vector<std::string>& told) const;
    void Compare(bool secondSide, std::vector<std::string>& told) const;

    RunForm mForm;
    std::string mFirstFolder, mSecondFolder;
    std::optional<Target> mTarget;
    std::vector<Expected> mExpected;
};

}  // namespace brenvik
