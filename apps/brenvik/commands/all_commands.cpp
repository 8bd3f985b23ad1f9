// The order in which the help text lists the commands.
#include "commands/all_commands.h"

namespace brenvik::app {

std::vector<Command> AllCommands() {
    return {InitCommand(),      ListCommand(),  ExportCommand(),  CncCommand(),     JoinCommand(),
            ProveCommand(),     RunCommand(),   ConvertCommand(), SampleCommand(),  SettingsCommand(),
            MaterialsCommand(), PartsCommand(), PictureCommand(), DesktopCommand(), HelpCommand()};
}

}  // namespace brenvik::app
