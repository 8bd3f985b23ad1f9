// EXPLODE: objects fall apart into the next simpler ones.
#include "drafting_host/command/commands/commands.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/document/explosion.h"

namespace brenvik::host_commands {

Asking<void> Explode(CommandSession& session) {
    const std::vector<HostEntity*> chosen = co_await session.AskSelection(SelectFor::Changing);
    for (const HostEntity* entity : chosen) entity->RequireChangeable();
    std::size_t whole = 0;
    for (HostEntity* entity : chosen)
        if (ExplodeEntity(*entity).empty()) ++whole;
    if (whole > 0) session.Tell(std::to_string(whole) + " could not be exploded.");
}

}  // namespace brenvik::host_commands
