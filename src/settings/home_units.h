// The units of a home: those that its runs work in. The settings that runs cut by and the bits of the
// material library stand in them, so a run in other units would cut by millimetres taken as inches.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "settings/settings_store.h"

namespace brenvik {

/// The word for units in the settings, and for people.
std::string_view NameOf(MeasureUnits units);
/// By the word, in any case; null for another text.
std::optional<MeasureUnits> UnitsNamed(std::string_view word);
MeasureUnits OtherThan(MeasureUnits units);

/// The units of runs by a value of `ExportScaleSetting`: inches for 1 and 4, millimetres for 2 and 3. Null
/// for any other value.
std::optional<MeasureUnits> UnitsOfRuns(std::string_view exportScale);
/// Whether runs bring the drawing to the other units by that value.
bool ScalesDrawings(std::string_view exportScale);
/// What the drawings of the shop are in by that value.
std::optional<MeasureUnits> UnitsOfDrawings(std::string_view exportScale);

/// Why this value of `ExportScaleSetting` contradicts the home's units, and what was expected; blank if it
/// doesn't, or if either is unknown.
std::string ExportScaleFault(std::string_view exportScale, std::optional<MeasureUnits> units);

/// The units of the home: as its settings call them, else those that its runs work in. Null if neither
/// says.
std::optional<MeasureUnits> UnitsOfHome();

}  // namespace brenvik
