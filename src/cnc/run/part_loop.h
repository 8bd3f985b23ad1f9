// The loop over the part files of a run: a pass for the first side, one for the second if it is needed, and
// the cleaning after each part.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "cnc/run/part_files.h"
#include "cnc/run/run_template.h"

namespace brenvik {

enum class PartsEnd {
    Whole,        ///< Every part has had its turn.
    EndedByPart,  ///< Its drawing stays open, and its files are kept.
    Cancelled,    ///< By the user, between two parts: the part files not worked on are gone.
};

/// The parts of one run, each with its passes. Everything handed in outlives the loop.
class PartLoop {
  public:
    PartLoop(RunState& runState, const PassWork& passWork, std::span<const PartFile> partFiles)
        : mRun(runState), mSteps(passWork), mParts(partFiles) {}

    /// Works on one part. Earlier parts affect it only by the bit in hand and by second-side flags that are
    /// still set. False when it has ended the run. A part that the host or the modeller refuses is reported
    /// and skipped; a failure of files is thrown on after the cleaning.
    bool WorkOn(std::size_t part);

    /// The same with all parts in order. `what` the work is called while it is shown.
    PartsEnd WorkOnAll(std::string_view what);

    /// Reports that a failure of files has ended the run at a part, and removes the part files from there on.
    void EndAt(std::size_t part);
    /// The same where the user has ended it ahead of the part.
    void CancelAt(std::size_t part);

  private:
    enum class PassEnd { NextPart, SecondSide, EndRun };

    /// Of the part that is worked on.
    const PartFile& File() const { return mParts[static_cast<std::size_t>(mRun.part.index)]; }
    /// All sides of the part, and then what is reported of it.
    PassEnd DoPasses();
    PassEnd DoPass();
    /// The steps on the open drawing. A part that the host or the modeller refuses is skipped and reported,
    /// so that the other parts of a job come out; a folder that can't be written ends the run.
    PassOutcome WorkOrSkip();
    PassOutcome WorkOnPass();
    void RemoveFilesFrom(std::size_t part);

    RunState& mRun;
    const PassWork& mSteps;
    std::span<const PartFile> mParts;
};

}  // namespace brenvik
