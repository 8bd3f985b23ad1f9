// CNC runs: from solids to one layered DXF per part and side, and a work list, for one target.
#pragma once

#include "cnc/part/run_report.h"
#include "cnc/part/target.h"

namespace brenvik {

class AcadApplication;

/// Form A: the parts of the host's previous selection.
void RunOnSelection(AcadApplication& app, Target target);
/// Form B: the parts and quantities of the list that the grid left.
void RunFromGrid(AcadApplication& app, Target target);

namespace commands {

/// The two forms for one target, as the tables of the public methods and of the grid's targets want them.
template <Target target>
void CncRun(AcadApplication& app) {
    RunOnSelection(app, target);
}
template <Target target>
void CncRunFromGrid(AcadApplication& app) {
    RunFromGrid(app, target);
}

}  // namespace commands

}  // namespace brenvik
