// ERASE, MOVE, COPY, ROTATE, SCALE and SELECT.
#include "drafting_host/command/commands/commands.h"
#include "drafting_host/command/commands/shift_question.h"
#include "drafting_host/command/session/answers.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/document/kept_groups.h"

namespace brenvik::host_commands {

using namespace vectors;

namespace {

using Entities = std::vector<HostEntity*>;

/// All or none: a selection made in an earlier call may hold what has been locked or erased since.
void TransformAll(const Entities& entities, const Similarity& move) {
    for (const HostEntity* entity : entities) entity->RequireChangeable();
    for (HostEntity* entity : entities) entity->Transform(move);
}

void CopyAll(const Entities& entities, const Similarity& move) {
    for (const HostEntity* entity : entities) entity->RequireAlive();
    for (const HostEntity* entity : entities) {
        HostGeometry geometry = entity->Geometry();
        Transform(geometry, move);
        HostEntity& copy = entity->Owner().Add(std::move(geometry));
        copy.TakeAllButGeometry(*entity);
        copy.SetKeptGroups(AfterMove(copy.KeptGroupsOfFile(), copy.ObjectName(), move));
    }
}

/// Radians: typed, or as the difference of two directions.
Asking<double> AskReferredAngle(CommandSession& session, Point3 base) {
    const Answered<double> reference =
        co_await session.AskAngle("Reference angle <0>:", {}, IfEmpty::Allowed, base);
    const Answered<double> wanted = co_await session.AskAngle("New angle:", {}, IfEmpty::Refused, base);
    co_return *wanted.value - reference.Or(0);
}

}  // namespace

Asking<void> Select(CommandSession& session) { co_await session.AskSelection(SelectFor::Looking); }

Asking<void> Erase(CommandSession& session) {
    const Entities chosen = co_await session.AskSelection(SelectFor::Changing);
    for (HostEntity* entity : chosen) entity->Delete();
}

Asking<void> Move(CommandSession& session) {
    const Entities chosen = co_await session.AskSelection(SelectFor::Changing);
    if (chosen.empty()) co_return;
    const Shift shift = co_await AskShift(session);
    TransformAll(chosen, Similarity::Shift(shift.offset));
}

Asking<void> Copy(CommandSession& session) {
    const Entities chosen = co_await session.AskSelection(SelectFor::Looking);
    if (chosen.empty()) co_return;
    Answered<Point3> base =
        co_await session.AskPoint("Base point or displacement, or [Multiple]:", "Multiple");
    const bool multiple = base.Is("Multiple");
    if (multiple) base = co_await session.AskPoint("Base point:");
    for (;;) {
        const Answered<Point3> second = co_await session.AskPoint(
            "Second point of displacement or <use the first point as displacement>:", {}, IfEmpty::Allowed);
        if (multiple && second.Empty()) co_return;
        const Point3 offset = second.value ? *second.value - *base.value : AsOffset(session, *base.value);
        CopyAll(chosen, Similarity::Shift(offset));
        if (!multiple) co_return;
    }
}

Asking<void> Rotate(CommandSession& session) {
    const Entities chosen = co_await session.AskSelection(SelectFor::Changing);
    if (chosen.empty()) co_return;
    const Answered<Point3> base = co_await session.AskPoint("Base point:");
    bool copying = false;
    Answered<double> angle;
    do {
        angle = co_await session.AskAngle("Rotation angle or [Copy/Reference]:", "Copy Reference",
                                          IfEmpty::Refused, base.value);
        if (angle.Is("Copy")) copying = true;
    } while (angle.Is("Copy"));
    if (angle.Is("Reference")) angle.value = co_await AskReferredAngle(session, *base.value);
    const Point3 axis = session.UcsToWorld().Direction({0, 0, 1});
    const Similarity turn = Similarity::Turn(*base.value, *base.value + axis, *angle.value);
    if (copying)
        CopyAll(chosen, turn);
    else
        TransformAll(chosen, turn);
}

Asking<void> Scale(CommandSession& session) {
    const Entities chosen = co_await session.AskSelection(SelectFor::Changing);
    if (chosen.empty()) co_return;
    const Answered<Point3> base = co_await session.AskPoint("Base point:");
    const Answered<double> factor = co_await session.AskDistance("Scale factor or [Reference]:", "Reference",
                                                                 IfEmpty::Refused, base.value);
    double times = factor.Or(1);
    if (factor.Is("Reference")) {
        const Answered<double> old =
            co_await session.AskDistance("Reference length <1>:", {}, IfEmpty::Allowed);
        const Answered<double> wanted =
            co_await session.AskDistance("New length:", {}, IfEmpty::Refused, base.value);
        if (!(old.Or(1) > 0)) throw host_failure::InvalidArgument("a reference length has to be above 0");
        times = *wanted.value / old.Or(1);
    }
    TransformAll(chosen, Similarity::Scale(*base.value, times));
}

}  // namespace brenvik::host_commands
