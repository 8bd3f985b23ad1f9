// The program's commands, each from a file of its own.
#pragma once

#include <vector>

#include "shell/command_words.h"

namespace brenvik::app {

Command CncCommand();
Command JoinCommand();
Command InitCommand();
Command ListCommand();
Command ExportCommand();
Command RunCommand();
Command ConvertCommand();
Command SampleCommand();
Command SettingsCommand();
Command MaterialsCommand();
Command PartsCommand();
Command ProveCommand();
Command PictureCommand();
Command HelpCommand();
Command DesktopCommand();

/// All of them, in the order of the help text.
std::vector<Command> AllCommands();

}  // namespace brenvik::app
