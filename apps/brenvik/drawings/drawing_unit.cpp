// What the export's scale says about the drawings that it scales.
#include "drawings/drawing_unit.h"

#include <string>

#include "file_roots/whole_file.h"
#include "home/home_files.h"
#include "settings/home_units.h"
#include "settings/setting_names.h"
#include "settings/settings_keys.h"
#include "settings/settings_store.h"
#include "settings_store/text_settings.h"

namespace brenvik::app {
namespace {

std::optional<LengthUnit> UnitOfScale(std::string_view exportScale) {
    const std::optional<MeasureUnits> units = UnitsOfDrawings(exportScale);
    if (!units) return std::nullopt;
    return *units == MeasureUnits::Metric ? LengthUnit::Millimetre : LengthUnit::Inch;
}

}  // namespace

std::optional<LengthUnit> DrawingUnitOfHome() {
    return UnitOfScale(GetSettingText(setting::ExportScaleSetting));
}

bool RunsScaleDrawings() { return ScalesDrawings(GetSettingText(setting::ExportScaleSetting)); }

std::optional<LengthUnit> DrawingUnitOfHome(const std::filesystem::path& home) {
    const std::filesystem::path file = home / SettingsFile;
    std::error_code unknown;
    if (!std::filesystem::exists(file, unknown)) return LengthUnit::Millimetre;
    TextSettings settings(file, WriteWholeFile);
    return UnitOfScale(
        settings.GetSetting(SettingsRoot::LocalMachine, SettingsKeyPath, setting::ExportScaleSetting));
}

Argument UnitOption::Option() {
    return Argument(
               "--unit", &word,
               "The unit of the file's lengths, whatever the file calls it. Without it the file's own "
               "counts, or else that of the shop's drawings, which all lengths are brought to: inches for an "
               "ExportScaleSetting of 1 or 3, millimetres for 2 or 4")
        .OneOf({"mm", "inch"});
}

UnitChoice UnitOption::For(std::optional<LengthUnit> drawing) const {
    UnitChoice choice{drawing, std::nullopt};
    if (!word.empty()) choice.given = word == "inch" ? LengthUnit::Inch : LengthUnit::Millimetre;
    return choice;
}

}  // namespace brenvik::app
