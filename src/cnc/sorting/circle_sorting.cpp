// The order matters: projection and leftovers go first, then circles are sorted by axis, twins taken out, and
// the rest is split by diameter and height.
#include "cnc/sorting/circle_sorting.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "base/numbers.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/plan_grid.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/part/lengths.h"
#include "cnc/part/run_state.h"
#include "cnc/sorting/slanted_holes.h"
#include "cnc/targets/target_table.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

constexpr int CompareDecimals = 6;
constexpr int BoreColor = 2, ArcColor = 2, DeleteColor = 222;
// Narrower than any drill: leftovers of modelling.
constexpr double SmallestDiameter = 0.002;
constexpr Point3 Up{0, 0, 1};

/// Where a circle may lie and stay. The names compare letter by letter, so that a circle on the layer of
/// the exploded faces is no candidate: those have been gathered before.
constexpr auto KeptLayers = std::to_array<std::string_view>(
    {layers::RegionCopy, layers::CircleHold, layers::HorzCircleHold, layers::Zero, layers::RouteCircleHold,
     layers::MaxCircleHold, layers::SolidHold});

/// The order is that of the layers in the part's file, and another one than that of `layers::All`.
void AddSortingLayers(AcadDocument& drawing, std::string_view boreLayer) {
    for (const std::string_view name :
         {layers::RegionCopyCopy, layers::SolidHold, layers::LinePv, layers::RegionPv, layers::RegionPv2,
          layers::CirclePv, layers::RouteCirclePv, layers::ThroughRouteCirclePv, layers::CircleHold2,
          layers::RouteCircleHold, layers::MaxCircleHold, layers::Border, layers::Border2,
          layers::RoutingLayer1, layers::RoutingLayer2, layers::ThroughXRoute})
        AddLayer(drawing, name);
    AddLayer(drawing, layers::HorzCircleHold, BoreColor);
    AddLayer(drawing, boreLayer, BoreColor);
    AddLayer(drawing, layers::ArcPv, ArcColor);
    AddLayer(drawing, layers::Delete, DeleteColor);
}

void DropLeftovers(AcadDocument& drawing) {
    for (AcadCircle* circle : All<AcadCircle>(drawing)) {
        const std::string layer = circle->Layer();
        const bool kept = std::find(KeptLayers.begin(), KeptLayers.end(), layer) != KeptLayers.end();
        if (!kept || circle->Diameter() < SmallestDiameter) circle->Delete();
    }
}

/// Vertical axes go on to the next steps, all looking up; horizontal ones are bores of the edges. A slanted
/// circle stays where it is: no machine here drills it.
void TellAxesApart(RunState& run, const Box3& part, std::string_view boreLayer) {
    std::vector<const AcadCircle*> slanted;
    for (AcadCircle* circle : AllOn<AcadCircle>(*run.part.drawing, layers::CircleHold)) {
        const double up = RoundHalfEven(circle->Normal().z, CompareDecimals);
        if (std::abs(up) == 1) {
            circle->SetNormal(Up);
            circle->SetLayer(layers::CircleHold2);
        } else if (up == 0) {
            circle->SetLayer(boreLayer);
        } else {
            slanted.push_back(circle);
        }
    }
    if (run.FirstPass()) NoteSlantedHoles(run, part, slanted);
}

/// One record of the list that twins are looked up in.
struct Listed {
    AcadCircle* circle = nullptr;
    Point3 center;
    double diameter = 0;
    bool gone = false;
};

bool Twins(const Listed& a, const Listed& b) {
    return NearlyEqual(a.center, b.center) && NearlyEqual(a.diameter, b.diameter);
}

/// A rim belongs to two faces or more, and each of them brought its own circle. Of those on each other the
/// last one in the drawing stays. Places count without their sign: the part's corner lies at the
/// origin, so a sign is no more than the noise about a coordinate of 0.
void DropTwins(AcadDocument& drawing) {
    std::vector<Listed> list;
    PlanGrid grid;
    for (AcadCircle* circle : AllOn<AcadCircle>(drawing, layers::CircleHold2)) {
        const Point3 center = circle->Center();
        list.push_back({circle,
                        {std::abs(center.x), std::abs(center.y), std::abs(center.z)},
                        std::abs(circle->Diameter())});
        grid.Add(list.back().center.x, list.back().center.y, list.size() - 1);
    }
    for (std::size_t own = 0; own < list.size(); ++own) {
        const std::vector<std::size_t> near = grid.Near(list[own].center.x, list[own].center.y);
        list[own].gone = std::ranges::any_of(near, [&](std::size_t other) {
            return other != own && !list[other].gone && Twins(list[own], list[other]);
        });
        if (list[own].gone) list[own].circle->Delete();
    }
}

void SplitBySize(RunState& run) {
    for (AcadCircle* circle : AllOn<AcadCircle>(*run.part.drawing, layers::CircleHold2)) {
        if (RoundHalfEven(circle->Diameter(), CompareDecimals) > run.part.CircleSize)
            circle->SetLayer(layers::RouteCircleHold);
        else if (SameLength(circle->Center().z, run.part.PartThickness))
            circle->SetLayer(layers::MaxCircleHold);
        else
            circle->SetLayer(layers::CircleHold);
    }
}

}  // namespace

void SortCircles(RunState& run, const Box3& part) {
    const std::string_view boreLayer = TraitsOf(run.target).horizontalWorkLayer;
    AddSortingLayers(*run.part.drawing, boreLayer);
    DropLeftovers(*run.part.drawing);
    run.part.CircleSize = NumberSetting(setting::CircleSize);
    TellAxesApart(run, part, boreLayer);
    DropTwins(*run.part.drawing);
    SplitBySize(run);
}

}  // namespace brenvik
