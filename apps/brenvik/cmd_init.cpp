// brenvik init: makes the install folder.
#include <iostream>
#include <memory>

#include "command_line.h"
#include "console/console_dialogs.h"
#include "file_roots/places.h"
#include "install_home.h"
#include "workplace.h"

namespace brenvik::app {

namespace {

ExitStatus Init(const std::string& home, const std::string& units) {
    const MeasureUnits measure = units == "imperial" ? MeasureUnits::Imperial : MeasureUnits::Metric;
    ConsoleDialogs dialogs(std::cerr);
    Workplace workplace(home, dialogs, measure);
    // A home with settings keeps them, but files that have gone missing come back.
    if (!workplace.HomeWasMade()) InstallHome(workplace.files, workplace.database, measure);
    std::cout << (workplace.HomeWasMade() ? "made " : "already there: ") << TextFromPath(workplace.home)
              << '\n';
    return ExitStatus::Done;
}

}  // namespace

Command InitCommand() {
    auto units = std::make_shared<std::string>("metric");
    return {"init",
            "Make the install folder: settings, material library, profiles, blank database",
            {Argument("--units", units.get(), "The units of the shop")
                 .OneOf({"metric", "imperial"})
                 .ShowsDefault()},
            [units](const std::string& home) { return Init(home, *units); },
            {}};
}

}  // namespace brenvik::app
