// Between the drawing of a part and the geometry of what is missing.
#include "cnc/clearing/clear_rest.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>
#include <vector>

#include "base/numbers.h"
#include "base/skip.h"
#include "cnc/clearing/made_removals.h"
#include "cnc/clearing/needless_cuts.h"
#include "cnc/clearing/open_mouths.h"
#include "cnc/clearing/rest_of_air.h"
#include "cnc/clearing/sound_paths.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/polyline_shape.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/holes/vertical_drilling.h"
#include "cnc/outline/cut_outs.h"
#include "cnc/outline/pockets.h"
#include "cnc/outline/through_circles.h"
#include "cnc/part/part_measures.h"
#include "cnc/part/second_side.h"
#include "cnc/proof/run_proof.h"
#include "cnc/routes/routing.h"
#include "session/ports/platform.h"
#include "session/session.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

constexpr int PlainColor = 6, SizeDecimals = 6, DiameterDecimals = 5;

/// Whether the removal is a circle of the same axis and diameter. A path of arcs is none.
bool IsCircle(const Removal& removal, const AcadLWPolyline* path, const PlanRound& round, double slack) {
    if (path != nullptr) return false;
    return std::ranges::all_of(removal.sides, [&](const PlanSide& side) {
        if (side.bulge == 0) return false;
        const PlanRound own = RoundOf(side);
        return std::abs(own.radius - round.radius) < slack &&
               std::abs(own.center.x - round.center.x) < slack &&
               std::abs(own.center.y - round.center.y) < slack;
    });
}

/// Whether the part has a slope between two heights.
bool IsSloped(const PartSlabs& slabs, double low, double high, double slack) {
    return std::ranges::any_of(slabs.Slabs(), [&](const PartSlab& slab) {
        return slab.sloped && slab.low < high - slack && low + slack < slab.high;
    });
}

/// Whether this pass already has a hole of the same axis and diameter that is as deep, or whose rest belongs
/// to a slope, such as a countersink's, which is reported on its own. One that another feature has bitten at
/// half its depth has been drilled to there alone.
bool IsMade(const RestCut& cut, const Removals& removals, const PartSlabs& slabs, double slack) {
    for (std::size_t i = 0; i < removals.paths.size(); ++i) {
        const Removal& made = removals.all[i];
        if (!IsCircle(made, removals.paths[i], *cut.round, slack)) continue;
        if (made.low <= cut.floor + slack || IsSloped(slabs, cut.floor, made.low, slack)) return true;
    }
    return false;
}

/// Turns cuts into operations.
class Placing {
  public:
    Placing(RunState& run, const Removals& removals, const PartSlabs& slabs)
        : mRun(run), mRemovals(removals), mSlabs(slabs), mPart(BoxOfPart(run)) {}

    /// False where no bit fits.
    bool Place(const RestCut& cut) {
        if (cut.round) return PlaceCircle(cut);
        return cut.through ? PlaceCutOut(cut) : PlacePath(cut);
    }

  private:
    bool PlaceCircle(const RestCut& cut) {
        const PlanRound& round = *cut.round;
        // The noise of sections would show in the name.
        const double diameter = RoundHalfEven(2 * round.radius, DiameterDecimals);
        const bool drilled = RoundHalfEven(diameter, SizeDecimals) <= mRun.part.CircleSize;
        if (drilled && IsMade(cut, mRemovals, mSlabs, UnitOf(mRun) * 0.01)) return false;
        const bool fits =
            drilled || (cut.through ? BitForThroughCircle(mRun.part.Material, diameter).has_value()
                                    : BitForCirclePocket(mRun.part.Material, diameter).has_value());
        if (!fits) return false;
        AcadCircle& circle = *mRun.part.drawing->ModelSpace().AddCircle(
            {round.center.x, round.center.y, cut.floor}, diameter / 2);
        circle.SetColor(PlainColor);
        if (drilled) {
            DrillAt(mRun, circle, cut.fromTopFace);
        } else if (cut.through) {
            circle.SetLayer(layers::ThroughRouteCirclePv);
            RouteThroughCircles(mRun);
        } else {
            circle.SetLayer(layers::RouteCirclePv);
            CutCirclePocket(mRun, mPart, circle);
        }
        return true;
    }

    AcadLWPolyline& Draw(const RestCut& cut) {
        std::vector<PathVertex> corners;
        std::vector<double> flat;
        for (const PlanSide& side : cut.path) {
            corners.push_back({side.from.x, side.from.y, side.bulge});
            flat.insert(flat.end(), {side.from.x, side.from.y});
        }
        AcadLWPolyline& path = *mRun.part.drawing->ModelSpace().AddLightWeightPolyline(flat);
        path.SetClosed(true);
        SetVertices(path, corners);
        path.SetElevation(cut.floor);
        return path;
    }

    bool PlaceCutOut(const RestCut& cut) {
        AcadLWPolyline& path = Draw(cut);
        path.SetLayer(layers::ThroughXRoute);
        const bool fits = BitForThroughContour(mRun.part.Material, ShortestSide(path)).tool.has_value();
        if (fits)
            CutOut(mRun, path);
        else
            path.Delete();
        return fits;
    }

    bool PlacePath(const RestCut& cut) {
        AcadLWPolyline& path = Draw(cut);
        path.SetLayer(layers::RoutingLayer2);
        const bool fits = BitForInsideRoute(mRun.part.Material, ShortestSide(path)).tool.has_value();
        if (fits)
            CutInside(mRun, mPart, path);
        else
            path.Delete();
        return fits;
    }

    RunState& mRun;
    const Removals& mRemovals;
    const PartSlabs& mSlabs;
    const Box3 mPart;
};

/// How many of the cuts are operations now.
std::size_t PlaceCuts(RunState& run, const std::vector<RestCut>& cuts, const Removals& removals,
                      const PartSlabs& slabs) {
    if (cuts.empty()) return 0;
    std::size_t placed = 0;
    // Later steps read the outline's direction here.
    const std::string direction = run.part.RouteDirection;
    Placing placing(run, removals, slabs);
    for (const RestCut& cut : cuts) {
        run.part.RouteDirection = DirectionOfCut(run.part.Material);
        if (!placing.Place(cut)) continue;
        ++placed;
        for (const std::size_t old : cut.replaces) removals.paths[old]->Delete();
    }
    run.part.RouteDirection = direction;
    ConvertPockets(run);
    return placed;
}

const MaterialTool* ToolOf(const RunState& run, const OperationName& name, double bit) {
    for (const MaterialTool& tool : run.part.Material.tools)
        if ((name.tool.empty() || tool.number == name.tool) && NearlyEqual(tool.diameter, bit)) return &tool;
    return nullptr;
}

/// Lets a path that stops inside run off into what air it opens into.
void OpenMouthsOf(RunState& run, const PartSlabs& slabs, const Removals& removals, std::size_t number) {
    const Removal& removal = removals.all[number];
    const PartSlab* const slab = slabs.SlabFrom(removal.low);
    if (slab == nullptr) return;
    const Box3 part = BoxOfPart(run);
    const WrittenOperation& operation = removals.operations[number];
    const std::optional<OperationName> name = NameOf(run, operation);
    const double bit = BitOf(run, name, operation);
    const double overrun = (bit + WidestBit(run.part.Material)) / 2;
    const auto path = RunIntoAir({removal.sides,
                                  slab->shadow,
                                  {part.min.x, part.min.y, part.max.x, part.max.y},
                                  bit,
                                  overrun,
                                  operation.followed,
                                  UnitOf(run),
                                  slabs.Same()});
    if (!path) return;
    Redraw(run, *removals.paths[number], *path);
    const MaterialTool* const tool = operation.followed && name ? ToolOf(run, *name, bit) : nullptr;
    if (tool != nullptr)
        ClearGrownCore(run, part, *removals.paths[number], {*tool, name->counter.value_or(1)});
}

void OpenMouths(RunState& run, const PartSlabs& slabs) {
    const Removals removals = RemovalsOf(run);
    // A path whose bit's way arithmetic doesn't close stays as it is.
    for (std::size_t i = 0; i < removals.paths.size(); ++i)
        if (removals.all[i].mayGo) Skip([&] { OpenMouthsOf(run, slabs, removals, i); });
}

/// The second side is asked for where anything is missing from below. What has been left to it and is made on
/// the first side now needs none.
void SettleSecondSide(RunState& run, const Rest& rest, std::size_t placed) {
    if (rest.fromBelow) return NeedOtherSide(run);
    if (placed == 0 || SwitchIsOn(setting::HorzBoreOn2)) return;
    CancelOtherSide(run);
}

}  // namespace

PassOutcome ClearRest(RunState& run) {
    SectionPort* const port = ThePlatform().sections;
    if (port == nullptr) return PassOutcome::GoOn;
    Skip([&] {
        const std::unique_ptr<SolidSections> part = port->HoldSolid(LastSolid(*run.part.drawing).ObjectID());
        if (!part) return;
        const PartSlabs slabs(*part, UnitOf(run));
        DropStrayPaths(run, slabs);
        const Removals removals = RemovalsOf(run);
        const Rest rest =
            RestOf({*part, slabs, removals.all, UnitOf(run), WidestBit(run.part.Material)}, run.FirstPass());
        const std::size_t placed = PlaceCuts(run, rest.cuts, removals, slabs);
        CleanPaths(run, slabs);
        OpenMouths(run, slabs);
        CleanPaths(run, slabs);
        DropNeedlessCuts(run, slabs);
        if (run.FirstPass()) SettleSecondSide(run, rest, placed);
    });
    if (run.FirstPass()) run.firstSide.removals = RemovalsOf(run).all;
    return PassOutcome::GoOn;
}

}  // namespace brenvik
