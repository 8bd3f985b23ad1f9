// The runs with the work on parts that they really do.
#include "cnc/run/runs.h"

#include "cnc/proof/run_proof.h"
#include "cnc/run/part_steps.h"
#include "cnc/run/run_template.h"

namespace brenvik {

namespace {

PartSteps StepsOfParts() {
    return {{AlignPart, SortEdges, Recognise, MakeOutline, ClosePart},
            WritePartFile,
            AddListLine,
            ClearWorkLists,
            FinishWorkLists,
            ProveGathered};
}

}  // namespace

void RunOnSelection(AcadApplication& app, Target target) {
    RunParts(app, target, RunForm::A, StepsOfParts());
}

void RunFromGrid(AcadApplication& app, Target target) { RunParts(app, target, RunForm::B, StepsOfParts()); }

}  // namespace brenvik
