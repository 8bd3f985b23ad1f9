// Reads planes and straight edges off the modeller's faces, also where an exporting program wrote them
// as splines.
#include "drafting_host/solids/flat_face.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <BRep_Tool.hxx>
#include <GeomLib_IsPlanarSurface.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_BezierCurve.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Vertex.hxx>
#include <algorithm>
#include <cmath>

#include "drafting_host/solids/edge_integral.h"
#include "drafting_host/solids/mass.h"

namespace brenvik::solids {
namespace {

// The sine of an angle that still counts as none: what turning a part there and back leaves.
constexpr double NoAngle = 2e-9;
// How far a spline may stray from a plane or line and still be one, drawing units.
constexpr double NoBulge = 1e-7;

std::optional<gp_Pln> PlaneOf(const TopoDS_Face& face) {
    const BRepAdaptor_Surface surface(face, Standard_False);
    switch (surface.GetType()) {
        case GeomAbs_Plane:
            return surface.Plane();
        case GeomAbs_BezierSurface:
        case GeomAbs_BSplineSurface:
        case GeomAbs_SurfaceOfExtrusion: {
            const GeomLib_IsPlanarSurface flat(BRep_Tool::Surface(face), NoBulge);
            if (flat.IsPlanar()) return flat.Plan();
            return std::nullopt;
        }
        case GeomAbs_Cylinder:
        case GeomAbs_Cone:
        case GeomAbs_Sphere:
        case GeomAbs_Torus:
        case GeomAbs_SurfaceOfRevolution:
        case GeomAbs_OffsetSurface:
        case GeomAbs_OtherSurface:
            return std::nullopt;
    }
    return std::nullopt;
}

template <class Spline>
bool PolesOnLine(const Spline& spline, const gp_XYZ& start, const gp_XYZ& direction) {
    for (int pole = 1; pole <= spline->NbPoles(); ++pole)
        if ((spline->Pole(pole).XYZ() - start).Crossed(direction).Modulus() > NoBulge) return false;
    return true;
}

/// The edge as a straight run, when it is straight.
std::optional<StraightRun> RunOf(const TopoDS_Edge& edge) {
    if (BRep_Tool::Degenerated(edge)) return std::nullopt;
    const BRepAdaptor_Curve curve(edge);
    const gp_XYZ start = curve.Value(curve.FirstParameter()).XYZ();
    const gp_XYZ chord = curve.Value(curve.LastParameter()).XYZ() - start;
    const double length = chord.Modulus();
    if (!(length > NoBulge)) return std::nullopt;
    if (curve.GetType() == GeomAbs_Line) return StraightRun{curve.Line().Direction().XYZ(), start, length};
    const gp_XYZ direction = chord / length;
    if (curve.GetType() == GeomAbs_BSplineCurve && PolesOnLine(curve.BSpline(), start, direction))
        return StraightRun{direction, start, length};
    if (curve.GetType() == GeomAbs_BezierCurve && PolesOnLine(curve.Bezier(), start, direction))
        return StraightRun{direction, start, length};
    return std::nullopt;
}

/// The loop of the face that encloses most: the outer one.
TopoDS_Shape OuterLoop(const FlatFace& face) {
    TopoDS_Shape outer;
    double most = -1;
    for (TopExp_Explorer loop(face.face, TopAbs_WIRE); loop.More(); loop.Next()) {
        gp_XYZ sum(0, 0, 0);
        gp_XYZ origin(0, 0, 0);
        bool placed = false;
        for (TopExp_Explorer edge(loop.Current(), TopAbs_EDGE); edge.More(); edge.Next()) {
            const TopAbs_Orientation way = edge.Current().Orientation();
            if (way != TopAbs_FORWARD && way != TopAbs_REVERSED) continue;
            const TopoDS_Edge forward = TopoDS::Edge(edge.Current().Oriented(TopAbs_FORWARD));
            if (!placed && !TopExp::FirstVertex(forward).IsNull()) {
                origin = BRep_Tool::Pnt(TopExp::FirstVertex(forward)).XYZ();
                placed = true;
            }
            sum += SweptArea(forward, origin) * (way == TopAbs_FORWARD ? 1.0 : -1.0);
        }
        const double area = std::abs(sum.Dot(face.normal));
        if (area > most) {
            most = area;
            outer = loop.Current();
        }
    }
    return outer;
}

}  // namespace

bool Parallel(const gp_XYZ& one, const gp_XYZ& other) { return one.Crossed(other).Modulus() < NoAngle; }

std::vector<FlatFace> FlatFaces(const TopoDS_Shape& shape) {
    std::vector<FlatFace> found;
    for (TopExp_Explorer explorer(shape, TopAbs_FACE); explorer.More(); explorer.Next()) {
        const TopoDS_Face& face = TopoDS::Face(explorer.Current());
        const std::optional<gp_Pln> plane = PlaneOf(face);
        if (!plane) continue;
        const double area = Area(face);
        if (area > 0) found.push_back({face, plane->Axis().Direction().XYZ(), area});
    }
    return found;
}

std::vector<StraightRun> OuterRuns(const FlatFace& face) {
    std::vector<StraightRun> runs;
    const TopoDS_Shape outer = OuterLoop(face);
    if (outer.IsNull()) return runs;
    for (TopExp_Explorer edge(outer, TopAbs_EDGE); edge.More(); edge.Next()) {
        const std::optional<StraightRun> run = RunOf(TopoDS::Edge(edge.Current()));
        if (!run) continue;
        const auto same = std::ranges::find_if(runs, [&](const StraightRun& other) {
            const gp_XYZ apart = run->point - other.point;
            return Parallel(run->direction, other.direction) &&
                   apart.Crossed(other.direction).Modulus() < NoBulge + NoAngle * apart.Modulus();
        });
        if (same == runs.end())
            runs.push_back(*run);
        else
            same->length += run->length;
    }
    return runs;
}

std::vector<gp_XYZ> StraightDirections(const TopoDS_Shape& shape) {
    TopTools_IndexedMapOfShape edges;
    TopExp::MapShapes(shape, TopAbs_EDGE, edges);
    std::vector<gp_XYZ> directions;
    for (int index = 1; index <= edges.Extent(); ++index)
        if (const auto run = RunOf(TopoDS::Edge(edges(index)))) directions.push_back(run->direction);
    return directions;
}

}  // namespace brenvik::solids
