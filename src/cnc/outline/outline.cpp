// From the kept face to the outside profile. Its boundary is joined to contours: the largest is the outline,
// the others are cut-outs. Then come the through circles, and the pockets are compared with the routes.
#include "cnc/outline/outline.h"

#include <string>
#include <vector>

#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/joining.h"
#include "cnc/drawing/polyline_shape.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/outline/cut_outs.h"
#include "cnc/outline/kept_face.h"
#include "cnc/outline/pockets.h"
#include "cnc/outline/through_circles.h"
#include "cnc/outline/true_outline.h"
#include "cnc/part/told.h"
#include "cnc/targets/target_table.h"

namespace brenvik {

namespace {

/// Each chain costs two, so the budget joins a face of a hundred chains.
constexpr int JoinBudget = 200;

/// Puts the polyline that the join has made on `RoutingLayer2`, or deletes it where it isn't closed. False
/// where there is none.
bool TakeChain(RunState& run) {
    const std::vector<AcadLWPolyline*> chains = AllOn<AcadLWPolyline>(*run.part.drawing, layers::Border);
    if (chains.empty()) return false;
    if (chains.front()->Closed()) {
        chains.front()->SetLayer(layers::RoutingLayer2);
        return true;
    }
    chains.front()->Delete();
    NoteUntilProved(run, "the part's face has a chain of edges that doesn't close: no operation");
    return true;
}

void JoinBorder(RunState& run) {
    AcadDocument& drawing = *run.part.drawing;
    AddLayer(drawing, layers::RoutingLayer2);
    int budget = JoinBudget;
    while (true) {
        const int counted = CurvesOn(drawing, layers::Border, 2);
        budget -= counted;
        if (counted < 2 || budget < 0) break;
        {
            const OnlyUnlocked only(drawing, {layers::Border});
            drawing.SendCommand(JoinCommand);
        }
        if (!TakeChain(run)) break;
    }
    if (CurvesOn(drawing, layers::Border, 1) > 0)
        NoteUntilProved(run, "the part's face has edges that were not joined: no operation");
}

/// Returns the largest contour, the outline, and puts the others on `ThroughxRoute`. Null if the face gave
/// no contour.
AcadLWPolyline* SortContours(AcadDocument& drawing) {
    std::vector<AcadLWPolyline*> contours;
    for (AcadLWPolyline* polyline : AllOn<AcadLWPolyline>(drawing, layers::RoutingLayer2)) {
        if (IsContour(*polyline))
            contours.push_back(polyline);
        else
            polyline->Delete();
    }
    AcadLWPolyline* largest = nullptr;
    // The second pass catches those that stood before the largest one.
    for (int pass = 0; pass < 2; ++pass) {
        for (AcadLWPolyline* contour : contours) {
            if (largest == nullptr || contour->Area() > largest->Area())
                largest = contour;
            else if (contour->Area() < largest->Area())
                contour->SetLayer(layers::ThroughXRoute);
        }
    }
    return largest;
}

}  // namespace

PassOutcome MakeOutline(RunState& run) {
    AcadDocument& drawing = *run.part.drawing;
    DrawKeptFace(run);
    JoinBorder(run);

    AddLayer(drawing, layers::Border2);
    AddLayer(drawing, layers::ThroughXRoute);
    TopView(drawing);
    run.app->ZoomExtents();
    AcadLWPolyline* outline = SortContours(drawing);
    std::vector<LeftContour> left;
    if (CutOutContours(run, left) == PassOutcome::SkipPart) return PassOutcome::SkipPart;

    TrueOutline profile(run);
    profile.Begin(outline);
    if (RouteThroughCircles(run) == PassOutcome::SkipPart) return PassOutcome::SkipPart;
    DropPocketsCutThrough(run);
    DropPocketsCutDeeper(run);
    ConvertPockets(run);
    DropCirclesCutThrough(run);
    return profile.Finish(left);
}

}  // namespace brenvik
