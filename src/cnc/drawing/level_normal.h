// Which way curves and faces lie, by their normals.
#pragma once

#include <cmath>

#include "session/ports/host_interface.h"

namespace brenvik {

/// Whether what has this unit normal lies level; `slack` is what the normal may lean in plan.
inline bool IsLevel(const Point3& normal, double slack) { return std::hypot(normal.x, normal.y) < slack; }

}  // namespace brenvik
