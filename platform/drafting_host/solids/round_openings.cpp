// What becomes of the round openings of two regions in their union, worked out from their boundaries in plan.
#include <BRepAdaptor_Surface.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_MapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopoDS_Wire.hxx>
#include <algorithm>
#include <cmath>
#include <optional>
#include <span>
#include <vector>

#include "drafting_host/solids/plan_curve.h"
#include "drafting_host/solids/round_holes.h"

namespace brenvik::solids {
namespace {

constexpr double Film = 1e-7;

/// A boundary of one whole turn, with the shape of its wire.
struct Turn {
    TopoDS_Shape wire;
    std::size_t place;  ///< Among the boundary's curves.
};

/// A region in plan: all its boundary curves, and those of its openings that are whole turns.
struct Plan {
    std::vector<PlanCurve> boundary;
    std::vector<Turn> turns;
    double height = 0;
};

bool IsLevel(const TopoDS_Face& face) {
    const BRepAdaptor_Surface surface(face, Standard_False);
    return surface.GetType() == GeomAbs_Plane && std::abs(surface.Plane().Axis().Direction().Z()) > 1 - 1e-14;
}

bool TakeFace(const TopoDS_Face& face, Plan& plan) {
    if (!IsLevel(face)) return false;
    for (TopoDS_Iterator wire(face); wire.More(); wire.Next()) {
        std::size_t edges = 0;
        for (TopoDS_Iterator edge(wire.Value()); edge.More(); edge.Next(), ++edges) {
            const std::optional<PlanCurve> curve = SeenFromAbove(TopoDS::Edge(edge.Value()));
            if (!curve) return false;
            plan.boundary.push_back(*curve);
        }
        if (edges == 0) return false;
        const PlanCurve& last = plan.boundary.back();
        plan.height = last.lowZ;
        const gp_Circ circle(gp_Ax2({last.center.x, last.center.y, last.lowZ}, gp::DZ()), last.radius);
        if (edges == 1 && last.round && IsOpening(TopoDS::Wire(wire.Value()), face, circle))
            plan.turns.push_back({wire.Value(), plan.boundary.size() - 1});
    }
    return true;
}

std::optional<Plan> PlanOf(const TopoDS_Shape& region) {
    Plan plan;
    for (TopExp_Explorer faces(region, TopAbs_FACE); faces.More(); faces.Next())
        if (!TakeFace(TopoDS::Face(faces.Current()), plan)) return std::nullopt;
    return plan;
}

/// Whether nothing of the region stands in its own opening, or touches it.
bool IsEmpty(const Plan& region, const Turn& turn) {
    const std::span<const PlanCurve> all(region.boundary);
    const PlanCurve& disc = all[turn.place];
    const double nearest = std::min(DistanceTo(all.first(turn.place), disc.center),
                                    DistanceTo(all.subspan(turn.place + 1), disc.center));
    return nearest > disc.radius + Film;
}

bool SameTurn(const PlanCurve& one, const PlanCurve& other) {
    return std::hypot(one.center.x - other.center.x, one.center.y - other.center.y) < Film &&
           std::abs(one.radius - other.radius) < Film;
}

/// Whether the other region covers the disc; null if its boundary runs through it.
std::optional<bool> Covers(const Plan& region, const PlanCurve& disc) {
    if (DistanceTo(region.boundary, disc.center) <= disc.radius + Film) return std::nullopt;
    // The centres of a row of holes lie at one height, and their rims begin there.
    for (const double off : {0.4871, -0.3137, 0.6719})
        if (const std::optional<bool> inside =
                Inside(region.boundary, {disc.center.x, disc.center.y + off * disc.radius}))
            return inside;
    return std::nullopt;
}

class Closing {
  public:
    Closing(const Plan& shape, const Plan& tool) {
        Take(shape, tool, true, mOfShape);
        Take(tool, shape, false, mOfTool);
    }

    bool Any() const { return !mOfShape.IsEmpty() || !mOfTool.IsEmpty(); }
    TopoDS_Shape Shape(const TopoDS_Shape& shape) const { return Closed(shape, mOfShape); }
    TopoDS_Shape Tool(const TopoDS_Shape& tool) const { return Closed(tool, mOfTool); }
    const std::vector<RoundOpening>& Kept() const { return mKept; }

  private:
    void Take(const Plan& own, const Plan& other, bool keepShared, TopTools_MapOfShape& closed) {
        for (const Turn& turn : own.turns) {
            const PlanCurve& disc = own.boundary[turn.place];
            const bool shared = std::ranges::any_of(other.turns, [&](const Turn& match) {
                return SameTurn(other.boundary[match.place], disc) && IsEmpty(other, match);
            });
            const std::optional<bool> covered = shared ? std::nullopt : Covers(other, disc);
            if ((!shared && !covered) || !IsEmpty(own, turn)) continue;
            closed.Add(turn.wire);
            if (shared ? keepShared : !*covered)
                mKept.push_back({gp_Pnt(disc.center.x, disc.center.y, own.height), disc.radius});
        }
    }

    static TopoDS_Shape Closed(const TopoDS_Shape& region, const TopTools_MapOfShape& closed) {
        if (closed.IsEmpty()) return region;
        const BRep_Builder builder;
        TopoDS_Compound all;
        builder.MakeCompound(all);
        TopoDS_Shape last;
        int count = 0;
        for (TopExp_Explorer faces(region, TopAbs_FACE); faces.More(); faces.Next(), ++count) {
            const TopoDS_Shape forward = faces.Current().Oriented(TopAbs_FORWARD);
            TopoDS_Shape rest = forward.EmptyCopied();
            for (TopoDS_Iterator wires(forward); wires.More(); wires.Next())
                if (!closed.Contains(wires.Value())) builder.Add(rest, wires.Value());
            last = rest.Oriented(faces.Current().Orientation());
            builder.Add(all, last);
        }
        return count == 1 ? last : TopoDS_Shape(all);
    }

    TopTools_MapOfShape mOfShape, mOfTool;
    std::vector<RoundOpening> mKept;
};

}  // namespace

ClosedRegions CloseRoundOpenings(const TopoDS_Shape& shape, const TopoDS_Shape& tool) {
    const std::optional<Plan> first = PlanOf(shape), second = PlanOf(tool);
    if (!first || !second) return {shape, tool, {}};
    const Closing closing(*first, *second);
    if (!closing.Any()) return {shape, tool, {}};
    return {closing.Shape(shape), closing.Tool(tool), closing.Kept()};
}

}  // namespace brenvik::solids
