// Volumes by the theorem of Gauss, face by face. On a plane, cylinder or cone the flux of the place
// vector through the face follows from the face's vector area and area alone.
#include "drafting_host/solids/mass.h"

#include <BRepAdaptor_Surface.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRepGProp.hxx>
#include <BRepGProp_Domain.hxx>
#include <BRepGProp_Face.hxx>
#include <BRepGProp_Vinert.hxx>
#include <BRep_Tool.hxx>
#include <GProp_GProps.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <cmath>

#include "drafting_host/solids/edge_integral.h"
#include "drafting_host/solids/free_share.h"
#include "drafting_host/solids/guard.h"

namespace brenvik::solids {
namespace {

double Sign(const TopoDS_Shape& edge) {
    if (edge.Orientation() == TopAbs_FORWARD) return 1;
    return edge.Orientation() == TopAbs_REVERSED ? -1 : 0;  // edges inside a face bound nothing
}

gp_XYZ VectorArea(const TopoDS_Face& face, const gp_XYZ& origin) {
    gp_XYZ sum(0, 0, 0);
    for (TopExp_Explorer edge(face, TopAbs_EDGE); edge.More(); edge.Next()) {
        sum +=
            SweptArea(TopoDS::Edge(edge.Current().Oriented(TopAbs_FORWARD)), origin) * Sign(edge.Current());
    }
    return sum;
}

/// Area with the sign of the boundary's turn about the outward radius.
double SignedCylinderArea(const TopoDS_Face& face, const gp_Cylinder& cylinder) {
    double sum = 0;
    for (TopExp_Explorer edge(face, TopAbs_EDGE); edge.More(); edge.Next()) {
        sum += CylinderArea(TopoDS::Edge(edge.Current().Oriented(TopAbs_FORWARD)), cylinder) *
               Sign(edge.Current());
    }
    return sum;
}

/// A third of the flux of (p - origin) through the face: its share of the volume.
double VolumeShare(const TopoDS_Face& face, const gp_XYZ& origin) {
    const BRepAdaptor_Surface surface(face, Standard_False);
    if (surface.GetType() == GeomAbs_Plane) {
        const gp_XYZ normal = surface.Plane().Axis().Direction().XYZ();
        const double height = (surface.Plane().Location().XYZ() - origin).Dot(normal);
        return height * VectorArea(face, surface.Plane().Location().XYZ()).Dot(normal) / 3;
    }
    if (surface.GetType() == GeomAbs_Cylinder) {
        const gp_Cylinder cylinder = surface.Cylinder();
        const gp_XYZ foot = cylinder.Location().XYZ();
        return ((foot - origin).Dot(VectorArea(face, foot)) +
                cylinder.Radius() * SignedCylinderArea(face, cylinder)) /
               3;
    }
    if (surface.GetType() == GeomAbs_Cone) {
        // Seen from its apex a cone has no flux at all.
        const gp_XYZ apex = surface.Cone().Apex().XYZ();
        return (apex - origin).Dot(VectorArea(face, origin)) / 3;
    }
    const bool isRound = surface.GetType() == GeomAbs_Sphere || surface.GetType() == GeomAbs_Torus;
    if (const auto share = isRound ? std::nullopt : FreeShare(face, origin)) return *share;
    // The modeller's fixed Gauss rule is exact for spheres and tori; its adaptive one gains nothing there
    // and takes ten times as long on free forms.
    BRepGProp_Face integrand(face);
    BRepGProp_Domain domain(face);
    BRepGProp_Vinert share;
    share.SetLocation(gp_Pnt(origin));
    if (BRep_Tool::NaturalRestriction(face))
        share.Perform(integrand);
    else
        share.Perform(integrand, domain);
    return share.Mass();
}

gp_XYZ FirstPoint(const TopoDS_Shape& shape) {
    const TopExp_Explorer vertex(shape, TopAbs_VERTEX);
    return vertex.More() ? BRep_Tool::Pnt(TopoDS::Vertex(vertex.Current())).XYZ() : gp_XYZ(0, 0, 0);
}

bool Has(const TopoDS_Shape& shape, TopAbs_ShapeEnum kind) { return TopExp_Explorer(shape, kind).More(); }

}  // namespace

double Volume(const TopoDS_Shape& shape) {
    if (shape.IsNull()) return 0;
    return Guarded("volume", [&] {
        double total = 0;
        for (TopExp_Explorer solid(shape, TopAbs_SOLID); solid.More(); solid.Next()) {
            const gp_XYZ origin = FirstPoint(solid.Current());
            double sum = 0;
            for (TopExp_Explorer face(solid.Current(), TopAbs_FACE); face.More(); face.Next()) {
                const TopAbs_Orientation side = face.Current().Orientation();
                if (side == TopAbs_INTERNAL || side == TopAbs_EXTERNAL) continue;
                sum += VolumeShare(TopoDS::Face(face.Current()), origin);
            }
            total += sum;
        }
        if (!std::isfinite(total)) throw InvalidCall("volume: the object is not finite");
        return total;
    });
}

double Area(const TopoDS_Face& face) {
    if (face.IsNull()) return 0;
    return Guarded("area", [&] {
        const BRepAdaptor_Surface surface(face, Standard_False);
        const gp_XYZ origin = FirstPoint(face);
        if (surface.GetType() == GeomAbs_Plane)
            return std::abs(VectorArea(face, origin).Dot(surface.Plane().Axis().Direction().XYZ()));
        if (surface.GetType() == GeomAbs_Cylinder)
            return std::abs(SignedCylinderArea(face, surface.Cylinder()));
        if (surface.GetType() == GeomAbs_Cone) {
            const gp_Cone cone = surface.Cone();
            const double along = VectorArea(face, origin).Dot(cone.Axis().Direction().XYZ());
            return std::abs(along / std::sin(cone.SemiAngle()));
        }
        GProp_GProps properties;
        BRepGProp::SurfaceProperties(face, properties);
        return std::abs(properties.Mass());
    });
}

double Area(const TopoDS_Shape& shape) {
    double total = 0;
    if (shape.IsNull()) return total;
    for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next())
        total += Area(TopoDS::Face(face.Current()));
    return total;
}

gp_Pnt Centroid(const TopoDS_Shape& shape) {
    if (shape.IsNull()) throw InvalidCall("centroid: the object has no geometry");
    return Guarded("centroid", [&] {
        GProp_GProps properties{gp_Pnt(FirstPoint(shape))};
        if (Has(shape, TopAbs_SOLID))
            BRepGProp::VolumeProperties(shape, properties);
        else if (Has(shape, TopAbs_FACE))
            BRepGProp::SurfaceProperties(shape, properties);
        else if (Has(shape, TopAbs_EDGE))
            BRepGProp::LinearProperties(shape, properties);
        if (properties.Mass() == 0) throw InvalidCall("centroid: the object has no extent");
        return properties.CentreOfMass();
    });
}

bool IsSolid(const TopoDS_Shape& shape) {
    if (shape.IsNull() || !Has(shape, TopAbs_SOLID)) return false;
    return !TopExp_Explorer(shape, TopAbs_FACE, TopAbs_SOLID).More() &&
           !TopExp_Explorer(shape, TopAbs_EDGE, TopAbs_SOLID).More();
}

std::size_t LumpsOf(const TopoDS_Shape& shape) {
    std::size_t lumps = 0;
    for (TopExp_Explorer lump(shape, TopAbs_SOLID); lump.More(); lump.Next()) ++lumps;
    return lumps;
}

bool Valid(const TopoDS_Shape& shape) {
    if (shape.IsNull()) return false;
    return Guarded("check", [&] { return BRepCheck_Analyzer(shape).IsValid() == Standard_True; });
}

}  // namespace brenvik::solids
