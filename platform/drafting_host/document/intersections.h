// Where two curves of a drawing meet.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"

#include <vector>

#include "session/ports/host_interface.h"

namespace brenvik {

class HostEntity;

/// The common points of two entities, in the order in which they lie along the first; none where they
/// don't meet. Lines, arcs, circles and the pieces of plane polylines meet each other; extending makes a
/// line endless and an arc a circle, and leaves the pieces of polylines as they are. Curves that run
/// along each other have no points in common. Throws Failure for other kinds, naming them.
std::vector<Point3> Intersections(const HostEntity& one, const HostEntity& other, ExtendOption option);

}  // namespace brenvik
