// Rims of floors made whole again, found by their axis.
#include "cnc/sorting/hole_floors.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "base/numbers.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/plan_grid.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/part/run_state.h"

namespace brenvik {

namespace {

constexpr int NormalDecimals = 6;

bool IsUpright(const Point3& normal) { return std::abs(RoundHalfEven(normal.z, NormalDecimals)) == 1; }

/// What is left of a floor's rim: its axis, its height, and the arcs.
struct BrokenRim {
    Point3 center;
    double radius = 0;
    std::vector<AcadArc*> arcs;
};

bool Within(const BrokenRim& rim, const Point3& point) {
    const double distance = std::hypot(point.x - rim.center.x, point.y - rim.center.y);
    return distance < rim.radius || NearlyEqual(distance, rim.radius);
}

/// The rims of whole holes, by their place in plan.
class WholeRims {
  public:
    explicit WholeRims(AcadDocument& drawing) {
        for (const AcadCircle* circle : All<AcadCircle>(drawing)) {
            if (!IsUpright(circle->Normal())) continue;
            const Point3 center = circle->Center();
            mGrid.Add(center.x, center.y, mRims.size());
            mRims.push_back({center, circle->Radius(), {}});
        }
    }
    bool HasAxisOf(const AcadArc& arc) const {
        const Point3 center = arc.Center();
        for (const std::size_t number : mGrid.Near(center.x, center.y)) {
            const BrokenRim& rim = mRims[number];
            if (NearlyEqual(rim.center.x, center.x) && NearlyEqual(rim.center.y, center.y) &&
                NearlyEqual(rim.radius, arc.Radius()))
                return true;
        }
        return false;
    }

  private:
    std::vector<BrokenRim> mRims;
    PlanGrid mGrid;
};

std::vector<BrokenRim> FindBrokenRims(AcadDocument& drawing, const Box3& part) {
    std::vector<AcadArc*> arcs;
    for (AcadArc* arc : AllOn<AcadArc>(drawing, layers::BrenvikExplode)) {
        const double level = arc->Center().z;
        if (IsUpright(arc->Normal()) && level > part.min.z && level < part.max.z &&
            !NearlyEqual(level, part.min.z) && !NearlyEqual(level, part.max.z))
            arcs.push_back(arc);
    }
    std::vector<BrokenRim> broken;
    if (arcs.empty()) return broken;
    const WholeRims whole(drawing);
    for (AcadArc* arc : arcs) {
        if (!whole.HasAxisOf(*arc)) continue;
        const Point3 center = arc->Center();
        const auto known = std::find_if(broken.begin(), broken.end(), [&](const BrokenRim& rim) {
            return NearlyEqual(rim.center, center) && NearlyEqual(rim.radius, arc->Radius());
        });
        if (known != broken.end())
            known->arcs.push_back(arc);
        else
            broken.push_back({center, arc->Radius(), {arc}});
    }
    return broken;
}

/// The lines on the floor; empty where one of them leaves the hole.
std::optional<std::vector<AcadLine*>> LinesOnFloor(const BrokenRim& rim,
                                                   const std::vector<AcadLine*>& lines) {
    std::vector<AcadLine*> found;
    for (AcadLine* line : lines) {
        const Point3 start = line->StartPoint(), end = line->EndPoint();
        if (!NearlyEqual(start.z, rim.center.z) || !NearlyEqual(end.z, rim.center.z)) continue;
        const bool startWithin = Within(rim, start), endWithin = Within(rim, end);
        if (startWithin && endWithin)
            found.push_back(line);
        else if (startWithin || endWithin)
            return std::nullopt;
    }
    return found;
}

}  // namespace

void CompleteHoleFloors(RunState& run, const Box3& part) {
    AcadDocument& drawing = *run.part.drawing;
    const std::vector<BrokenRim> broken = FindBrokenRims(drawing, part);
    if (broken.empty()) return;
    std::vector<AcadLine*> lines = AllOn<AcadLine>(drawing, layers::BrenvikExplode);
    for (const BrokenRim& rim : broken) {
        const std::optional<std::vector<AcadLine*>> onFloor = LinesOnFloor(rim, lines);
        if (!onFloor) continue;
        for (AcadArc* arc : rim.arcs) arc->Delete();
        for (AcadLine* line : *onFloor) {
            line->Delete();
            std::erase(lines, line);
        }
        drawing.ModelSpace().AddCircle(rim.center, rim.radius)->SetLayer(layers::CircleHold);
    }
}

}  // namespace brenvik
