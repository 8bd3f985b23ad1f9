// Documents opened by the operating system's shell, the help among them.
#pragma once

#include <string_view>

namespace brenvik {

class frmMain;

inline constexpr std::string_view HelpFile = "Brenvik495.chm";

/// How the shell is to show a document's window.
inline constexpr int ShowNormal = 1;

/// Asks the shell to open a document. A failure is reported in its words; a file that no program is
/// registered for gets the system's open-with dialog. A platform without a shell says so.
void OpenFileWithShell(std::string_view folder, std::string_view file, int show);

/// Opens the help file in the install folder.
void ViewHelp(frmMain& form);

}  // namespace brenvik
