// Planes and axes asked for in several ways, by the commands that cut, mirror and turn in space.
#pragma once

#include <string>

#include "drafting_host/command/session/asking.h"
#include "session/ports/host_interface.h"

namespace brenvik {

class CommandSession;

/// In world coordinates; the normal has length 1.
struct WorldPlane {
    Point3 point, normal{0, 0, 1};
};

/// Asks for a plane by three points, its normal (Zaxis), the view's plane, or a plane of the user system.
/// `purpose` completes "First point of the ...". Throws Failure for points that make no plane.
Asking<WorldPlane> AskPlane(CommandSession& session, std::string purpose);

/// Two points of an axis, in world coordinates.
struct WorldAxis {
    Point3 from, to;
};

/// Asks for an axis by two points, a direction of the user system, or the line of sight. Throws Failure
/// where the two points are one.
Asking<WorldAxis> AskAxis(CommandSession& session);

}  // namespace brenvik
