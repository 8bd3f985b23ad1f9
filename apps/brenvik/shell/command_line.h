// From the words of a call to the command that they name.
#pragma once

#include <vector>

#include "shell/command_words.h"

namespace brenvik::app {

/// Parses the words, runs the command among `commands` that they name, and reports its errors on standard
/// error. Returns the exit status.
int RunCommandLine(const std::vector<Command>& commands, int argc, char** argv);

}  // namespace brenvik::app
