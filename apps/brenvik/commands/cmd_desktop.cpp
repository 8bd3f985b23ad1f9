// brenvik desktop: starts the desktop program that lies beside this one.
#include <memory>
#include <string>
#include <vector>

#include "commands/all_commands.h"
#include "commands/desktop_start.h"

namespace brenvik::app {

namespace {

struct DesktopOptions {
    std::string drawing, journal, record;
    std::vector<std::string> more;
};

ExitStatus StartDesktop(const std::string& home, const DesktopOptions& options) {
    std::vector<std::string> words;
    if (!home.empty()) words.insert(words.end(), {"--home", home});
    if (!options.journal.empty()) words.insert(words.end(), {"--journal", options.journal});
    if (!options.record.empty()) words.insert(words.end(), {"--record", options.record});
    if (!options.drawing.empty()) words.push_back(options.drawing);
    words.insert(words.end(), options.more.begin(), options.more.end());
    BecomeDesktop(words);
    throw CommandError(ExitStatus::Incomplete,
                       "the desktop program is not here; the package brenvik-desktop holds it, and in a "
                       "checkout scripts/desktop "
                       "installs what it needs (Qt 6), builds it and starts it");
}

}  // namespace

Command DesktopCommand() {
    auto options = std::make_shared<DesktopOptions>();
    return {
        "desktop",
        "Open the desktop program: the drawing on the screen, and the forms as windows",
        {Argument("DRAWING", &options->drawing, "The drawing to open"),
         Argument("MORE", &options->more, "Further drawings, each in a tab of its own"),
         Argument("--journal", &options->journal, "Play this journal on the windows, and end").Named("FILE"),
         Argument("--record", &options->record, "Write a journal of what is done into this file")
             .Named("FILE")},
        [options](const std::string& home) { return StartDesktop(home, *options); },
        {}};
}

}  // namespace brenvik::app
