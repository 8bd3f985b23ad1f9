// Circular through routes: a bit for each, and its name.
#include "cnc/outline/through_circles.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <tuple>

#include "base/numbers.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/outline/cut_outs.h"
#include "cnc/part/operation_layer.h"
#include "cnc/plan/plan_piece.h"
#include "cnc/targets/target_table.h"

namespace brenvik {

namespace {

constexpr int PlaceDecimals = 6, AxisDecimals = 4;
constexpr double SamePlace = 1e-5;

/// Of circles alike in diameter and centre the last one stays.
void DeleteTwins(AcadDocument& drawing) {
    using Place = std::tuple<double, double, double, double>;
    std::set<Place> taken;
    const std::vector<AcadCircle*> circles = AllOn<AcadCircle>(drawing, layers::ThroughRouteCirclePv);
    for (auto circle = circles.rbegin(); circle != circles.rend(); ++circle) {
        const Point3 center = Rounded((*circle)->Center(), PlaceDecimals);
        const Place place{RoundHalfEven((*circle)->Diameter(), PlaceDecimals), center.x, center.y, center.z};
        if (!taken.insert(place).second) (*circle)->Delete();
    }
}

/// Whether the first side has a cut right through at the circle's place.
bool FirstSideCutsThrough(const RunState& run, const AcadCircle& circle) {
    const Point3 center = circle.Center();
    const double slack = SamePlace * std::max(1.0, circle.Radius());
    return std::ranges::any_of(run.firstSide.removals, [&](const Removal& removal) {
        const bool through = removal.low <= slack && removal.high >= run.part.ExtentZ - slack;
        return through && std::ranges::all_of(removal.sides, [&](const PlanSide& side) {
                   if (side.bulge == 0) return false;
                   const PlanRound round = RoundOf(side);
                   return std::abs(round.center.x - center.x) < slack &&
                          std::abs(run.part.ExtentY - round.center.y - center.y) < slack &&
                          std::abs(round.radius - circle.Radius()) < slack;
               });
    });
}

/// With its share of the spoil board a path is deeper than the part, and cut through all the same. One that
/// leaves a skin is as deep as some hole may be that stops inside.
bool IsCutThrough(const RunState& run, const AcadCircle& circle) {
    const Box3 box = circle.GetBoundingBox();
    const double depth = RoundHalfEven(box.max.z - box.min.z, PlaceDecimals);
    if (depth >= run.part.PartThickness) return true;
    return depth == RoundHalfEven(ThroughDepth(run), PlaceDecimals) && FirstSideCutsThrough(run, circle);
}

}  // namespace

PassOutcome RouteThroughCircles(RunState& run) {
    AcadDocument& drawing = *run.part.drawing;
    DeleteTwins(drawing);
    for (AcadCircle* circle : AllOn<AcadCircle>(drawing, layers::ThroughRouteCirclePv)) {
        if (RoundHalfEven(circle->Normal().z, AxisDecimals) != 1) continue;
        if (!ChooseThroughCircleBit(run.part.bits, run.part.Material, run.part.MaterialKeyText,
                                    circle->Diameter()))
            return PassOutcome::SkipPart;
        const Point3 center = circle->Center();
        circle->SetThickness(-ThroughDepth(run));
        circle->SetCenter({center.x, center.y, TopPlane(run)});
        const std::string layer =
            RouteLayerName(run, RouteRole::ThroughCircle, PathKind::RT, ThroughDepth(run));
        EnsureOperationLayer(run, layer);
        circle->SetLayer(layer);
        ++run.part.RouteCount;
    }
    return PassOutcome::GoOn;
}

void DropCirclesCutThrough(RunState& run) {
    if (run.FirstPass()) return;
    for (AcadCircle* circle : All<AcadCircle>(*run.part.drawing)) {
        // Most targets have no word for what is cut through; those that have one for pockets leave them out.
        const bool upright = std::abs(RoundHalfEven(circle->Normal().z, AxisDecimals)) == 1;
        if (!upright || circle->Layer().starts_with(PathKindText(PathKind::PKS))) continue;
        if (IsCutThrough(run, *circle)) circle->Delete();
    }
}

}  // namespace brenvik
