// brenvik prove: holds the files of an earlier run against the solids of a drawing.
#include <filesystem>
#include <iostream>
#include <memory>
#include <random>
#include <system_error>

#include "cnc/part/run_state.h"
#include "cnc/run/prove_files.h"
#include "commands/all_commands.h"
#include "drawings/drawing_unit.h"
#include "drawings/grid_session.h"
#include "drawings/several_drawings.h"
#include "file_roots/places.h"
#include "home/workplace.h"
#include "reports/run_dialogs.h"
#include "reports/terminal_progress.h"
#include "session/call.h"
#include "shell/drawing_options.h"
#include "shell/target_words.h"

namespace brenvik::app {

namespace {

namespace fs = std::filesystem;

/// Where the folder stands for the system.
constexpr std::string_view ProvedFolder = "c:\\BV-Proof\\";

struct ProveOptions {
    DrawingOptions drawing;
    UnitOption unit;
    std::string folder, target;
    bool fromGrid = false;
    FurtherWords further;
};

/// A place for work drawings, so that neither the files nor those of another run are in danger.
class WorkPlace {
  public:
    WorkPlace()
        : mPath(fs::temp_directory_path() / ("brenvik-prove-" + std::to_string(std::random_device{}()) + "-" +
                                             std::to_string(std::random_device{}()))) {
        fs::create_directory(mPath);
    }
    ~WorkPlace() {
        std::error_code ignored;
        fs::remove_all(mPath, ignored);
    }
    WorkPlace(const WorkPlace&) = delete;
    WorkPlace& operator=(const WorkPlace&) = delete;
    const fs::path& Path() const { return mPath; }

  private:
    fs::path mPath;
};

void RequireFolder(const std::string& folder) {
    std::error_code error;
    if (fs::is_directory(PathFromText(folder), error)) return;
    throw CommandError(ExitStatus::Unreadable,
                       folder + ": expected a folder with the files of a run; there is " +
                           (fs::exists(PathFromText(folder), error) ? "something else" : "none"));
}

FilesOfRun FilesIn(const ProveOptions& options, HostDocument& drawing) {
    FilesOfRun files{std::string(ProvedFolder)};
    if (!options.target.empty()) files.target = static_cast<Target>(FindTarget(options.target)->exportTarget);
    if (options.fromGrid) files.form = RunForm::B;
    const DrawingData& tables = drawing.Tables();
    if (!RunsScaleDrawings()) files.units = HeadUnits{tables.insertUnits, tables.measurement};
    return files;
}

ExitStatus Prove(const HeldHome& home, const ProveOptions& options) {
    RequireFolder(options.folder);
    Teller teller(options.drawing.quiet);
    RunDialogs dialogs(std::cerr);
    dialogs.beforeTelling = [&teller] { teller.Wipe(); };
    const WorkPlace workPlace;
    Workplace workplace(home, dialogs);
    workplace.files.MapFolder(OutputFolder, workPlace.Path());
    workplace.files.MapFolder(ProvedFolder, PathFromText(options.folder));
    const OpenedInput opened = OpenAndSelect(workplace, options.drawing, options.unit, teller);
    const TerminalProgress progress(teller);
    BeginCall(workplace.host);
    const ProvedFiles proved = ProveFiles(workplace.host, FilesIn(options, opened.document));
    teller.Wipe();
    for (const auto* lines : {&proved.report.skipped, &proved.report.unexplained, &proved.report.passedOver})
        for (const std::string& line : *lines) teller.Loss(line);
    if (dialogs.SomethingWentWrong() || !proved.report.complete) teller.MarkIncomplete();
    TellPartTroubles(teller);
    std::cout << proved.parts << " of " << opened.selected << " parts come out of " << options.folder
              << " as they are drawn"
              << (proved.strays == 0 ? ""
                                     : ", but its lists and files are not as the run has left them: " +
                                           std::to_string(proved.strays) +
                                           (proved.strays == 1 ? " difference" : " differences"))
              << "\n";
    return teller.Status();
}

ExitStatus ProveAll(const HeldHome& home, const ProveOptions& options) {
    const SeveralWords words = WordsOf(options.drawing.drawing, options.folder, options.further);
    if (!words.areSeveral) return Prove(home, options);
    RefuseForSeveral(!options.drawing.handles.empty(), "--select");
    const OutputPlaces folders(words.last, words.drawings, "", "folder of files");
    const auto work = [&](std::size_t place) {
        ProveOptions one = options;
        one.drawing.drawing = words.drawings[place];
        one.folder = folders.At(place);
        return Prove(home, one);
    };
    return RunEach(words.drawings, {work, PrintOutput}, options.drawing.quiet);
}

}  // namespace

Command ProveCommand() {
    auto options = std::make_shared<ProveOptions>();
    return {
        "prove",
        "Hold the files of an earlier CNC run against the drawing's solids, and report what differs",
        {options->drawing.DrawingWord(),
         Argument(
             "FOLDER", &options->folder,
             "Where the files lie, those of second sides in 2-sided. Looked at are what they cut, outlines, "
             "sheets, tools, directions, colours and the work lists; not which of the material's bits a "
             "run would choose, the cut into the spoil board, the order of operations and their "
             "counters")
             .Required(),
         options->further.Words(
             ", and behind them, in place of FOLDER, the folder that holds a folder of files "
             "for each, named as the drawing"),
         Argument("--target", &options->target,
                  "The CAM package that they are for, where their names don't say it: " + TargetNames())
             .Checked(CheckTarget)
             .Named("T"),
         Argument("--from-grid", &options->fromGrid,
                  "The run took its parts by way of the grid: equal parts share a file"),
         options->drawing.Select(), options->drawing.Letters(), options->unit.Option(),
         options->drawing.Material(), options->drawing.Quiet()},
        [options](const std::string& home) { return ProveAll(HoldHome(home), *options); },
        {}};
}

}  // namespace brenvik::app
