// How far, and which way, objects are moved: by two points, or by one offset.
#pragma once

#include "drafting_host/command/session/asking.h"
#include "session/ports/host_interface.h"

namespace brenvik {

class CommandSession;

/// In world coordinates.
struct Shift {
    Point3 offset;
    Point3 base;
};

/// A point typed where an offset is meant counts from the origin of the user system.
Point3 AsOffset(const CommandSession& session, const Point3& point);

Asking<Shift> AskShift(CommandSession& session);

}  // namespace brenvik
