// The rule of whoever runs the system, who alone knows its files.
#include "session/output_rule.h"

#include <utility>

#include "base/failure.h"
#include "session/module_state.h"

namespace brenvik {

namespace {

struct RuleOfOutputs {
    OutputRule rule;
};

}  // namespace

void SetOutputRule(OutputRule rule) { StateOf<RuleOfOutputs>().rule = std::move(rule); }

void RequireOutputPlace(std::string_view path, OutputKind kind) {
    const OutputRule& rule = StateOf<RuleOfOutputs>().rule;
    if (!rule) return;
    if (const std::string found = rule(path, kind); !found.empty())
        throw Failure(failure_number::PathAccess, std::string(OwnSource),
                      std::string(path) + ": expected a file of its own for the output, found " + found +
                          "; nothing was written");
}

}  // namespace brenvik
