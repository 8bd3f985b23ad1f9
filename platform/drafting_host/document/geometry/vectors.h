// Unit vectors, angles, frames and boxes of the host, in drawing units.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"

#include <algorithm>
#include <cmath>

#include "base/angles.h"
#include "session/ports/point_arithmetic.h"

namespace brenvik::vectors {

/// Points nearer than this are one point, as the system's own geometry takes them.
inline constexpr double PointTolerance = 1e-6;

inline bool Finite(const Point3& a) { return std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(a.z); }

/// The vector at length 1; a zero vector stays. Negative zeros are taken out, so that texts of a normal
/// never show "-0".
inline Point3 Unit(const Point3& a) {
    const double length = Length(a);
    if (length == 0 || !std::isfinite(length)) return a;
    return {a.x / length + 0.0, a.y / length + 0.0, a.z / length + 0.0};
}

struct SineCosine {
    double sine = 0, cosine = 1;
};

/// Sine and cosine with the exact 0 and 1 at quarter turns.
inline SineCosine OfAngle(double angle) {
    const double turns = std::round(angle / QuarterTurn);
    if (std::abs(angle - turns * QuarterTurn) > 1e-12) return {std::sin(angle), std::cos(angle)};
    const double rest = turns - 4 * std::floor(turns / 4);
    if (rest == 0) return {0, 1};
    if (rest == 1) return {1, 0};
    if (rest == 2) return {0, -1};
    return {-1, 0};
}

/// The angle in [0, a full turn).
inline double NormalAngle(double angle) {
    double rest = angle;
    if (rest < 0 || rest >= FullTurn) rest -= FullTurn * std::floor(rest / FullTurn);
    return rest >= FullTurn || rest < 0 ? 0 : rest + 0.0;
}

/// Whether `angle` lies in the counter-clockwise span from `start` to `end`; equal ends are a full turn.
inline bool InSpan(double angle, double start, double end, double tolerance = 0) {
    double span = NormalAngle(end - start);
    if (span == 0) span = FullTurn;
    const double along = NormalAngle(angle - start);
    return along <= span + tolerance || along >= FullTurn - tolerance;
}

/// A right-handed frame of unit axes.
struct Axes {
    Point3 x{1, 0, 0}, y{0, 1, 0}, z{0, 0, 1};
};

/// The plane axes that a drawing derives from a normal alone (the arbitrary axis rule of DXF).
inline Axes ObjectAxes(const Point3& normal) {
    constexpr double nearPole = 1.0 / 64;
    const Point3 z = Unit(normal);
    const bool polar = std::abs(z.x) < nearPole && std::abs(z.y) < nearPole;
    const Point3 x = Unit(Cross(polar ? Point3{0, 1, 0} : Point3{0, 0, 1}, z));
    return {x, Unit(Cross(z, x)), z};
}

/// From coordinates of the frame (its origin at the world's) to the world, and back.
inline Point3 ToWorld(const Axes& axes, const Point3& p) {
    return axes.x * p.x + axes.y * p.y + axes.z * p.z;
}
inline Point3 FromWorld(const Axes& axes, const Point3& p) {
    return {Dot(axes.x, p) + 0.0, Dot(axes.y, p) + 0.0, Dot(axes.z, p) + 0.0};
}

/// The point of a circle at an angle of its own plane.
inline Point3 OnCircle(const Point3& center, double radius, const Axes& axes, double angle) {
    const auto [sine, cosine] = OfAngle(angle);
    return center + axes.x * (radius * cosine) + axes.y * (radius * sine);
}

/// A box that grows with the points put in.
class BoxBuilder {
  public:
    void Add(const Point3& p) {
        if (mEmpty) mBox = {p, p};
        mEmpty = false;
        mBox.min = {std::min(mBox.min.x, p.x), std::min(mBox.min.y, p.y), std::min(mBox.min.z, p.z)};
        mBox.max = {std::max(mBox.max.x, p.x), std::max(mBox.max.y, p.y), std::max(mBox.max.z, p.z)};
    }
    void Add(const Box3& box) {
        Add(box.min);
        Add(box.max);
    }
    bool Empty() const { return mEmpty; }
    const Box3& Box() const { return mBox; }

  private:
    Box3 mBox;
    bool mEmpty = true;
};

}  // namespace brenvik::vectors
