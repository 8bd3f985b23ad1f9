// ROTATE3D and MIRROR3D: turning about any axis, mirroring at any plane.
#include "drafting_host/command/commands/commands.h"
#include "drafting_host/command/commands/plane_question.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/document/geometry/vectors.h"

namespace brenvik::host_commands {

using namespace vectors;

Asking<void> Rotate3d(CommandSession& session) {
    const std::vector<HostEntity*> chosen = co_await session.AskSelection(SelectFor::Changing);
    if (chosen.empty()) co_return;
    const WorldAxis axis = co_await AskAxis(session);
    Answered<double> angle = co_await session.AskAngle("Rotation angle or [Reference]:", "Reference");
    if (angle.Is("Reference")) {
        const Answered<double> reference =
            co_await session.AskAngle("Reference angle <0>:", {}, IfEmpty::Allowed);
        const Answered<double> wanted = co_await session.AskAngle("New angle:");
        angle.value = *wanted.value - reference.Or(0);
    }
    const Similarity turn = Similarity::Turn(axis.from, axis.to, *angle.value);
    for (const HostEntity* entity : chosen) entity->RequireChangeable();
    for (HostEntity* entity : chosen) entity->Transform(turn);
}

Asking<void> Mirror3d(CommandSession& session) {
    const std::vector<HostEntity*> chosen = co_await session.AskSelection(SelectFor::Changing);
    if (chosen.empty()) co_return;
    const WorldPlane plane = co_await AskPlane(session, "mirror plane");
    const Answered<std::string> replace =
        co_await session.AskKeyword("Delete the source objects? [Yes/No] <N>:", "Yes No", IfEmpty::Allowed);
    const Similarity mirror = Similarity::Mirror(plane.point, plane.normal);
    for (const HostEntity* entity : chosen) entity->RequireChangeable();
    for (HostEntity* entity : chosen) {
        HostEntity& mirrored = replace.Is("Yes") ? *entity : entity->CopyInto(entity->Owner());
        mirrored.Transform(mirror);
    }
}

}  // namespace brenvik::host_commands
