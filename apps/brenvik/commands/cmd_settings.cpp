// brenvik settings: lists, prints and changes values of the settings store.
#include <iostream>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "base/letter_case.h"
#include "commands/all_commands.h"
#include "console/console_dialogs.h"
#include "file_roots/places.h"
#include "home/told_settings.h"
#include "home/workplace.h"
#include "settings/home_units.h"
#include "settings/setting_values.h"
#include "settings/settings_keys.h"

namespace brenvik::app {

namespace {

/// Where a value stands: under the system's key or one of its subkeys.
struct SettingPlace {
    std::string path, name;
};

std::string PathOf(std::string_view subkey) {
    return std::string(SettingsKeyPath) + (subkey.empty() ? "" : "\\") + std::string(subkey);
}

/// "CSV_SAVE\CVS_EXPORT_PATH", or the name alone: a value that is known by name is looked for where it
/// belongs.
SettingPlace PlaceOf(const std::string& word) {
    if (const std::size_t cut = word.rfind('\\'); cut != std::string::npos)
        return {PathOf(word.substr(0, cut)), word.substr(cut + 1)};
    const SettingEntry* entry = FindSetting(word);
    return {PathOf(entry ? entry->subkey : std::string_view()), word};
}

std::vector<std::pair<std::string, std::string>> ValuesUnder(Workplace& workplace, const std::string& path) {
    return workplace.settings.EnumerateSettings(SettingsRoot::LocalMachine, path);
}

bool IsStored(Workplace& workplace, const SettingPlace& place) {
    for (const auto& [name, value] : ValuesUnder(workplace, place.path))
        if (EqualsIgnoreCase(name, place.name)) return true;
    return false;
}

/// The place of a setting that there is, or can be.
SettingPlace RequirePlace(Workplace& workplace, const std::string& name) {
    SettingPlace place = PlaceOf(name);
    if (IsStored(workplace, place) || SubkeyOfSetting(place.name)) return place;
    throw CommandError(ExitStatus::WrongWords, "expected the name of a setting, found " + name +
                                                   "; brenvik settings list prints those that are stored");
}

ExitStatus ListSettings(const std::string& home) {
    ConsoleDialogs dialogs(std::cerr);
    Workplace workplace(home, dialogs);
    for (const std::string_view subkey : {std::string_view(), CsvSaveSubkey, AccessSaveSubkey})
        for (const auto& [name, value] : ValuesUnder(workplace, PathOf(subkey))) {
            std::cout << subkey << (subkey.empty() ? "" : "\\") << name << '=' << value << '\n';
            workplace.toldSettings.Look(PathOf(subkey), name, value);
        }
    // What isn't there can't be printed, but it will be read.
    for (const SettingEntry& entry : SettingTable())
        if (const SettingPlace place{PathOf(entry.subkey), std::string(entry.name)};
            entry.createdAtInstall && !IsStored(workplace, place))
            workplace.toldSettings.Look(place.path, place.name, {});
    return workplace.toldSettings.DamageFound() ? ExitStatus::Incomplete : ExitStatus::Done;
}

ExitStatus GetOne(const std::string& home, const std::string& name) {
    ConsoleDialogs dialogs(std::cerr);
    Workplace workplace(home, dialogs);
    const SettingPlace place = RequirePlace(workplace, name);
    std::cout << workplace.toldSettings.GetSetting(SettingsRoot::LocalMachine, place.path, place.name)
              << '\n';
    return workplace.toldSettings.DamageFound() ? ExitStatus::Incomplete : ExitStatus::Done;
}

/// A scale in the units of the home alone: nobody converts the lengths that stand there.
void RequireScaleOfHome(const SettingPlace& place, const std::string& value, const Workplace& workplace) {
    if (place.path != SettingsKeyPath || !EqualsIgnoreCase(place.name, setting::ExportScaleSetting)) return;
    const std::optional<MeasureUnits> units = UnitsOfHome();
    const std::string expected = ExportScaleFault(value, units);
    if (expected.empty()) return;
    const std::string other(NameOf(OtherThan(*units)));
    throw CommandError(ExitStatus::WrongWords,
                       place.name + ": expected " + expected +
                           "; make a home for the other units: brenvik --home DIR init --units " + other +
                           "; or, when all of these are converted in " + TextFromPath(workplace.home) +
                           ": settings set HomeUnits " + other);
}

ExitStatus SetOne(const std::string& home, const std::string& name, const std::string& value, bool quiet) {
    ConsoleDialogs dialogs(std::cerr);
    Workplace workplace(home, dialogs);
    const SettingPlace place = RequirePlace(workplace, name);
    if (const std::string expected = ValueFaultAt(place.path, place.name, value); !expected.empty())
        throw CommandError(ExitStatus::WrongWords,
                           place.name + ": expected " + expected + ", found \"" + value + "\"");
    // Or the units of the home would be changed between the look at them and the writing.
    workplace.settings.ChangeTogether([&] {
        RequireScaleOfHome(place, value, workplace);
        workplace.settings.SaveSetting(SettingsRoot::LocalMachine, place.path, place.name, value);
    });
    if (!quiet && EqualsIgnoreCase(place.name, setting::HomeUnits))
        std::cerr
            << "HomeUnits converts nothing: CircleSize, BiesseWorksSpoil, DrillSpoilAmount, BWPriority and "
               "the material library have to be in these units, and ExportScaleSetting "
            << (UnitsNamed(value) == MeasureUnits::Metric ? "2 or 3\n" : "1 or 4\n");
    // A home that has lost its settings is reported.
    return workplace.HomeWasMade() && workplace.toldSettings.DamageFound() ? ExitStatus::Incomplete
                                                                           : ExitStatus::Done;
}

}  // namespace

Command SettingsCommand() {
    struct Words {
        std::string name, value;
        bool quiet = false;
    };
    auto words = std::make_shared<Words>();
    return {
        "settings",
        "List, print or change the settings",
        {},
        {},
        {{"list", "Print every setting as NAME=VALUE", {}, ListSettings, {}},
         {"get",
          "Print the value of one setting",
          {Argument("NAME", &words->name, "Its name; values of a subkey as CSV_SAVE\\NAME").Required()},
          [words](const std::string& home) { return GetOne(home, words->name); },
          {}},
         {"set",
          "Change one setting",
          {Argument("NAME", &words->name, "Its name").Required(),
           Argument("VALUE", &words->value, "Its new value; one that the setting can't have is refused")
               .Required()
               .MayBeBlank(),
           Argument("--quiet", &words->quiet, "Leave out remarks; errors are still printed")},
          [words](const std::string& home) { return SetOne(home, words->name, words->value, words->quiet); },
          {}}}};
}

}  // namespace brenvik::app
