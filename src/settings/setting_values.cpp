// The limits of numbers, and the check of a value by its kind.
#include "settings/setting_values.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

#include "base/letter_case.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "base/text.h"
#include "settings/home_units.h"
#include "settings/setting_names.h"
#include "settings/settings_keys.h"

namespace brenvik {

namespace {

constexpr double NoLimit = std::numeric_limits<double>::infinity();
/// Counts and quantities are read as whole numbers of 32 bits.
constexpr double MostParts = std::numeric_limits<std::int32_t>::max();
/// No job has more of a part, as its quantity may have.
constexpr double MostTimes = 1e6;
/// No spoil board is thicker, in millimetres or in inches.
constexpr double MostSpoil = 100;

/// Of a number or a choice.
struct Limits {
    std::string_view name;
    double lowest, highest;
    bool whole;
    /// A blank reads as not there. What runs cut by can't be blank: it would read as 0, which is a depth, a
    /// size and a quantity too.
    bool mayBeBlank;
};

// A circle's size, a surface and a width can't be less than nothing. A spoil amount can: it leaves a skin
// that holds the part on the sheet. A run that makes each part no times was meant for none of them. A window
// may stand on a second screen to the left.
constexpr auto NumberLimits = std::to_array<Limits>({
    {setting::ExportScaleSetting, 1, 4, true, false},
    {setting::CircleSize, 0, NoLimit, false, false},
    {setting::BiesseWorksSpoil, -MostSpoil, MostSpoil, false, false},
    {setting::CNCMultiplier, 1, MostTimes, true, false},
    {setting::DrillSpoilAmount, -MostSpoil, MostSpoil, false, false},
    {setting::BWPriority, 0, NoLimit, false, false},
    {setting::DialogWidth, 0, NoLimit, false, true},
    {setting::DialogHeight, 0, NoLimit, false, true},
    {setting::DialogLeft, -NoLimit, NoLimit, false, true},
    {setting::DialogTop, -NoLimit, NoLimit, false, true},
    {setting::skipandcontinuevalue, 0, 6, true, true},
    {setting::EXPORT_TYPE, 0, 13, true, true},
    {setting::CVS_COL_COUNT, 0, MostParts, true, true},
    {setting::ACCESS_MAP_COUNT, 0, MostParts, true, true},
});
constexpr Limits WidthLimits{WidthSuffix, 0, NoLimit, false, true};
constexpr Limits NoLimits{"", -NoLimit, NoLimit, false, true};

const Limits& LimitsOf(std::string_view name) {
    for (const Limits& limits : NumberLimits)
        if (EqualsIgnoreCase(limits.name, name)) return limits;
    return NoLimits;
}

bool IsWidth(std::string_view name) {
    for (const std::string& key : Split(ColumnWidthKeyList, ','))
        if (EqualsIgnoreCase(key + std::string(WidthSuffix), name)) return true;
    return false;
}

const SettingEntry* FamilyOf(std::string_view name) {
    const std::size_t lastLetter = name.find_last_not_of("0123456789");
    if (lastLetter == std::string_view::npos || lastLetter + 1 == name.size()) return nullptr;
    const SettingEntry* family = FindSetting(name.substr(0, lastLetter + 1));
    return family && family->kind == SettingKind::Counted ? family : nullptr;
}

std::string InWords(const Limits& limits) {
    std::string text = limits.whole ? "a whole number" : "a number";
    if (limits.highest < NoLimit)
        return text + " from " + NumberToText(limits.lowest) + " to " + NumberToText(limits.highest);
    if (limits.lowest > -NoLimit) text += ", " + NumberToText(limits.lowest) + " or more";
    return text;
}

bool Fits(std::string_view value, const Limits& limits) {
    if (value.empty()) return limits.mayBeBlank;
    if (!IsNumeric(value)) return false;
    const double number = StrictNumber(value);
    if (limits.whole && number != RoundHalfEven(number, 0)) return false;
    return number >= limits.lowest && number <= limits.highest;
}

std::string NumberFault(std::string_view value, const Limits& limits) {
    return Fits(value, limits) ? std::string() : InWords(limits);
}

/// Of the texts, those that name a file or a folder.
bool IsPath(std::string_view name) {
    constexpr auto paths =
        std::to_array<std::string_view>({setting::ApplicationPath, setting::MDBPath, setting::CVS_ADJ_PATH,
                                         setting::CVS_EXPORT_PATH, setting::ACCESS_EXPORT_PATH});
    return std::ranges::any_of(paths, [&](std::string_view path) { return EqualsIgnoreCase(path, name); });
}

bool HoldsControlCharacter(std::string_view text) {
    return std::ranges::any_of(text, [](unsigned char byte) { return byte < 0x20 || byte == 0x7F; });
}

}  // namespace

std::optional<std::string_view> SubkeyOfSetting(std::string_view name) {
    if (const SettingEntry* entry = FindSetting(name)) return entry->subkey;
    if (const SettingEntry* family = FamilyOf(name)) return family->subkey;
    if (IsWidth(name)) return std::string_view();
    return std::nullopt;
}

std::string SettingValueFault(std::string_view name, std::string_view value) {
    if (IsWidth(name)) return NumberFault(value, WidthLimits);
    const SettingEntry* entry = FindSetting(name);
    if (entry == nullptr) return {};
    switch (entry->kind) {
        case SettingKind::Switch:
            return value == "0" || value == "1" ? "" : "0 or 1";
        case SettingKind::Choice:
        case SettingKind::Number:
            return NumberFault(value, LimitsOf(name));
        case SettingKind::Text:
            if (entry->name == setting::HomeUnits) return UnitsNamed(value) ? "" : "metric or imperial";
            return IsPath(name) && HoldsControlCharacter(value) ? "a path without control characters" : "";
        case SettingKind::Counted:
            return {};
    }
    return {};
}

}  // namespace brenvik
