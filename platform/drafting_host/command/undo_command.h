// The commands that go back and forth in the history of a drawing.
#pragma once

#include "drafting_host/command/asking.h"

namespace brenvik {
class CommandSession;
}

namespace brenvik::host_commands {

Asking<void> UndoOne(CommandSession& session);
Asking<void> Redo(CommandSession& session);

}  // namespace brenvik::host_commands
