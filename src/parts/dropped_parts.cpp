// The list of dropped parts, which lives until somebody takes it.
#include "parts/dropped_parts.h"

#include <algorithm>
#include <utility>

#include "session/module_state.h"

namespace brenvik {

namespace {

struct DroppedParts {
    std::vector<DroppedPart> parts;
};

}  // namespace

std::vector<DroppedPart> TakeDroppedParts() { return std::exchange(StateOf<DroppedParts>().parts, {}); }

void NoteDroppedPart(DroppedPart part) {
    std::vector<DroppedPart>& parts = StateOf<DroppedParts>().parts;
    const bool known = std::ranges::any_of(parts, [&part](const DroppedPart& each) {
        return each.handle == part.handle && each.name == part.name;
    });
    if (!known) parts.push_back(std::move(part));
}

}  // namespace brenvik
