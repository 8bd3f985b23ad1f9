// Documents and programs that the system would open by the operating system: only their names are printed,
// since a console has no windows.
#pragma once

#include <ostream>

#include "session/ports/dialog_port.h"

namespace brenvik {

class ConsoleShell : public ShellPort {
  public:
    /// `errorStream` must outlive the shell.
    explicit ConsoleShell(std::ostream& errorStream) : mErrors(errorStream) {}
    /// Prints the document's path; always 33, success, since the user knows where to look.
    int OpenDocument(std::string_view folder, std::string_view file, int show) override;
    void RunProgram(std::string_view commandLine) override;

  private:
    std::ostream& mErrors;
};

}  // namespace brenvik
