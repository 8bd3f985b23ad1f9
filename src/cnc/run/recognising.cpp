// The order in which the recognisers work on a part: routes first, so that no hole is looked for on a curve
// that is routed, then edge bores, then vertical holes.
#include "cnc/run/recognising.h"

#include <string>

#include "base/failure.h"
#include "base/number_text.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/holes/horizontal_boring.h"
#include "cnc/holes/level_shapes.h"
#include "cnc/holes/vertical_drilling.h"
#include "cnc/part/part_material.h"
#include "cnc/part/part_measures.h"
#include "cnc/part/second_side.h"
#include "cnc/proof/run_proof.h"
#include "cnc/routes/routing.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

/// A spoil amount may be negative, and leaves a skin. One that is deeper than the part leaves nothing of the
/// cut: the tool would run above the board.
void RequireDepth(const RunState& run) {
    if (run.part.PartThickness + run.SpoilAmount > 0) return;
    throw Failure(failure_number::TypeMismatch, std::string(OwnSource), "Type mismatch",
                  "BiesseWorksSpoil is " + NumberToText(run.SpoilAmount) + ", expected more than " +
                      NumberToText(-run.part.PartThickness) + ", the thickness of the part");
}

/// Edge bores, on every pass or on the second one alone. False when they were all that a second pass could
/// have been made for, and there are none.
bool BoreOnItsPass(RunState& run) {
    const bool onSecondSide = SwitchIsOn(setting::HorzBoreOn2);
    if (onSecondSide) NeedOtherSideForBores(run);
    run.part.edgeBores = 0;
    if (!onSecondSide || !run.FirstPass()) BoreHorizontally(run);
    if (run.part.ThroughRouteSeen) return true;
    return !onSecondSide || run.FirstPass() || run.part.edgeBores > 0;
}

}  // namespace

PassOutcome Recognise(RunState& run) {
    RequireDepth(run);
    if (!TakeMaterial(run)) return PassOutcome::SkipPart;
    // Routes use the edges up.
    const LevelShapes shapes = LevelShapes::Of(*run.part.drawing, BoxOfPart(run));
    if (RecogniseRoutes(run, ProofIsOn()) == PassOutcome::SkipPart) return PassOutcome::SkipPart;

    // Commands of the host run on a drawing seen from above with all of the part in sight. Each stage sets
    // that view anew, since the one before may have left another.
    TopView(*run.part.drawing);
    run.app->ZoomExtents();
    TopView(*run.part.drawing);
    if (!BoreOnItsPass(run)) return PassOutcome::SkipPart;
    return DrillVertically(run, shapes);
}

}  // namespace brenvik
