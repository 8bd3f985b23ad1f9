// brenvik convert: reads one drawing format and writes another.
#include <iostream>
#include <memory>

#include "command_line.h"
#include "drawing_io.h"
#include "given_material.h"

namespace brenvik::app {

namespace {

ExitStatus Convert(DrawingOptions options) {
    RequireWritableFormat(options.save);
    options.onlySaves = IsDxfName(options.save);
    Teller teller(options.quiet);
    GuardedFiles files;
    HostApplication host([&files](const std::filesystem::path& file, std::string_view content) {
        files.Write(file, content);
    });
    HostDocument& document = OpenInput(host, files, options, teller);
    SelectForCommand(document, options);
    GiveMaterial(document, options.material, teller);
    TellSheetsLeftOut(document, options, teller);
    SaveOutput(document, options.save, teller);
    return teller.Status();
}

}  // namespace

Command ConvertCommand() {
    auto options = std::make_shared<DrawingOptions>();
    return {"convert",
            "Read a drawing in one format and write it in another, by extension",
            {Argument("IN", &options->drawing, "The drawing to read").Required(), options->OutWord(),
             options->Letters(), options->Material(), options->Quiet()},
            [options](const std::string&) { return Convert(*options); },
            {}};
}

}  // namespace brenvik::app
