// brenvik cnc: one CNC run over the solids of a drawing, through the very commands that a host has for it.
#include <charconv>
#include <filesystem>
#include <iostream>
#include <memory>
#include <system_error>

#include "base/letter_case.h"
#include "base/text.h"
#include "cnc/output/output_claim.h"
#include "cnc/part/run_state.h"
#include "cnc/proof/run_proof.h"
#include "cnc/run/run_set_up.h"
#include "cnc/run/spread_parts.h"
#include "commands/part_workers.h"
#include "console/console_dialogs.h"
#include "drawings/drawing_unit.h"
#include "drawings/grid_session.h"
#include "drawings/output_folder.h"
#include "export/frm_export.h"
#include "file_roots/places.h"
#include "forms/grid_control.h"
#include "home/workplace.h"
#include "reports/run_dialogs.h"
#include "reports/run_teller.h"
#include "session/library/brenvik_class.h"
#include "shell/command_line.h"
#include "shell/shell_word.h"
#include "shell/target_words.h"

namespace brenvik::app {

namespace {

namespace fs = std::filesystem;

struct CncOptions {
    DrawingOptions drawing;
    UnitOption unit;
    std::string target, out, jobs;
    bool fromGrid = false, noProof = false;
};

/// A run begins by emptying its output folders, so one that holds other files is refused.
constexpr OutputFolderRule FolderOfRuns{RunEmpties, "which is from no run", IsFileOfARun};

/// The folder of second sides, in whatever case it is there.
std::vector<std::string> SecondSideFoldersIn(const fs::path& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const std::string name = TextFromPath(entry->path().filename());
        if (EqualsIgnoreCase(name, "2-sided")) names.push_back(name);
    }
    return names;
}

void MapOutput(Workplace& workplace, const CncOptions& options) {
    const fs::path drawing = PathFromText(options.drawing.drawing);
    if (options.out.empty()) {
        for (const std::string_view folder : {OutputFolder, SecondSideFolder})
            RequireFolderWithoutDrawing(workplace.files.Resolve(folder), drawing, FolderOfRuns);
        return;
    }
    const fs::path folder = PathFromText(options.out);
    RequireOwnFolder(folder, options.out, drawing, FolderOfRuns);
    for (const std::string& name : SecondSideFoldersIn(folder))
        RequireOwnFolder(folder / PathFromText(name), options.out + "/" + name, drawing, FolderOfRuns);
    workplace.files.MapFolder(OutputFolder, folder);
}

/// The number without leading zeros, or what was expected.
std::string CheckJobs(std::string& word) {
    constexpr int most = 4096;
    int jobs = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), jobs);
    if (error != std::errc() || end != word.data() + word.size() || jobs < 1 || jobs > most)
        return "expected a number of processes from 1 to " + std::to_string(most) + "; found " + word;
    word = std::to_string(jobs);
    return {};
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

ExitStatus Cnc(const HeldHome& home, const CncOptions& options) {
    const TargetDriver& driver = *FindTarget(options.target);
    Teller teller(options.drawing.quiet);
    RunDialogs dialogs(std::cerr);
    dialogs.beforeTelling = [&teller] { teller.Wipe(); };
    Workplace workplace(home, dialogs);
    MapOutput(workplace, options);
    SetProof(!options.noProof);
    PartWorkers workers(workplace.files, workplace.host.Written(),
                        options.jobs.empty() ? 0 : std::stoi(options.jobs));
    SpreadRuns(&workers);
    const OpenedInput opened = OpenAndSelect(workplace, options.drawing, options.unit, teller);
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
    return teller.Status();
}

}  // namespace

Command CncCommand() {
    auto options = std::make_shared<CncOptions>();
    return {
        "cnc",
        "Write a DXF file per part and side, and a work list, for a CNC target",
        {options->drawing.DrawingWord(),
         Argument("--target", &options->target, "The CAM package: " + TargetNames() + "; in any case")
             .Required()
             .Checked(CheckTarget)
             .Named("T"),
         Argument("--out", &options->out,
                  "Where the files go, instead of drive_c/BV-DXF in the install folder; the run empties the "
                  "folder first")
             .Named("DIR"),
         Argument(
             "--from-grid", &options->fromGrid,
             "Take the parts by way of the grid, so that identical parts become one file and a quantity"),
         Argument("--jobs", &options->jobs,
                  "How many processes share the parts. Unless it is given: one for each processor, and one "
                  "for a run of few parts. The files and messages are the same")
             .Checked(CheckJobs)
             .Named("N"),
         Argument("--no-proof", &options->noProof, std::string(NoProofHelp)), options->drawing.Select(),
         options->drawing.Letters(), options->unit.Option(), options->drawing.Material(),
         options->drawing.Quiet()},
        [options](const std::string& home) { return Cnc(HoldHome(home), *options); },
        {}};
}

}  // namespace brenvik::app
