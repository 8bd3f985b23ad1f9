// What the files of a home are called that several places here speak of; those of the profiles and of the
// help stand with the core's own rules about them.
#pragma once

#include <string_view>

namespace brenvik::app {

inline constexpr std::string_view SettingsFile = "settings.txt", MaterialsFile = "materials.txt",
                                  NoAdjustmentsFile = "No Adjustments.txt";

}  // namespace brenvik::app
