// Circular through routes: a bit for each, and its name.
#include "cnc/outline/through_circles.h"

#include <cmath>
#include <set>
#include <tuple>

#include "base/numbers.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/outline/cut_outs.h"
#include "cnc/part/operation_layer.h"
#include "cnc/targets/target_table.h"

namespace brenvik {

namespace {

constexpr int PlaceDecimals = 6, AxisDecimals = 4;

/// Of circles alike in diameter and centre the last one stays.
void DeleteTwins(AcadDocument& drawing) {
    using Place = std::tuple<double, double, double, double>;
    std::set<Place> taken;
    const std::vector<AcadCircle*> circles = AllOn<AcadCircle>(drawing, layers::ThroughRouteCirclePV);
    for (auto circle = circles.rbegin(); circle != circles.rend(); ++circle) {
        const Point3 center = Rounded((*circle)->Center(), PlaceDecimals);
        const Place place{RoundHalfEven((*circle)->Diameter(), PlaceDecimals), center.x, center.y, center.z};
        if (!taken.insert(place).second) (*circle)->Delete();
    }
}

}  // namespace

PassOutcome RouteThroughCircles(RunState& run) {
    AcadDocument& drawing = *run.part.drawing;
    DeleteTwins(drawing);
    for (AcadCircle* circle : AllOn<AcadCircle>(drawing, layers::ThroughRouteCirclePV)) {
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
        const Box3 box = circle->GetBoundingBox();
        // With its share of the spoil board a path is deeper than the part, and cut through all the same.
        if (RoundHalfEven(box.max.z - box.min.z, PlaceDecimals) >= run.part.PartThickness) circle->Delete();
    }
}

}  // namespace brenvik
