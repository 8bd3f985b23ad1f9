// What the files of a home are called that several places here speak of; those that the core reads stand with
// its own rules about them.
#pragma once

#include <string_view>

#include "export/adjustment_file.h"
#include "settings/materials.h"

namespace brenvik::app {

inline constexpr std::string_view SettingsFile = "settings.txt";

}  // namespace brenvik::app
