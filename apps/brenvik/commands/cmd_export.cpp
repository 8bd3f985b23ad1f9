// brenvik export: the list of a drawing as a CSV file, through the very forms that the desktop shows.
#include <cctype>
#include <filesystem>
#include <iostream>
#include <memory>

#include "base/failure.h"
#include "commands/all_commands.h"
#include "commands/list_choice_options.h"
#include "console/console_dialogs.h"
#include "drawings/drawing_io.h"
#include "drawings/drawing_unit.h"
#include "drawings/grid_session.h"
#include "drawings/several_drawings.h"
#include "export/export_options.h"
#include "file_roots/places.h"
#include "forms/grid_control.h"
#include "home/workplace.h"
#include "parts/part_trouble.h"
#include "reports/run_dialogs.h"
#include "reports/terminal_progress.h"
#include "shell/drawing_options.h"

namespace brenvik::app {

namespace {

struct ExportOptions {
    DrawingOptions drawing;
    UnitOption unit;
    ListChoiceOptions choices;
    CsvExportChoices csv;
    FurtherWords further;
};

/// A refused option is a wrong word; everything else comes from a file that can't be read.
bool ExportGrid(const CsvExportChoices& csv) {
    try {
        return ExportToCsv(csv);
    } catch (const Failure& failure) {
        if (failure.number() == failure_number::InvalidCall)
            throw CommandError(ExitStatus::WrongWords, "--" + failure.description());
        const std::string& file = failure.detail().empty() ? csv.adjustments : failure.detail();
        throw CommandError(ExitStatus::Unreadable, file + ": " + failure.description());
    }
}

/// Opens the grid form, brings it to show what is wanted, and exports it. Returns whether the export went to
/// its end.
bool ScanAndExport(HostApplication& host, ConsoleDialogs& dialogs, const ListChoices& choices,
                   const CsvExportChoices& csv, Teller& teller) {
    bool exported = false;
    WhileGridIsOpen(host, dialogs, [&](Form& form) {
        if (dialogs.MessagesShown() > 0) teller.MarkIncomplete();
        const auto rows = [&form] {
            const auto& grid = form.Get<DataControl>("Adodc1");
            return grid.Records() ? static_cast<std::size_t>(grid.Records()->RecordCount()) : 0;
        };
        const std::size_t parts = rows();
        ApplyOnGrid(choices);
        RemarkOnNoParts(choices, parts, rows(), teller);
        exported = ExportGrid(csv);
    });
    return exported;
}

/// Whoever names two drawings and forgets OUT would have the second one written over by a list.
void RequireNameOfAList(const std::string& name) {
    if (!IsDrawingName(name)) return;
    throw CommandError(ExitStatus::WrongWords,
                       name +
                           ": expected a name for a CSV file, found the ending of a drawing; brenvik convert "
                           "writes drawings");
}

/// Before anything is read or written: the list must not take the place of what it is made from.
void RequireOwnFile(Workplace& workplace, const ExportOptions& options) {
    KeepDrawing(workplace.kept, options.drawing);
    if (!options.csv.adjustments.empty())
        workplace.kept.Keep(workplace.files.Resolve(options.csv.adjustments), "the adjustment file");
    workplace.kept.RequireFree(workplace.files.Resolve(options.csv.path), OutputKind::List, options.csv.path);
}

/// "K:12.csv" is a job's number to one and a drive to the system, whose drives are folders of the home here.
void RemarkOnDrive(Workplace& workplace, const std::string& name, Teller& teller) {
    const bool namesDrive =
        name.size() > 1 && name[1] == ':' && std::isalpha(static_cast<unsigned char>(name.front())) != 0;
    if (namesDrive && std::filesystem::path::preferred_separator != '\\')
        teller.Remark(name + " is on a drive, and was written to " +
                      TextFromPath(workplace.files.Resolve(name)));
}

void TellAboutList(Teller& teller) {
    TellPartTroubles(teller);
    TellDroppedParts(teller);
    TellExportTroubles(teller);
}

ExitStatus Export(const HeldHome& home, const ExportOptions& options) {
    const ListChoices choices = options.choices.Parse();
    Teller teller(options.drawing.quiet);
    RemarkOnTextOrder(choices, teller);
    RemarkOnGaps(choices, teller);
    RunDialogs dialogs(std::cerr);
    dialogs.beforeTelling = [&teller] { teller.Wipe(); };
    Workplace workplace(home, dialogs);
    RequireOwnFile(workplace, options);
    RequireNameOfAList(options.csv.path);
    const auto [document, selected] = OpenAndSelect(workplace, options.drawing, options.unit, teller);
    RemarkOnLumps(document, options.drawing, teller);
    RemarkOnDoubles(document, options.drawing, teller);
    const TerminalProgress progress(teller);
    // The list's losses are reported before the box that calls it complete.
    dialogs.beforeExportComplete = [&teller] { TellAboutList(teller); };
    const bool exported = ScanAndExport(workplace.host, dialogs, choices, options.csv, teller);
    // Where no list was written, its cells are no matter.
    if (!exported) TakePartTroubles();
    TellAboutList(teller);
    if (dialogs.SomethingWentWrong()) teller.MarkIncomplete();
    if (exported)
        RemarkOnDrive(workplace, options.csv.path, teller);
    else
        teller.Loss(options.csv.path + ": the list was not exported");
    return teller.Status();
}

ExitStatus ExportAll(const HeldHome& home, const ExportOptions& options) {
    const SeveralWords words = WordsOf(options.drawing.drawing, options.csv.path, options.further);
    if (!words.areSeveral) return Export(home, options);
    RefuseForSeveral(!options.drawing.handles.empty(), "--select");
    const OutputPlaces outputs(words.last, words.drawings, ".csv");
    MakeOutputFolder(words.last);
    const auto work = [&](std::size_t place) {
        ExportOptions one = options;
        one.drawing.drawing = words.drawings[place];
        one.csv.path = outputs.At(place);
        return Export(home, one);
    };
    return RunEach(words.drawings, {work, PrintOutput}, options.drawing.quiet);
}

}  // namespace

Command ExportCommand() {
    auto options = std::make_shared<ExportOptions>();
    return {
        "export",
        "Export the cut list of a drawing to a CSV file",
        {options->drawing.DrawingWord(),
         Argument("OUT", &options->csv.path, "The CSV file to write; one that exists is written over")
             .Required(),
         options->further.Words(", and behind them, in place of OUT, the folder for their lists"),
         Argument("--profile", &options->csv.profile,
                  "The columns of this profile of BrenvikProfiles.txt in the install folder; the standard "
                  "columns by default")
             .Named("NAME"),
         Argument("--fractions", &options->csv.fractions, "Sizes as fractions, reduced to the closest 32nd"),
         Argument("--adjustments", &options->csv.adjustments,
                  "Change the sizes by this file of adjustments; goes with a profile")
             .Named("FILE"),
         options->choices.Sort(), options->choices.Group(), options->choices.Filter(),
         options->drawing.Select(), options->drawing.Letters(), options->unit.Option(),
         options->drawing.Material(), options->drawing.Quiet()},
        [options](const std::string& home) { return ExportAll(HoldHome(home), *options); },
        {}};
}

}  // namespace brenvik::app
