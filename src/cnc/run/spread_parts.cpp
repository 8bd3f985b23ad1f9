// A worker does a part as the run itself would, in a folder of its own, and keeps its reports. The run takes
// the parts in their order, so files, lists and messages don't show which process made them.
#include "cnc/run/spread_parts.h"

#include <array>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "base/text.h"
#include "cnc/part/run_report.h"
#include "cnc/run/part_result.h"
#include "cnc/run/work_apart.h"
#include "parts/part_trouble.h"
#include "session/message.h"
#include "session/module_state.h"
#include "session/ports/files_port.h"
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
        EndingAt(mTaken, [this] { WriteWaiting(); });
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
            EndingAt(part, [this] { WriteWaiting(); });
            return mLoop.WorkOn(part);
        }
        EndingAt(part, [&] {
            for (const ListLine& line : result.lines) Await(line);
        });
        for (const MessageRequest& box : result.boxes) ThePlatform().dialogs->Show(box);
        AddReport(mRun.report, result.report);
        for (const PartTrouble& trouble : result.troubles) NotePartTrouble(trouble);
        if (result.bits) mRun.part.bits = *result.bits;
        return true;
    }

    /// A failure ends the run at the part.
    void EndingAt(std::size_t part, const std::function<void()>& writeLines) {
        try {
            writeLines();
        } catch (const Failure&) {
            mLoop.EndAt(part);
            throw;
        }
    }

    /// A list is written as a whole each time, so that its lines wait for each other. The first one doesn't:
    /// where no list can be written the run ends with it.
    void Await(const ListLine& line) {
        constexpr std::size_t most = 64;
        Waiting& waiting = mWaiting[line.secondSide ? 1 : 0];
        waiting.lines.push_back(line.text);
        if (waiting.lines.size() >= most || !std::exchange(waiting.hasBegun, true)) WriteWaiting();
    }

    void WriteWaiting() {
        const std::string lineEnd(ThePlatform().files->LineEnd());
        for (const bool secondSide : {false, true})
            if (Waiting& waiting = mWaiting[secondSide ? 1 : 0]; !waiting.lines.empty())
                mSteps.writeListLine(mRun, {secondSide, Join(std::exchange(waiting.lines, {}), lineEnd)});
    }

    /// Nobody knows how far its files have come.
    void Drop(std::size_t part, const std::string& how) {
        mWorkers.Discard(OutputFolder, part);
        RemovePartFiles(mParts[part]);
        mRun.report.unexplained.push_back(SkippedFor(mParts[part], how));
    }

    /// Lines of a list that aren't written yet.
    struct Waiting {
        std::vector<std::string> lines;
        bool hasBegun = false;
    };

    RunState& mRun;
    const PassWork& mSteps;
    std::span<const PartFile> mParts;
    PartLoop mLoop;
    WorkersPort& mWorkers;
    Progress mProgress{{ProgressOfRun, static_cast<int>(mParts.size()), true}};
    std::array<Waiting, 2> mWaiting;
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
