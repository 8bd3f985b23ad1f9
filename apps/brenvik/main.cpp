// The command line program.
#include "command_line.h"

int main(int argc, char** argv) { return brenvik::app::RunCommandLine(argc, argv); }
