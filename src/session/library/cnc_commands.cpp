// The grid's hooks for runs and exports.
#include "session/library/cnc_commands.h"

#include "grid/apply_before_run.h"
#include "tools/part_export.h"

namespace brenvik {

RunHooks GridBeforeRuns() { return {ApplyOpenGrid, ApplyLastList}; }

void commands::BVExportDWG(AcadApplication& app) { ExportParts(app, ApplyOpenGrid); }

}  // namespace brenvik
