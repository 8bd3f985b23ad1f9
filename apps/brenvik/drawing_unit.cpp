// What the export's scale says about the drawings that it scales.
#include "drawing_unit.h"

#include <string>

#include "base/numbers.h"
#include "file_roots/whole_file.h"
#include "settings/setting_names.h"
#include "settings/settings_keys.h"
#include "settings/settings_store.h"
#include "settings_store/text_settings.h"

namespace brenvik::app {
namespace {

std::optional<LengthUnit> UnitOfScale(int setting) {
    switch (setting) {
        case 1:
        case 3:
            return LengthUnit::Inch;
        case 2:
        case 4:
            return LengthUnit::Millimetre;
        default:
            return std::nullopt;
    }
}

}  // namespace

std::optional<LengthUnit> DrawingUnitOfHome() {
    return UnitOfScale(ToInteger(NumberSetting(setting::ExportScaleSetting)));
}

bool RunsScaleDrawings() { return ToInteger(NumberSetting(setting::ExportScaleSetting)) >= 3; }

std::optional<LengthUnit> DrawingUnitOfHome(const std::filesystem::path& home) {
    const std::filesystem::path file = home / "settings.txt";
    std::error_code unknown;
    if (!std::filesystem::exists(file, unknown)) return LengthUnit::Millimetre;
    TextSettings settings(file, WriteWholeFile);
    const std::string text =
        settings.GetSetting(SettingsRoot::LocalMachine, SettingsKeyPath, setting::ExportScaleSetting);
    return UnitOfScale(ToInteger(LenientNumber(text)));
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
