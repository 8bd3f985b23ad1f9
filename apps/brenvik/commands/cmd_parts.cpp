// brenvik parts: one drawing for each solid, through the very command that a host has for it.
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>

#include "base/letter_case.h"
#include "commands/all_commands.h"
#include "drawings/drawing_io.h"
#include "drawings/drawing_unit.h"
#include "drawings/grid_session.h"
#include "drawings/output_folder.h"
#include "file_roots/places.h"
#include "home/workplace.h"
#include "reports/run_dialogs.h"
#include "session/library/brenvik_class.h"
#include "shell/drawing_options.h"
#include "tools/part_export.h"
#include "tools/part_export_files.h"

namespace brenvik::app {

namespace {

namespace fs = std::filesystem;

struct PartsOptions {
    DrawingOptions drawing;
    UnitOption unit;
    std::string out;
};

/// The export begins by emptying its folder, so one that holds other files is refused.
constexpr OutputFolderRule FolderOfExports{PartExportEmpties, "which is from no export", IsFileOfAnExport};

/// Says where the drawings go, and gives the folder as it is now.
SeenFolder MapOutput(Workplace& workplace, const PartsOptions& options) {
    const fs::path drawing = PathFromText(options.drawing.drawing);
    if (options.out.empty()) {
        SeenFolder seen(workplace.files.Resolve(PartExportFolder));
        RequireFolderWithoutDrawing(workplace.files.Resolve(PartExportFolder), drawing, FolderOfExports);
        return seen;
    }
    const fs::path folder = PathFromText(options.out);
    SeenFolder seen(folder);
    RequireOwnFolder(folder, options.out, drawing, FolderOfExports);
    workplace.files.MapFolder(PartExportFolder, folder);
    return seen;
}

/// The names of the finished drawings, a line each.
std::size_t ListWritten() {
    std::vector<std::string> names = LastPartExport().written;
    std::ranges::sort(names, LessIgnoreCase());
    for (const std::string& name : names) std::cout << name << '\n';
    return names.size();
}

ExitStatus Parts(const HeldHome& home, const PartsOptions& options) {
    Teller teller(options.drawing.quiet);
    RunDialogs dialogs(std::cerr);
    dialogs.beforeTelling = [&teller] { teller.Wipe(); };
    Workplace workplace(home, dialogs);
    const SeenFolder seen = MapOutput(workplace, options);
    const CareInForce care({.mayEmpty = [&seen] { return seen.WhatIsNew(); }});
    const OpenedInput opened = OpenAndSelect(workplace, options.drawing, options.unit, teller);
    RemarkOnDoubles(opened.document, options.drawing, teller);
    const std::size_t notes = opened.document.Notes().size();
    teller.Progress("writing " + std::to_string(opened.selected) + " parts");
    cBrenvik().Call("BVExportDWG", workplace.host);
    teller.Wipe();
    TellNotesSince(notes, opened.document, options.drawing.drawing, teller);
    TellPartTroubles(teller);
    if (dialogs.SomethingWentWrong()) teller.MarkIncomplete();
    const std::size_t written = ListWritten();
    if (written < opened.selected)
        teller.Loss(std::to_string(opened.selected - written) + " of " + std::to_string(opened.selected) +
                    " parts have no drawing");
    return teller.Status();
}

}  // namespace

Command PartsCommand() {
    auto options = std::make_shared<PartsOptions>();
    return {"parts",
            "Write one drawing for each solid, turned by its letters, and print their names",
            {options->drawing.DrawingWord(),
             Argument("--out", &options->out,
                      "Where the drawings go, instead of drive_c/BV-DWG in the install folder; the export "
                      "empties the folder first")
                 .Named("DIR"),
             options->drawing.Select(), options->drawing.Letters(), options->unit.Option(),
             options->drawing.Material(), options->drawing.Quiet()},
            [options](const std::string& home) { return Parts(HoldHome(home), *options); },
            {}};
}

}  // namespace brenvik::app
