// What the command line knows of a command: its names, what it may do, and the coroutine that runs it.
#pragma once

#include <string_view>

#include "drafting_host/command/session/asking.h"

namespace brenvik {

class CommandSession;

struct HostCommand {
    std::string_view name;     ///< In capitals, as the transcript shows it.
    std::string_view aliases;  ///< Parted by blanks.
    Asking<void> (*run)(CommandSession& session);
    bool transparent = false;  ///< May be typed with an apostrophe while another command is open.
    bool tellsItsEnd = false;  ///< The host's owner hears when it has changed solids.
};

/// Looks a command of the host up by name or short form in any case; null where there is none.
using CommandFinder = const HostCommand* (*)(std::string_view name);

}  // namespace brenvik
