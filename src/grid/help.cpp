// What the shell's results mean.
#include "grid/help.h"

#include <string>

#include "session/message.h"
#include "session/ports/dialog_port.h"
#include "session/session.h"

namespace brenvik {

namespace {

constexpr int LeastSuccess = 33;
constexpr int NoAssociation = 31;

std::string_view WordsOf(int shellFailure) {
    switch (shellFailure) {
        case 0:
            return "Error: Out of Memory/Resources. Couldn't Execute!";
        case 2:
            return "Error: File not found.  Couldn't Execute!";
        case 3:
            return "Error: Path not found. Couldn't Execute!";
        case 11:
            return "Error:  Bad File Format. Couldn't Execute!";
        default:
            return "Error: Couldn't Execute!";
    }
}

}  // namespace

void OpenFileWithShell(std::string_view folder, std::string_view file, int show) {
    ShellPort* shell = ThePlatform().shell;
    if (shell == nullptr) return ShowNotAvailable("Opening documents");
    const int result = shell->OpenDocument(folder, file, show);
    if (result >= LeastSuccess) return;
    if (result == NoAssociation)
        return shell->RunProgram("rundll32.exe shell32.dll,OpenAs_RunDLL " + std::string(file));
    ShowMessage(WordsOf(result));
}

void ViewHelp(frmMain&) { OpenFileWithShell(TheSession().InstallFolder, HelpFile, ShowNormal); }

}  // namespace brenvik
