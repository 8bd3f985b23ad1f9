// A share's parts go through the workers as those of any run that is spread. What can't be known without the
// parts before it, or needs an answer, is left to the run that has them all.
#include "cnc/run/run_share.h"

#include <algorithm>
#include <numeric>
#include <optional>

#include "base/sha256.h"
#include "base/skip.h"
#include "cnc/part/run_report.h"
#include "cnc/run/part_result.h"
#include "cnc/run/work_apart.h"
#include "parts/part_trouble.h"
#include "session/module_state.h"
#include "session/ports/files_port.h"
#include "session/progress.h"
#include "session/session.h"

namespace brenvik {

namespace {

struct ShareInUse {
    const RunShare* share = nullptr;
};

std::string DigestOf(const std::string& path) { return Sha256(ThePlatform().files->ReadFile(path)); }

class ShareWork {
  public:
    ShareWork(RunState& runState, const PassWork& passWork, std::span<const PartFile> partFiles,
              const RunShare& runShare)
        : mRun(runState), mSteps(passWork), mParts(partFiles), mShare(runShare), mDone{partFiles.size(), {}} {
        TakeMine();
    }

    ~ShareWork() {
        for (const SharedPart& mine : mDone.parts) {
            mShare.workers->Discard(OutputFolder, mine.part);
            RemovePartFiles(mParts[mine.part]);
        }
    }
    ShareWork(const ShareWork&) = delete;
    ShareWork& operator=(const ShareWork&) = delete;

    void Work() {
        Progress progress({ProgressOfRun, static_cast<int>(mDone.parts.size())});
        mShare.workers->Spread({mDone.parts.size(),
                                [this](std::size_t place) {
                                    return WorkOnPartApart(mRun, mSteps, mParts, mDone.parts[place].part,
                                                           *mShare.workers);
                                },
                                [&](std::size_t place, const WorkerEnd& end) {
                                    progress.Next(mParts[mDone.parts[place].part].label);
                                    Take(mDone.parts[place], end);
                                    return true;
                                }});
        mShare.keep(mDone);
    }

  private:
    /// The parts of this share; the drawings of the others go.
    void TakeMine() {
        std::vector<std::size_t> weights;
        std::vector<std::string> digests;
        for (const PartFile& part : mParts) {
            std::string drawing;
            // One that has vanished meanwhile is reported by the work on it.
            Skip([&] { drawing = ThePlatform().files->ReadFile(part.FirstSidePath()); });
            weights.push_back(drawing.size());
            digests.push_back(Sha256(drawing));
        }
        const std::vector<std::size_t> dealt = DealParts(weights, mShare.of);
        for (std::size_t part = 0; part < mParts.size(); ++part) {
            if (dealt[part] + 1 == mShare.number)
                mDone.parts.push_back({part, digests[part], {}, {}});
            else
                RemovePartFiles(mParts[part]);
        }
    }

    /// The share reports on its parts what a run reports on all.
    void Take(SharedPart& mine, const WorkerEnd& end) {
        detail::TellRunObserver({static_cast<int>(mine.part) + 1, static_cast<int>(mParts.size()), false,
                                 mParts[mine.part].label});
        mine.end = end;
        if (end.kind == WorkerEnd::Kind::Broken)
            mRun.report.unexplained.push_back(SkippedFor(mParts[mine.part], end.text));
        if (end.kind != WorkerEnd::Kind::Done || !TakeDone(mine, UnpackResult(end.text))) Leave(mine);
    }

    bool TakeDone(SharedPart& mine, const PartResult& result) {
        const auto lent = LentFilesOf(mParts[mine.part]);
        if (result.isForTheRun || !mShare.workers->TakeOver(OutputFolder, mine.part, lent, result.files))
            return false;
        const bool known = Skip([&] {
            for (const std::string& file : result.files)
                mine.digests.push_back(DigestOf(std::string(OutputFolder) + file));
        });
        if (!known) return false;
        for (const MessageRequest& box : result.boxes) ThePlatform().dialogs->Show(box);
        AddReport(mRun.report, result.report);
        for (const PartTrouble& trouble : result.troubles) NotePartTrouble(trouble);
        return true;
    }

    /// Its work doesn't count, unless it is known that no process comes through it.
    void Leave(SharedPart& mine) const {
        if (mine.end.kind == WorkerEnd::Kind::Done) mine.end = {WorkerEnd::Kind::Talked, {}};
        if (mine.end.kind == WorkerEnd::Kind::Talked) mine.end.text.clear();
        mine.digests.clear();
        mShare.workers->Discard(OutputFolder, mine.part);
        RemovePartFiles(mParts[mine.part]);
    }

    RunState& mRun;
    const PassWork& mSteps;
    std::span<const PartFile> mParts;
    const RunShare& mShare;
    SharedParts mDone;
};

}  // namespace

void RunOnlyShare(const RunShare* share) { StateOf<ShareInUse>().share = share; }

const RunShare* ShareOfRuns() { return StateOf<ShareInUse>().share; }

std::vector<std::size_t> DealParts(std::span<const std::size_t> weights, std::size_t shares) {
    std::vector<std::size_t> order(weights.size()), dealt(weights.size()), load(shares);
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, std::ranges::greater{}, [&](std::size_t part) { return weights[part]; });
    for (const std::size_t part : order) {
        const auto least = std::ranges::min_element(load);
        *least += weights[part];
        dealt[part] = static_cast<std::size_t>(least - load.begin());
    }
    return dealt;
}

void WorkOnShare(RunState& run, const PassWork& steps, std::span<const PartFile> parts,
                 const RunShare& share) {
    ShareWork(run, steps, parts, share).Work();
}

}  // namespace brenvik
