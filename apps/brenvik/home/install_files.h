// The text files that an installation begins with, each a shop's own to change.
#pragma once

#include <string>

#include "settings/settings_store.h"

namespace brenvik::app {

/// The material library: boards of a cabinet shop with their grain, cutting direction and three router bits.
std::string InitialMaterials(MeasureUnits units);
/// Column profiles of the CSV export.
std::string InitialCsvProfiles();
/// Column profiles of the CNC hand-offs.
std::string InitialCncProfiles();
/// The help text.
std::string HelpText();

}  // namespace brenvik::app
