// The one run that all targets share: set-up, part files, the loop over the parts, and the end. The work on a
// part is handed in, so that the run can be tried without it.
#pragma once

#include <functional>
#include <vector>

#include "cnc/output/work_lists.h"
#include "cnc/part/run_state.h"

namespace brenvik {

/// The work on a part.
struct PassWork {
    /// In the order of a pass; one that doesn't go on is the last of its pass.
    std::vector<std::function<PassOutcome(RunState&)>> pass;
    /// What follows when all of them went on: the DXF file, and the line of the work list.
    std::function<void(RunState&)> writePartFile, addListLine;
    /// Deletes the work lists of earlier runs; gives those of this one their names, at its end.
    std::function<void(Target)> clearWorkLists, finishWorkLists;
    /// Compares a part with its files when all of them are written; none where parts are tried without files.
    std::function<void(RunState&)> prove = {};
    /// The two halves of `addListLine`, for a part whose line is made by another process than the list.
    std::function<ListLine(RunState&)> takeListLine = {};
    std::function<void(RunState&, const ListLine&)> writeListLine = {};
};

/// The grid's services to a run. The grid is above the run, so the library passes them in.
struct RunHooks {
    /// Applies and closes the grid if it is open, unless the settings turn that off. False when they ask for
    /// it and no grid is open.
    std::function<bool()> applyOpenGrid;
    /// Writes the list that the grid closed on to its solids.
    std::function<void()> applyLastList;
};

/// Runs one target on the host's active drawing. A failure of one part is shown and the part skipped. A
/// failure of the set-up, or of files, is shown with its subject and ends the run cleanly: files written by
/// then stay, and work files are deleted. A run into folders where another program's run is going on, or that
/// hold the drawing itself, is refused with a message and changes no file.
void RunParts(AcadApplication& app, Target target, RunForm form, const PassWork& steps,
              const RunHooks& hooks);

}  // namespace brenvik
