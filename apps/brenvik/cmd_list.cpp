// brenvik list: the cut list of a drawing, through the very form that the desktop shows.
#include <iostream>
#include <map>
#include <memory>

#include "command_line.h"
#include "console/console_dialogs.h"
#include "drawing_io.h"
#include "forms/form.h"
#include "forms/grid_control.h"
#include "list_output.h"
#include "session/brenvik_class.h"
#include "workplace.h"

namespace brenvik::app {

namespace {

struct ListOptions {
    DrawingOptions drawing;
    ListFormat format = ListFormat::Table;
};

/// Opens the grid form, whose load scans the selection, and takes the rows while it stands open.
PartList Scan(HostApplication& host, ConsoleDialogs& dialogs) {
    PartList list = EmptyPartList();
    dialogs.whileOpen = [&list](Form& form) {
        if (const Recordset* records = form.Get<DataControl>("Adodc1").Records())
            list = ReadPartList(*records);
    };
    cBrenvik().Show(host);
    dialogs.whileOpen = nullptr;
    return list;
}

ExitStatus List(const std::string& home, const ListOptions& options) {
    if (!options.drawing.save.empty()) RequireWritableFormat(options.drawing.save);
    Teller teller(options.drawing.quiet);
    ConsoleDialogs dialogs(std::cerr);
    dialogs.beforeTelling = [&teller] { teller.Wipe(); };
    Workplace workplace(home, dialogs);
    HostDocument& document = OpenInput(workplace.host, options.drawing, teller);
    const std::size_t selected = SelectForCommand(document, options.drawing);
    if (selected == 0) teller.Remark(options.drawing.drawing + ": the drawing holds no solids");
    teller.Progress("measuring " + std::to_string(selected) + " parts");
    // With nothing selected the scan leaves the grid as it is, so there is nothing to look at.
    const PartList list = selected == 0 ? EmptyPartList() : Scan(workplace.host, dialogs);
    teller.Wipe();
    if (dialogs.MessagesShown() > 0) teller.MarkIncomplete();
    if (list.rows.size() < selected)
        teller.Loss(std::to_string(selected - list.rows.size()) + " of " + std::to_string(selected) +
                    " parts are missing in the list");
    WritePartList(list, options.format, std::cout);
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
    command.add_option("--format", options->format, "How to print it: table, csv or json")
        ->transform(CLI::CheckedTransformer(formats).description("table|csv|json"))
        ->default_str("table");
    options->drawing.AddSelect(command);
    options->drawing.AddLetters(command);
    options->drawing.AddSave(command);
    options->drawing.AddQuiet(command);
}

}  // namespace brenvik::app
