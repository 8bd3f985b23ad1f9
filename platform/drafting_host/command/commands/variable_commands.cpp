// Setting drawing variables: by SETVAR, and the switches with commands of their own.
#include "base/letter_case.h"
#include "drafting_host/command/commands/commands.h"
#include "drafting_host/command/session/answers.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/command/session/variables.h"

namespace brenvik::host_commands {

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
    co_await AskVariable(session, *variable);
}

}  // namespace brenvik::host_commands
