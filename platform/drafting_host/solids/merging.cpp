// Looks for needless borders with a few comparisons, so that the dear merging runs only on shapes that
// have some.
#include "drafting_host/solids/merging.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <BRep_Tool.hxx>
#include <ShapeUpgrade_UnifySameDomain.hxx>
#include <Standard_Failure.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopTools_ListOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <cmath>
#include <gp_Cylinder.hxx>

namespace brenvik::solids {
namespace {

// What still counts as the same place (drawing units) and direction (radians).
constexpr double SamePlace = 1e-7;
constexpr double SameAngle = 1e-9;

bool SameCylinder(const gp_Cylinder& one, const gp_Cylinder& other) {
    return std::abs(one.Radius() - other.Radius()) < SamePlace &&
           one.Axis().IsCoaxial(other.Axis(), SameAngle, SamePlace);
}

/// Whether the angles on two cylinders are counted from different directions.
bool AreTurned(const gp_Cylinder& one, const gp_Cylinder& other) {
    return one.XAxis().Direction().Angle(other.XAxis().Direction()) > SameAngle;
}

/// Of neighbours: planes that share a border are the same as soon as they are parallel.
bool SameSurface(const TopoDS_Face& one, const TopoDS_Face& other) {
    const BRepAdaptor_Surface first(one, Standard_False);
    const BRepAdaptor_Surface second(other, Standard_False);
    if (first.GetType() != second.GetType()) return false;
    if (first.GetType() == GeomAbs_Plane)
        return first.Plane().Axis().IsParallel(second.Plane().Axis(), SameAngle);
    if (first.GetType() == GeomAbs_Cylinder) {
        return SameCylinder(first.Cylinder(), second.Cylinder()) &&
               !AreTurned(first.Cylinder(), second.Cylinder());
    }
    return false;
}

bool SameCurve(const TopoDS_Edge& one, const TopoDS_Edge& other) {
    if (BRep_Tool::Degenerated(one) || BRep_Tool::Degenerated(other)) return false;
    const BRepAdaptor_Curve first(one);
    const BRepAdaptor_Curve second(other);
    if (first.GetType() != second.GetType()) return false;
    if (first.GetType() == GeomAbs_Line)
        return first.Line().Position().IsParallel(second.Line().Position(), SameAngle);
    if (first.GetType() == GeomAbs_Circle) {
        return first.Circle().Location().IsEqual(second.Circle().Location(), SamePlace) &&
               std::abs(first.Circle().Radius() - second.Circle().Radius()) < SamePlace &&
               first.Circle().Axis().IsParallel(second.Circle().Axis(), SameAngle);
    }
    return false;
}

/// The modeller may walk forever around faces of one cylinder that count their angles from different
/// directions, as the rounded corners of two cuts into each other do, or lose their seams.
bool MustStay(const TopTools_ListOfShape& faces) {
    if (faces.Extent() != 2) return false;
    const BRepAdaptor_Surface first(TopoDS::Face(faces.First()), Standard_False);
    const BRepAdaptor_Surface second(TopoDS::Face(faces.Last()), Standard_False);
    return first.GetType() == GeomAbs_Cylinder && second.GetType() == GeomAbs_Cylinder &&
           AreTurned(first.Cylinder(), second.Cylinder());
}

/// True when two neighbouring faces lie on one plane or cylinder, or two edges of one line or circle meet
/// in a vertex that nothing else ends at. Cheap against merging itself.
bool HasNeedlessBorders(const TopoDS_Shape& shape) {
    TopTools_IndexedDataMapOfShapeListOfShape facesOfEdge;
    TopExp::MapShapesAndUniqueAncestors(shape, TopAbs_EDGE, TopAbs_FACE, facesOfEdge);
    for (int index = 1; index <= facesOfEdge.Extent(); ++index) {
        const TopTools_ListOfShape& faces = facesOfEdge(index);
        if (faces.Extent() == 2 && SameSurface(TopoDS::Face(faces.First()), TopoDS::Face(faces.Last())))
            return true;
    }
    TopTools_IndexedDataMapOfShapeListOfShape edgesOfVertex;
    TopExp::MapShapesAndUniqueAncestors(shape, TopAbs_VERTEX, TopAbs_EDGE, edgesOfVertex);
    for (int index = 1; index <= edgesOfVertex.Extent(); ++index) {
        const TopTools_ListOfShape& edges = edgesOfVertex(index);
        if (edges.Extent() == 2 && SameCurve(TopoDS::Edge(edges.First()), TopoDS::Edge(edges.Last())))
            return true;
    }
    return false;
}

}  // namespace

TopoDS_Shape BordersMerged(const TopoDS_Shape& shape) {
    if (!HasNeedlessBorders(shape)) return shape;
    ShapeUpgrade_UnifySameDomain unify(shape, Standard_True, Standard_True, Standard_False);
    // Without it a part that lies at an odd angle keeps borders that a square one loses.
    unify.SetAngularTolerance(SameAngle);
    TopTools_IndexedDataMapOfShapeListOfShape facesOfEdge;
    TopExp::MapShapesAndUniqueAncestors(shape, TopAbs_EDGE, TopAbs_FACE, facesOfEdge);
    for (int index = 1; index <= facesOfEdge.Extent(); ++index)
        if (MustStay(facesOfEdge(index))) unify.KeepShape(facesOfEdge.FindKey(index));
    // What can't be merged is no less a part.
    try {
        unify.Build();
    } catch (const Standard_Failure&) {
        return shape;
    }
    return unify.Shape();
}

}  // namespace brenvik::solids
