// Outlines from the formulas of round surfaces: the points whose normal is square to the line of sight.
#include "drafting_host/document/geometry/outlines.h"

#include <BRepAdaptor_Surface.hxx>
#include <BRepTools.hxx>
#include <algorithm>
#include <gp_Cone.hxx>
#include <gp_Cylinder.hxx>
#include <gp_Sphere.hxx>
#include <gp_Torus.hxx>

#include "drafting_host/document/geometry/modeller_points.h"
#include "drafting_host/document/geometry/vectors.h"

namespace brenvik {

using namespace vectors;

namespace {

constexpr double SameDirection = 1e-9;

/// The part of a surface's parameters that a face spans.
struct Stretch {
    double u0 = 0, u1 = 0, v0 = 0, v1 = 0;

    explicit Stretch(const TopoDS_Face& face) { BRepTools::UVBounds(face, u0, u1, v0, v1); }
    bool HoldsU(double u) const { return Within(NormalAngle(u - u0), u1 - u0); }
    bool HoldsV(double v) const { return Within(NormalAngle(v - v0), v1 - v0); }

  private:
    /// The ends are edges of the face, which are drawn as such.
    static bool Within(double from, double length) {
        constexpr double rim = 1e-9;
        return length >= FullTurn - rim || (from > rim && from < length - rim);
    }
};

void AddRuling(std::vector<HostGeometry>& found, const BRepAdaptor_Surface& surface, const Stretch& stretch,
               double u) {
    if (!stretch.HoldsU(u)) return;
    LineData line;
    line.start = FromModeller(surface.Value(u, stretch.v0).XYZ());
    line.end = FromModeller(surface.Value(u, stretch.v1).XYZ());
    found.push_back(line);
}

/// Rulings of a cylinder or cone: normal(u) = x cos u + y sin u - axis * tilt has to be square to the eye.
void AddRulings(std::vector<HostGeometry>& found, const BRepAdaptor_Surface& surface, const TopoDS_Face& face,
                const gp_Ax3& position, double tilt, const Point3& eye) {
    const double a = Dot(FromModeller(position.XDirection().XYZ()), eye);
    const double b = Dot(FromModeller(position.YDirection().XYZ()), eye);
    const double c = Dot(FromModeller(position.Direction().XYZ()), eye) * tilt;
    const double reach = std::hypot(a, b);
    if (reach < SameDirection || std::abs(c) >= reach) return;
    const Stretch stretch(face);
    const double middle = std::atan2(b, a), aside = std::acos(c / reach);
    AddRuling(found, surface, stretch, middle + aside);
    AddRuling(found, surface, stretch, middle - aside);
}

/// An arc about the axis of a surface, over the stretch that the face spans.
HostGeometry About(const gp_Ax3& position, const Point3& center, double radius, const Stretch& stretch) {
    const Point3 axis = Unit(FromModeller(position.Direction().XYZ()));
    if (stretch.u1 - stretch.u0 >= FullTurn - 1e-9) return CircleData{center, radius, 0, axis};
    const Axes axes = ObjectAxes(axis);
    const Point3 x = FromModeller(position.XDirection().XYZ());
    const double turn = std::atan2(Dot(axes.y, x) + 0.0, Dot(axes.x, x) + 0.0);
    const bool direct = position.Direct();
    const double start = direct ? turn + stretch.u0 : turn - stretch.u1;
    const double end = direct ? turn + stretch.u1 : turn - stretch.u0;
    return ArcData{center, radius, NormalAngle(start), NormalAngle(end), 0, axis};
}

void AddOfSphere(std::vector<HostGeometry>& found, const gp_Sphere& sphere, const TopoDS_Face& face,
                 const Point3& eye) {
    const Stretch stretch(face);
    const Point3 axis = FromModeller(sphere.Position().Direction().XYZ());
    const Point3 center = FromModeller(sphere.Location().XYZ());
    const bool whole =
        stretch.u1 - stretch.u0 >= FullTurn - 1e-9 && stretch.v1 - stretch.v0 >= FullTurn / 2 - 1e-9;
    if (whole)
        found.push_back(CircleData{center, sphere.Radius(), 0, eye});
    else if (Length(Cross(axis, eye)) < SameDirection && stretch.v0 < -1e-9 && stretch.v1 > 1e-9)
        found.push_back(About(sphere.Position(), center, sphere.Radius(), stretch));
}

void AddOfTorus(std::vector<HostGeometry>& found, const gp_Torus& torus, const TopoDS_Face& face,
                const Point3& eye) {
    if (Length(Cross(FromModeller(torus.Position().Direction().XYZ()), eye)) >= SameDirection) return;
    const Stretch stretch(face);
    const Point3 center = FromModeller(torus.Location().XYZ());
    if (stretch.HoldsV(0))
        found.push_back(About(torus.Position(), center, torus.MajorRadius() + torus.MinorRadius(), stretch));
    const double inner = torus.MajorRadius() - torus.MinorRadius();
    if (stretch.HoldsV(FullTurn / 2) && inner > SameDirection)
        found.push_back(About(torus.Position(), center, inner, stretch));
}

}  // namespace

std::vector<HostGeometry> OutlinesOf(const TopoDS_Face& face, const Point3& towardsEye) {
    const BRepAdaptor_Surface surface(face, false);
    std::vector<HostGeometry> found;
    switch (surface.GetType()) {
        case GeomAbs_Cylinder:
            AddRulings(found, surface, face, surface.Cylinder().Position(), 0, towardsEye);
            break;
        case GeomAbs_Cone:
            AddRulings(found, surface, face, surface.Cone().Position(), std::tan(surface.Cone().SemiAngle()),
                       towardsEye);
            break;
        case GeomAbs_Sphere:
            AddOfSphere(found, surface.Sphere(), face, towardsEye);
            break;
        case GeomAbs_Torus:
            AddOfTorus(found, surface.Torus(), face, towardsEye);
            break;
        case GeomAbs_Plane:
        case GeomAbs_BezierSurface:
        case GeomAbs_BSplineSurface:
        case GeomAbs_SurfaceOfRevolution:
        case GeomAbs_SurfaceOfExtrusion:
        case GeomAbs_OffsetSurface:
        case GeomAbs_OtherSurface:
            break;
    }
    return found;
}

}  // namespace brenvik
