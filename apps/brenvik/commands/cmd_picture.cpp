// brenvik picture: draws a part file of a CNC run.
#include <memory>

#include "base/letter_case.h"
#include "cnc/picture/picture_svg.h"
#include "commands/all_commands.h"
#include "commands/desktop_start.h"
#include "drawings/part_file.h"
#include "file_roots/places.h"

namespace brenvik::app {

namespace {

std::string EndingOf(const std::string& name) {
    return FoldLower(TextFromPath(PathFromText(name).extension()));
}

/// Points are painted by the desktop program.
[[noreturn]] void PaintPicture(const std::string& home, const PictureOptions& options) {
    std::vector<std::string> words{"--part-picture", options.file, "--out", options.out};
    if (!home.empty()) words.insert(words.end(), {"--home", home});
    if (options.quiet) words.emplace_back("--quiet");
    BecomeDesktop(words);
    throw CommandError(ExitStatus::Incomplete,
                       options.out +
                           ": PNG needs the desktop program, which is not here (the package brenvik-desktop "
                           "holds it); an .svg can be written without it");
}

ExitStatus Draw(const std::string& home, const PictureOptions& options) {
    const std::string ending = EndingOf(options.out);
    if (ending == ".png") PaintPicture(home, options);
    if (ending != ".svg")
        throw CommandError(ExitStatus::WrongWords,
                           options.out + ": expected a name that ends in .svg or .png");
    return DrawPicture(home, options, PictureAsSvg);
}

}  // namespace

Command PictureCommand() {
    auto options = std::make_shared<PictureOptions>();
    return {"picture",
            "Draw a part file of a CNC run: outline, holes, routes, pockets and edge bores, with a legend",
            {Argument("FILE", &options->file, "The part file, a .dxf of a run").Required(),
             Argument("OUT", &options->out, "The picture to write: .svg or .png").Required(),
             Argument("--quiet", &options->quiet, "Leave out remarks; what is not understood is still said")},
            [options](const std::string& home) { return Draw(home, *options); },
            {}};
}

}  // namespace brenvik::app
