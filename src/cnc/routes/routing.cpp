// Closed contours that stop inside a part become routes and pockets: gathered and joined, tested for
// material above them, given a depth, a direction and a bit, run off the part's edges, and named.
#include "cnc/routes/routing.h"

#include <string>
#include <utility>
#include <vector>

#include "base/letter_case.h"
#include "base/numbers.h"
#include "base/skip.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/polyline_shape.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/part/lengths.h"
#include "cnc/part/open_top.h"
#include "cnc/part/operation_layer.h"
#include "cnc/part/part_measures.h"
#include "cnc/part/run_state.h"
#include "cnc/part/second_side.h"
#include "cnc/plan/bit_reach.h"
#include "cnc/plan/plan_sides.h"
#include "cnc/routes/routing_gather.h"
#include "cnc/routes/routing_known.h"
#include "cnc/routes/routing_mouths.h"
#include "cnc/routes/routing_overrun.h"
#include "cnc/targets/target_table.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

constexpr int Decimals = 5;
/// In millimetres; names and places round away about as much.
constexpr double NarrowestCore = 0.01;

double Round(double value) { return RoundHalfEven(value, Decimals); }

/// What the paths of one pass have in common.
struct Routing {
    RunState& run;
    Box3 part;
    bool proven;
};

/// Whether a contour is cut on this pass. One that neither side will cut has been reported then.
enum class CutFrom { ThisSide, OtherSide, Unknown };

CutFrom SideOf(Routing& routing, AcadEntity& contour, const CutContour& place, std::string_view kind) {
    RunState& run = routing.run;
    if (CutOnFirstSide(run, place)) return CutFrom::OtherSide;
    OpenTop top = OpenTop::Open;
    if (Attempt([&] { top = OpenToTop(run, contour, Decimals); })) return CutFrom::Unknown;
    switch (top) {
        case OpenTop::Open:
        case OpenTop::Grown:
            NoteCut(run, place);
            return CutFrom::ThisSide;
        case OpenTop::Covered:
            break;
    }
    if (run.FirstPass())
        NeedOtherSide(run);
    else
        NoteUncut(run, routing.part, kind, place);
    return CutFrom::OtherSide;
}

/// Lifts a path from below the top to the top plane. Returns its depth, which the thickness states as a
/// negative number.
template <class Path>
double RaiseToTop(const Box3& part, Path& path, double z) {
    const double depth = Round(Round(part.max.z) - Round(z));
    path.SetThickness(-depth);
    path.Move({0, 0, z}, {0, 0, part.max.z});
    return depth;
}

void GiveName(RunState& run, AcadEntity& path, RouteRole role, double depth) {
    ++run.part.RouteCount;
    const std::string layer = RouteLayerName(run, role, run.part.bits.kind, depth);
    EnsureOperationLayer(run, layer);
    path.SetLayer(layer);
    path.Update();
}

bool MakesPocketsOfCores() { return SwitchIsOn(setting::ClearCores); }

/// Whether the bit in hand leaves wood standing in the middle of what it runs around. A path that has run off
/// the part's edges is wider than the side that the bit was chosen by.
bool LeavesCore(const RunState& run, const Box3& part, const AcadLWPolyline& path) {
    const double width = NarrowestCore * MillimetreIn(run.Metric());
    return LeavesCore(SidesOf(path), run.part.bits.ToolDiameter,
                      {part.min.x, part.min.y, part.max.x, part.max.y}, width);
}

/// False when the part is to be given up.
bool MakeRoute(Routing& routing, AcadLWPolyline& path) {
    RunState& run = routing.run;
    const CutContour place = PlaceOf(run, routing.part, path, path.Area());
    switch (SideOf(routing, path, place, "contour")) {
        case CutFrom::ThisSide:
            break;
        case CutFrom::OtherSide:
            path.Delete();
            return true;
        case CutFrom::Unknown:
            KeepForHandWork(run);
            return false;
    }
    // A side towards the air of another recess asks for no bit: the floor is cleared by the sections.
    if (routing.proven && !BitForInsideRoute(run.part.Material, ShortestSide(path)).tool &&
        IsTooShortTowardsAirAlone(run, routing.part, path)) {
        path.Delete();
        return true;
    }
    return CutInside(run, routing.part, path);
}

/// A chain that doesn't close on this side is left to the other one.
void PassOver(Routing& routing, AcadLWPolyline& chain) {
    RunState& run = routing.run;
    if (run.FirstPass())
        NeedOtherSide(run);
    else
        NoteUncut(run, routing.part, "open contour", PlaceOf(run, routing.part, chain, 0));
    chain.Delete();
}

bool CutThrough(Routing& routing, AcadCircle& circle) {
    RunState& run = routing.run;
    const double diameter = circle.Diameter();
    if (!ChooseThroughCircleBit(run.part.bits, run.part.Material, run.part.MaterialKeyText, diameter))
        return false;
    run.part.bits.kind = PathKind::RT;
    RaiseToTop(routing.part, circle, circle.Center().z);
    const double depth = run.part.PartThickness + run.SpoilAmount;
    circle.SetThickness(-depth);
    GiveName(run, circle, RouteRole::ThroughCircle, depth);
    return true;
}

/// False when the part is to be given up.
bool MakeCirclePocket(Routing& routing, AcadCircle& circle) {
    RunState& run = routing.run;
    const double diameter = circle.Diameter(), z = circle.Center().z;
    constexpr double quarterOfPi = 0.78539816339744831;
    const CutContour place = PlaceOf(run, routing.part, circle, quarterOfPi * diameter * diameter);
    switch (SideOf(routing, circle, place, "circle")) {
        case CutFrom::ThisSide:
            break;
        case CutFrom::OtherSide:
            circle.Delete();
            return true;
        case CutFrom::Unknown:
            KeepForHandWork(run);
            return false;
    }
    if (Round(z) <= Round(routing.part.min.z)) return CutThrough(routing, circle);
    return CutCirclePocket(run, routing.part, circle);
}

/// False when the part is to be given up.
bool MakePaths(RunState& run, bool proven) {
    run.part.RouteDirection = DirectionOfCut(run.part.Material);
    Routing routing{run, BoxOfPart(run), proven};
    const GatheredContours contours = GatherContours(*run.part.drawing, routing.part);
    if (!contours.followable) {
        KeepForHandWork(run);
        return false;
    }
    for (AcadLWPolyline* chain : contours.open) PassOver(routing, *chain);
    for (AcadLWPolyline* path : contours.closed)
        if (!MakeRoute(routing, *path)) return false;
    for (AcadCircle* circle : AllOn<AcadCircle>(*run.part.drawing, layers::RouteCirclePv))
        if (!MakeCirclePocket(routing, *circle)) return false;
    return true;
}

}  // namespace

std::string_view DirectionOfCut(const MaterialRecord& material) {
    return FoldLower(material.direction) == "c" ? Clockwise : CounterClockwise;
}

double ShortestSide(const AcadLWPolyline& path) { return ShortestSide(path, Decimals); }

bool CutInside(RunState& run, const Box3& part, AcadLWPolyline& path) {
    const double depth = RaiseToTop(part, path, path.GetBoundingBox().min.z);
    const double shortest = ShortestSide(path);
    BringToDirection(path, run.part.RouteDirection);
    if (!ChooseInsideRouteBit(run.part.bits, run.part.Material, run.part.MaterialKeyText, shortest,
                              TraitsOf(run.target).choiceDialog))
        return false;
    RunOffEdges(path, part, OverrunOf(run.part.bits.ToolDiameter));
    if (run.part.bits.kind == PathKind::RT && MakesPocketsOfCores() && LeavesCore(run, part, path))
        run.part.bits.kind = PathKind::PKC;
    GiveName(run, path, RouteRole::Inside, depth);
    return true;
}

void ClearGrownCore(RunState& run, const Box3& part, AcadLWPolyline& path, const GrownRoute& route) {
    if (!MakesPocketsOfCores()) return;
    // Paths that follow may have the bit in hand by default.
    const BitChoice inHand = run.part.bits;
    UseTool(run.part.bits, route.tool);
    if (LeavesCore(run, part, path)) {
        run.part.bits.kind = PathKind::PKC;
        const auto count = std::exchange(run.part.RouteCount, route.counter - 1);
        GiveName(run, path, RouteRole::Inside, -path.Thickness());
        run.part.RouteCount = count;
    }
    run.part.bits = inHand;
}

bool CutCirclePocket(RunState& run, const Box3& part, AcadCircle& circle) {
    if (!ChooseCirclePocketBit(run.part.bits, run.part.Material, run.part.MaterialKeyText, circle.Diameter()))
        return false;
    GiveName(run, circle, RouteRole::CirclePocket, RaiseToTop(part, circle, circle.Center().z));
    return true;
}

PassOutcome RecogniseRoutes(RunState& run, bool proven) {
    run.part.RouteCount = 0;
    if (run.FirstPass()) run.firstSide.paths.clear();
    return MakePaths(run, proven) ? PassOutcome::GoOn : PassOutcome::SkipPart;
}

}  // namespace brenvik
