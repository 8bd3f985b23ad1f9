// Regions and sections on top of the modeller.
#include "drafting_host/solids/regions.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRepAlgoAPI_Common.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <ShapeAnalysis_FreeBounds.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_HSequenceOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Wire.hxx>
#include <cmath>
#include <gp_Ax3.hxx>
#include <gp_Pln.hxx>

#include "drafting_host/solids/exact_box.h"
#include "drafting_host/solids/guard.h"
#include "drafting_host/solids/mass.h"
#include "drafting_host/solids/merging.h"
#include "drafting_host/solids/operations.h"
#include "drafting_host/solids/round_holes.h"
#include "drafting_host/solids/transform.h"

namespace brenvik::solids {
namespace {

// How far ends of neighbouring curves may lie apart, drawing units: the host's default fuzz for joining.
constexpr double JoinGap = 1e-6;
// Closer than this a plane touches.
constexpr double Touch = 1e-7;

TopoDS_Face FaceOfLoop(const TopoDS_Wire& loop, const std::optional<gp_Dir>& normal) {
    if (!BRep_Tool::IsClosed(loop)) throw InvalidCall("region: the curves do not close");
    BRepBuilderAPI_MakeFace maker(loop, Standard_True);
    if (!maker.IsDone()) throw InvalidCall("region: the curves do not lie in one plane");
    TopoDS_Face face = maker.Face();
    if (normal && NormalOf(face).Dot(*normal) < 0) face.Reverse();
    if (!Valid(face) || !(Area(face) > 0)) throw InvalidCall("region: the curves cross each other");
    return face;
}

/// A region of one circle needs neither a search for its plane nor a check: every trial cut of a hole begins
/// with one.
std::optional<TopoDS_Face> DiscOf(const TopoDS_Edge& edge, const std::optional<gp_Dir>& normal) {
    const BRepAdaptor_Curve curve(edge);
    if (curve.GetType() != GeomAbs_Circle || !curve.IsClosed()) return std::nullopt;
    gp_Ax3 place(curve.Circle().Position());
    if (edge.Orientation() == TopAbs_REVERSED) place = gp_Ax3(place.Location(), place.Direction().Reversed());
    const TopoDS_Wire loop = BRepBuilderAPI_MakeWire(edge);
    TopoDS_Face face = BRepBuilderAPI_MakeFace(gp_Pln(place), loop, Standard_False);
    if (normal && NormalOf(face).Dot(*normal) < 0) face.Reverse();
    return face;
}

/// Where along the plane's normal a hole begins and ends.
struct Span {
    double low = 0, high = 0;
    bool openLow = false, openHigh = false;
};

Span SpanOf(const RoundHole& hole, const gp_Ax3& plane) {
    const auto height = [&plane](const gp_Pnt& point) {
        return gp_Vec(plane.Location(), point).Dot(gp_Vec(plane.Direction()));
    };
    const double from = height(hole.from), to = height(hole.to);
    if (from < to) return {from, to, hole.openFrom, hole.openTo};
    return {to, from, hole.openTo, hole.openFrom};
}

bool IsSquareTo(const RoundHole& hole, const gp_Ax3& plane) {
    return std::abs(hole.Axis().Dot(plane.Direction())) > 1 - 1e-14;
}

/// The section of such a hole is a circle, or empty; no other hole may come near the plane.
bool CanWait(const RoundHole& hole, const gp_Ax3& plane) {
    if (IsSquareTo(hole, plane)) return true;
    const Span span = SpanOf(hole, plane);
    return span.low - hole.radius > Touch || span.high + hole.radius < -Touch;
}

/// A floor in the plane belongs to the section, a mouth doesn't.
bool Opens(const RoundHole& hole, const gp_Ax3& plane) {
    if (!IsSquareTo(hole, plane)) return false;
    const Span span = SpanOf(hole, plane);
    return (span.openLow ? span.low <= Touch : span.low < -Touch) &&
           (span.openHigh ? span.high >= -Touch : span.high > Touch);
}

/// The faces of a section, all looking one way. Where the plane lies in a face of the solid the modeller
/// takes that face as it looks, and doesn't merge it with its neighbours.
TopoDS_Shape Facing(const TopoDS_Shape& faces, const gp_Dir& direction) {
    const BRep_Builder builder;
    TopoDS_Compound all;
    builder.MakeCompound(all);
    for (TopExp_Explorer face(faces, TopAbs_FACE); face.More(); face.Next()) {
        const bool away = NormalOf(TopoDS::Face(face.Current())).Dot(direction) < 0;
        builder.Add(all, away ? face.Current().Reversed() : face.Current());
    }
    return all;
}

/// The section of the solid without those holes whose section is known, and they put into it.
TopoDS_Shape Section(const TopoDS_Shape& solid, const TopoDS_Face& cutter, const gp_Ax3& plane) {
    const PluggedSolid plugged =
        PlugRoundHoles(solid, [&plane](const RoundHole& hole) { return CanWait(hole, plane); });
    std::vector<RoundOpening> openings;
    for (const RoundHole& hole : plugged.holes) {
        if (!Opens(hole, plane)) continue;
        const double height = gp_Vec(plane.Location(), hole.from).Dot(gp_Vec(plane.Direction()));
        openings.push_back({hole.from.Translated(gp_Vec(plane.Direction()) * -height), hole.radius});
    }
    BRepAlgoAPI_Common common(plugged.shape, cutter);
    if (common.HasErrors()) throw InvalidCall("section: the modeller can't cut the object");
    return WithOpenings(BordersMerged(Facing(common.Shape(), plane.Direction())), openings);
}

}  // namespace

std::vector<TopoDS_Face> RegionsFromCurves(std::span<const TopoDS_Edge> edges,
                                           const std::optional<gp_Dir>& normal) {
    return Guarded("region", [&] {
        if (edges.size() == 1)
            if (const std::optional<TopoDS_Face> disc = DiscOf(TopoDS::Edge(Placed(edges.front())), normal))
                return std::vector{*disc};
        Handle(TopTools_HSequenceOfShape) open = new TopTools_HSequenceOfShape;
        for (const TopoDS_Edge& edge : edges) open->Append(Placed(edge));
        Handle(TopTools_HSequenceOfShape) loops = new TopTools_HSequenceOfShape;
        ShapeAnalysis_FreeBounds::ConnectEdgesToWires(open, JoinGap, Standard_False, loops);
        std::vector<TopoDS_Face> regions;
        for (int index = 1; index <= loops->Length(); ++index)
            regions.push_back(FaceOfLoop(TopoDS::Wire(loops->Value(index)), normal));
        return regions;
    });
}

std::vector<TopoDS_Face> SectionByPlane(const TopoDS_Shape& shape, const gp_Pnt& p1, const gp_Pnt& p2,
                                        const gp_Pnt& p3) {
    if (shape.IsNull()) throw InvalidCall("section: the object has no geometry");
    return Guarded("section", [&] {
        const gp_Vec along(p1, p2);
        const gp_Vec across = along.Crossed(gp_Vec(p1, p3));
        if (!(across.Magnitude() > 1e-12 * along.SquareMagnitude()) || !(along.Magnitude() > 0))
            throw InvalidCall("section: the three points lie on one line");
        gp_Ax3 frame(p1, gp_Dir(across), gp_Dir(along));
        const Box box = ExactBoxIn(shape, frame);
        std::vector<TopoDS_Face> faces;
        if (box.min.Z() > Touch || box.max.Z() < -Touch) return faces;
        // The plane's origin goes beside the solid: where the three points lie far away, rounding would make
        // a step of the least tilt between this section and another.
        frame.Translate(gp_Vec(frame.XDirection()) * ((box.min.X() + box.max.X()) / 2) +
                        gp_Vec(frame.YDirection()) * ((box.min.Y() + box.max.Y()) / 2));
        const double margin = 1 + 0.01 * (box.SizeX() + box.SizeY());
        const double reachX = box.SizeX() / 2 + margin, reachY = box.SizeY() / 2 + margin;
        const TopoDS_Face cutter = BRepBuilderAPI_MakeFace(gp_Pln(frame), -reachX, reachX, -reachY, reachY);
        for (TopExp_Explorer face(Section(shape, cutter, frame), TopAbs_FACE); face.More(); face.Next()) {
            TopoDS_Face found = TopoDS::Face(Placed(face.Current()));
            if (NormalOf(found).Dot(frame.Direction()) < 0) found.Reverse();
            faces.push_back(found);
        }
        return faces;
    });
}

}  // namespace brenvik::solids
