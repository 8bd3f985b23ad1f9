// Which layers a typed list means.
#include "drafting_host/command/commands/layer_names.h"

#include <algorithm>

#include "base/text.h"
#include "base/wildcard.h"
#include "drafting_host/command/session/command_session.h"

namespace brenvik {

std::vector<HostLayer*> LayersNamed(const CommandSession& session, const std::string& list) {
    std::vector<HostLayer*> result;
    const std::vector<std::string> patterns = Split(list, ',');
    for (HostLayer* layer : session.Document().LayerTable().All()) {
        const auto fits = [&](const std::string& pattern) {
            return MatchesWildcards(layer->Values().name, pattern, FileWildcards);
        };
        if (std::ranges::any_of(patterns, fits)) result.push_back(layer);
    }
    if (result.empty()) session.Refuse("No layer matches \"" + list + "\".");
    return result;
}

}  // namespace brenvik
