// Lines, arcs and open polylines as links of a chain: pieces from end to end in world coordinates.
#pragma once

#include <optional>
#include <vector>

#include "drafting_host/document/geometry/host_geometry.h"

namespace brenvik {

/// A straight piece, or a round one that turns by `sweep` radians about the link's normal.
struct LinkPiece {
    Point3 from, to;
    double sweep = 0;
    Point3 middle;  ///< Of a round one.
};

struct Link {
    std::size_t object = 0;
    std::vector<LinkPiece> pieces;
    /// The normal of the link's plane; empty for a straight link, which fits many planes.
    std::optional<Point3> normal;
    /// The normal that a straight link was drawn with.
    Point3 ownNormal{0, 0, 1};
    double thickness = 0;

    const Point3& From() const { return pieces.front().from; }
    const Point3& To() const { return pieces.back().to; }
};

/// Null for objects that can't be part of a chain; closed polylines can't.
std::optional<Link> LinkOf(const HostGeometry& geometry, std::size_t object);

/// True where two links with the same ends run along the same curve, either way.
bool SameCurve(const Link& one, const Link& other, double fuzz);

/// The upright normal where the plane is level, otherwise the normal as it is.
Point3 LevelIfFlat(const Point3& normal);

/// Normals of planes that a straight link may be drawn in, the most fitting first; at least one.
std::vector<Point3> NormalsOfStraight(const Link& link);

/// The bulge of a piece that turns by `sweep`; exactly 1 for a half circle.
double BulgeOf(double sweep);

}  // namespace brenvik
