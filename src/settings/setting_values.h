// What each setting can be: the kinds of the settings table with their limits.
#pragma once

#include <string>
#include <string_view>

namespace brenvik {

/// Whether the system reads a value of this name: one of the settings table, a member of one of its numbered
/// families, or the width of a column.
bool IsKnownSetting(std::string_view name);

/// What was expected in place of a value that the setting can't have, such as "0 or 1"; blank for one that it
/// can have. A setting that isn't known takes any text, and a number may be blank where a blank counts as 0.
std::string SettingValueFault(std::string_view name, std::string_view value);

}  // namespace brenvik
