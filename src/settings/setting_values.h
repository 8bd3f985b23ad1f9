// What each setting can be: the kinds of the settings table with their limits.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace brenvik {

/// Where a value stands that the system reads: the subkey, blank for values directly under the key. It is one
/// of the settings table, a member of one of its numbered families, or the width of a column; null for a
/// name that nobody reads.
std::optional<std::string_view> SubkeyOfSetting(std::string_view name);

/// What was expected in place of a value that the setting can't have, such as "0 or 1"; blank for one that it
/// can have. A setting that isn't known takes any text. A number may be blank where that means "not there",
/// such as a place on the screen; the amounts that runs cut by have to be numbers.
std::string SettingValueFault(std::string_view name, std::string_view value);

}  // namespace brenvik
