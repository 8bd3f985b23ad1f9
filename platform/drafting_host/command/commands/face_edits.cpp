// Where all neighbours stand square to a flat face, moving it is adding or cutting a slab, which keeps every
// other number of the solid as it was. Everything else is left to the modeller's offset of faces, and moved
// features to its removal of features.
#include "drafting_host/command/commands/face_edits.h"

#include <BRepAdaptor_Surface.hxx>
#include <BRepAlgoAPI_Defeaturing.hxx>
#include <BRepBuilderAPI_MakeSolid.hxx>
#include <BRepClass_FaceClassifier.hxx>
#include <BRepOffset_MakeOffset.hxx>
#include <BRepTools.hxx>
#include <BRep_Tool.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Shell.hxx>
#include <TopoDS_Solid.hxx>
#include <cmath>
#include <gp_Pln.hxx>
#include <gp_Vec.hxx>
#include <optional>

#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/solids/guard.h"
#include "drafting_host/solids/mass.h"
#include "drafting_host/solids/operations.h"
#include "drafting_host/solids/transform.h"

namespace brenvik {
namespace {

using solids::BooleanKind;

constexpr double AngularTolerance = 1e-9;

gp_Pln PlaneOf(const TopoDS_Face& face) { return BRepAdaptor_Surface(face, Standard_False).Plane(); }

bool NeighboursStandSquare(const TopoDS_Shape& solid, const TopoDS_Face& face) {
    TopTools_IndexedDataMapOfShapeListOfShape facesOfEdge;
    TopExp::MapShapesAndAncestors(solid, TopAbs_EDGE, TopAbs_FACE, facesOfEdge);
    const gp_Dir normal = solids::NormalOf(face);
    for (TopExp_Explorer edge(face, TopAbs_EDGE); edge.More(); edge.Next()) {
        for (const TopoDS_Shape& neighbour : facesOfEdge.FindFromKey(edge.Current()))
            if (!neighbour.IsSame(face) && !RunsAlong(TopoDS::Face(neighbour), normal)) return false;
    }
    return true;
}

void RequireSolid(const TopoDS_Shape& result) {
    if (result.IsNull()) throw host_failure::NotPossible("nothing would be left of the solid");
    if (!solids::Valid(result)) throw host_failure::NotPossible("the faces around don't allow it");
}

/// Adds or cuts the slab between a flat face and its place at `height` along its normal.
TopoDS_Shape WithSlab(const TopoDS_Shape& solid, const TopoDS_Face& face, double height) {
    const TopoDS_Shape slab = solids::ExtrudeRegion(face, height);
    TopoDS_Shape result =
        solids::Boolean(solid, slab, height > 0 ? BooleanKind::Union : BooleanKind::Subtract);
    RequireSolid(result);
    return result;
}

/// The modeller's own offset of some faces, the others carried on until they meet.
TopoDS_Shape WithOffset(const TopoDS_Shape& solid, std::span<const TopoDS_Face> faces, double distance) {
    TopExp_Explorer first(solid, TopAbs_SOLID);
    const TopoDS_Shape one = first.Current();
    if (first.Next(); first.More()) throw host_failure::NotPossible("the solid has several separate pieces");
    BRepOffset_MakeOffset offset;
    offset.Initialize(one, 0, 1e-7, BRepOffset_Skin, Standard_False, Standard_False, GeomAbs_Intersection,
                      Standard_False, Standard_False);
    for (const TopoDS_Face& face : faces) offset.SetOffsetOnFace(face, distance);
    offset.MakeOffsetShape();
    if (!offset.IsDone()) throw host_failure::NotPossible("the faces around don't allow it");
    BRepBuilderAPI_MakeSolid maker;
    for (TopExp_Explorer shell(offset.Shape(), TopAbs_SHELL); shell.More(); shell.Next())
        maker.Add(TopoDS::Shell(shell.Current()));
    if (!maker.IsDone()) throw host_failure::NotPossible("the faces around don't allow it");
    TopoDS_Shape result = solids::Placed(maker.Solid());
    if (solids::Volume(result) < 0) result = result.Reversed();
    RequireSolid(result);
    return result;
}

/// A flat face by its plane and a place on it, to find it again when the solid has changed elsewhere.
struct FlatPlace {
    gp_Pln plane;
    gp_Dir normal;
    gp_Pnt point;
};

/// A point inside a face: halfway along a line of its parameters, where the line lies in the material.
gp_Pnt InnerPoint(const TopoDS_Face& face) {
    double u0 = 0, u1 = 0, v0 = 0, v1 = 0;
    BRepTools::UVBounds(face, u0, u1, v0, v1);
    const BRepAdaptor_Surface surface(face, Standard_False);
    // Thirds of thirds rather than halves: the middle of a board's face is where holes are.
    for (int parts = 3; parts < 200; parts = 2 * parts + 1) {
        for (int i = 1; i < parts; ++i) {
            const gp_Pnt2d at(u0 + (u1 - u0) * i / parts, v0 + (v1 - v0) * (parts - i) / (parts + 1));
            if (BRepClass_FaceClassifier(face, at, 1e-9).State() == TopAbs_IN)
                return surface.Value(at.X(), at.Y());
        }
    }
    throw host_failure::NotPossible("a face is too narrow");
}

FlatPlace PlaceOf(const TopoDS_Face& face) {
    return {PlaneOf(face), solids::NormalOf(face), InnerPoint(face)};
}

TopoDS_Face FoundAgain(const TopoDS_Shape& solid, const FlatPlace& place) {
    for (TopExp_Explorer each(solid, TopAbs_FACE); each.More(); each.Next()) {
        const TopoDS_Face face = TopoDS::Face(each.Current());
        if (!IsFlat(face) || !solids::NormalOf(face).IsEqual(place.normal, AngularTolerance)) continue;
        if (PlaneOf(face).Distance(place.point) > 1e-7) continue;
        const TopAbs_State state = BRepClass_FaceClassifier(face, place.point, 1e-7).State();
        if (state == TopAbs_IN || state == TopAbs_ON) return face;
    }
    throw host_failure::NotPossible("a face is used up by another one's change");
}

/// Carries out a change of height, one flat face after another.
template <class HeightOf>
TopoDS_Shape WithHeights(const TopoDS_Shape& solid, std::span<const TopoDS_Face> faces, bool always,
                         const HeightOf& heightOf) {
    std::vector<FlatPlace> places;
    for (const TopoDS_Face& face : faces) places.push_back(PlaceOf(face));
    TopoDS_Shape result = solid;
    for (const FlatPlace& place : places) {
        const double height = heightOf(place);
        if (std::abs(height) <= vectors::PointTolerance) continue;
        const TopoDS_Face face = FoundAgain(result, place);
        if (always || NeighboursStandSquare(result, face))
            result = WithSlab(result, face, height);
        else
            result = WithOffset(result, std::span(&face, 1), height);
    }
    return result;
}

/// Takes a hole or boss off the solid and puts it back where it was moved to.
TopoDS_Shape WithFeatureMoved(const TopoDS_Shape& solid, std::span<const TopoDS_Face> faces,
                              const gp_Vec& shift) {
    BRepAlgoAPI_Defeaturing removal;
    removal.SetShape(solid);
    for (const TopoDS_Face& face : faces) removal.AddFaceToRemove(face);
    removal.Build();
    if (!removal.IsDone() || removal.HasErrors() || removal.HasWarnings())
        throw host_failure::NotPossible("the faces make no hole or boss that can be taken off");
    TopoDS_Shape plain = removal.Shape();
    for (TopExp_Explorer piece(plain, TopAbs_SOLID); piece.More(); piece.Next()) plain = piece.Current();
    RequireSolid(plain);
    const TopoDS_Shape hole = solids::Boolean(plain, solid, BooleanKind::Subtract);
    const TopoDS_Shape boss = solids::Boolean(solid, plain, BooleanKind::Subtract);
    TopoDS_Shape result = plain;
    if (!hole.IsNull()) result = solids::Boolean(result, solids::Moved(hole, shift), BooleanKind::Subtract);
    if (!boss.IsNull() && !result.IsNull())
        result = solids::Boolean(result, solids::Moved(boss, shift), BooleanKind::Union);
    RequireSolid(result);
    return result;
}

bool AllFlat(std::span<const TopoDS_Face> faces) {
    for (const TopoDS_Face& face : faces)
        if (!IsFlat(face)) return false;
    return true;
}

}  // namespace

bool IsFlat(const TopoDS_Face& face) {
    return BRepAdaptor_Surface(face, Standard_False).GetType() == GeomAbs_Plane;
}

bool RunsAlong(const TopoDS_Face& face, const gp_Dir& direction) {
    const BRepAdaptor_Surface surface(face, Standard_False);
    if (surface.GetType() == GeomAbs_Plane)
        return surface.Plane().Axis().Direction().IsNormal(direction, AngularTolerance);
    if (surface.GetType() == GeomAbs_Cylinder)
        return surface.Cylinder().Axis().Direction().IsParallel(direction, AngularTolerance);
    if (surface.GetType() == GeomAbs_SurfaceOfExtrusion)
        return surface.Direction().IsParallel(direction, AngularTolerance);
    return false;
}

TopoDS_Shape MovedFaces(const TopoDS_Shape& solid, std::span<const TopoDS_Face> faces, const Point3& shift) {
    return solids::Guarded("moving faces", [&]() -> TopoDS_Shape {
        const gp_Vec vector(shift.x, shift.y, shift.z);
        if (!AllFlat(faces)) return WithFeatureMoved(solid, faces, vector);
        return WithHeights(solid, faces, false,
                           [&](const FlatPlace& place) { return vector.Dot(gp_Vec(place.normal)); });
    });
}

TopoDS_Shape OffsetFaces(const TopoDS_Shape& solid, std::span<const TopoDS_Face> faces, double distance) {
    return solids::Guarded("offsetting faces", [&]() -> TopoDS_Shape {
        if (!AllFlat(faces)) return WithOffset(solid, faces, distance);
        return WithHeights(solid, faces, false, [&](const FlatPlace&) { return distance; });
    });
}

TopoDS_Shape ExtrudedFaces(const TopoDS_Shape& solid, std::span<const TopoDS_Face> faces, double height) {
    if (!AllFlat(faces)) throw host_failure::NotPossible("only flat faces can be extruded");
    return solids::Guarded("extruding faces", [&]() -> TopoDS_Shape {
        return WithHeights(solid, faces, true, [&](const FlatPlace&) { return height; });
    });
}

}  // namespace brenvik
