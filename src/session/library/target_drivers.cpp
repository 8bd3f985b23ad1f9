// The table of the twelve targets, and the step from the closed grid to the run.
#include "session/library/target_drivers.h"

#include <array>

#include "session/library/cnc_commands.h"
#include "session/session.h"

namespace brenvik {

namespace {

template <Target target>
constexpr TargetDriver DriverOf(std::string_view method) {
    return {static_cast<int>(target), target, method, &commands::CncRunFromGrid<target>};
}

constexpr auto Drivers = std::to_array<TargetDriver>({
    DriverOf<Target::C2C>("BVC2C"),
    DriverOf<Target::ATP>("BVATP"),
    DriverOf<Target::ROV>("BVRover1"),
    DriverOf<Target::CNI>("BVCNI"),
    DriverOf<Target::ASP>("BVASP"),
    DriverOf<Target::WOP4>("BVWOP4"),
    DriverOf<Target::WOP5>("BVWOP5"),
    DriverOf<Target::THERM>("BVTHERM"),
    DriverOf<Target::BW>("BVBW"),
    DriverOf<Target::Enroute>("BVEnroute"),
    DriverOf<Target::ABC>("BVABC"),
    DriverOf<Target::RCIM>("BVRCIM"),
});

}  // namespace

std::span<const TargetDriver> TargetDrivers() { return Drivers; }

void RunChosenTarget(AcadApplication& app) {
    // The value is looked at anew for each target: a run that loads the grid form sets it back to 0.
    for (const TargetDriver& driver : Drivers)
        if (TheSession().ExportTarget == driver.exportTarget) driver.fromGrid(app);
}

}  // namespace brenvik
