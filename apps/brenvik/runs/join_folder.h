// The folder that shares are put together in: an empty one, or one that a join of the same shares was writing
// when it was ended. Nothing else is ever removed there, whoever else works in it meanwhile.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "base/letter_case.h"
#include "cnc/output/output_care.h"
#include "runs/joined_shares.h"

namespace brenvik::app {

class JoinFolder {
  public:
    /// `shown` is the folder as the user names it. The shares are those of one job, all of them.
    JoinFolder(std::string shown, const std::vector<ShareInFolder>& shares);

    /// Throws CommandError for a folder with anything else in it.
    void Require() const;
    /// Looks once more under the run's claim, and marks the folder until the run has come to its end.
    OutputCare Care();
    /// Whether files of an earlier join had to go.
    bool HasTakenPlace() const { return mHasTakenPlace; }
    /// The files among them that may have been somebody else's, in words, since their contents were known to
    /// that join alone; blank if there were none.
    std::string WhatElseHasGone() const;

  private:
    std::optional<std::string> WhatIsInTheWay() const;
    bool IsOfAnotherContent(const std::string& name) const;
    std::optional<std::string> ClearLeftovers();
    std::string MarkText() const;

    std::string mShown, mDrawing, mJob;
    std::filesystem::path mFolder;
    /// What the join writes: patterns of file names, with "2-sided/" ahead of the second side's.
    std::vector<std::string> mNames;
    /// Of the files that the shares have made, by their names.
    std::map<std::string, std::string, LessIgnoreCase> mDigests;
    std::vector<std::string> mUnknownGone;
    bool mHasTakenPlace = false;
};

}  // namespace brenvik::app
