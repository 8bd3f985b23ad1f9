// Setting drawing variables: by SETVAR, by typing a variable's own name, and the switches with commands of
// their own.
#include "base/letter_case.h"
#include "drafting_host/command/answers.h"
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
        session.Refuse("\"" + *answer.value + "\" is no value of " + name + ": " + wrong + ".");
    }
}

Asking<void> Snap(CommandSession& session) {
    const std::string spacing = VariableText(session, *FindHostVariable("SNAPUNIT"));
    const std::string prompt = "Snap spacing or [ON/OFF] <" + spacing + ">:";
    const Answered<double> answer = co_await session.AskDistance(prompt, "ON OFF", IfEmpty::Allowed);
    if (answer.value && *answer.value <= 0) {
        session.Refuse("A snap spacing has to be above 0.");
        co_return;
    }
    if (answer.value) SetVariable(session, *FindHostVariable("SNAPUNIT"), LengthText(*answer.value));
    if (!answer.Empty()) SetVariable(session, *FindHostVariable("SNAPMODE"), answer.Is("OFF") ? "0" : "1");
}

Asking<void> Ortho(CommandSession& session) {
    const bool on = VariableNumber(session, "ORTHOMODE") == 1;
    const std::string prompt = std::string("Mode [ON/OFF] <") + (on ? "ON" : "OFF") + ">:";
    const Answered<std::string> answer = co_await session.AskKeyword(prompt, "ON OFF", IfEmpty::Allowed);
    if (!answer.Empty()) SetVariable(session, *FindHostVariable("ORTHOMODE"), answer.Is("ON") ? "1" : "0");
}

Asking<void> SetVar(CommandSession& session) {
    const Answered<std::string> name = co_await session.AskText("Variable name or [?]:", IfEmpty::Allowed);
    if (name.Empty()) co_return;
    if (*name.value == "?") {
        for (const HostVariable& each : HostVariables())
            session.Tell(std::string(each.name) + " = " + VariableText(session, each));
        co_return;
    }
    const HostVariable* variable = FindHostVariable(*name.value);
    if (variable == nullptr) {
        session.Refuse("Unknown variable \"" + FoldUpper(*name.value) + "\".");
        co_return;
    }
    co_await Variable(session, *variable);
}

}  // namespace brenvik::host_commands
