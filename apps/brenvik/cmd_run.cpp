// brenvik run: plays a journal on a drawing.
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>

#include "command_line.h"
#include "drawing_io.h"
#include "file_roots/places.h"
#include "journal/journal_dialogs.h"
#include "journal/journal_failure.h"
#include "journal/journal_parser.h"
#include "journal/journal_player.h"
#include "journal_prompts.h"
#include "session/brenvik_class.h"
#include "workplace.h"

namespace brenvik::app {

namespace {

struct RunOptions {
    DrawingOptions drawing;
    std::string journal;
};

std::vector<JournalStep> ReadJournal(const std::string& name) {
    std::ifstream file(PathFromText(name), std::ios::binary);
    std::ostringstream content;
    if (file) content << file.rdbuf();
    if (!file || content.fail())
        throw CommandError(ExitStatus::Unreadable,
                           name + ": expected a journal, found no file that can be read");
    try {
        return ParseJournal(content.str(), name);
    } catch (const JournalSyntaxError& error) {
        throw CommandError(ExitStatus::Unreadable, error.what());
    }
}

JournalWorld WorldOf(Workplace& workplace, HostDocument& document) {
    JournalWorld world;
    world.host = &workplace.host;
    world.settings = &workplace.settings;
    world.files = &workplace.files;
    world.select = [&document](const std::vector<std::string>& handles) { SelectHandles(document, handles); };
    world.callCommand = [&workplace](std::string_view method) {
        return cBrenvik().Call(method, workplace.host);
    };
    world.output = &std::cout;
    world.transcript = &std::cerr;
    return world;
}

ExitStatus Run(const std::string& home, const RunOptions& options) {
    if (!options.drawing.save.empty()) RequireWritableFormat(options.drawing.save);
    Teller teller(options.drawing.quiet);
    std::vector<JournalStep> steps = ReadJournal(options.journal);
    JournalDialogs dialogs(std::cerr);
    Workplace workplace(home, dialogs);
    HostDocument& document = OpenInput(workplace.host, options.drawing, teller);
    SelectForCommand(document, options.drawing);
    teller.Wipe();
    const std::size_t notes = document.Notes().size();
    JournalPrompts prompts(dialogs, std::cerr);
    workplace.host.SetPrompts(&prompts);
    try {
        JournalPlayer(std::move(steps), dialogs, WorldOf(workplace, document)).Play();
    } catch (const JournalFailure& failure) {
        throw CommandError(ExitStatus::Incomplete, options.journal + ": " + failure.what());
    }
    TellNotesSince(notes, document, options.drawing.drawing, teller);
    if (!options.drawing.save.empty()) SaveOutput(document, options.drawing.save, teller);
    return teller.Status();
}

}  // namespace

void AddRunCommand(CommandLine& line) {
    auto options = std::make_shared<RunOptions>();
    CLI::App& command =
        line.Add("run", "Play a journal on a drawing", [&line, options] { return Run(line.home, *options); });
    options->drawing.AddDrawing(command);
    command.add_option("--journal", options->journal, "The journal: a text file, a step per line")
        ->required();
    options->drawing.AddSelect(command);
    options->drawing.AddLetters(command);
    options->drawing.AddSave(command);
    options->drawing.AddQuiet(command);
}

}  // namespace brenvik::app
