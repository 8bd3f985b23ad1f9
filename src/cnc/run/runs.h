// CNC runs: from solids to one layered DXF per part and side, and a work list, for one target.
#pragma once

#include "cnc/part/target.h"
#include "cnc/run/run_template.h"

namespace brenvik {

class AcadApplication;

/// What every run does with a part, in its order.
PassWork StepsOfParts();

/// Form A: the parts of the host's previous selection.
void RunOnSelection(AcadApplication& app, Target target, const RunHooks& hooks);
/// Form B: the parts and quantities of the list that the grid left.
void RunFromGrid(AcadApplication& app, Target target, const RunHooks& hooks);

}  // namespace brenvik
