// brenvik init: makes the install folder.
#include <iostream>
#include <memory>
#include <optional>

#include "commands/all_commands.h"
#include "console/console_dialogs.h"
#include "file_roots/places.h"
#include "home/install_home.h"
#include "home/workplace.h"
#include "settings/home_units.h"

namespace brenvik::app {

namespace {

/// A library, settings and drawings in different units would make wrong parts without a word.
void RequireSameUnits(const std::string& word, MeasureUnits present, const std::filesystem::path& home) {
    if (word.empty() || UnitsNamed(word) == present) return;
    throw CommandError(ExitStatus::WrongWords,
                       "--units: " + TextFromPath(home) + " is a home in " + std::string(NameOf(present)) +
                           " units (its HomeUnits is \"" + GetSettingText(setting::HomeUnits) +
                           "\", its ExportScaleSetting " + GetSettingText(setting::ExportScaleSetting) +
                           "), and settings, materials and drawings of a home go together; make another one: "
                           "brenvik --home DIR init --units " +
                           word);
}

/// For a new home; metric where nothing is said.
MeasureUnits Wanted(const std::string& word) { return UnitsNamed(word).value_or(MeasureUnits::Metric); }

/// The units of the home, by its settings or its materials, which agree. Empty if neither shows them.
std::optional<MeasureUnits> UnitsOf(Workplace& workplace, const std::string& word) {
    if (EnumerateSubkey({}).empty()) return Wanted(word);
    if (const std::optional<MeasureUnits> present = UnitsOfHome()) {
        RequireSameUnits(word, *present, workplace.home);
        return present;
    }
    if (!word.empty())
        throw CommandError(
            ExitStatus::WrongWords,
            "--units: " + TextFromPath(workplace.home) +
                " has settings, but neither HomeUnits nor an ExportScaleSetting from 1 to 4 that gives its "
                "units; set that first: brenvik settings set ExportScaleSetting 1 (inches) or 2 "
                "(millimetres), then init brings the rest in these");
    return UnitsOfMaterials(workplace.files);
}

ExitStatus Init(const std::string& home, const std::string& word) {
    ConsoleDialogs dialogs(std::cerr);
    Workplace workplace(home, dialogs, Workplace::Purpose::Installation, UnitsNamed(word));
    // A home with settings keeps them, but files that have gone missing come back, in its units.
    std::optional<MeasureUnits> units = Wanted(word);
    if (!workplace.HomeWasMade()) {
        units = UnitsOf(workplace, word);
        InstallHome(workplace.files, workplace.database, units);
    }
    std::cout << (workplace.HomeWasMade() ? "made " : "already there: ") << TextFromPath(workplace.home)
              << '\n';
    if (workplace.HomeWasMade() && workplace.toldSettings.DamageFound()) return ExitStatus::Incomplete;
    if (units) return ExitStatus::Done;
    std::cerr << "brenvik: the units of this home are unknown: settings and materials that are missing stay "
                 "so; set ExportScaleSetting to 1 (inches) or 2 (millimetres) and init again\n";
    return ExitStatus::Incomplete;
}

}  // namespace

Command InitCommand() {
    auto units = std::make_shared<std::string>();
    return {"init",
            "Make the install folder: settings, material library, profiles, blank database",
            {Argument("--units", units.get(),
                      "The units of the shop, metric unless said otherwise; a home keeps those that it was "
                      "made with")
                 .OneOf({std::string(NameOf(MeasureUnits::Metric)),
                         std::string(NameOf(MeasureUnits::Imperial))})},
            [units](const std::string& home) { return Init(home, *units); },
            {}};
}

}  // namespace brenvik::app
