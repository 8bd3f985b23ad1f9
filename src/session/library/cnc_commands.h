// The CNC runs as commands, joined with the grid that they apply first.
#pragma once

#include "cnc/run/runs.h"

namespace brenvik {

/// The grid as the runs of the library know it.
RunHooks GridBeforeRuns();

namespace commands {

/// The two forms for one target, as the tables of the public methods and of the grid's targets want them.
template <Target target>
void CncRun(AcadApplication& app) {
    RunOnSelection(app, target, GridBeforeRuns());
}
template <Target target>
void CncRunFromGrid(AcadApplication& app) {
    RunFromGrid(app, target, GridBeforeRuns());
}

/// `ExportParts`, the grid applied first.
void BVExportDWG(AcadApplication& app);

}  // namespace commands

}  // namespace brenvik
