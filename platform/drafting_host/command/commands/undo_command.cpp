// UNDO, U and REDO, for a program that keeps the history of its drawing; a run doesn't, since it changes
// thousands of objects. OOPS is known so that it gets a true answer.

#include <algorithm>

#include "base/ascii.h"
#include "base/numbers.h"
#include "base/text.h"
#include "drafting_host/command/commands/commands.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/document/drawing_history.h"

namespace brenvik::host_commands {

namespace {

constexpr std::string_view NotKept =
    "Nothing can be taken back here: earlier states of a drawing aren't kept.";

void UndoSteps(CommandSession& session, int count) {
    DrawingHistory* const history = HistoryOf(session.Document());
    if (history == nullptr) return session.Refuse(NotKept);
    for (int step = 0; step < count; ++step) {
        const std::optional<std::string> command = history->Undo();
        if (!command) return session.Refuse("Nothing is left to take back.");
        session.Tell(*command + " is taken back.");
    }
}

}  // namespace

Asking<void> TakeBack(CommandSession& session) {
    session.Refuse(HistoryOf(session.Document()) == nullptr
                       ? std::string(NotKept)
                       : "OOPS brings nothing back here; U takes back the last command.");
    co_return;
}

Asking<void> UndoOne(CommandSession& session) {
    UndoSteps(session, 1);
    co_return;
}

Asking<void> Redo(CommandSession& session) {
    DrawingHistory* const history = HistoryOf(session.Document());
    if (history == nullptr) {
        session.Refuse(NotKept);
        co_return;
    }
    const std::optional<std::string> command = history->Redo();
    if (command)
        session.Tell(*command + " is done again.");
    else
        session.Refuse("Nothing is left to do again.");
}

Asking<void> Undo(CommandSession& session) {
    const Answered<std::string> answer =
        co_await session.AskText("Enter the number of operations to undo <1>:", IfEmpty::Allowed);
    const std::string text = Trim(answer.Or({}));
    const bool isCount = IsDigitsAlone(text) && text.size() < 6;
    const int count = text.empty() ? 1 : isCount ? ToInteger(LenientNumber(text)) : 0;
    if (count < 1 && HistoryOf(session.Document()) != nullptr)
        session.Refuse("\"" + text + "\" is no number of operations: a whole number from 1 is expected.");
    else
        UndoSteps(session, std::max(count, 1));
}

}  // namespace brenvik::host_commands
