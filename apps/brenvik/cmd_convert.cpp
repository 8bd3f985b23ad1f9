// brenvik convert: reads one drawing format and writes another.
#include <iostream>
#include <memory>

#include "command_line.h"
#include "drawing_io.h"
#include "file_roots/whole_file.h"

namespace brenvik::app {

namespace {

ExitStatus Convert(const DrawingOptions& options) {
    RequireWritableFormat(options.save);
    Teller teller(options.quiet);
    HostApplication host(WriteWholeFile);
    HostDocument& document = OpenInput(host, options, teller);
    SaveOutput(document, options.save, teller);
    return teller.Status();
}

}  // namespace

void AddConvertCommand(CommandLine& line) {
    auto options = std::make_shared<DrawingOptions>();
    CLI::App& command =
        line.Add("convert", "Read a drawing in one format and write it in another, by extension",
                 [options] { return Convert(*options); });
    command.add_option("IN", options->drawing, "The drawing to read")->required();
    command.add_option("OUT", options->save, "The drawing to write: .dxf, .dwg, .step, .stp or .sat")
        ->required();
    options->AddLetters(command);
    options->AddQuiet(command);
}

}  // namespace brenvik::app
