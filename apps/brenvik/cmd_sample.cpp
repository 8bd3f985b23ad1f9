// brenvik sample: writes the sample job.
#include <iostream>
#include <memory>

#include "command_line.h"
#include "drawing_io.h"
#include "file_roots/whole_file.h"
#include "sample_job.h"

namespace brenvik::app {

namespace {

ExitStatus Sample(const DrawingOptions& options) {
    RequireWritableFormat(options.save);
    Teller teller(options.quiet);
    HostApplication host(WriteWholeFile);
    teller.Progress("drawing the cabinet");
    HostDocument& document = host.NewDocument();
    DrawSampleJob(document);
    SaveOutput(document, options.save, teller);
    return teller.Status();
}

}  // namespace

void AddSampleCommand(CommandLine& line) {
    auto options = std::make_shared<DrawingOptions>();
    CLI::App& command =
        line.Add("sample", "Write the sample job: a base cabinet with drilling, dadoes and cut-outs",
                 [options] { return Sample(*options); });
    command.add_option("OUT", options->save, "The drawing to write: .dxf, .dwg, .step, .stp or .sat")
        ->required();
    options->AddQuiet(command);
}

}  // namespace brenvik::app
