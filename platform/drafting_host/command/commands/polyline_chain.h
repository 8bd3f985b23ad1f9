// Joining lines, arcs and open polylines end to end into one polyline: the geometry behind PEDIT.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "drafting_host/document/geometry/host_geometry.h"

namespace brenvik {

/// How far ends may lie apart and still meet, drawing units: five decimals, as fine as places are compared.
inline constexpr double JoinFuzz = 1e-5;

/// The same for a chain that closes by it: in a file in inches with six digits the centre, the radius and the
/// ends of an arc are rounded apart, by up to that many millimetres.
inline constexpr double ClosingFuzz = 5e-5;

/// A line or arc as a polyline of its own, or null for other kinds. Its plane is the level one where it
/// lies level, otherwise that of its normal.
std::optional<LWPolylineData> AsPolyline(const HostGeometry& geometry);

struct JoinedChain {
    LWPolylineData polyline;
    /// Positions of the objects that became part of it, in the order of the chain; the first one among them.
    std::vector<std::size_t> parts;
    /// Positions of the objects that lie on a part exactly.
    std::vector<std::size_t> twins;
    /// Where more than one object went on from an end: the first in order was taken.
    std::vector<Point3> branches;
};

/// The chain through the object at position `first`, which has to be a line, an arc or a lightweight
/// polyline. It goes on from both ends over lines, arcs and open polylines whose ends meet within `fuzz`
/// and which lie in one plane: that of the first object, where a straight one fits many the level one, the
/// one of its normal or that of a neighbour, the first of these in which it has a neighbour. The chain is
/// closed where its ends meet. What ends at the same places along the same curve as a part is its twin.
/// Other kinds of objects are passed over. Linear in the number of objects.
JoinedChain JoinChain(std::span<const HostGeometry> objects, std::size_t first, double fuzz = JoinFuzz);

}  // namespace brenvik
