// brenvik sample: writes the sample job.
#include <iostream>
#include <memory>

#include "commands/all_commands.h"
#include "drafting_host/document/files/drawing_files.h"
#include "drawings/drawing_io.h"
#include "file_roots/places.h"
#include "file_roots/whole_file.h"
#include "home/workplace.h"
#include "sample/sample_job.h"
#include "shell/drawing_options.h"

namespace brenvik::app {

namespace {

ExitStatus Sample(const std::string& home, const DrawingOptions& options) {
    RequireWritableFormat(options.save);
    KeptFiles kept;
    kept.KeepHome(HomeOf(home));
    kept.RequireFree(PathFromText(options.save), OutputKind::Drawing, options.save);
    Teller teller(options.quiet);
    HostApplication host(WriteWholeFile);
    teller.Progress("drawing the cabinet");
    HostDocument& document = host.NewDocument();
    document.SignSavings();
    DrawSampleJob(document);
    teller.Progress("saving " + options.save);
    // A STEP sample is what another system would send, without part data: nothing of anybody's is lost with
    // it.
    for (const std::string& loss : SaveDrawing(document, PathFromText(options.save)))
        teller.Remark(options.save + ": " + loss);
    return teller.Status();
}

}  // namespace

Command SampleCommand() {
    auto options = std::make_shared<DrawingOptions>();
    return {"sample",
            "Write the sample job: a base cabinet with drilling, dadoes and cut-outs",
            {options->OutWord(), options->Quiet()},
            [options](const std::string& home) { return Sample(home, *options); },
            {}};
}

}  // namespace brenvik::app
