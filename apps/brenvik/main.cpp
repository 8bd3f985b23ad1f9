// The command line program.
#include "commands/all_commands.h"
#include "shell/command_line.h"
#include "shell/standard_streams.h"

int main(int argc, char** argv) {
    brenvik::app::OpenStandardStreams();
    return brenvik::app::RunCommandLine(brenvik::app::AllCommands(), argc, argv);
}
