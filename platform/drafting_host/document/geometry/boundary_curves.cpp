// The curves that bound faces, in the drawing's own kinds. Where the modeller parts a round into several
// edges for reasons of its own (seams, borders that are gone), the drawing gets it in one piece.
#include "drafting_host/document/geometry/boundary_curves.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRepTools.hxx>
#include <BRepTools_WireExplorer.hxx>
#include <BRep_Tool.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_MapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Wire.hxx>
#include <gp_Circ.hxx>
#include <gp_Elips.hxx>
#include <gp_Lin.hxx>

#include "drafting_host/document/geometry/curve_edges.h"
#include "drafting_host/document/geometry/modeller_points.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/solids/guard.h"
#include "drafting_host/solids/operations.h"

namespace brenvik {

using namespace vectors;

namespace {

// How far centres, radii and ends of one circle's pieces may lie apart, drawing units.
constexpr double SameRound = 1e-6;

std::vector<TopoDS_Edge> EdgesInOrder(const TopoDS_Wire& wire, const TopoDS_Face& face) {
    std::vector<TopoDS_Edge> stored;
    for (TopExp_Explorer each(wire, TopAbs_EDGE); each.More(); each.Next())
        stored.push_back(TopoDS::Edge(each.Current()));
    if (stored.size() < 2) return stored;
    std::vector<TopoDS_Edge> ordered;
    for (BRepTools_WireExplorer each(wire, face); each.More(); each.Next()) ordered.push_back(each.Current());
    // The explorer stops where a wire touches itself or has a gap; every edge counts all the same.
    return ordered.size() == stored.size() ? ordered : stored;
}

/// The wires of a face, the outer one first.
std::vector<TopoDS_Wire> WiresOf(const TopoDS_Face& face) {
    std::vector<TopoDS_Wire> wires;
    for (TopExp_Explorer each(face, TopAbs_WIRE); each.More(); each.Next())
        wires.push_back(TopoDS::Wire(each.Current()));
    if (wires.size() < 2) return wires;
    const TopoDS_Wire outer = BRepTools::OuterWire(face);
    const auto at = std::ranges::find_if(wires, [&](const TopoDS_Wire& wire) { return wire.IsSame(outer); });
    if (at != wires.end()) std::rotate(wires.begin(), at, at + 1);
    return wires;
}

bool MeetAt(const ArcData& arc, double one, double other) {
    const double apart = NormalAngle(one - other);
    return std::min(apart, FullTurn - apart) * arc.radius < SameRound;
}

/// One piece of the two where they lie on one circle and one goes on where the other ends.
std::optional<HostGeometry> InOnePiece(const HostGeometry& one, const HostGeometry& other) {
    const auto* a = std::get_if<ArcData>(&one);
    const auto* b = std::get_if<ArcData>(&other);
    if (a == nullptr || b == nullptr || Distance(a->center, b->center) > SameRound ||
        std::abs(a->radius - b->radius) > SameRound || Dot(a->normal, b->normal) < 1 - 1e-9) {
        return std::nullopt;
    }
    const bool after = MeetAt(*a, a->endAngle, b->startAngle),
               before = MeetAt(*a, b->endAngle, a->startAngle);
    if (after && before) return CircleData{a->center, a->radius, 0, a->normal};
    if (!after && !before) return std::nullopt;
    ArcData whole = *a;
    (after ? whole.endAngle : whole.startAngle) = after ? b->endAngle : b->startAngle;
    return whole;
}

/// Puts neighbours in the loop together, the last and the first as well.
void JoinNeighbours(std::vector<HostGeometry>& loop) {
    std::vector<HostGeometry> joined;
    for (HostGeometry& curve : loop) {
        std::optional<HostGeometry> whole;
        if (!joined.empty()) whole = InOnePiece(joined.back(), curve);
        if (whole)
            joined.back() = std::move(*whole);
        else
            joined.push_back(std::move(curve));
    }
    if (joined.size() > 1) {
        if (std::optional<HostGeometry> whole = InOnePiece(joined.front(), joined.back())) {
            joined.front() = std::move(*whole);
            joined.pop_back();
        }
    }
    loop = std::move(joined);
}

void Append(std::vector<HostGeometry>& curves, std::vector<HostGeometry> more) {
    curves.insert(curves.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

/// The direction or its opposite: the one that looks up, or along Y, or along X.
Point3 LookingUp(const Point3& axis) {
    const Point3 square = Squared(axis);
    const double sign = square.z != 0 ? square.z : square.y != 0 ? square.y : square.x;
    return sign < 0 ? Point3{} - square : square;
}

Point3 BodyNormal(const TopoDS_Edge& edge) {
    const BRepAdaptor_Curve curve(edge);
    if (curve.GetType() == GeomAbs_Line) {
        const Point3 along = Squared(FromModeller(curve.Line().Direction()));
        const Point3 across = Cross({0, 0, 1}, along);
        return Length(across) < 1e-6 ? Point3{1, 0, 0} : Squared(Unit(across));
    }
    if (curve.GetType() == GeomAbs_Circle) return LookingUp(FromModeller(curve.Circle().Axis().Direction()));
    if (curve.GetType() == GeomAbs_Ellipse)
        return LookingUp(FromModeller(curve.Ellipse().Axis().Direction()));
    return {0, 0, 1};
}

/// The edges that a face has on both its sides: where its surface comes back to itself.
TopTools_MapOfShape SeamsOf(const TopoDS_Face& face) {
    TopTools_MapOfShape once, twice;
    for (TopExp_Explorer edges(face, TopAbs_EDGE); edges.More(); edges.Next())
        if (!once.Add(edges.Current())) twice.Add(edges.Current());
    return twice;
}

}  // namespace

std::vector<HostGeometry> BoundaryCurves(const TopoDS_Shape& region) {
    return solids::Guarded("the boundary of a region", [&] {
        std::vector<HostGeometry> curves;
        for (TopExp_Explorer faces(region, TopAbs_FACE); faces.More(); faces.Next()) {
            const TopoDS_Face face = TopoDS::Face(faces.Current());
            const Point3 normal = Squared(FromModeller(solids::NormalOf(face)));
            for (const TopoDS_Wire& wire : WiresOf(face)) {
                std::vector<HostGeometry> loop;
                for (const TopoDS_Edge& edge : EdgesInOrder(wire, face))
                    if (auto curve = CurveOf(edge, normal)) loop.push_back(std::move(*curve));
                JoinNeighbours(loop);
                Append(curves, std::move(loop));
            }
        }
        return curves;
    });
}

std::vector<HostGeometry> BodyCurves(const TopoDS_Shape& body) {
    return solids::Guarded("the boundary of a body", [&] {
        std::vector<HostGeometry> curves;
        TopTools_MapOfShape taken;
        for (TopExp_Explorer faces(body, TopAbs_FACE); faces.More(); faces.Next()) {
            const TopoDS_Face face = TopoDS::Face(faces.Current());
            const TopTools_MapOfShape seams = SeamsOf(face);
            for (const TopoDS_Wire& wire : WiresOf(face)) {
                std::vector<HostGeometry> loop;
                for (const TopoDS_Edge& edge : EdgesInOrder(wire, face)) {
                    if (BRep_Tool::Degenerated(edge) || seams.Contains(edge)) continue;
                    if (!taken.Add(edge)) continue;
                    if (auto curve = CurveOf(edge, BodyNormal(edge))) loop.push_back(std::move(*curve));
                }
                JoinNeighbours(loop);
                Append(curves, std::move(loop));
            }
        }
        return curves;
    });
}

}  // namespace brenvik
