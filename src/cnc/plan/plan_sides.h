// Closed paths and circles of a drawing as sides in plan.
#pragma once

#include <vector>

#include "session/ports/host_interface.h"
#include "session/ports/section_port.h"

namespace brenvik {

/// The sides of one closed path or circle, in the plan of its drawing.
std::vector<PlanSide> SidesOf(const AcadLWPolyline& polyline);
std::vector<PlanSide> SidesOf(const AcadCircle& circle);

}  // namespace brenvik
