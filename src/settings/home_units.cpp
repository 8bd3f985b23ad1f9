// The two words, and the four numbers of the export's scale.
#include "settings/home_units.h"

#include "base/letter_case.h"
#include "base/numbers.h"

namespace brenvik {

namespace {

constexpr std::string_view Metric = "metric", Imperial = "imperial";

}  // namespace

std::string_view NameOf(MeasureUnits units) { return units == MeasureUnits::Imperial ? Imperial : Metric; }

std::optional<MeasureUnits> UnitsNamed(std::string_view word) {
    if (EqualsIgnoreCase(word, Metric)) return MeasureUnits::Metric;
    if (EqualsIgnoreCase(word, Imperial)) return MeasureUnits::Imperial;
    return std::nullopt;
}

MeasureUnits OtherThan(MeasureUnits units) {
    return units == MeasureUnits::Metric ? MeasureUnits::Imperial : MeasureUnits::Metric;
}

std::optional<MeasureUnits> UnitsOfRuns(std::string_view exportScale) {
    switch (ToInteger(LenientNumber(exportScale))) {
        case 1:
        case 4:
            return MeasureUnits::Imperial;
        case 2:
        case 3:
            return MeasureUnits::Metric;
        default:
            return std::nullopt;
    }
}

bool ScalesDrawings(std::string_view exportScale) { return ToInteger(LenientNumber(exportScale)) >= 3; }

std::optional<MeasureUnits> UnitsOfDrawings(std::string_view exportScale) {
    const std::optional<MeasureUnits> runs = UnitsOfRuns(exportScale);
    return runs && ScalesDrawings(exportScale) ? OtherThan(*runs) : runs;
}

std::string ExportScaleFault(std::string_view exportScale, std::optional<MeasureUnits> units) {
    const std::optional<MeasureUnits> runs = UnitsOfRuns(exportScale);
    if (!runs || !units || *runs == *units) return {};
    const bool metric = *units == MeasureUnits::Metric;
    return std::string(metric ? "2 or 3" : "1 or 4") + ": runs would work in " +
           (metric ? "inches" : "millimetres") + ", but this home is " + std::string(NameOf(*units)) +
           ", and its CircleSize, BiesseWorksSpoil, DrillSpoilAmount, BWPriority and material library are "
           "in " +
           (metric ? "millimetres" : "inches");
}

std::optional<MeasureUnits> UnitsOfHome() {
    if (const auto named = UnitsNamed(GetSettingText(setting::HomeUnits))) return named;
    return UnitsOfRuns(GetSettingText(setting::ExportScaleSetting));
}

}  // namespace brenvik
