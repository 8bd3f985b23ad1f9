// Curves as a view shows them: laid along the line of sight onto a plane square to it.
#pragma once

#include <optional>

#include "drafting_host/document/geometry/host_geometry.h"

namespace brenvik {

/// A plane square to a line of sight. `towardsEye` is a unit vector.
struct SightPlane {
    Point3 origin;
    Point3 towardsEye{0, 0, 1};
};

/// The point's image; along a world axis the other two coordinates stay to the last bit.
Point3 Flattened(const Point3& point, const SightPlane& plane);

/// The image of a line, arc, circle, ellipse or spline as true curve: a round curve square to the line of
/// sight stays round, a curve seen from its edge becomes a line. Normals point to the eye. Empty for a line
/// seen as a point, and for other kinds.
std::optional<HostGeometry> Flattened(const HostGeometry& curve, const SightPlane& plane);

}  // namespace brenvik
