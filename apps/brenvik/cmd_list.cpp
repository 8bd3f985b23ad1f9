// brenvik list: the cut list of a drawing, through the very form that the desktop shows.
#include <iostream>
#include <map>
#include <memory>

#include "command_line.h"
#include "console/console_dialogs.h"
#include "forms/grid_control.h"
#include "grid_session.h"
#include "list_choice_options.h"
#include "list_output.h"
#include "workplace.h"

namespace brenvik::app {

namespace {

struct ListOptions {
    DrawingOptions drawing;
    ListChoiceOptions choices;
    ListFormat format = ListFormat::Table;
};

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
    return {ReadPartList(*grid.Records()), parts};
}

/// Opens the grid form, whose load scans the selection, and takes the rows while it stands open.
Scanned Scan(HostApplication& host, ConsoleDialogs& dialogs, const ListChoices& choices) {
    Scanned scanned;
    WhileGridIsOpen(host, dialogs, [&](Form& form) { scanned = TakeRows(form, choices); });
    return scanned;
}

ExitStatus List(const std::string& home, const ListOptions& options) {
    if (!options.drawing.save.empty()) RequireWritableFormat(options.drawing.save);
    const ListChoices choices = options.choices.Parse();
    Teller teller(options.drawing.quiet);
    ConsoleDialogs dialogs(std::cerr);
    dialogs.beforeTelling = [&teller] { teller.Wipe(); };
    Workplace workplace(home, dialogs);
    const auto [document, selected] = OpenAndSelect(workplace, options.drawing, teller);
    teller.Progress("measuring " + std::to_string(selected) + " parts");
    // With nothing selected the scan leaves the grid as it is, so there is nothing to look at.
    const Scanned scanned =
        selected == 0 ? Scanned{EmptyPartList(choices.group), 0} : Scan(workplace.host, dialogs, choices);
    teller.Wipe();
    if (dialogs.MessagesShown() > 0) teller.MarkIncomplete();
    if (scanned.parts < selected)
        teller.Loss(std::to_string(selected - scanned.parts) + " of " + std::to_string(selected) +
                    " parts are missing in the list");
    WritePartList(scanned.list, options.format, std::cout);
    if (!options.drawing.save.empty()) SaveOutput(document, options.drawing.save, teller);
    return teller.Status();
}

}  // namespace

void AddListCommand(CommandLine& line) {
    auto options = std::make_shared<ListOptions>();
    CLI::App& command = line.Add("list", "Print the cut list of a drawing",
                                 [&line, options] { return List(line.home, *options); });
    options->drawing.AddDrawing(command);
    const std::map<std::string, ListFormat> formats{
        {"table", ListFormat::Table}, {"csv", ListFormat::Csv}, {"json", ListFormat::Json}};
    // A transformer would also take the numbers behind the words.
    command
        .add_option_function<std::string>(
            "--format", [options, formats](const std::string& word) { options->format = formats.at(word); },
            "How to print it: table, csv or json")
        ->check(CLI::IsMember({"table", "csv", "json"}).description("table|csv|json"))
        ->default_str("table");
    options->choices.AddTo(command);
    options->drawing.AddSelect(command);
    options->drawing.AddLetters(command);
    options->drawing.AddSave(command);
    options->drawing.AddQuiet(command);
}

}  // namespace brenvik::app
