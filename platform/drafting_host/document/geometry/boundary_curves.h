// The curves around the faces that a solid falls apart to.
#pragma once

#include <TopoDS_Shape.hxx>
#include <vector>

#include "drafting_host/document/geometry/host_geometry.h"

namespace brenvik {

/// The boundary curves of a flat region, each with the region's normal, outer boundary first, in the
/// order in which they follow each other. Pieces of one circle that meet come as one arc or circle.
std::vector<HostGeometry> BoundaryCurves(const TopoDS_Shape& region);

/// The curves that bound a bulging face: no seam, a circle for a full round. The normal of a round one is
/// its axis, looking up (where it lies level, along Y or X), that of a straight one lies level across it.
std::vector<HostGeometry> BodyCurves(const TopoDS_Shape& body);

}  // namespace brenvik
