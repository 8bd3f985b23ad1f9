// The moves that a drafting host knows: shift, turn, even scale, mirror, and what they make together.
// Quarter turns about world axes and mirrors at world planes are exact to the last bit.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"

#include <array>
#include <gp_Trsf.hxx>

#include "session/ports/host_interface.h"

namespace brenvik {

class Similarity {
  public:
    /// Nothing moves.
    Similarity() = default;
    static Similarity Shift(const Point3& vector);
    /// Right-handed about the axis from one point to another, radians. Fails where the points coincide.
    static Similarity Turn(const Point3& axisFrom, const Point3& axisTo, double angle);
    /// Fails unless the factor is above 0 and finite.
    static Similarity Scale(const Point3& base, double factor);
    /// At the plane through `point` square to `normal`. Fails for a zero normal.
    static Similarity Mirror(const Point3& point, const Point3& normal);
    /// From coordinates of a frame (unit axes, right-handed) to the world.
    static Similarity FromFrame(const Point3& origin, const Point3& xAxis, const Point3& yAxis);
    /// Fails for a matrix that is not a rigid move with an even scale (mirrors included).
    static Similarity FromMatrix(const Matrix4& matrix);

    Similarity Inverse() const;
    /// This move first, then `next`.
    Similarity Then(const Similarity& next) const;

    Point3 Point(const Point3& p) const;
    /// A direction or offset, scaled along.
    Point3 Vector(const Point3& v) const;
    /// A unit direction, at length 1.
    Point3 Direction(const Point3& v) const;
    double ScaleFactor() const { return mScale; }
    bool Mirrors() const { return mMirrors; }
    /// True where nothing but a shift happens.
    bool OnlyShifts() const { return mOnlyShifts; }
    /// True where nothing happens at all.
    bool Identity() const;
    /// The same for the modeller.
    gp_Trsf Trsf() const;

  private:
    std::array<Point3, 3> mRows{Point3{1, 0, 0}, Point3{0, 1, 0}, Point3{0, 0, 1}};
    Point3 mShift;
    double mScale = 1;
    bool mMirrors = false;
    bool mOnlyShifts = true;
};

}  // namespace brenvik
