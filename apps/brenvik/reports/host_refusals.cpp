// The handler, and the reports of what it has kept.
#include "reports/host_refusals.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace brenvik::app {

namespace {

/// How the answers begin that the system provokes on purpose: the part export types a window where the host
/// asks for a face, which ends UCS with the coordinate system as it was.
constexpr auto Provoked = std::to_array<std::string_view>({
    "A window picks no face",
    "No face was selected",
});

bool IsProvoked(std::string_view line) {
    return std::ranges::any_of(Provoked,
                               [&](std::string_view beginning) { return line.starts_with(beginning); });
}

}  // namespace

HostRefusals::HostRefusals(HostApplication& application, const TypedCommands& typedCommands)
    : mHost(application) {
    mHost.SetRefusalHandler([this, &typedCommands](std::string_view line) {
        if (typedCommands.AtWork() && IsProvoked(line)) return;
        mRefusals.push_back({presentLine ? presentLine() : 0, std::string(line)});
    });
}

HostRefusals::~HostRefusals() { mHost.SetRefusalHandler({}); }

std::optional<std::string> HostRefusals::TakeOldest() {
    if (mRefusals.empty()) return std::nullopt;
    std::string text = std::move(mRefusals.front().text);
    mRefusals.pop_front();
    return text;
}

void HostRefusals::TellOverlooked(const std::string& journal, Teller& teller) {
    std::deque<Refusal> told;
    for (const Refusal& refusal : std::exchange(mRefusals, {})) {
        if (std::ranges::find(told, refusal) != told.end()) continue;
        told.push_back(refusal);
        teller.Loss(journal + ": line " + std::to_string(refusal.line) +
                    ": the host's command line refused: " + refusal.text);
    }
}

}  // namespace brenvik::app
