// The steps are the run's own; only their reports are kept, and the files lie elsewhere.
#include "cnc/run/work_apart.h"

#include <optional>
#include <utility>
#include <vector>

#include "base/skip.h"
#include "cnc/part/run_report.h"
#include "cnc/part/second_side.h"
#include "cnc/run/part_loop.h"
#include "cnc/run/part_result.h"
#include "parts/part_trouble.h"
#include "session/ports/workers_port.h"
#include "session/progress.h"
#include "session/session.h"
#include "settings/bit_in_hand.h"

namespace brenvik {

namespace {

/// Keeps the boxes of a part. Whoever has something to answer isn't here.
class KeptDialogs : public DialogPort {
  public:
    void ShowModal(Form&) override { asked = true; }
    MessageAnswer Show(const MessageRequest& request) override {
        if (request.buttons != MessageButtons::Ok) asked = true;
        boxes.push_back(request);
        return MessageAnswer::Ok;
    }
    std::optional<std::string> ChooseFile(const FileRequest&) override {
        asked = true;
        return std::nullopt;
    }
    void DoEvents() override {}

    bool asked = false;
    std::vector<MessageRequest> boxes;
};

}  // namespace

std::array<std::string, 2> LentFilesOf(const PartFile& part) {
    return {part.FirstSidePath(), part.SecondSidePath()};
}

std::string SkippedFor(const PartFile& part, const std::string& how) {
    return "The part " + part.label + " was skipped: " + how + ".";
}

bool HasFlagsOfSecondSide(const RunState& run) { return NeedsOtherSide(run) || run.part.ThroughRouteSeen; }

std::string WorkOnPartApart(RunState& run, const PassWork& steps, std::span<const PartFile> parts,
                            std::size_t part, WorkersPort& workers) {
    PartResult result;
    KeptDialogs dialogs;
    ThePlatform().dialogs = &dialogs;
    ObserveRuns(nullptr);
    ShowProgressBy(nullptr);
    const std::array<std::string, 2> lent = LentFilesOf(parts[part]);
    workers.WorkApart(OutputFolder, part, lent);
    run.report = {};
    TakePartTroubles();
    PassWork apart = steps;
    apart.addListLine = [&](RunState& worked) { result.lines.push_back(steps.takeListLine(worked)); };
    // The run looks whether the parts before it have left any.
    CancelOtherSide(run);
    bool goesOn = false;
    // Of files, as all others are reported: in the real folder the same may go another way.
    Skip([&] { goesOn = PartLoop(run, apart, parts).WorkOn(part); });
    result.isForTheRun = !goesOn || dialogs.asked || HasUsedBitOfEarlierPart() || HasFlagsOfSecondSide(run);
    if (HasBitOfItsOwn()) result.bits = run.part.bits;
    if (!Skip([&] { result.files = workers.MadeApart(OutputFolder, lent); })) result.isForTheRun = true;
    result.boxes = std::move(dialogs.boxes);
    result.report = std::move(run.report);
    result.troubles = TakePartTroubles();
    return PackResult(result);
}

}  // namespace brenvik
