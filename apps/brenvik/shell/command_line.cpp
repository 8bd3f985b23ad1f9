// Parsing. The parsing library is known here alone.
#include "shell/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <functional>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <string_view>
#include <variant>

#include "base/text.h"
#include "session/library/command_table.h"
#include "shell/reported.h"

namespace brenvik::app {

namespace {

struct CommandLine {
    CLI::App parser{"Cut lists and CNC feature recognition for cabinet shops.", "brenvik"};
    std::string home;
    /// Set by the command that the words name.
    std::function<ExitStatus(const std::string&)> chosen;
};

CLI::Option& AddTarget(CLI::App& command, const Argument& argument) {
    if (bool* const* flag = std::get_if<bool*>(&argument.target))
        return *command.add_flag(argument.name, **flag, argument.description);
    if (auto* const* texts = std::get_if<std::vector<std::string>*>(&argument.target)) {
        CLI::Option& option = *command.add_option(argument.name, **texts, argument.description);
        // Words by their places are names of files, which may hold commas.
        return argument.name.starts_with("--") ? *option.delimiter(',') : option;
    }
    return *command.add_option(argument.name, *std::get<std::string*>(argument.target), argument.description);
}

constexpr std::string_view HomeOption = "--home";

/// A script whose variable is not set says --out "": the default in its place could empty another folder. The
/// option that all commands have is none of a command's own, by which the parser knows where a value is
/// missing.
std::string CheckGiven(const std::string& word) {
    if (word == HomeOption || word.starts_with(std::string(HomeOption) + "="))
        return "expected a value, found the option " + word;
    return word.empty() ? "expected a value, found an empty text" : "";
}

void AddArgument(CLI::App& command, const Argument& argument) {
    CLI::Option& option = AddTarget(command, argument);
    const bool isFlag = std::holds_alternative<bool*>(argument.target);
    if (!argument.mayBeBlank && !isFlag && !argument.check && argument.choices.empty())
        option.check(CLI::Validator(CheckGiven, ""));
    option.required(argument.required);
    if (!argument.valueName.empty()) option.type_name(argument.valueName);
    if (!argument.choices.empty())
        option.check(CLI::IsMember(argument.choices).description(Join(argument.choices, "|")));
    if (argument.check) option.transform(CLI::Validator(argument.check, ""));
    if (argument.showsDefault) option.capture_default_str();
}

void AddCommand(CLI::App& parent, const Command& command, CommandLine& line) {
    CLI::App& words = *parent.add_subcommand(command.name, command.description);
    // --home may stand behind the command's word too.
    words.fallthrough();
    for (const Argument& argument : command.arguments) AddArgument(words, argument);
    for (const Command& below : command.commands) AddCommand(words, below, line);
    if (!command.commands.empty()) words.require_subcommand(1);
    if (command.run) words.callback([&line, run = command.run] { line.chosen = run; });
}

int TellWrongWords(CommandLine& line, const CLI::ParseError& error) {
    std::ostringstream output, errors;
    const int status = line.parser.exit(error, output, errors);
    if (status == 0) {
        std::cout << output.str();
        return static_cast<int>(WithWrittenOutput(ExitStatus::Done));
    }
    const std::vector<std::string> unknown = line.parser.remaining();
    if (line.parser.get_subcommands().empty() && !unknown.empty()) {
        std::cerr << "brenvik: expected a command, found " << unknown.front() << '\n';
        return static_cast<int>(ExitStatus::WrongWords);
    }
    std::cerr << "brenvik: " << error.what() << "\nRun with --help for more information.\n";
    return static_cast<int>(ExitStatus::WrongWords);
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

int RunCommandLine(const std::vector<Command>& commands, int argc, char** argv) {
    CommandLine line;
    line.parser
        .add_option(std::string(HomeOption), line.home, "The install folder (or the variable BRENVIK_HOME)")
        ->type_name("DIR")
        ->check(CLI::Validator(CheckGiven, ""));
    line.parser.set_version_flag("--version", "brenvik " BRENVIK_VERSION);
    line.parser.require_subcommand(1);
    for (const Command& command : commands) AddCommand(line.parser, command, line);
    line.parser.footer(ListOfMethods() +
                       "\nExit status: 0 done, with what had to be assumed reported on standard error; 1 "
                       "done, but something was\n"
                       "skipped or failed (each reported there);\n"
                       "2 the words of the command are wrong; 3 an input can't be read.");
    try {
        line.parser.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return TellWrongWords(line, error);
    }
    return static_cast<int>(WithWrittenOutput(Reported([&line] { return line.chosen(line.home); })));
}

}  // namespace brenvik::app
