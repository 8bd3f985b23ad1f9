// Lines of a settings file that are never read: repeated, unknown or misplaced. Their author expects them to
// count.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "settings_store/settings_text.h"

namespace brenvik::app {

/// A text for each such line, with the file and the line, what stands there and what was expected.
std::vector<std::string> SettingsFileFaults(std::span<const SettingsFileLine> lines, const std::string& file);

/// The line of the value that counts, from 1, for a key path of the system and a name; 0 where there is none.
std::size_t LineOfSetting(std::span<const SettingsFileLine> lines, std::string_view path,
                          std::string_view name);

}  // namespace brenvik::app
