// A worker does a part as the run itself would, in a folder of its own, and keeps its reports. The run takes
// the parts in their order, so files, lists and messages don't show which process made them.
#include "cnc/run/spread_parts.h"

#include <utility>

#include "base/failure.h"
#include "cnc/part/run_report.h"
#include "cnc/run/part_result.h"
#include "cnc/run/work_apart.h"
#include "parts/part_trouble.h"
#include "session/message.h"
#include "session/module_state.h"
#include "session/ports/workers_port.h"
#include "session/progress.h"
#include "session/session.h"

namespace brenvik {

namespace {

struct RunWorkers {
    WorkersPort* port = nullptr;
};

/// The run as a worker and as the one who takes the parts see it.
class SpreadRun {
  public:
    SpreadRun(RunState& runState, const PassWork& passWork, std::span<const PartFile> partFiles,
              WorkersPort& workersPort)
        : mRun(runState),
          mSteps(passWork),
          mParts(partFiles),
          mLoop(runState, passWork, partFiles),
          mWorkers(workersPort) {}

    ~SpreadRun() {
        for (; mTaken < mParts.size(); ++mTaken) mWorkers.Discard(OutputFolder, mTaken);
    }
    SpreadRun(const SpreadRun&) = delete;
    SpreadRun& operator=(const SpreadRun&) = delete;

    PartsEnd Work() {
        mWorkers.Spread(
            {mParts.size(),
             [this](std::size_t part) { return WorkOnPartApart(mRun, mSteps, mParts, part, mWorkers); },
             [this](std::size_t part, const WorkerEnd& end) {
                 mTaken = part;
                 if (!mProgress.Next(mParts[part].label)) {
                     mLoop.CancelAt(part);
                     mEnd = PartsEnd::Cancelled;
                 } else if (!Take(part, end)) {
                     mEnd = PartsEnd::EndedByPart;
                 }
                 return mEnd == PartsEnd::Whole;
             }});
        return mEnd;
    }

  private:
    /// Takes what came of a part into the run.
    bool Take(std::size_t part, const WorkerEnd& end) {
        detail::TellRunObserver(
            {static_cast<int>(part) + 1, static_cast<int>(mParts.size()), false, mParts[part].label});
        if (end.kind == WorkerEnd::Kind::Broken) {
            Drop(part, end.text);
            return true;
        }
        PartResult result;
        if (end.kind == WorkerEnd::Kind::Done) result = UnpackResult(end.text);
        const bool isForTheRun =
            result.isForTheRun || HasFlagsOfSecondSide(mRun) || end.kind == WorkerEnd::Kind::Talked;
        if (isForTheRun || !mWorkers.TakeOver(OutputFolder, part, LentFilesOf(mParts[part]), result.files)) {
            mWorkers.Discard(OutputFolder, part);
            return mLoop.WorkOn(part);
        }
        WriteLines(part, result.lines);
        for (const MessageRequest& box : result.boxes) ThePlatform().dialogs->Show(box);
        AddReport(mRun.report, result.report);
        for (const PartTrouble& trouble : result.troubles) NotePartTrouble(trouble);
        if (result.bits) mRun.part.bits = *result.bits;
        return true;
    }

    void WriteLines(std::size_t part, const std::vector<ListLine>& lines) {
        try {
            for (const ListLine& line : lines) mSteps.writeListLine(mRun, line);
        } catch (const Failure&) {
            mLoop.EndAt(part);
            throw;
        }
    }

    /// Nobody knows how far its files have come.
    void Drop(std::size_t part, const std::string& how) {
        mWorkers.Discard(OutputFolder, part);
        RemovePartFiles(mParts[part]);
        mRun.report.unexplained.push_back(SkippedFor(mParts[part], how));
    }

    RunState& mRun;
    const PassWork& mSteps;
    std::span<const PartFile> mParts;
    PartLoop mLoop;
    WorkersPort& mWorkers;
    Progress mProgress{{ProgressOfRun, static_cast<int>(mParts.size()), true}};
    std::size_t mTaken = 0;
    PartsEnd mEnd = PartsEnd::Whole;
};

}  // namespace

void SpreadRuns(WorkersPort* workers) { StateOf<RunWorkers>().port = workers; }

WorkersPort* WorkersOfRuns() { return StateOf<RunWorkers>().port; }

PartsEnd WorkOnPartsSpread(RunState& run, const PassWork& steps, std::span<const PartFile> parts) {
    WorkersPort* workers = WorkersOfRuns();
    if (workers == nullptr || workers->ProcessesFor(parts.size()) < 2)
        return PartLoop(run, steps, parts).WorkOnAll(ProgressOfRun);
    return SpreadRun(run, steps, parts, *workers).Work();
}

}  // namespace brenvik
