// What a command makes hangs on the home's settings and boards, which it reads one by one while it works.
// Another program may change them meanwhile, so a command that makes lists and files takes them once, at its
// beginning: its outcome is that of one moment.
#pragma once

#include <optional>
#include <string>

#include "session/ports/files_port.h"

namespace brenvik::app {

struct HeldHome {
    /// The home folder as the command line names it; blank for the default one.
    std::string option;
    /// The contents of both files; null for a file that isn't there or can't be read, and for a home without
    /// settings, which the work makes itself.
    std::optional<std::string> settings, boards;
};

HeldHome HoldHome(const std::string& homeOption);

/// The file of the boards as the system names it.
std::string BoardsIn(FilesPort& files);

}  // namespace brenvik::app
