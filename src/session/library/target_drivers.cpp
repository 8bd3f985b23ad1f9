// The table of the twelve targets, and the step from the closed grid to the run.
#include "session/library/target_drivers.h"

#include <array>

#include "session/library/cnc_commands.h"
#include "session/session.h"

namespace brenvik {

namespace {

constexpr auto Drivers = std::to_array<TargetDriver>({
    {1, "C2C", "BVC2C", &commands::CncRunFromGrid<Target::C2C>},
    {2, "ATP", "BVATP", &commands::CncRunFromGrid<Target::ATP>},
    {3, "ROV", "BVRover1", &commands::CncRunFromGrid<Target::ROV>},
    {4, "CNI", "BVCNI", &commands::CncRunFromGrid<Target::CNI>},
    {5, "ASP", "BVASP", &commands::CncRunFromGrid<Target::ASP>},
    {6, "WOP4", "BVWOP4", &commands::CncRunFromGrid<Target::WOP4>},
    {7, "WOP5", "BVWOP5", &commands::CncRunFromGrid<Target::WOP5>},
    {8, "THERM", "BVTHERM", &commands::CncRunFromGrid<Target::THERM>},
    {9, "BW", "BVBW", &commands::CncRunFromGrid<Target::BW>},
    {10, "Enroute", "BVEnroute", &commands::CncRunFromGrid<Target::Enroute>},
    {11, "ABC", "BVABC", &commands::CncRunFromGrid<Target::ABC>},
    {12, "RCIM", "BVRCIM", &commands::CncRunFromGrid<Target::RCIM>},
});

}  // namespace

std::span<const TargetDriver> TargetDrivers() { return Drivers; }

void RunChosenTarget(AcadApplication& app) {
    // The value is looked at anew for each target: a run that loads the grid form sets it back to 0.
    for (const TargetDriver& driver : Drivers)
        if (TheSession().ExportTarget == driver.exportTarget) driver.fromGrid(app);
}

}  // namespace brenvik
