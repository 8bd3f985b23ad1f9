// Numbers of ACIS records become surfaces and curves. Everything that a body's place does is done to
// the numbers first: a similarity takes each of these surfaces to one of its own kind.
#include "drafting_host/acis/geometry.h"

#include "base/angles.h"
#include "drafting_host/acis/spline_shapes.h"

#include <ElCLib.hxx>
#include <ElSLib.hxx>
#include <Geom_Circle.hxx>
#include <Geom_ConicalSurface.hxx>
#include <Geom_CylindricalSurface.hxx>
#include <Geom_Ellipse.hxx>
#include <Geom_Line.hxx>
#include <Geom_Plane.hxx>
#include <Geom_SphericalSurface.hxx>
#include <Geom_SurfaceOfLinearExtrusion.hxx>
#include <Geom_ToroidalSurface.hxx>
#include <ShapeAnalysis_Surface.hxx>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace brenvik::acis {
namespace {

// A quarter turn leaves 6e-17 where 0 was meant, two of them 2e-16; over the ten metres of the
// longest board what is dropped here is far below anything that is measured.
constexpr double DirectionNoise = 1e-15;
constexpr double Orthogonality = 1e-6;
// Sines below this are cylinders: over a metre the radius changes by less than what is measured.
constexpr double CylinderSine = 1e-10;
constexpr double SameRatio = 1e-9;

double CleanComponent(double value) {
    if (std::abs(value) < DirectionNoise) return 0;
    if (std::abs(std::abs(value) - 1) < DirectionNoise) return value > 0 ? 1 : -1;
    return value;
}

void RequireRadius(double radius, long record, const char* what) {
    if (!(radius > Coincidence)) {
        throw BadRecord(record, std::string(what) + " of " + std::to_string(radius) +
                                    " is too small; expected more than 1e-7");
    }
}

SurfaceFrame Frame(const PlaneRecord& plane, const Placement& place, long record) {
    SurfaceFrame frame;
    const gp_Dir normal = CleanDirection(place.Vector(plane.normal), record, "normal");
    gp_Ax3 axes(place.Point(plane.origin), normal);
    const gp_XYZ along = place.Vector(plane.uDirection);
    if (along.Crossed(normal.XYZ()).Modulus() > Orthogonality * (1 + along.Modulus()))
        axes = gp_Ax3(axes.Location(), normal, CleanDirection(along, record, "direction"));
    frame.axes = axes;
    return frame;
}

SurfaceFrame Frame(const ConeRecord& cone, const Placement& place, long record, bool againstSigns) {
    SurfaceFrame frame;
    gp_Dir axis = CleanDirection(place.Vector(cone.axis), record, "axis");
    const gp_XYZ major = place.Vector(cone.major);
    frame.radius = major.Modulus();
    RequireRadius(frame.radius, record, "a radius");
    if (!(cone.ratio > 1e-6 && cone.ratio < 1e6))
        throw BadRecord(record, "cone-surface: the ratio is out of range");
    if (std::abs(std::hypot(cone.sine, cone.cosine) - 1) > 1e-6)
        throw BadRecord(record, "cone-surface: sine and cosine are not those of one angle");
    frame.insideOut = cone.cosine < 0;
    const gp_Dir across = CleanDirection(major, record, "major axis");
    if (std::abs(cone.sine) < CylinderSine) {
        frame.kind = SurfaceFrame::Kind::Cylinder;
        if (std::abs(cone.ratio - 1) > SameRatio) {
            frame.kind = SurfaceFrame::Kind::EllipticCylinder;
            frame.minorRadius = frame.radius * cone.ratio;
        }
        frame.axes = gp_Ax3(place.Point(cone.centre), axis, across);
        if (frame.minorRadius > frame.radius) {
            frame.axes = gp_Ax3(frame.axes.Location(), axis, frame.axes.YDirection());
            std::swap(frame.radius, frame.minorRadius);
        }
        return frame;
    }
    if (std::abs(cone.ratio - 1) > SameRatio)
        throw BadRecord(record, "an elliptic cone is not read; expected a ratio of 1 or a cylinder");
    if (std::abs(cone.cosine) < CylinderSine)
        throw BadRecord(record, "cone-surface: a flat cone is not read");
    frame.kind = SurfaceFrame::Kind::Cone;
    frame.semiAngle = std::atan2(std::abs(cone.sine), std::abs(cone.cosine));
    const bool grows = (cone.sine * cone.cosine > 0) != againstSigns;
    if (!grows) axis.Reverse();
    frame.axes = gp_Ax3(place.Point(cone.centre), axis, across);
    return frame;
}

SurfaceFrame Frame(const SphereRecord& sphere, const Placement& place, long record) {
    SurfaceFrame frame;
    frame.kind = SurfaceFrame::Kind::Sphere;
    frame.radius = place.Length(std::abs(sphere.radius));
    RequireRadius(frame.radius, record, "a radius");
    frame.insideOut = sphere.radius < 0;
    const gp_Dir pole = CleanDirection(place.Vector(sphere.pole), record, "pole");
    const gp_Dir equator = CleanDirection(place.Vector(sphere.equator), record, "direction");
    if (pole.IsParallel(equator, Orthogonality))
        throw BadRecord(record, "sphere-surface: pole and direction are one");
    frame.axes = gp_Ax3(place.Point(sphere.centre), pole, equator);
    return frame;
}

SurfaceFrame Frame(const TorusRecord& torus, const Placement& place, long record) {
    SurfaceFrame frame;
    frame.kind = SurfaceFrame::Kind::Torus;
    frame.radius = place.Length(torus.major);
    frame.minorRadius = place.Length(std::abs(torus.minor));
    RequireRadius(frame.minorRadius, record, "a minor radius");
    if (frame.radius - frame.minorRadius < Coincidence) {
        throw BadRecord(record,
                        "a torus that crosses itself is not read; expected a major radius above the minor");
    }
    frame.insideOut = torus.minor < 0;
    const gp_Dir axis = CleanDirection(place.Vector(torus.axis), record, "axis");
    const gp_Dir along = CleanDirection(place.Vector(torus.uDirection), record, "direction");
    if (axis.IsParallel(along, Orthogonality))
        throw BadRecord(record, "torus-surface: axis and direction are one");
    frame.axes = gp_Ax3(place.Point(torus.centre), axis, along);
    return frame;
}

SurfaceFrame Frame(const SplineSurfaceRecord& surface, const Placement& place) {
    SurfaceFrame frame;
    frame.kind = SurfaceFrame::Kind::Free;
    frame.free = MakeSplineSurface(surface, place);
    // Mirrored parameters turn the other way.
    frame.insideOut = surface.reversed != place.Mirrors();
    return frame;
}

gp_Pnt2d EllipticParameters(const SurfaceFrame& frame, const gp_Pnt& point) {
    const gp_Vec d(frame.axes.Location(), point);
    double u = std::atan2(d.Dot(frame.axes.YDirection()) / frame.minorRadius,
                          d.Dot(frame.axes.XDirection()) / frame.radius);
    if (u < 0) u += FullTurn;
    return {u, d.Dot(frame.axes.Direction())};
}

EdgeCurve LineThrough(const gp_Pnt& start, const gp_Pnt& end, const LineRecord& line, bool reversed,
                      const Placement& place, long record) {
    const gp_XYZ between = end.XYZ() - start.XYZ();
    const double length = between.Modulus();
    if (length < Coincidence) throw BadRecord(record, "a straight edge without length");
    gp_Dir direction = CleanDirection(place.Vector(line.direction), record, "direction");
    if (reversed) direction.Reverse();
    const gp_Lin carrier(place.Point(line.root), direction);
    if (carrier.Distance(start) > HealedFit || carrier.Distance(end) > HealedFit)
        throw BadRecord(record, "the vertices of a straight edge do not lie on its curve");
    EdgeCurve edge;
    edge.curve = new Geom_Line(start, CleanDirection(between, record, "direction"));
    edge.last = length;
    return edge;
}

// The place on an ellipse that is nearest to a point beside it. The angle at which the point lies is another
// one where the ellipse is slim.
double NearestOn(const gp_Elips& ellipse, const gp_Pnt& point) {
    double at = ElCLib::Parameter(ellipse, point);
    for (int step = 0; step < 8; ++step) {
        gp_Pnt there;
        gp_Vec along;
        gp_Vec bend;
        ElCLib::D2(at, ellipse, there, along, bend);
        const gp_Vec aside(there, point);
        if (aside.SquareMagnitude() <= Coincidence * Coincidence) break;
        const double slope = along.SquareMagnitude() - aside.Dot(bend);
        if (!(slope > 0)) break;  // the centre of its bend: nothing is nearest
        at += aside.Dot(along) / slope;
    }
    return ElCLib::InPeriod(at, 0, FullTurn);
}

EdgeCurve ArcThrough(const gp_Pnt& start, const gp_Pnt& end, bool closed, const EllipseRecord& ellipse,
                     bool reversed, const Placement& place, long record) {
    gp_XYZ normal = place.Vector(ellipse.normal);
    // A mirrored ellipse turns the other way about its mirrored normal.
    if (place.Mirrors() != reversed) normal.Reverse();
    const gp_Dir axis = CleanDirection(normal, record, "normal");
    const gp_XYZ major = place.Vector(ellipse.major);
    const double radius = major.Modulus();
    RequireRadius(radius, record, "a radius");
    if (!(ellipse.ratio > 1e-6 && ellipse.ratio < 1e6))
        throw BadRecord(record, "ellipse-curve: the ratio is out of range");
    const gp_Dir across = CleanDirection(major, record, "major axis");
    if (axis.IsParallel(across, Orthogonality))
        throw BadRecord(record, "ellipse-curve: normal and major axis are one");
    gp_Ax2 axes(place.Point(ellipse.centre), axis, across);

    EdgeCurve edge;
    if (std::abs(ellipse.ratio - 1) <= SameRatio) {
        const gp_Circ circle(axes, radius);
        edge.curve = new Geom_Circle(circle);
        edge.first = ElCLib::Parameter(circle, start);
        edge.last = ElCLib::Parameter(circle, end);
    } else {
        const double minor = radius * ellipse.ratio;
        if (minor > radius) axes = gp_Ax2(axes.Location(), axis, axes.YDirection());
        const gp_Elips carrier(axes, std::max(radius, minor), std::min(radius, minor));
        edge.curve = new Geom_Ellipse(carrier);
        edge.first = NearestOn(carrier, start);
        edge.last = NearestOn(carrier, end);
    }
    if (closed)
        edge.last = edge.first + FullTurn;
    else if (edge.last - edge.first < 1e-9)
        edge.last += FullTurn;
    edge.misfit =
        std::max(edge.curve->Value(edge.first).Distance(start), edge.curve->Value(edge.last).Distance(end));
    if (edge.misfit > HealedFit)
        throw BadRecord(record, "the vertices of a round edge do not lie on its curve");
    return edge;
}

}  // namespace

Placement::Placement(const TransformRecord& transform, long record)
    : mMap(transform), mScale(transform.scale) {
    for (gp_XYZ& row : mMap.rows)
        row = gp_XYZ(CleanComponent(row.X()), CleanComponent(row.Y()), CleanComponent(row.Z()));
    for (std::size_t i = 0; i < 3; ++i) {
        const double length = mMap.rows[i].Modulus();
        const double slant = std::abs(mMap.rows[i].Dot(mMap.rows[(i + 1) % 3]));
        if (std::abs(length - 1) > Orthogonality || slant > Orthogonality) {
            throw BadRecord(record,
                            "a sheared or unevenly scaled transform is not read; expected a rotation");
        }
    }
    if (mScale < 0) {
        mScale = -mScale;
        for (gp_XYZ& row : mMap.rows) row.Reverse();
    }
    if (!(mScale > 1e-6 && mScale < 1e6)) throw BadRecord(record, "transform: the scale is out of range");
    mMirrors = mMap.rows[0].Crossed(mMap.rows[1]).Dot(mMap.rows[2]) < 0;
}

gp_XYZ Placement::Vector(const gp_XYZ& vector) const {
    return (mMap.rows[0] * vector.X() + mMap.rows[1] * vector.Y() + mMap.rows[2] * vector.Z()) * mScale;
}

gp_Pnt Placement::Point(const gp_XYZ& point) const { return Vector(point) + mMap.translation; }

gp_Dir CleanDirection(const gp_XYZ& vector, long record, std::string_view what) {
    const double length = vector.Modulus();
    if (!(length > 1e-12)) throw BadRecord(record, "the " + std::string(what) + " has no length");
    const gp_XYZ unit = vector / length;
    return {CleanComponent(unit.X()), CleanComponent(unit.Y()), CleanComponent(unit.Z())};
}

Handle(Geom_Surface) SurfaceFrame::Build() const {
    switch (kind) {
        case Kind::Plane:
            return new Geom_Plane(axes);
        case Kind::Cylinder:
            return new Geom_CylindricalSurface(axes, radius);
        case Kind::EllipticCylinder:
            return new Geom_SurfaceOfLinearExtrusion(new Geom_Ellipse(axes.Ax2(), radius, minorRadius),
                                                     axes.Direction());
        case Kind::Cone:
            return new Geom_ConicalSurface(axes, semiAngle, radius);
        case Kind::Sphere:
            return new Geom_SphericalSurface(axes, radius);
        case Kind::Torus:
            return new Geom_ToroidalSurface(axes, radius, minorRadius);
        case Kind::Free:
            return free;
    }
    return {};
}

gp_Pnt2d SurfaceFrame::Parameters(const gp_Pnt& point) const {
    double u = 0;
    double v = 0;
    switch (kind) {
        case Kind::Plane:
            ElSLib::PlaneParameters(axes, point, u, v);
            break;
        case Kind::Cylinder:
            ElSLib::CylinderParameters(axes, radius, point, u, v);
            break;
        case Kind::EllipticCylinder:
            return EllipticParameters(*this, point);
        case Kind::Cone:
            ElSLib::ConeParameters(axes, radius, semiAngle, point, u, v);
            break;
        case Kind::Sphere:
            ElSLib::SphereParameters(axes, radius, point, u, v);
            break;
        case Kind::Torus:
            ElSLib::TorusParameters(axes, radius, minorRadius, point, u, v);
            break;
        case Kind::Free:
            return ShapeAnalysis_Surface(free).ValueOfUV(point, Coincidence);
    }
    return {u, v};
}

gp_Pnt SurfaceFrame::Value(const gp_Pnt2d& uv) const {
    switch (kind) {
        case Kind::Plane:
            return ElSLib::PlaneValue(uv.X(), uv.Y(), axes);
        case Kind::Cylinder:
            return ElSLib::CylinderValue(uv.X(), uv.Y(), axes, radius);
        case Kind::EllipticCylinder:
            return axes.Location().XYZ() + axes.XDirection().XYZ() * (radius * std::cos(uv.X())) +
                   axes.YDirection().XYZ() * (minorRadius * std::sin(uv.X())) +
                   axes.Direction().XYZ() * uv.Y();
        case Kind::Cone:
            return ElSLib::ConeValue(uv.X(), uv.Y(), axes, radius, semiAngle);
        case Kind::Sphere:
            return ElSLib::SphereValue(uv.X(), uv.Y(), axes, radius);
        case Kind::Torus:
            return ElSLib::TorusValue(uv.X(), uv.Y(), axes, radius, minorRadius);
        case Kind::Free:
            return free->Value(uv.X(), uv.Y());
    }
    return {};
}

std::optional<double> SurfaceFrame::LowSingularity() const {
    if (kind == Kind::Cone) return -radius / std::sin(semiAngle);
    if (kind == Kind::Sphere) return -std::numbers::pi / 2;
    return std::nullopt;
}

std::optional<double> SurfaceFrame::HighSingularity() const {
    if (kind == Kind::Sphere) return std::numbers::pi / 2;
    return std::nullopt;
}

double SurfaceFrame::UMetric() const {
    if (!UPeriodic()) return 1;
    return kind == Kind::Torus ? radius + minorRadius : radius;
}

double SurfaceFrame::VMetric() const {
    if (kind == Kind::Sphere) return radius;
    return kind == Kind::Torus ? minorRadius : 1;
}

SurfaceFrame MakeFrame(const SurfaceRecord& surface, const Placement& placement, long record,
                       bool againstSigns) {
    if (const auto* plane = std::get_if<PlaneRecord>(&surface)) return Frame(*plane, placement, record);
    if (const auto* cone = std::get_if<ConeRecord>(&surface))
        return Frame(*cone, placement, record, againstSigns);
    if (const auto* sphere = std::get_if<SphereRecord>(&surface)) return Frame(*sphere, placement, record);
    if (const auto* spline = std::get_if<SplineSurfaceRecord>(&surface)) return Frame(*spline, placement);
    return Frame(std::get<TorusRecord>(surface), placement, record);
}

EdgeCurve MakeEdgeCurve(const CurveRecord& curve, bool reversed, const gp_Pnt& start, const gp_Pnt& end,
                        bool closed, const Placement& placement, long record) {
    if (const auto* line = std::get_if<LineRecord>(&curve))
        return LineThrough(start, end, *line, reversed, placement, record);
    if (const auto* spline = std::get_if<SplineCurveRecord>(&curve))
        return SplineEdge(*spline, reversed, start, end, closed, placement, record);
    return ArcThrough(start, end, closed, std::get<EllipseRecord>(curve), reversed, placement, record);
}

}  // namespace brenvik::acis
