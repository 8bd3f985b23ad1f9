// Base point and second point, as MOVE asks for them.
#include "drafting_host/command/commands/shift_question.h"

#include "drafting_host/command/session/command_session.h"
#include "drafting_host/document/geometry/vectors.h"

namespace brenvik {

using namespace vectors;

Point3 AsOffset(const CommandSession& session, const Point3& point) {
    return point - session.UcsToWorld().Point({});
}

Asking<Shift> AskShift(CommandSession& session) {
    const Answered<Point3> base =
        co_await session.AskPoint("Base point or displacement, or [Displacement]:", "Displacement");
    if (base.Is("Displacement")) {
        const Answered<Point3> offset =
            co_await session.AskPoint("Displacement <0,0,0>:", {}, IfEmpty::Allowed);
        co_return Shift{offset.value ? AsOffset(session, *offset.value) : Point3{}, Point3{}};
    }
    const Answered<Point3> second = co_await session.AskPoint(
        "Second point of displacement or <use the first point as displacement>:", {}, IfEmpty::Allowed);
    if (second.Empty()) co_return Shift{AsOffset(session, *base.value), *base.value};
    co_return Shift{*second.value - *base.value, *base.value};
}

}  // namespace brenvik
