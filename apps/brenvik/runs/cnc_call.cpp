// The run goes through the very commands that a host has for it.
#include "runs/cnc_call.h"

#include <charconv>
#include <filesystem>
#include <iostream>
#include <optional>
#include <system_error>

#include "base/letter_case.h"
#include "base/text.h"
#include "cnc/output/output_claim.h"
#include "cnc/part/run_state.h"
#include "cnc/proof/run_proof.h"
#include "cnc/run/run_set_up.h"
#include "cnc/run/run_share.h"
#include "cnc/run/spread_parts.h"
#include "console/console_dialogs.h"
#include "drafting_host/document/files/reading_processors.h"
#include "drawings/grid_session.h"
#include "drawings/output_folder.h"
#include "export/frm_export.h"
#include "file_roots/places.h"
#include "forms/grid_control.h"
#include "home/workplace.h"
#include "reports/run_dialogs.h"
#include "reports/run_teller.h"
#include "runs/part_workers.h"
#include "runs/share_text.h"
#include "session/library/brenvik_class.h"
#include "shell/shell_word.h"
#include "shell/target_words.h"
#include "workers/processors.h"

namespace brenvik::app {

namespace {

namespace fs = std::filesystem;

/// A run begins by emptying its output folders, so one that holds other files is refused.
constexpr OutputFolderRule FolderOfRuns{RunEmpties, "which is from no run", IsFileOfARun};

/// Says where the files go, and gives the folder as it is now.
SeenFolder MapOutput(Workplace& workplace, const CncOptions& options) {
    const fs::path drawing = PathFromText(options.drawing.drawing);
    if (options.out.empty()) {
        SeenFolder seen(workplace.files.Resolve(OutputFolder));
        for (const std::string_view folder : {OutputFolder, SecondSideFolder})
            RequireFolderWithoutDrawing(workplace.files.Resolve(folder), drawing, FolderOfRuns);
        return seen;
    }
    const fs::path folder = PathFromText(options.out);
    SeenFolder seen(folder);
    RequireOwnFolder(folder, options.out, drawing, FolderOfRuns);
    for (const fs::path& second : SecondSideFoldersIn(folder))
        RequireOwnFolder(second, options.out + "/" + TextFromPath(second.filename()), drawing, FolderOfRuns);
    workplace.files.MapFolder(OutputFolder, folder);
    return seen;
}

/// What a user does who exports the whole list to a target.
void ExportFromGrid(Form& form, const TargetDriver& driver) {
    if (auto* dialog = dynamic_cast<frmExport*>(&form)) {
        dialog->chkSave.SetValue(0);
        dialog->chkChooseCSV.SetValue(0);
        dialog->chkReduce.SetValue(0);
        dialog->cboExportType.SetListIndex(FirstCncExportType + driver.exportTarget - 1);
        dialog->Get<Control>("cmdGo").Press();
    } else if (form.Name() == "frmMain") {
        form.Get<ToolbarControl>("tbMain").PressKey("EXPORT");
    }
}

std::size_t NumberIn(std::string_view digits) {
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return error == std::errc() && end == digits.data() + digits.size() ? number : 0;
}

/// The share that a call is to do, kept in its folder when it is done.
class ShareOfCall {
  public:
    ShareOfCall(const HeldHome& home, const CncOptions& cncOptions, FileRoots& files, WorkersPort& workers)
        : mOptions(cncOptions) {
        if (mOptions.shard.empty()) return;
        const HeadAndTail words = SplitAtFirst(mOptions.shard, '/');
        mShare.number = NumberIn(words.head);
        mShare.of = NumberIn(words.tail);
        if (mOptions.out.empty())
            throw CommandError(ExitStatus::WrongWords,
                               "--shard: expected a folder for the share, with --out");
        RequireNoOtherShare();
        // A home that was new a moment ago has its settings by now.
        mJob = JobOf(home.settings ? home : HoldHome(home.option), mOptions, mShare.of);
        mShare.workers = &workers;
        mShare.keep = [this, &files](const SharedParts& parts) { Keep(files, parts); };
        RunOnlyShare(&mShare);
    }
    ~ShareOfCall() { RunOnlyShare(nullptr); }
    ShareOfCall(const ShareOfCall&) = delete;
    ShareOfCall& operator=(const ShareOfCall&) = delete;

    /// Where a process can't be copied, no part can be worked on apart from the others.
    void RequireProcesses() const {
        if (!mOptions.shard.empty() && !IsAloneInItsProcess())
            throw CommandError(ExitStatus::Incomplete,
                               "--shard: expected a system on which this process can be copied");
    }

    void Tell(Teller& teller) const {
        if (!mKept) return;
        teller.Remark("share " + mOptions.shard + ": " + std::to_string(mMine) + " of " +
                      std::to_string(mKept->partsOfRun) + " parts; brenvik join puts the shares together");
        if (mLeft > 0)
            teller.Remark(std::to_string(mLeft) + (mLeft == 1 ? " part of it is" : " parts of it are") +
                          " left to join, which knows the parts ahead of them");
    }

  private:
    /// The second share in one folder would take the first one away.
    void RequireNoOtherShare() const {
        const std::optional<Share> there = ShareIfAny(mOptions.out);
        if (!there || (there->number == mShare.number && there->of == mShare.of)) return;
        throw CommandError(ExitStatus::WrongWords,
                           "--out: " + mOptions.out + " holds share " + std::to_string(there->number) + "/" +
                               std::to_string(there->of) + "; choose a folder for each share");
    }

    void Keep(FileRoots& files, const SharedParts& parts) {
        WriteShare(files, {mShare.number, mShare.of, mJob, parts});
        mKept.emplace().partsOfRun = parts.partsOfRun;
        mMine = parts.parts.size();
        for (const SharedPart& part : parts.parts) mLeft += part.end.kind == WorkerEnd::Kind::Talked ? 1 : 0;
    }

    const CncOptions& mOptions;
    RunShare mShare;
    ShareJob mJob;
    std::optional<SharedParts> mKept;
    std::size_t mMine = 0, mLeft = 0;
};

}  // namespace

std::string CheckShare(std::string& word) {
    constexpr std::size_t most = 10000;
    const HeadAndTail words = SplitAtFirst(word, '/');
    const std::size_t number = NumberIn(words.head), of = NumberIn(words.tail);
    if (number < 1 || of < number || of > most)
        return "expected a share and the number of shares, as in 2/4, " + std::to_string(most) +
               " at most; found " + word;
    word = std::to_string(number) + "/" + std::to_string(of);
    return {};
}

ExitStatus CallCnc(const HeldHome& home, const CncOptions& options, const GivenToRun& given) {
    const TargetDriver& driver = *FindTarget(options.target);
    Teller teller(options.drawing.quiet);
    RunDialogs dialogs(std::cerr);
    dialogs.beforeTelling = [&teller] { teller.Wipe(); };
    Workplace workplace(home, dialogs);
    const SeenFolder seen = MapOutput(workplace, options);
    const CareInForce care(given.care ? *given.care
                                      : OutputCare{.mayEmpty = [&seen] { return seen.WhatIsNew(); }});
    SetProof(!options.noProof);
    ReadBodiesOn(options.jobs.empty() ? ProcessorsToUse() : std::stoi(options.jobs));
    const std::unique_ptr<WorkersPort> workers =
        given.workers ? given.workers(workplace.files)
                      : std::make_unique<PartWorkers>(workplace.files, workplace.host.Written(),
                                                      options.jobs.empty() ? 0 : std::stoi(options.jobs));
    SpreadRuns(workers.get());
    const ShareOfCall share(home, options, workplace.files, *workers);
    const OpenedInput opened = OpenAndSelect(workplace, options.drawing, options.unit, teller);
    share.RequireProcesses();
    RemarkOnDoubles(opened.document, options.drawing, teller);
    const std::size_t notes = opened.document.Notes().size();
    const RunTeller runs(teller, {.programWords = ProgramWords(home.option),
                                  .takeTrouble = [&dialogs] { return dialogs.TakeTrouble(); }});
    if (options.fromGrid)
        WhileGridIsOpen(workplace.host, dialogs, [&](Form& form) { ExportFromGrid(form, driver); });
    else
        cBrenvik().Call(driver.method, workplace.host);
    teller.Wipe();
    TellNotesSince(notes, opened.document, options.drawing.drawing, teller);
    TellPartTroubles(teller);
    TellDroppedParts(teller);
    TellExportTroubles(teller);
    if (dialogs.SomethingWentWrong()) teller.MarkIncomplete();
    if (runs.Runs() == 0 && teller.Status() == ExitStatus::Done) teller.Loss("the run did not begin");
    share.Tell(teller);
    return teller.Status();
}

}  // namespace brenvik::app
