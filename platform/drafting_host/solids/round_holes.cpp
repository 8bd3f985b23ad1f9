// Holes by the faces that meet along their rims. Only whole turns count: a wall with one seam, a rim of one
// edge. Nothing is computed anew but the faces that lose a boundary.
#include "drafting_host/solids/round_holes.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepClass_FaceClassifier.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopTools_MapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopoDS_Shell.hxx>
#include <TopoDS_Solid.hxx>
#include <TopoDS_Wire.hxx>
#include <gp_Circ.hxx>
#include <optional>

#include "base/failure.h"
#include "drafting_host/solids/operations.h"

namespace brenvik::solids {
namespace {

constexpr double Film = 1e-7;

using FacesOfEdges = TopTools_IndexedDataMapOfShapeListOfShape;

bool OnlyOne(const TopoDS_Shape& shape, TopAbs_ShapeEnum kind) {
    TopExp_Explorer pieces(shape, kind);
    if (!pieces.More()) return false;
    pieces.Next();
    return !pieces.More();
}

/// The circle of an edge that is a whole turn.
std::optional<gp_Circ> WholeTurn(const TopoDS_Edge& edge) {
    if (BRep_Tool::Degenerated(edge)) return std::nullopt;
    const BRepAdaptor_Curve curve(edge);
    if (curve.GetType() != GeomAbs_Circle || !curve.IsClosed()) return std::nullopt;
    return curve.Circle();
}

/// A rim of a wall, and the flat face beyond it.
struct End {
    gp_Circ circle;
    TopoDS_Wire wire;  ///< Of the face beyond.
    TopoDS_Face beyond;
    bool open = false;
};

std::optional<End> EndAt(const TopoDS_Edge& rim, const TopoDS_Face& wall, const FacesOfEdges& neighbours) {
    const std::optional<gp_Circ> circle = WholeTurn(rim);
    const TopTools_ListOfShape& faces = neighbours.FindFromKey(rim);
    if (!circle || faces.Extent() != 2) return std::nullopt;
    End end{*circle, {}, TopoDS::Face(faces.First().IsSame(wall) ? faces.Last() : faces.First()), false};
    if (BRepAdaptor_Surface(end.beyond, Standard_False).GetType() != GeomAbs_Plane) return std::nullopt;
    int wires = 0;
    for (TopoDS_Iterator wire(end.beyond); wire.More(); wire.Next(), ++wires) {
        TopoDS_Iterator edges(wire.Value());
        if (!edges.More() || !edges.Value().IsSame(rim)) continue;
        edges.Next();
        if (!edges.More()) end.wire = TopoDS::Wire(wire.Value());
    }
    if (end.wire.IsNull()) return std::nullopt;
    end.open = IsOpening(end.wire, end.beyond, *circle);
    if (!end.open && wires > 1) return std::nullopt;
    return end;
}

/// Material lies outside of the wall.
bool IsHollow(const TopoDS_Face& wall, const BRepAdaptor_Surface& surface) {
    return surface.Cylinder().Position().Direct() == (wall.Orientation() == TopAbs_REVERSED);
}

/// The two ends of a hole's wall; null if the face is no such wall.
std::optional<std::pair<End, End>> EndsOf(const TopoDS_Face& wall, const FacesOfEdges& neighbours) {
    const BRepAdaptor_Surface surface(wall, Standard_False);
    if (surface.GetType() != GeomAbs_Cylinder || !IsHollow(wall, surface)) return std::nullopt;
    std::vector<End> ends;
    TopTools_MapOfShape seen;
    for (TopExp_Explorer edges(wall, TopAbs_EDGE); edges.More(); edges.Next()) {
        const TopoDS_Edge& edge = TopoDS::Edge(edges.Current());
        if (!seen.Add(edge) || BRep_Tool::IsClosed(edge, wall)) continue;
        const std::optional<End> end = EndAt(edge, wall, neighbours);
        if (!end) return std::nullopt;
        ends.push_back(*end);
    }
    if (ends.size() != 2 || !(ends[0].open || ends[1].open)) return std::nullopt;
    return std::pair(ends[0], ends[1]);
}

TopoDS_Face WithoutWires(const TopoDS_Face& face, const TopTools_MapOfShape& dropped) {
    const TopoDS_Shape forward = face.Oriented(TopAbs_FORWARD);
    TopoDS_Shape rest = forward.EmptyCopied();
    const BRep_Builder builder;
    for (TopoDS_Iterator wires(forward); wires.More(); wires.Next())
        if (!dropped.Contains(wires.Value())) builder.Add(rest, wires.Value());
    return TopoDS::Face(rest.Oriented(face.Orientation()));
}

/// The solid without the faces and boundaries of its holes.
TopoDS_Shape Rebuilt(const TopoDS_Shape& solid, const TopTools_MapOfShape& droppedFaces,
                     const TopTools_MapOfShape& changedFaces, const TopTools_MapOfShape& droppedWires) {
    const BRep_Builder builder;
    TopoDS_Shell shell;
    builder.MakeShell(shell);
    for (TopExp_Explorer faces(solid, TopAbs_FACE); faces.More(); faces.Next()) {
        const TopoDS_Face& face = TopoDS::Face(faces.Current());
        if (droppedFaces.Contains(face)) continue;
        builder.Add(shell, changedFaces.Contains(face) ? WithoutWires(face, droppedWires) : face);
    }
    shell.Closed(Standard_True);
    TopoDS_Solid result;
    builder.MakeSolid(result);
    builder.Add(result, shell);
    return result;
}

TopoDS_Wire Rim(const RoundOpening& opening, const gp_Dir& downwards) {
    const gp_Circ circle(gp_Ax2(opening.center, downwards), opening.radius);
    return BRepBuilderAPI_MakeWire(BRepBuilderAPI_MakeEdge(circle).Edge()).Wire();
}

}  // namespace

bool IsOpening(const TopoDS_Wire& wire, const TopoDS_Face& face, const gp_Circ& circle) {
    // Around an opening the other boundaries lie outside its circle.
    for (TopoDS_Iterator wires(face); wires.More(); wires.Next()) {
        if (wires.Value().IsSame(wire)) continue;
        const TopExp_Explorer corner(wires.Value(), TopAbs_VERTEX);
        return corner.More() &&
               circle.Location().Distance(BRep_Tool::Pnt(TopoDS::Vertex(corner.Current()))) > circle.Radius();
    }
    return false;
}

PluggedSolid PlugRoundHoles(const TopoDS_Shape& solid, const std::function<bool(const RoundHole&)>& wanted) {
    PluggedSolid plugged{solid, {}};
    // Where one body stands in another's hole the hole can't be filled.
    if (!OnlyOne(solid, TopAbs_SOLID) || !OnlyOne(solid, TopAbs_SHELL)) return plugged;
    FacesOfEdges neighbours;
    TopExp::MapShapesAndUniqueAncestors(solid, TopAbs_EDGE, TopAbs_FACE, neighbours);
    TopTools_MapOfShape droppedFaces, changedFaces, droppedWires;
    for (TopExp_Explorer faces(solid, TopAbs_FACE); faces.More(); faces.Next()) {
        const TopoDS_Face& wall = TopoDS::Face(faces.Current());
        const auto ends = EndsOf(wall, neighbours);
        if (!ends) continue;
        const auto& [from, to] = *ends;
        const RoundHole hole{from.circle.Location(), to.circle.Location(), from.circle.Radius(), from.open,
                             to.open};
        if (hole.from.Distance(hole.to) < Film || !wanted(hole)) continue;
        plugged.holes.push_back(hole);
        droppedFaces.Add(wall);
        for (const End* end : {&from, &to}) {
            (end->open ? changedFaces : droppedFaces).Add(end->beyond);
            if (end->open) droppedWires.Add(end->wire);
        }
    }
    if (!plugged.holes.empty()) plugged.shape = Rebuilt(solid, droppedFaces, changedFaces, droppedWires);
    return plugged;
}

TopoDS_Shape WithOpenings(const TopoDS_Shape& faces, std::span<const RoundOpening> openings) {
    if (openings.empty()) return faces;
    std::vector<TopoDS_Face> pieces;
    for (TopExp_Explorer each(faces, TopAbs_FACE); each.More(); each.Next())
        pieces.push_back(TopoDS::Face(each.Current()));
    std::vector<std::vector<const RoundOpening*>> within(pieces.size());
    for (const RoundOpening& opening : openings) {
        std::size_t piece = 0;
        if (pieces.size() > 1)
            while (piece < pieces.size() &&
                   BRepClass_FaceClassifier(pieces[piece], opening.center, Film).State() != TopAbs_IN)
                ++piece;
        if (piece >= pieces.size()) throw InvalidCall("region: an opening lies outside of it");
        within[piece].push_back(&opening);
    }
    const BRep_Builder builder;
    TopoDS_Compound all;
    builder.MakeCompound(all);
    for (std::size_t piece = 0; piece < pieces.size(); ++piece) {
        TopoDS_Face face = pieces[piece];
        if (!within[piece].empty()) {
            const TopoDS_Shape forward = face.Oriented(TopAbs_FORWARD);
            TopoDS_Shape opened = forward.EmptyCopied();
            for (TopoDS_Iterator wires(forward); wires.More(); wires.Next())
                builder.Add(opened, wires.Value());
            const gp_Dir down = NormalOf(TopoDS::Face(forward)).Reversed();
            for (const RoundOpening* opening : within[piece]) builder.Add(opened, Rim(*opening, down));
            face = TopoDS::Face(opened.Oriented(face.Orientation()));
        }
        if (pieces.size() == 1) return face;
        builder.Add(all, face);
    }
    return all;
}

}  // namespace brenvik::solids
