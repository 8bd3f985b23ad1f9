// Extrusion and booleans on top of the modeller, with the decisions that keep untouched parts untouched.
#include "drafting_host/solids/operations.h"

#include <BOPAlgo_PaveFiller.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <BRepAlgoAPI_Common.hxx>
#include <BRepAlgoAPI_Cut.hxx>
#include <BRepAlgoAPI_Fuse.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_ListOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <algorithm>
#include <cmath>
#include <gp_Pln.hxx>
#include <optional>

#include "drafting_host/solids/exact_box.h"
#include "drafting_host/solids/guard.h"
#include "drafting_host/solids/mass.h"
#include "drafting_host/solids/merging.h"
#include "drafting_host/solids/round_holes.h"
#include "drafting_host/solids/transform.h"

namespace brenvik::solids {
namespace {

// Thickness of the film that touching faces may have in common, drawing units: the modeller's own
// tolerance for points that are the same.
constexpr double Film = 1e-7;

/// The kind of pieces an operand consists of: solids, or faces of regions.
TopAbs_ShapeEnum PieceKind(const TopoDS_Shape& shape) {
    return TopExp_Explorer(shape, TopAbs_SOLID).More() ? TopAbs_SOLID : TopAbs_FACE;
}

/// Volume of solids, area of regions.
double Content(const TopoDS_Shape& shape, TopAbs_ShapeEnum kind) {
    return kind == TopAbs_SOLID ? std::abs(Volume(shape)) : Area(shape);
}

/// One piece as itself, several as a compound, none as a null shape.
TopoDS_Shape Gathered(const std::vector<TopoDS_Shape>& pieces) {
    if (pieces.empty()) return {};
    if (pieces.size() == 1) return pieces.front();
    TopoDS_Compound all;
    BRep_Builder builder;
    builder.MakeCompound(all);
    for (const TopoDS_Shape& piece : pieces) builder.Add(all, piece);
    return all;
}

std::vector<TopoDS_Shape> Pieces(const TopoDS_Shape& shape, TopAbs_ShapeEnum kind) {
    std::vector<TopoDS_Shape> pieces;
    if (shape.IsNull()) return pieces;
    for (TopExp_Explorer piece(shape, kind); piece.More(); piece.Next()) pieces.push_back(piece.Current());
    return pieces;
}

TopoDS_Shape Merged(const TopoDS_Shape& shape, TopAbs_ShapeEnum kind) {
    const TopoDS_Shape plain = Gathered(Pieces(shape, kind));
    if (plain.IsNull()) return plain;
    const TopoDS_Shape unified = BordersMerged(plain);
    if (unified.IsSame(plain)) return plain;
    const TopoDS_Shape merged = Gathered(Pieces(unified, kind));
    if (merged.IsNull()) return plain;
    // Merging may only remove borders. Where it would change the part, the borders stay.
    const double before = Content(plain, kind);
    const bool same = std::abs(Content(merged, kind) - before) <= 1e-9 * before;
    return same && Valid(merged) ? merged : plain;
}

TopoDS_Shape Checked(BRepAlgoAPI_BooleanOperation& operation, const char* what) {
    if (operation.HasErrors()) throw InvalidCall(std::string(what) + ": the modeller can't");
    return operation.Shape();
}

/// The plane of a region, its origin at the region: a plane's own origin may lie far away, where the least
/// tilt is seen as a step. Null for a face that isn't flat.
std::optional<gp_Pln> PlaneAt(const TopoDS_Shape& region) {
    const BRepAdaptor_Surface surface(TopoDS::Face(region), Standard_False);
    const TopExp_Explorer corner(region, TopAbs_VERTEX);
    if (surface.GetType() != GeomAbs_Plane || !corner.More()) return std::nullopt;
    gp_Pln plane = surface.Plane();
    plane.SetLocation(BRep_Tool::Pnt(TopoDS::Vertex(corner.Current())));
    return plane;
}

bool RegionsInOnePlane(const TopoDS_Shape& shape, const TopoDS_Shape& tool) {
    const std::vector<TopoDS_Shape> faces = Pieces(shape, TopAbs_FACE);
    const std::vector<TopoDS_Shape> others = Pieces(tool, TopAbs_FACE);
    if (faces.empty() || others.empty()) return false;
    const std::optional<gp_Pln> plane = PlaneAt(faces.front());
    return plane && std::ranges::all_of(others, [&](const TopoDS_Shape& other) {
               const std::optional<gp_Pln> next = PlaneAt(other);
               return next && plane->Axis().IsParallel(next->Axis(), 1e-9) &&
                      plane->Distance(next->Location()) < Film;
           });
}

/// The regions of `tool`, each looking the way that `shape` looks: the modeller makes one face only of those
/// that do.
TopoDS_Shape FacingAs(const TopoDS_Shape& shape, const TopoDS_Shape& tool) {
    const gp_Dir normal = NormalOf(TopoDS::Face(Pieces(shape, TopAbs_FACE).front()));
    std::vector<TopoDS_Shape> faces = Pieces(tool, TopAbs_FACE);
    for (TopoDS_Shape& face : faces)
        if (NormalOf(TopoDS::Face(face)).Dot(normal) < 0) face.Reverse();
    return Gathered(faces);
}

/// Regions have no thickness, so their boxes are compared with the edge that a film leaves added.
bool BoxesMeet(const TopoDS_Shape& shape, const TopoDS_Shape& tool, TopAbs_ShapeEnum kind) {
    return Overlap(ExactBox(shape), ExactBox(tool), kind == TopAbs_SOLID ? Film : -Film);
}

TopoDS_Shape WithoutMeeting(const TopoDS_Shape& shape, const TopoDS_Shape& tool, TopAbs_ShapeEnum kind,
                            BooleanKind operation) {
    switch (operation) {
        case BooleanKind::Subtract:
            return shape;
        case BooleanKind::Intersect:
            return {};
        case BooleanKind::Union:
            break;
    }
    std::vector<TopoDS_Shape> pieces = Pieces(shape, kind);
    for (const TopoDS_Shape& piece : Pieces(tool, kind)) pieces.push_back(piece);
    return Gathered(pieces);
}

TopoDS_Shape Operate(const TopoDS_Shape& shape, const TopoDS_Shape& tool, TopAbs_ShapeEnum kind,
                     BooleanKind operation) {
    TopTools_ListOfShape operands;
    operands.Append(shape);
    operands.Append(tool);
    BOPAlgo_PaveFiller crossings;
    crossings.SetArguments(operands);
    crossings.SetNonDestructive(Standard_True);
    crossings.Perform();
    if (crossings.HasErrors()) throw InvalidCall("boolean: the modeller can't intersect the objects");
    if (operation == BooleanKind::Union) {
        BRepAlgoAPI_Fuse fuse(shape, tool, crossings);
        return Merged(Checked(fuse, "union"), kind);
    }
    BRepAlgoAPI_Common common(shape, tool, crossings);
    const TopoDS_Shape shared = Checked(common, "intersection");
    const double filmContent =
        kind == TopAbs_SOLID ? Film * std::min(Area(shape), Area(tool)) : Film * std::sqrt(Area(tool));
    if (Content(shared, kind) <= filmContent) return WithoutMeeting(shape, tool, kind, operation);
    if (operation == BooleanKind::Intersect) return Merged(shared, kind);
    BRepAlgoAPI_Cut cut(shape, tool, crossings);
    return Merged(Checked(cut, "subtraction"), kind);
}

/// A section of a drilled panel has many round openings, and each would cost the modeller more than all of
/// the rest.
TopoDS_Shape UnitedRegions(const TopoDS_Shape& shape, const TopoDS_Shape& tool) {
    const ClosedRegions closed = CloseRoundOpenings(shape, FacingAs(shape, tool));
    return WithOpenings(Operate(closed.shape, closed.tool, TopAbs_FACE, BooleanKind::Union), closed.kept);
}

}  // namespace

gp_Dir NormalOf(const TopoDS_Face& face) {
    if (face.IsNull()) throw InvalidCall("normal: there is no face");
    return Guarded("normal", [&] {
        const BRepAdaptor_Surface surface(face, Standard_False);
        if (surface.GetType() != GeomAbs_Plane) throw InvalidCall("normal: the face is not flat");
        const gp_Ax3 place = surface.Plane().Position();
        const gp_Dir normal = place.XDirection().Crossed(place.YDirection());
        return face.Orientation() == TopAbs_REVERSED ? normal.Reversed() : normal;
    });
}

TopoDS_Shape ExtrudeRegion(const TopoDS_Face& face, double height) {
    if (height == 0 || !std::isfinite(height)) throw InvalidCall("extrusion: the height must not be 0");
    return Guarded("extrusion", [&] {
        const gp_Vec sweep(NormalOf(face).XYZ() * height);
        BRepPrimAPI_MakePrism prism(Placed(face), sweep, Standard_True);
        const std::vector<TopoDS_Shape> solids = Pieces(prism.Shape(), TopAbs_SOLID);
        if (solids.size() != 1) throw InvalidCall("extrusion: the region does not sweep a solid");
        const TopoDS_Shape solid = Placed(solids.front());
        return Volume(solid) < 0 ? solid.Reversed() : solid;
    });
}

TopoDS_Shape Boolean(const TopoDS_Shape& shape, const TopoDS_Shape& tool, BooleanKind kind) {
    if (shape.IsNull() || tool.IsNull()) throw InvalidCall("boolean: an object has no geometry");
    return Guarded("boolean", [&] {
        const TopAbs_ShapeEnum pieces = PieceKind(shape);
        if (PieceKind(tool) != pieces) throw InvalidCall("boolean: a solid and a region don't mix");
        if (pieces == TopAbs_FACE && !RegionsInOnePlane(shape, tool))
            throw InvalidCall("boolean: the regions lie in different planes");
        if (kind != BooleanKind::Union && !BoxesMeet(shape, tool, pieces))
            return WithoutMeeting(shape, tool, pieces, kind);
        if (pieces == TopAbs_FACE && kind == BooleanKind::Union) return UnitedRegions(shape, tool);
        return Operate(shape, tool, pieces, kind);
    });
}

}  // namespace brenvik::solids
