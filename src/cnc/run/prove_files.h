// The proof of files that lie in a folder since an earlier run.
#pragma once

#include <optional>
#include <string>

#include "cnc/part/run_report.h"
#include "cnc/part/run_state.h"
#include "cnc/proof/text_form.h"

namespace brenvik {

/// Where the files lie, and the known facts of the run that has made them.
struct FilesOfRun {
    std::string folder;  ///< Of first sides, with its separator; second sides are in "2-sided" below it.
    std::optional<Target> target = {};  ///< By the names in the files unless it is given.
    /// In runs from the grid equal parts share a file, and its number identifies no part.
    RunForm form = RunForm::A;
    /// What the drawing says of its unit, which a run hands down; none where nobody knows it.
    std::optional<HeadUnits> units = {};
};

struct ProvedFiles {
    /// What a run would have reported: parts that don't come out as they are drawn or couldn't be compared;
    /// among what was passed over parts that have no file, and files that are no part's.
    RunReport report;
    int parts = 0;  ///< Parts that come out as drawn.
    /// How much of the rest of the folder isn't as a run leaves it: lines of lists, files of no part.
    std::size_t strays = 0;
};

/// Holds the files against the solids of the previous selection of the active drawing, in the order in which
/// a run takes them. Writes nothing but work drawings in the output folder of runs.
ProvedFiles ProveFiles(AcadApplication& app, const FilesOfRun& files);

}  // namespace brenvik
