// Recognising analytic kinds. Only what is exact is taken: an extrusion of a circle along its axis is a
// cylinder, a spline that happens to be round is not.
#include "drafting_host/acis/analytic_forms.h"

#include <Geom_Circle.hxx>
#include <Geom_ConicalSurface.hxx>
#include <Geom_CylindricalSurface.hxx>
#include <Geom_Ellipse.hxx>
#include <Geom_Line.hxx>
#include <Geom_OffsetSurface.hxx>
#include <Geom_Plane.hxx>
#include <Geom_RectangularTrimmedSurface.hxx>
#include <Geom_SphericalSurface.hxx>
#include <Geom_SurfaceOfLinearExtrusion.hxx>
#include <Geom_SurfaceOfRevolution.hxx>
#include <Geom_ToroidalSurface.hxx>
#include <Geom_TrimmedCurve.hxx>
#include <gp_Ax3.hxx>
#include <gp_Lin.hxx>

#include <cmath>

namespace brenvik::acis {
namespace {

// Angles and lengths within which a curve lies to an axis as the analytic kind wants it.
constexpr double Parallel = 1e-12;
constexpr double OnAxis = 1e-9;

Handle(Geom_Curve) Untrimmed(Handle(Geom_Curve) curve) {
    while (!curve.IsNull()) {
        const auto trimmed = Handle(Geom_TrimmedCurve)::DownCast(curve);
        if (trimmed.IsNull()) break;
        curve = trimmed->BasisCurve();
    }
    return curve;
}

SurfaceRecord PlaneOf(const gp_Pnt& origin, const gp_Dir& normal, const gp_Dir& along) {
    return PlaneRecord{origin.XYZ(), normal.XYZ(), along.XYZ()};
}

SurfaceRecord RoundOf(const gp_Pnt& centre, const gp_Dir& axis, const gp_Dir& across, double radius,
                      double ratio, double semiAngle) {
    ConeRecord cone;
    cone.centre = centre.XYZ();
    cone.axis = axis.XYZ();
    cone.major = across.XYZ() * radius;
    cone.ratio = ratio;
    cone.sine = semiAngle == 0 ? 0 : std::sin(semiAngle);
    cone.cosine = semiAngle == 0 ? 1 : std::cos(semiAngle);
    return cone;
}

// A cone's record needs a base circle; one given at its apex is moved along its axis.
SurfaceRecord ConeOf(const gp_Ax3& axes, double radius, double semiAngle) {
    gp_Pnt centre = axes.Location();
    if (radius < 1e-6) {
        const double along = semiAngle > 0 ? 1 : -1;
        centre.Translate(gp_Vec(axes.Direction()) * along);
        radius += std::abs(std::tan(semiAngle));
    }
    return RoundOf(centre, axes.Direction(), axes.XDirection(), radius, 1, semiAngle);
}

std::optional<SurfaceRecord> Extruded(const Geom_SurfaceOfLinearExtrusion& surface) {
    const Handle(Geom_Curve) basis = Untrimmed(surface.BasisCurve());
    const gp_Dir direction = surface.Direction();
    if (const auto line = Handle(Geom_Line)::DownCast(basis); !line.IsNull()) {
        const gp_Dir along = line->Lin().Direction();
        if (along.IsParallel(direction, Parallel)) return std::nullopt;
        return PlaneOf(line->Lin().Location(), along.Crossed(direction), along);
    }
    if (const auto circle = Handle(Geom_Circle)::DownCast(basis); !circle.IsNull()) {
        if (!circle->Axis().Direction().IsParallel(direction, Parallel)) return std::nullopt;
        return RoundOf(circle->Location(), circle->Axis().Direction(), circle->XAxis().Direction(),
                       circle->Radius(), 1, 0);
    }
    if (const auto ellipse = Handle(Geom_Ellipse)::DownCast(basis); !ellipse.IsNull()) {
        if (!ellipse->Axis().Direction().IsParallel(direction, Parallel)) return std::nullopt;
        return RoundOf(ellipse->Location(), ellipse->Axis().Direction(), ellipse->XAxis().Direction(),
                       ellipse->MajorRadius(), ellipse->MinorRadius() / ellipse->MajorRadius(), 0);
    }
    return std::nullopt;
}

std::optional<SurfaceRecord> RevolvedLine(const gp_Lin& line, const gp_Lin& axis) {
    const gp_Dir along = axis.Direction();
    if (line.Direction().IsParallel(along, Parallel)) {
        const double radius = axis.Distance(line.Location());
        if (radius < OnAxis) return std::nullopt;
        const gp_Vec reach(axis.Location(), line.Location());
        const gp_Vec across = reach - gp_Vec(along) * reach.Dot(gp_Vec(along));
        return RoundOf(axis.Location(), along, gp_Dir(across), radius, 1, 0);
    }
    const gp_Vec reach(axis.Location(), line.Location());
    if (line.Direction().IsNormal(along, Parallel)) {
        const gp_Pnt origin = axis.Location().Translated(gp_Vec(along) * reach.Dot(gp_Vec(along)));
        return PlaneOf(origin, along, line.Direction());
    }
    if (line.Distance(axis) > OnAxis) return std::nullopt;
    // From the apex, where the line meets the axis, the cone grows both ways; the half with the line's
    // own starting point is meant.
    const double radius = axis.Distance(line.Location());
    if (radius < 1e-6) return std::nullopt;
    const gp_Vec across = reach - gp_Vec(along) * reach.Dot(gp_Vec(along));
    const gp_Pnt centre = axis.Location().Translated(gp_Vec(along) * reach.Dot(gp_Vec(along)));
    const double slope = gp_Vec(line.Direction()).Dot(gp_Vec(gp_Dir(across))) / line.Direction().Dot(along);
    return RoundOf(centre, along, gp_Dir(across), radius, 1, std::atan(slope));
}

std::optional<SurfaceRecord> RevolvedCircle(const gp_Circ& circle, const gp_Lin& axis) {
    const gp_Dir along = axis.Direction();
    const gp_Vec reach(axis.Location(), circle.Location());
    if (!circle.Axis().Direction().IsNormal(along, Parallel)) return std::nullopt;
    if (std::abs(reach.Dot(gp_Vec(circle.Axis().Direction()))) > OnAxis) return std::nullopt;
    const gp_Vec across = reach - gp_Vec(along) * reach.Dot(gp_Vec(along));
    const gp_Pnt centre = axis.Location().Translated(gp_Vec(along) * reach.Dot(gp_Vec(along)));
    if (across.Magnitude() < OnAxis) {
        const gp_Dir equator = circle.Axis().Direction();
        return SphereRecord{circle.Location().XYZ(), equator.XYZ(), along.XYZ(), circle.Radius()};
    }
    if (across.Magnitude() <= circle.Radius()) return std::nullopt;
    return TorusRecord{centre.XYZ(), along.XYZ(), gp_Dir(across).XYZ(), across.Magnitude(), circle.Radius()};
}

std::optional<SurfaceRecord> Revolved(const Geom_SurfaceOfRevolution& surface) {
    const Handle(Geom_Curve) basis = Untrimmed(surface.BasisCurve());
    const gp_Lin axis(surface.Axis());
    if (const auto line = Handle(Geom_Line)::DownCast(basis); !line.IsNull())
        return RevolvedLine(line->Lin(), axis);
    if (const auto circle = Handle(Geom_Circle)::DownCast(basis); !circle.IsNull())
        return RevolvedCircle(circle->Circ(), axis);
    return std::nullopt;
}

}  // namespace

std::optional<SurfaceRecord> AnalyticSurface(const Handle(Geom_Surface) & surface) {
    if (const auto trimmed = Handle(Geom_RectangularTrimmedSurface)::DownCast(surface); !trimmed.IsNull())
        return AnalyticSurface(trimmed->BasisSurface());
    if (const auto plane = Handle(Geom_Plane)::DownCast(surface); !plane.IsNull()) {
        const gp_Ax3& axes = plane->Position();
        return PlaneOf(axes.Location(), axes.Direction(), axes.XDirection());
    }
    if (const auto cylinder = Handle(Geom_CylindricalSurface)::DownCast(surface); !cylinder.IsNull()) {
        const gp_Ax3& axes = cylinder->Position();
        return RoundOf(axes.Location(), axes.Direction(), axes.XDirection(), cylinder->Radius(), 1, 0);
    }
    if (const auto cone = Handle(Geom_ConicalSurface)::DownCast(surface); !cone.IsNull())
        return ConeOf(cone->Position(), cone->RefRadius(), cone->SemiAngle());
    if (const auto sphere = Handle(Geom_SphericalSurface)::DownCast(surface); !sphere.IsNull()) {
        const gp_Ax3& axes = sphere->Position();
        return SphereRecord{axes.Location().XYZ(), axes.XDirection().XYZ(), axes.Direction().XYZ(),
                            sphere->Radius()};
    }
    if (const auto torus = Handle(Geom_ToroidalSurface)::DownCast(surface); !torus.IsNull()) {
        // One that crosses itself is two surfaces in one; as a spline it is what the face lies on.
        if (torus->MajorRadius() <= torus->MinorRadius() + 1e-6) return std::nullopt;
        const gp_Ax3& axes = torus->Position();
        return TorusRecord{axes.Location().XYZ(), axes.Direction().XYZ(), axes.XDirection().XYZ(),
                           torus->MajorRadius(), torus->MinorRadius()};
    }
    if (const auto offset = Handle(Geom_OffsetSurface)::DownCast(surface); !offset.IsNull()) {
        const Handle(Geom_Surface) equal = offset->Surface();
        return equal.IsNull() ? std::nullopt : AnalyticSurface(equal);
    }
    if (const auto extrusion = Handle(Geom_SurfaceOfLinearExtrusion)::DownCast(surface);
        !extrusion.IsNull()) {
        return Extruded(*extrusion);
    }
    if (const auto revolution = Handle(Geom_SurfaceOfRevolution)::DownCast(surface); !revolution.IsNull())
        return Revolved(*revolution);
    return std::nullopt;
}

gp_XYZ Outside(const SurfaceRecord& surface, const gp_XYZ& point) {
    if (const auto* plane = std::get_if<PlaneRecord>(&surface)) return plane->normal;
    if (const auto* sphere = std::get_if<SphereRecord>(&surface)) return point - sphere->centre;
    if (const auto* cone = std::get_if<ConeRecord>(&surface)) {
        const gp_XYZ reach = point - cone->centre;
        return reach - cone->axis * reach.Dot(cone->axis);
    }
    const auto& torus = std::get<TorusRecord>(surface);
    const gp_XYZ reach = point - torus.centre;
    const gp_XYZ level = reach - torus.axis * reach.Dot(torus.axis);
    return reach - level.Normalized() * torus.major;
}

void PutOnNappe(ConeRecord& cone, const gp_XYZ& point) {
    const double height = (point - cone.centre).Dot(cone.axis);
    const double radius = cone.major.Modulus() + height * cone.sine / cone.cosine;
    if (radius >= 0) return;
    cone.centre += cone.axis * height;
    cone.major *= -radius / cone.major.Modulus();
    cone.sine = -cone.sine;
}

std::optional<CurveRecord> AnalyticCurve(const Handle(Geom_Curve) & curve) {
    const Handle(Geom_Curve) basis = Untrimmed(curve);
    if (const auto line = Handle(Geom_Line)::DownCast(basis); !line.IsNull())
        return LineRecord{line->Lin().Location().XYZ(), line->Lin().Direction().XYZ()};
    if (const auto circle = Handle(Geom_Circle)::DownCast(basis); !circle.IsNull()) {
        return EllipseRecord{circle->Location().XYZ(), circle->Axis().Direction().XYZ(),
                             circle->XAxis().Direction().XYZ() * circle->Radius(), 1};
    }
    if (const auto ellipse = Handle(Geom_Ellipse)::DownCast(basis); !ellipse.IsNull()) {
        return EllipseRecord{ellipse->Location().XYZ(), ellipse->Axis().Direction().XYZ(),
                             ellipse->XAxis().Direction().XYZ() * ellipse->MajorRadius(),
                             ellipse->MinorRadius() / ellipse->MajorRadius()};
    }
    return std::nullopt;
}

std::string KindName(const Handle(Standard_Transient) & geometry) {
    if (geometry.IsNull()) return "missing geometry";
    std::string name = geometry->DynamicType()->Name();
    return name.rfind("Geom_", 0) == 0 ? name.substr(5) : name;
}

}  // namespace brenvik::acis
