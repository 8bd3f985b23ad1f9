// Numbers on their way between a file and memory where the file measures otherwise: degrees for radians,
// an entity's own plane for the world. What is written reads back as it was, so a drawing doesn't creep
// when it is saved again and again; where 17 digits can't do that, more are written.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/noise.h"
#include "session/ports/host_interface.h"

namespace brenvik {

using LongReal = long double;

/// A point in an entity's own plane.
struct PlanePoint {
    LongReal x = 0, y = 0, z = 0;
};

/// The whole text as a number, blanks around it allowed; null if it is none. What is beyond a
/// double's range, and the words for it, come back as an infinity or as no number.
std::optional<double> ParseReal(std::string_view text);

/// As ParseReal; a text of more than 17 digits is taken at its full length.
std::optional<LongReal> ParseLongReal(std::string_view text);

/// A direction without the noise in its components.
inline Point3 NoiseAsZero(const Point3& direction) {
    return {NoiseAsZero(direction.x), NoiseAsZero(direction.y), NoiseAsZero(direction.z)};
}

/// The shortest text that reads back as the value: "600.0", "0.1", "1e+20".
std::string RealText(double value);

double RadiansOfDegrees(LongReal degrees);
/// The text of an angle in degrees that RadiansOfDegrees turns back into `radians`.
std::string DegreesText(double radians);

/// The directions of the plane that has a normal, by the format's rule: X lies across the world's Y for a
/// normal within 1/64 of the world's Z, else across the world's Z. A normal without length counts as Z.
class EntityPlane {
  public:
    explicit EntityPlane(const Point3& normal);
    Point3 ToWorld(const PlanePoint& point) const;  ///< Without the noise of the sum.
    PlanePoint FromWorld(const Point3& point) const;

  private:
    bool mIsWorld = false, mIsSquare = false;
    PlanePoint mX, mY, mZ;
};

/// The texts of a world point's coordinates in a plane. They read back as the same point: to the last
/// bit in planes square to the world, else up to a few last bits of the largest coordinate's. What they
/// read back as has the same texts again.
struct PlanePointTexts {
    std::string x, y, z;
};
PlanePointTexts PlanePointText(const EntityPlane& plane, const Point3& worldPoint);

}  // namespace brenvik
