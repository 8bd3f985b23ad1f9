// The host's own commands: names, short forms, what they may do, and the coroutine that runs each.
#pragma once

#include <string_view>

#include "drafting_host/command/asking.h"

namespace brenvik {

class CommandSession;

struct HostCommand {
    std::string_view name;     ///< In capitals, as told to others.
    std::string_view aliases;  ///< Parted by blanks.
    Asking<void> (*run)(CommandSession& session);
    bool transparent = false;  ///< May be typed with an apostrophe while another command is open.
    bool tellsItsEnd = false;  ///< The host's owner hears when it has changed solids.
};

/// By name or short form in any case, or nothing.
const HostCommand* FindBuiltInCommand(std::string_view name);

}  // namespace brenvik
