// The command line program.
#include "command_line.h"
#include "standard_streams.h"

int main(int argc, char** argv) {
    brenvik::app::OpenStandardStreams();
    return brenvik::app::RunCommandLine(argc, argv);
}
