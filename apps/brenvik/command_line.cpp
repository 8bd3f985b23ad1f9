// Parsing, and the one place where errors become messages and exit statuses.
#include "command_line.h"

#include <algorithm>
#include <array>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <string_view>

#include "base/failure.h"
#include "base/letter_case.h"
#include "session/command_table.h"

namespace brenvik::app {

namespace {

/// Commands of the system that this build has not; asking for one deserves a better answer than "unknown".
constexpr std::array commandsOfOtherBuilds{std::string_view("desktop")};

std::string WhatIsNoCommand(const std::string& word) {
    for (const std::string_view name : commandsOfOtherBuilds)
        if (word == name) return "the command " + word + " is not available in this build";
    return "expected a command, found " + word;
}

int TellWrongWords(CommandLine& line, const CLI::ParseError& error) {
    std::ostringstream output, errors;
    const int status = line.parser.exit(error, output, errors);
    if (status == 0) {
        std::cout << output.str() << std::flush;
        return 0;
    }
    const std::vector<std::string> unknown = line.parser.remaining();
    if (line.parser.get_subcommands().empty() && !unknown.empty()) {
        std::cerr << "brenvik: " << WhatIsNoCommand(unknown.front()) << '\n';
        return static_cast<int>(ExitStatus::WrongWords);
    }
    std::cerr << "brenvik: " << error.what() << "\nRun with --help for more information.\n";
    return static_cast<int>(ExitStatus::WrongWords);
}

ExitStatus RunChosen(const CommandLine& line) {
    try {
        return line.chosen();
    } catch (const CommandError& error) {
        std::cerr << "brenvik: " << error.what() << '\n';
        return error.Status();
    } catch (const Failure& failure) {
        std::cerr << "brenvik: " << failure.what() << '\n';
        return ExitStatus::Incomplete;
    }
}

/// A set of letters is a permutation of L, W and T.
std::string CheckLetters(std::string& letters) {
    if (EqualsIgnoreCase(letters, "none")) {
        letters.clear();
        return {};
    }
    letters = FoldUpper(letters);
    for (const std::string_view known : {"LWT", "LTW", "WLT", "WTL", "TLW", "TWL"})
        if (letters == known) return {};
    return "expected L, W and T in some order, or none; found " + letters;
}

/// The system's own commands, as journals call them and as they are typed at the host, a line each.
std::string ListOfMethods() {
    std::size_t methodWidth = 0, hostWidth = 0;
    for (const CommandEntry& entry : CommandTable()) {
        methodWidth = std::max(methodWidth, entry.method.size());
        hostWidth = std::max(hostWidth, entry.hostCommands.size());
    }
    std::ostringstream list;
    list << "Commands of the system (in journals by their names, at the host's command line as typed):\n"
         << std::left;
    for (const CommandEntry& entry : CommandTable())
        list << "  " << std::setw(static_cast<int>(methodWidth) + 2) << entry.method
             << std::setw(static_cast<int>(hostWidth) + 2) << entry.hostCommands << entry.description << '\n';
    return list.str();
}

}  // namespace

CLI::App& CommandLine::Add(const std::string& name, const std::string& description,
                           std::function<ExitStatus()> run) {
    CLI::App& command = *parser.add_subcommand(name, description);
    command.callback([this, run = std::move(run)] { chosen = run; });
    return command;
}

void DrawingOptions::AddDrawing(CLI::App& command) {
    command
        .add_option("DRAWING", drawing, "The drawing: .dxf, .step, .stp, .sat, or the drafting host's own")
        ->required();
}

void DrawingOptions::AddLetters(CLI::App& command) {
    command
        .add_option(
            "--letters", letters,
            "Orientation letters for the solids of a STEP or SAT file: the names of the largest, the middle "
            "and the smallest extent, or none")
        ->transform(CLI::Validator(CheckLetters, "LWT|none"))
        ->capture_default_str();
}

void DrawingOptions::AddSave(CLI::App& command) {
    command.add_option("--save", save, "Save the drawing under this name afterwards");
}

void DrawingOptions::AddSelect(CLI::App& command) {
    command.add_option("--select", handles, "Only the entities with these handles; every solid by default")
        ->delimiter(',')
        ->type_name("HANDLE");
}

void DrawingOptions::AddQuiet(CLI::App& command) {
    command.add_flag("--quiet", quiet,
                     "Leave out progress and remarks; errors and message boxes are still told");
}

int RunCommandLine(int argc, char** argv) {
    CommandLine line;
    line.parser.add_option("--home", line.home, "The install folder (or the variable BRENVIK_HOME)")
        ->type_name("DIR");
    line.parser.set_version_flag("--version", "brenvik " BRENVIK_VERSION);
    line.parser.require_subcommand(1);
    AddInitCommand(line);
    AddListCommand(line);
    AddExportCommand(line);
    AddCncCommand(line);
    AddRunCommand(line);
    AddConvertCommand(line);
    AddSampleCommand(line);
    AddSettingsCommand(line);
    AddMaterialsCommand(line);
    AddPartsCommand(line);
    line.parser.footer(
        ListOfMethods() +
        "\nExit status: 0 done; 1 done, but something was skipped or failed (each told on standard error);\n"
        "2 the words of the command are wrong; 3 an input can't be read.");
    try {
        line.parser.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return TellWrongWords(line, error);
    }
    ExitStatus status = RunChosen(line);
    std::cout.flush();
    if (!std::cout) {
        std::cerr << "brenvik: standard output can't be written\n";
        if (status == ExitStatus::Done) status = ExitStatus::Incomplete;
    }
    return static_cast<int>(status);
}

}  // namespace brenvik::app
