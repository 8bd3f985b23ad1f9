// The runs with the work on parts that they really do.
#include "cnc/run/runs.h"

#include "cnc/clearing/clear_rest.h"
#include "cnc/laying/alignment.h"
#include "cnc/outline/outline.h"
#include "cnc/output/closing.h"
#include "cnc/output/part_output.h"
#include "cnc/output/work_lists.h"
#include "cnc/proof/run_proof.h"
#include "cnc/run/recognising.h"
#include "cnc/run/run_template.h"
#include "cnc/sorting/profile.h"

namespace brenvik {

PassWork StepsOfParts() {
    return {{AlignPart, SortEdges, Recognise, MakeOutline, ClearRest, ClosePart},
            WritePartFile,
            AddListLine,
            ClearWorkLists,
            FinishWorkLists,
            ProveGathered,
            TakeListLine,
            WriteListLine};
}

void RunOnSelection(AcadApplication& app, Target target, const RunHooks& hooks) {
    RunParts(app, target, RunForm::A, StepsOfParts(), hooks);
}

void RunFromGrid(AcadApplication& app, Target target, const RunHooks& hooks) {
    RunParts(app, target, RunForm::B, StepsOfParts(), hooks);
}

}  // namespace brenvik
