// The CNC targets as words of the command line.
#pragma once

#include <string>
#include <string_view>

#include "session/library/target_drivers.h"

namespace brenvik::app {

/// All of them, with commas between.
std::string TargetNames();
/// In any case; null for another word.
const TargetDriver* FindTarget(std::string_view name);
/// For an option that has a target as its value: what was expected, blank for one of them.
std::string CheckTarget(std::string& name);

}  // namespace brenvik::app
