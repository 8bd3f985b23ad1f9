// Cut-outs: the trial cut from above, the bit for the tightest side, and the name.
#include "cnc/outline/cut_outs.h"

#include <optional>
#include <utility>

#include "base/numbers.h"
#include "base/skip.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/polyline_shape.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/part/open_top.h"
#include "cnc/part/operation_layer.h"
#include "cnc/part/second_side.h"
#include "cnc/part/told.h"
#include "cnc/targets/target_table.h"

namespace brenvik {

namespace {

constexpr int Decimals = 6;

/// Null if the modeller can't make a body of the contour, or the trial failed.
std::optional<OpenTop> TriedFromAbove(RunState& run, AcadLWPolyline& contour) {
    std::optional<OpenTop> found;
    Skip([&] { found = OpenToTop(run, contour, Decimals); });
    if (found == OpenTop::Grown) found.reset();
    return found;
}

void LeaveForOtherSide(RunState& run, AcadLWPolyline& contour) {
    contour.Delete();
    NeedOtherSide(run);
}

/// Puts the contour on its layer with the tool that is selected now.
void NameCutOut(RunState& run, AcadLWPolyline& contour) {
    ++run.part.RouteCount;
    const std::string layer = RouteLayerName(run, RouteRole::Through, PathKind::RT, ThroughDepth(run));
    EnsureOperationLayer(run, layer);
    contour.SetLayer(layer);
    contour.SetColor(layers::CutOutColor);
    contour.SetThickness(-ThroughDepth(run));
    BringToDirection(contour, Clockwise);
    run.part.RouteDirection = DirectionOf(contour);
}

/// Tools 2 and 3 of one diameter are never tried against each other, so the bit of an earlier path stays, be
/// it as wide as it may.
void TellKeptBit(RunState& run, const AcadLWPolyline& contour, double shortest) {
    // The second side drops what goes through.
    if (!run.FirstPass()) return;
    const ThroughContourBit bit = BitForThroughContour(run.part.Material, shortest);
    if (bit.tool || !bit.anyFits ||
        (run.part.bits.ToolDiameter > 0 && run.part.bits.ToolDiameter <= shortest))
        return;
    const Footprint place = FootprintOf(contour);
    const std::string kept =
        run.part.bits.ToolDiameter > 0
            ? "the bit of " + ReportedLength(run.part.bits.ToolDiameter) + " that was in hand"
            : "no bit";
    NoteOnce(run.part.differences,
             "tools 2 and 3 of the material " + run.part.MaterialKeyText + " are of one diameter, " +
                 ReportedLength(run.part.Material.tools[1].diameter) + ", so the cut-out from " +
                 ReportedLength(place.minX) + "," + ReportedLength(place.minY) + " to " +
                 ReportedLength(place.maxX) + "," + ReportedLength(place.maxY) + " with a side of " +
                 ReportedLength(shortest) + " got " + kept);
}

}  // namespace

double ThroughDepth(const RunState& run) { return run.part.PartThickness + run.SpoilAmount; }

bool IsCutThrough(const RunState& run, const AcadLWPolyline& path) {
    if (path.Color() == layers::OutlineColor) return false;
    const double depth = -path.Thickness();
    if (depth >= run.part.PartThickness) return true;
    return path.Color() == layers::CutOutColor && NearlyEqual(depth, ThroughDepth(run));
}

double TopPlane(const RunState& run) {
    return RoundHalfEven(run.part.PartBottomZ + run.part.PartThickness, Decimals);
}

PassOutcome CutOut(RunState& run, AcadLWPolyline& contour) {
    if (!contour.Closed()) {
        LeaveForOtherSide(run, contour);
        return PassOutcome::GoOn;
    }
    const std::optional<OpenTop> above = TriedFromAbove(run, contour);
    if (!above) {
        contour.Delete();
        NoteUntilProved(run, "a contour of the part's face makes no body to try the cut with: no operation");
        return PassOutcome::GoOn;
    }
    if (*above == OpenTop::Covered) {
        LeaveForOtherSide(run, contour);
        return PassOutcome::GoOn;
    }
    contour.SetElevation(TopPlane(run));
    run.part.RouteDirection = DirectionOf(contour);
    const double shortest = ShortestSide(contour, Decimals);
    if (!ChooseThroughContourBit(run.part.bits, run.part.Material, run.part.MaterialKeyText, shortest))
        return PassOutcome::SkipPart;
    TellKeptBit(run, contour, shortest);
    NameCutOut(run, contour);
    return PassOutcome::GoOn;
}

PassOutcome CutOutContours(RunState& run, std::vector<LeftContour>& left) {
    for (AcadLWPolyline* contour : AllOn<AcadLWPolyline>(*run.part.drawing, layers::ThroughXRoute)) {
        LeftContour seen{contour->Coordinates(), FootprintOf(*contour)};
        const int routes = run.part.RouteCount;
        if (CutOut(run, *contour) == PassOutcome::SkipPart) return PassOutcome::SkipPart;
        if (run.part.RouteCount == routes) left.push_back(std::move(seen));
    }
    return PassOutcome::GoOn;
}

}  // namespace brenvik
