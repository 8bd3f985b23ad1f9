// UNDO, U, REDO and OOPS. No earlier states of a drawing are kept: a run changes thousands of objects, and
// what a person wants back is in the saved file. The words are known so that a habit is told the truth.
#include "drafting_host/command/command_session.h"
#include "drafting_host/command/commands.h"

namespace brenvik::host_commands {

Asking<void> TakeBack(CommandSession& session) {
    session.Refuse("Nothing can be taken back here: earlier states of a drawing aren't kept.");
    co_return;
}

Asking<void> Undo(CommandSession& session) {
    // The answer is taken all the same, so that it isn't read as a command.
    co_await session.AskText("Enter the number of operations to undo <1>:", IfEmpty::Allowed);
    co_await TakeBack(session);
}

}  // namespace brenvik::host_commands
