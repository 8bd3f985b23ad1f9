// What the commands share: the program's own options, those that several commands have, and the way in
// which a command is chosen. Each command adds itself from a file of its own.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "exit_status.h"

namespace brenvik::app {

struct CommandLine {
    CLI::App parser{"Cut lists and CNC feature recognition for cabinet shops.", "brenvik"};
    std::string home;
    /// Set by the command that the words name.
    std::function<ExitStatus()> chosen;

    /// Adds a command; `run` is called when it is the one.
    CLI::App& Add(const std::string& name, const std::string& description, std::function<ExitStatus()> run);
};

/// The options of commands that read a drawing.
struct DrawingOptions {
    std::string drawing;
    std::string letters = "LWT";
    std::string save;
    std::vector<std::string> handles;
    bool quiet = false;

    void AddDrawing(CLI::App& command);
    void AddLetters(CLI::App& command);
    void AddSave(CLI::App& command);
    void AddSelect(CLI::App& command);
    void AddQuiet(CLI::App& command);
};

void AddCncCommand(CommandLine& line);
void AddInitCommand(CommandLine& line);
void AddListCommand(CommandLine& line);
void AddExportCommand(CommandLine& line);
void AddRunCommand(CommandLine& line);
void AddConvertCommand(CommandLine& line);
void AddSampleCommand(CommandLine& line);
void AddSettingsCommand(CommandLine& line);
void AddMaterialsCommand(CommandLine& line);
void AddPartsCommand(CommandLine& line);

/// Parses the words, runs the command and tells its errors on standard error. Returns the exit status.
int RunCommandLine(int argc, char** argv);

}  // namespace brenvik::app
