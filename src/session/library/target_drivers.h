// The CNC targets by the number that the export dialog leaves behind, with the runs that take their parts
// from the grid's list.
#pragma once

#include <span>
#include <string_view>

#include "cnc/part/target.h"

namespace brenvik {

class AcadApplication;

struct TargetDriver {
    int exportTarget;  ///< What the export dialog leaves in the session.
    Target target;
    std::string_view method;  ///< The public method that runs the same target on a selection.
    void (*fromGrid)(AcadApplication&);
};

/// The twelve targets in the order of their numbers.
std::span<const TargetDriver> TargetDrivers();

/// Tests `ExportTarget` against each target, one after another, and runs the driver of the one that it
/// names; none for 0.
void RunChosenTarget(AcadApplication& app);

}  // namespace brenvik
