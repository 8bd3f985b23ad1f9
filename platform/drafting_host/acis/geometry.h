// Geometry of ACIS records turned into the modeller's: placing, surfaces with their parameters, and
// curves that run along their edge.
#pragma once

#include "drafting_host/acis/sat_model.h"

#include <Geom_Curve.hxx>
#include <Geom_Surface.hxx>
#include <gp_Ax3.hxx>
#include <gp_Pnt.hxx>
#include <gp_Pnt2d.hxx>

#include <optional>
#include <vector>

namespace brenvik::acis {

/// Lengths below this count as 0; two points closer than this are one.
constexpr double Coincidence = 1e-7;
/// What a real file may leave between a curve and the surface it should lie on. Kernels keep 1e-6;
/// files that went through several programs are worse. What is found becomes the edge's tolerance.
constexpr double LooseFit = 1e-4;
/// Gaps up to this are healed and reported. A hundredth of a millimetre is below what a saw cuts, and
/// modellers that stretch their tolerances leave as much. Wider gaps don't belong to one body.
constexpr double HealedFit = 1e-2;

/// A body's place, applied to numbers before anything is built so that plain moves stay exact.
class Placement {
  public:
    Placement() = default;
    /// Throws BadRecord when the rotation is sheared or squeezed.
    Placement(const TransformRecord& transform, long record);

    gp_Pnt Point(const gp_XYZ& point) const;
    /// Turned and scaled, not moved.
    gp_XYZ Vector(const gp_XYZ& vector) const;
    double Length(double length) const { return length * mScale; }
    bool Mirrors() const { return mMirrors; }

  private:
    TransformRecord mMap;
    double mScale = 1;
    bool mMirrors = false;
};

/// A direction from a vector; components that are rounding noise become 0, so that a direction along an
/// axis is exactly so. Throws BadRecord for a vector without length.
gp_Dir CleanDirection(const gp_XYZ& vector, long record, std::string_view what);

/// A surface. Its natural side is that of the modeller: away from the axis or centre, along the Z direction
/// of a plane's axes, and where the parameters of a free surface turn to the left.
struct SurfaceFrame {
    enum class Kind { Plane, Cylinder, EllipticCylinder, Cone, Sphere, Torus, Free };
    Kind kind = Kind::Plane;
    gp_Ax3 axes;
    double radius = 0;          ///< Of the cone: at the origin of the axes. Of the torus: the large one.
    double minorRadius = 0;     ///< Of the torus tube or of an elliptic cylinder.
    double semiAngle = 0;       ///< Of the cone; positive, so that it grows along the axis.
    bool insideOut = false;     ///< The record's outside is not the natural side.
    Handle(Geom_Surface) free;  ///< A free surface: of the values above it uses `insideOut` alone.

    Handle(Geom_Surface) Build() const;
    gp_Pnt2d Parameters(const gp_Pnt& point) const;  ///< For a point on the surface or near it.
    gp_Pnt Value(const gp_Pnt2d& uv) const;          ///< The point at these parameters.
    bool UPeriodic() const { return kind != Kind::Plane && kind != Kind::Free; }
    bool VPeriodic() const { return kind == Kind::Torus; }
    /// The v at which all u are one point: a cone's apex and a sphere's poles.
    std::optional<double> LowSingularity() const;
    std::optional<double> HighSingularity() const;
    /// Lengths on the surface per unit of u and v, roughly.
    double UMetric() const;
    double VMetric() const;
};

/// The surface of a record, placed. A cone is taken to grow as its signs say, or the other way when
/// `againstSigns`, since writers differ in what they negate on a concave cone.
SurfaceFrame MakeFrame(const SurfaceRecord& surface, const Placement& placement, long record,
                       bool againstSigns = false);

/// A curve with the parameters of its ends, running from the edge's start to its end.
struct EdgeCurve {
    Handle(Geom_Curve) curve;
    double first = 0, last = 0;
    double misfit = 0;  ///< Distance between the ends of the curve and the vertices.
};

/// The part of a curve between two points, closed when `closed`. Lines are laid through the points
/// themselves, so that coordinates stay as written. Throws BadRecord when the curve misses them.
EdgeCurve MakeEdgeCurve(const CurveRecord& curve, bool reversed, const gp_Pnt& start, const gp_Pnt& end,
                        bool closed, const Placement& placement, long record);

}  // namespace brenvik::acis
