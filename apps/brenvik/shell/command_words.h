// What a command takes from the command line, as plain data: one file turns it into a parser, so that the
// commands know nothing of the parsing library, whose header costs more to compile than all of them.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "shell/exit_status.h"

namespace brenvik::app {

/// An option ("--out"), or a word that stands by its place ("DRAWING").
struct Argument {
    /// Where the word goes: a flag, one text, or texts parted by commas.
    using Target = std::variant<bool*, std::string*, std::vector<std::string>*>;

    std::string name;
    Target target;
    std::string description;
    /// What the help shows for the value, such as DIR.
    std::string valueName;
    /// The only words allowed, where there are any.
    std::vector<std::string> choices;
    /// Mends the word, or returns what was expected instead.
    std::function<std::string(std::string&)> check;
    bool required = false;
    /// A blank word can be meant.
    bool mayBeBlank = false;
    /// The help shows the value that the target has before.
    bool showsDefault = false;

    Argument(std::string itsName, Target itsTarget, std::string itsDescription)
        : name(std::move(itsName)), target(itsTarget), description(std::move(itsDescription)) {}

    Argument&& Required() && {
        required = true;
        return std::move(*this);
    }
    Argument&& MayBeBlank() && {
        mayBeBlank = true;
        return std::move(*this);
    }
    Argument&& Named(std::string value) && {
        valueName = std::move(value);
        return std::move(*this);
    }
    Argument&& OneOf(std::vector<std::string> words) && {
        choices = std::move(words);
        return std::move(*this);
    }
    Argument&& Checked(std::function<std::string(std::string&)> test) && {
        check = std::move(test);
        return std::move(*this);
    }
    Argument&& ShowsDefault() && {
        showsDefault = true;
        return std::move(*this);
    }
};

/// A command: what it takes and what it does, or the commands below it.
struct Command {
    std::string name, description;
    std::vector<Argument> arguments;
    /// Runs it in the install folder of that name; empty for a command that only has others below it. Keeps
    /// alive what the arguments point into.
    std::function<ExitStatus(const std::string& home)> run;
    std::vector<Command> commands;
};

}  // namespace brenvik::app
