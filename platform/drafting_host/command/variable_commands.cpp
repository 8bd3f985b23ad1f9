// Setting drawing variables: by SETVAR, or by typing a variable's own name.
#include "base/letter_case.h"
#include "drafting_host/command/command_session.h"
#include "drafting_host/command/commands.h"
#include "drafting_host/command/variables.h"

namespace brenvik::host_commands {

Asking<void> Variable(CommandSession& session, const HostVariable& variable) {
    const std::string name(variable.name);
    if (variable.place == HostVariable::Place::Fixed) {
        session.Tell(name + " = " + VariableText(session, variable) + " (it can only be read)");
        co_return;
    }
    for (;;) {
        const std::string old = VariableText(session, variable);
        const std::string prompt = "Enter new value for " + name + " <" + old + ">:";
        const Answered<std::string> answer = co_await session.AskText(prompt, IfEmpty::Allowed);
        if (answer.Empty()) co_return;
        const std::string wrong = SetVariable(session, variable, *answer.value);
        if (wrong.empty()) co_return;
        session.Tell("\"" + *answer.value + "\" is no value of " + name + ": " + wrong + ".");
    }
}

Asking<void> SetVar(CommandSession& session) {
    const Answered<std::string> name = co_await session.AskText("Variable name or [?]:", IfEmpty::Allowed);
    if (name.Empty()) co_return;
    if (*name.value == "?") {
        for (const HostVariable& each : HostVariables()) {
            session.Tell(std::string(each.name) + " = " + VariableText(session, each));
        }
        co_return;
    }
    const HostVariable* variable = FindHostVariable(*name.value);
    if (variable == nullptr) {
        session.Tell("Unknown variable \"" + FoldUpper(*name.value) + "\".");
        co_return;
    }
    co_await Variable(session, *variable);
}

}  // namespace brenvik::host_commands
