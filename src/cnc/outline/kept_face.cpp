// The kept face looks down, so its arcs run the wrong way round for a path; the projection has them from
// above.
#include "cnc/outline/kept_face.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

#include "base/numbers.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/outline/cut_outs.h"
#include "cnc/part/run_state.h"
#include "cnc/part/told.h"

namespace brenvik {

namespace {

constexpr int BorderColor = 1;
constexpr int AxisDecimals = 6, HeightDecimals = 4;
constexpr Point3 Up{0, 0, 1};

/// Whether the kept face is level. It may be upright where the letters put a part on edge, or where two of
/// its sizes are equal; its boundary is no outline then.
bool LiesFlat(AcadDocument& drawing) {
    std::optional<Box3> box;
    for (const AcadEntity* edge : AllOn<AcadEntity>(drawing, layers::RegionCopy)) {
        const Box3 reach = edge->GetBoundingBox();
        if (!box) box = reach;
        box->min.z = std::min(box->min.z, reach.min.z);
        box->max.z = std::max(box->max.z, reach.max.z);
    }
    return box && NearlyEqual(box->min.z, box->max.z);
}

/// An arc as it is seen from above: counter-clockwise from one end to the other.
struct PlanArc {
    Point3 center, from, to;
    double radius = 0;
};

/// Empty for an arc that isn't level.
std::optional<PlanArc> SeenFromAbove(const AcadArc& arc) {
    const double axis = RoundHalfEven(arc.Normal().z, AxisDecimals);
    if (axis == 1) return PlanArc{arc.Center(), arc.StartPoint(), arc.EndPoint(), arc.Radius()};
    if (axis == -1) return PlanArc{arc.Center(), arc.EndPoint(), arc.StartPoint(), arc.Radius()};
    return std::nullopt;
}

bool SameInPlan(const Point3& a, const Point3& b) { return NearlyEqual(a.x, b.x) && NearlyEqual(a.y, b.y); }

bool SameInPlan(const PlanArc& a, const PlanArc& b) {
    return NearlyEqual(a.radius, b.radius) && SameInPlan(a.center, b.center) && SameInPlan(a.from, b.from) &&
           SameInPlan(a.to, b.to);
}

std::vector<PlanArc> ArcsOfKeptFace(AcadDocument& drawing) {
    std::vector<PlanArc> arcs;
    for (const AcadArc* arc : AllOn<AcadArc>(drawing, layers::RegionCopy))
        if (const std::optional<PlanArc> seen = SeenFromAbove(*arc)) arcs.push_back(*seen);
    return arcs;
}

bool LooksDown(const AcadArc& arc) { return RoundHalfEven(arc.Normal().z, AxisDecimals) == -1; }

void SweepLeftovers(AcadDocument& drawing) {
    for (const std::string_view layer : std::array{layers::RegionCopy, layers::CircleHold, layers::CirclePv})
        for (AcadCircle* circle : AllOn<AcadCircle>(drawing, layer))
            if (std::abs(RoundHalfEven(circle->Normal().z, AxisDecimals)) == 1) circle->Delete();
    for (AcadArc* arc : All<AcadArc>(drawing))
        if (LooksDown(*arc)) arc->Delete();
}

void PutOnBorder(AcadEntity& curve) {
    curve.SetLayer(layers::Border);
    curve.SetColor(BorderColor);
}

void DrawLines(AcadDocument& drawing) {
    for (AcadLine* line : AllOn<AcadLine>(drawing, layers::RegionCopy)) {
        const bool level = RoundHalfEven(line->StartPoint().z, HeightDecimals) ==
                           RoundHalfEven(line->EndPoint().z, HeightDecimals);
        if (level && RoundHalfEven(line->Normal().z, AxisDecimals) == -1) line->SetNormal(Up);
        PutOnBorder(*line);
    }
}

void DrawAnew(AcadDocument& drawing, const PlanArc& arc) {
    const auto angleTo = [&arc](const Point3& end) {
        return std::atan2(end.y - arc.center.y, end.x - arc.center.x);
    };
    PutOnBorder(*drawing.ModelSpace().AddArc(arc.center, arc.radius, angleTo(arc.from), angleTo(arc.to)));
}

void DrawArcs(AcadDocument& drawing, const std::vector<PlanArc>& wanted) {
    struct Projected {
        AcadArc* arc = nullptr;
        PlanArc seen;
    };
    std::vector<Projected> projected;
    for (AcadArc* arc : AllOn<AcadArc>(drawing, layers::ArcPv))
        if (const std::optional<PlanArc> seen = SeenFromAbove(*arc)) projected.push_back({arc, *seen});
    for (const PlanArc& arc : wanted) {
        const auto twin = std::find_if(projected.begin(), projected.end(), [&arc](const Projected& other) {
            return other.arc != nullptr && SameInPlan(arc, other.seen);
        });
        if (twin == projected.end()) {
            DrawAnew(drawing, arc);
            continue;
        }
        twin->arc->Move(twin->seen.center, {twin->seen.center.x, twin->seen.center.y, arc.center.z});
        PutOnBorder(*twin->arc);
        twin->arc = nullptr;
    }
}

void NoteOtherCurves(RunState& run) {
    for (const AcadEntity* entity : AllOn<AcadEntity>(*run.part.drawing, layers::RegionCopy)) {
        const std::string_view kind = entity->ObjectName();
        if (kind == "AcDbEllipse" || kind == "AcDbSpline")
            NoteUntilProved(run,
                            "the part's face has an edge that is neither straight nor round: no operation");
    }
}

}  // namespace

void DrawKeptFace(RunState& run) {
    AcadDocument& drawing = *run.part.drawing;
    const std::vector<PlanArc> arcs = ArcsOfKeptFace(drawing);
    const bool flat = LiesFlat(drawing);
    SweepLeftovers(drawing);
    // Laying and sorting have made these on a pass; an outline that is made without them needs them here.
    for (const std::string_view layer : std::array{layers::RegionCopy, layers::Border, layers::ArcPv,
                                                   layers::SolidHold, layers::NextBiggestRegion})
        AddLayer(drawing, layer);
    if (!flat) return;
    DrawLines(drawing);
    DrawArcs(drawing, arcs);
    NoteOtherCurves(run);
}

}  // namespace brenvik
