// The work lists of an earlier run against what its parts would give.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "cnc/part/run_state.h"

namespace brenvik {

class WorkListProof {
  public:
    WorkListProof(RunForm form, std::string firstFolder, std::string secondFolder);

    /// The part has this file on a side, so that side's list has a line for it. By way of the grid parts
    /// share a file, and are counted.
    void Expect(const RunState& run, const std::string& file, bool secondSide);
    /// By way of the grid: whether the list of first sides has a line for the file that is this part's, with
    /// a larger quantity than parts have been counted for it.
    bool HasRoomFor(const RunState& run, const std::string& file) const;
    /// What differs, in words, once all parts have been looked at. `allCount`: each part is one that the file
    /// makes that it has been counted for.
    std::vector<std::string> Differences(bool allCount) const;

  private:
    using Texts = std::vector<std::string>;
    /// The fields of a part's line, whose quantity may be any.
    struct Line {
        Texts fields;
        std::size_t quantity = 0;  ///< Its place.
        std::string For(int parts) const;
        /// How many parts another line has, if it is the same but for that.
        std::optional<int> PartsIn(const std::string& other) const;
        std::string separator;
        int ofOne = 1;
    };
    struct Expected {
        std::string file;
        bool secondSide = false;
        std::vector<Line> lines;  ///< Of each of its parts.
    };

    Line LineFor(const RunState& run, const std::string& file, bool secondSide) const;
    std::string PathOf(bool secondSide, Target target) const;
    static Texts LinesOf(const std::string& path);
    /// Takes the lines of the head off; reports one that another program has changed.
    void CompareHead(const std::string& list, Texts& lines, Texts& told) const;
    void Compare(bool secondSide, bool allCount, Texts& told) const;
    /// The fault of a line of a file, if there is one.
    std::string FaultOf(const std::string& line, const Expected& part, bool allCount) const;

    RunForm mForm;
    std::string mFirstFolder, mSecondFolder;
    std::optional<Target> mTarget;
    std::vector<Expected> mExpected;
};

}  // namespace brenvik
