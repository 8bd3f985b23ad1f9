// A plane that is shifted along its normal keeps its parameters, and with them the curves on it.
#include "drafting_host/step/models/rounded_planes.h"

#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Geom_Plane.hxx>
#include <TopExp_Explorer.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>
#include <algorithm>
#include <cmath>
#include <gp_Pln.hxx>
#include <gp_Vec.hxx>
#include <optional>
#include <unordered_set>

namespace brenvik::step {
namespace {

/// Millimetres: the sixth digit of inches, which both the plane and its corners may have lost.
constexpr double Rounding = 25.4e-6;
/// Millimetres: numbers that mean the same differ by less.
constexpr double Noise = 1e-9;

/// How far a face's corners lie off its plane, towards its normal, if all lie off equally far.
std::optional<double> DistanceOfCorners(const TopoDS_Face& face, const gp_Pln& plane, double noise) {
    double least = HUGE_VAL, most = -HUGE_VAL;
    for (TopExp_Explorer corner(face, TopAbs_VERTEX); corner.More(); corner.Next()) {
        const gp_Pnt point = BRep_Tool::Pnt(TopoDS::Vertex(corner.Current()));
        const double distance = gp_Vec(plane.Location(), point).Dot(gp_Vec(plane.Axis().Direction()));
        least = std::min(least, distance);
        most = std::max(most, distance);
    }
    if (!(most - least <= noise)) return std::nullopt;
    return (least + most) / 2;
}

void PutOnCorners(const TopoDS_Face& face, double unit) {
    const Handle(Geom_Plane) surface = Handle(Geom_Plane)::DownCast(BRep_Tool::Surface(face));
    if (surface.IsNull()) return;
    const auto distance = DistanceOfCorners(face, surface->Pln(), Noise / unit);
    if (!distance || std::abs(*distance) <= Noise / unit || std::abs(*distance) > Rounding / unit) return;
    const gp_Pln moved = surface->Pln().Translated(gp_Vec(surface->Pln().Axis().Direction()) * *distance);
    BRep_Builder().UpdateFace(face, new Geom_Plane(moved), TopLoc_Location(), BRep_Tool::Tolerance(face));
}

}  // namespace

void PutPlanesOnCorners(const TopoDS_Shape& shape, double unit) {
    std::unordered_set<const Standard_Transient*> seen;  // uses of one face share it
    for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next())
        if (seen.insert(face.Current().TShape().get()).second)
            PutOnCorners(TopoDS::Face(face.Current().Located(TopLoc_Location())), unit);
}

}  // namespace brenvik::step
