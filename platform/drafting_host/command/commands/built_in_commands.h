// The commands that the host has of its own.
#pragma once

#include <string_view>

#include "drafting_host/command/session/command_table.h"

namespace brenvik {

/// By name or short form in any case, or null.
const HostCommand* FindBuiltInCommand(std::string_view name);

}  // namespace brenvik
