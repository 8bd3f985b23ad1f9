// Prints what would have been opened or run.
#include "console/console_shell.h"

namespace brenvik {

int ConsoleShell::OpenDocument(std::string_view folder, std::string_view file, int) {
    mErrors << "document: " << folder << (folder.empty() || folder.ends_with('\\') ? "" : "\\") << file
            << '\n';
    return 33;
}

void ConsoleShell::RunProgram(std::string_view commandLine) { mErrors << "program: " << commandLine << '\n'; }

}  // namespace brenvik
