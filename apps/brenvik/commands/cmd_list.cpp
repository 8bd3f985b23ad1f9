// brenvik list: the cut list of a drawing, through the very form that the desktop shows.
#include <iostream>
#include <memory>
#include <string_view>

#include "commands/all_commands.h"
#include "commands/list_choice_options.h"
#include "console/console_dialogs.h"
#include "drawings/drawing_unit.h"
#include "drawings/grid_session.h"
#include "drawings/several_drawings.h"
#include "forms/grid_control.h"
#include "home/workplace.h"
#include "parts/grouped_quantities.h"
#include "reports/list_output.h"
#include "reports/terminal_progress.h"
#include "shell/drawing_options.h"

namespace brenvik::app {

namespace {

struct ListOptions {
    DrawingOptions drawing;
    UnitOption unit;
    ListChoiceOptions choices;
    std::string format = "table";
    bool isOneOfSeveral = false;
    FurtherWords further;
};

ListFormat FormatOf(std::string_view word) {
    if (word == "csv") return ListFormat::Csv;
    return word == "json" ? ListFormat::Json : ListFormat::Table;
}

/// The list as wanted, and how many parts the scan found before anything was left out or grouped.
struct Scanned {
    PartList list;
    std::size_t parts = 0;
};

Scanned TakeRows(Form& form, const ListChoices& choices) {
    const auto& grid = form.Get<DataControl>("Adodc1");
    if (!grid.Records()) return {EmptyPartList(choices.group), 0};
    const auto parts = static_cast<std::size_t>(grid.Records()->RecordCount());
    ApplyOnGrid(choices);
    NoteGroupedQuantities();
    return {ReadPartList(*grid.Records()), parts};
}

/// Opens the grid form, whose load scans the selection, and takes the rows while it stands open.
Scanned Scan(HostApplication& host, ConsoleDialogs& dialogs, const ListChoices& choices) {
    Scanned scanned;
    WhileGridIsOpen(host, dialogs, [&](Form& form) { scanned = TakeRows(form, choices); });
    return scanned;
}

ExitStatus List(const HeldHome& home, const ListOptions& options) {
    if (!options.drawing.save.empty()) RequireWritableFormat(options.drawing.save);
    const ListChoices choices = options.choices.Parse();
    Teller teller(options.drawing.quiet);
    RemarkOnTextOrder(choices, teller);
    RemarkOnGaps(choices, teller);
    ConsoleDialogs dialogs(std::cerr);
    dialogs.beforeTelling = [&teller] { teller.Wipe(); };
    Workplace workplace(home, dialogs);
    const auto [document, selected] = OpenAndSelect(workplace, options.drawing, options.unit, teller);
    RemarkOnLumps(document, options.drawing, teller);
    RemarkOnDoubles(document, options.drawing, teller);
    const TerminalProgress progress(teller);
    // Without a selection the scan leaves the grid unchanged, and the list would be empty.
    Scanned scanned =
        selected == 0 ? Scanned{EmptyPartList(choices.group), 0} : Scan(workplace.host, dialogs, choices);
    teller.Wipe();
    if (dialogs.MessagesShown() > 0) teller.MarkIncomplete();
    TellPartTroubles(teller);
    RemarkOnNoParts(choices, scanned.parts, scanned.list.rows.size(), teller);
    const std::size_t known = scanned.parts + TellDroppedParts(teller);
    if (known < selected)
        teller.Loss(std::to_string(selected - known) + " of " + std::to_string(selected) +
                    " parts are missing in the list");
    if (options.isOneOfSeveral && FormatOf(options.format) == ListFormat::Csv)
        NameDrawing(scanned.list, options.drawing.drawing);
    WritePartList(scanned.list, FormatOf(options.format), std::cout);
    if (!options.drawing.save.empty())
        SaveOutput(document, options.drawing.save, DrawingUnitOfHome(), teller);
    return teller.Status();
}

ExitStatus ListAll(const HeldHome& home, const ListOptions& options) {
    std::vector<std::string> words = options.further.more;
    words.insert(words.begin(), options.drawing.drawing);
    if (!AreSeveral(words)) return List(home, options);
    RefuseForSeveral(!options.drawing.save.empty(), "--save");
    RefuseForSeveral(!options.drawing.handles.empty(), "--select");
    const std::vector<std::string> drawings = DrawingsOf(words);
    JointLists lists(FormatOf(options.format), std::cout);
    const auto work = [&](std::size_t place) {
        ListOptions one = options;
        one.drawing.drawing = drawings[place];
        one.isOneOfSeveral = true;
        return List(home, one);
    };
    const ExitStatus worst = RunEach(
        drawings,
        {work, [&](std::size_t place, const std::string& output) { lists.Add(drawings[place], output); }},
        options.drawing.quiet);
    lists.End();
    return worst;
}

}  // namespace

Command ListCommand() {
    auto options = std::make_shared<ListOptions>();
    return {"list",
            "Print the cut list of a drawing",
            {options->drawing.DrawingWord(), options->further.Words(""),
             Argument("--format", &options->format, "How to print it: table, csv or json")
                 .OneOf({"table", "csv", "json"})
                 .ShowsDefault(),
             options->choices.Sort(), options->choices.Group(), options->choices.Filter(),
             options->drawing.Select(), options->drawing.Letters(), options->unit.Option(),
             options->drawing.Material(), options->drawing.Save(), options->drawing.Quiet()},
            [options](const std::string& home) { return ListAll(HoldHome(home), *options); },
            {}};
}

}  // namespace brenvik::app
