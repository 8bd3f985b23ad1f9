// The table of the twelve targets, and the step from the closed grid to the run.
#include "session/target_drivers.h"

#include <array>

#include "session/message.h"
#include "session/session.h"

namespace brenvik {

namespace {

constexpr auto Drivers = std::to_array<TargetDriver>({
    {1, "C2C", "BVC2C", nullptr},
    {2, "ATP", "BVATP", nullptr},
    {3, "ROV", "BVRover1", nullptr},
    {4, "CNI", "BVCNI", nullptr},
    {5, "ASP", "BVASP", nullptr},
    {6, "WOP4", "BVWOP4", nullptr},
    {7, "WOP5", "BVWOP5", nullptr},
    {8, "THERM", "BVTHERM", nullptr},
    {9, "BW", "BVBW", nullptr},
    {10, "Enroute", "BVEnroute", nullptr},
    {11, "ABC", "BVABC", nullptr},
    {12, "RCIM", "BVRCIM", nullptr},
});

}  // namespace

std::span<const TargetDriver> TargetDrivers() { return Drivers; }

void RunChosenTarget(AcadApplication& app) {
    // The value is looked at anew for each target: a run that loads the grid form sets it back to 0.
    for (const TargetDriver& driver : Drivers) {
        if (TheSession().ExportTarget != driver.exportTarget) continue;
        if (driver.fromGrid != nullptr)
            driver.fromGrid(app);
        else
            ShowNotAvailable(driver.method);
    }
}

}  // namespace brenvik
