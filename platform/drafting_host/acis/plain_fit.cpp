// Bodies that need no trial: every edge is looked at once for each of its faces, by formula.
#include "drafting_host/acis/proven_body.h"

#include <BRep_Tool.hxx>
#include <Geom_Circle.hxx>
#include <Geom_ConicalSurface.hxx>
#include <Geom_CylindricalSurface.hxx>
#include <Geom_Ellipse.hxx>
#include <Geom_Line.hxx>
#include <Geom_Plane.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopoDS_Vertex.hxx>
#include <gp_Cone.hxx>
#include <gp_Cylinder.hxx>
#include <gp_Pln.hxx>

#include <algorithm>
#include <cmath>

namespace brenvik::acis {
namespace {

constexpr double Fit = 1e-6;
constexpr double Turned = 1e-9;  // radians
constexpr double Shortest = 1e-4;

/// A surface of revolution as the distance of a point from it, and its axis.
class RoundFit {
  public:
    explicit RoundFit(const gp_Cylinder& cylinder)
        : mAxis(cylinder.Axis()), mRadius(cylinder.Radius()), mSlope(0) {}
    explicit RoundFit(const gp_Cone& cone)
        : mAxis(cone.Axis()), mRadius(cone.RefRadius()), mSlope(std::tan(cone.SemiAngle())) {}

    bool Holds(const gp_Pnt& point) const {
        const gp_Vec reach(mAxis.Location(), point);
        const double height = reach.Dot(mAxis.Direction());
        const double radius = (reach.XYZ() - mAxis.Direction().XYZ() * height).Modulus();
        return std::abs(radius - std::abs(mRadius + mSlope * height)) < Fit;
    }
    bool Holds(const Geom_Line& line, const gp_Pnt& start, const gp_Pnt& end) const {
        if (!Holds(start) || !Holds(end)) return false;
        return Holds(gp_Pnt((start.XYZ() + end.XYZ()) / 2)) &&
               (mSlope != 0 || Parallel(line.Position().Direction()));
    }
    bool Holds(const Geom_Circle& circle) const {
        return Parallel(circle.Axis().Direction()) && Holds(circle.Value(0)) && Holds(circle.Value(2)) &&
               Holds(circle.Value(4));
    }

  private:
    bool Parallel(const gp_Dir& direction) const { return mAxis.Direction().IsParallel(direction, Turned); }

    gp_Ax1 mAxis;
    double mRadius, mSlope;
};

struct PlainEdge {
    Handle(Geom_Curve) curve;
    gp_Pnt start, end;
};

bool EndsFit(const PlainEdge& edge, double first, double last) {
    return edge.curve->Value(first).Distance(edge.start) < Fit &&
           edge.curve->Value(last).Distance(edge.end) < Fit;
}

// False for edges that are neither lines nor arcs or whose vertices lie beside them.
bool TakeEdge(const TopoDS_Edge& edge, PlainEdge& taken) {
    double first = 0;
    double last = 0;
    taken.curve = BRep_Tool::Curve(edge, first, last);
    if (taken.curve.IsNull()) return false;
    const TopoDS_Vertex start = TopExp::FirstVertex(edge);
    const TopoDS_Vertex end = TopExp::LastVertex(edge);
    if (start.IsNull() || end.IsNull()) return false;
    taken.start = BRep_Tool::Pnt(start);
    taken.end = BRep_Tool::Pnt(end);
    if (!EndsFit(taken, first, last)) return false;
    if (taken.curve->IsKind(STANDARD_TYPE(Geom_Line))) return last - first > Shortest;
    const auto circle = Handle(Geom_Circle)::DownCast(taken.curve);
    if (!circle.IsNull()) return circle->Radius() * (last - first) > Shortest;
    const auto ellipse = Handle(Geom_Ellipse)::DownCast(taken.curve);
    return !ellipse.IsNull() && ellipse->MinorRadius() * (last - first) > Shortest;
}

bool OnPlane(const gp_Pln& plane, const PlainEdge& edge) {
    if (plane.Distance(edge.start) > Fit || plane.Distance(edge.end) > Fit) return false;
    if (edge.curve->IsKind(STANDARD_TYPE(Geom_Line))) return true;
    const auto conic = Handle(Geom_Conic)::DownCast(edge.curve);
    return !conic.IsNull() && conic->Axis().Direction().IsParallel(plane.Axis().Direction(), Turned) &&
           plane.Distance(conic->Location()) < Fit;
}

bool OnRound(const RoundFit& round, const PlainEdge& edge) {
    if (const auto line = Handle(Geom_Line)::DownCast(edge.curve); !line.IsNull())
        return round.Holds(*line, edge.start, edge.end);
    const auto circle = Handle(Geom_Circle)::DownCast(edge.curve);
    return !circle.IsNull() && round.Holds(*circle);
}

// The edges of a sliver don't show which side it has.
bool HasWidth(const TopoDS_Face& face, const gp_Pln& plane) {
    gp_XYZ area(0, 0, 0);
    double length = 0;
    for (TopExp_Explorer explorer(face, TopAbs_EDGE); explorer.More(); explorer.Next()) {
        const TopoDS_Edge& edge = TopoDS::Edge(explorer.Current());
        double first = 0;
        double last = 0;
        const Handle(Geom_Curve) curve = BRep_Tool::Curve(edge, first, last);
        const int steps = curve->IsKind(STANDARD_TYPE(Geom_Line)) ? 1 : 4;
        gp_XYZ previous = curve->Value(first).XYZ() - plane.Location().XYZ();
        for (int i = 1; i <= steps; ++i) {
            const gp_XYZ next =
                curve->Value(first + (last - first) * i / steps).XYZ() - plane.Location().XYZ();
            const gp_XYZ share = previous.Crossed(next);
            area += edge.Orientation() == TopAbs_REVERSED ? share.Reversed() : share;
            length += (next - previous).Modulus();
            previous = next;
        }
    }
    return area.Modulus() > Shortest * length;
}

bool FaceFits(const TopoDS_Face& face) {
    const Handle(Geom_Surface) surface = BRep_Tool::Surface(face);
    const auto plane = Handle(Geom_Plane)::DownCast(surface);
    std::optional<RoundFit> round;
    if (const auto cylinder = Handle(Geom_CylindricalSurface)::DownCast(surface); !cylinder.IsNull())
        round.emplace(cylinder->Cylinder());
    if (const auto cone = Handle(Geom_ConicalSurface)::DownCast(surface); !cone.IsNull())
        round.emplace(cone->Cone());
    if (plane.IsNull() && !round) return false;
    int wires = 0;
    for (TopoDS_Iterator wire(face); wire.More(); wire.Next()) {
        ++wires;
        for (TopoDS_Iterator part(wire.Value()); part.More(); part.Next()) {
            const TopoDS_Edge& edge = TopoDS::Edge(part.Value());
            if (round && BRep_Tool::Degenerated(edge)) continue;
            PlainEdge taken;
            if (!TakeEdge(edge, taken)) return false;
            if (round ? !OnRound(*round, taken) : !OnPlane(plane->Pln(), taken)) return false;
        }
    }
    // Openings in a round face may leave no way for its seam.
    if (round) return wires == 1;
    return wires > 0 && HasWidth(face, plane->Pln());
}

}  // namespace

bool FitsPlainly(const TopoDS_Shape& shape) {
    bool any = false;
    for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next()) {
        any = true;
        if (!FaceFits(TopoDS::Face(face.Current()))) return false;
    }
    return any;
}

}  // namespace brenvik::acis
