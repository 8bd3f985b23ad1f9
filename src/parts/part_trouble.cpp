// The list of troubles, which lives until somebody takes it.
#include "parts/part_trouble.h"

#include <algorithm>
#include <utility>

#include "session/module_state.h"

namespace brenvik {

namespace {

struct PartTroubles {
    std::vector<PartTrouble> troubles;
};

}  // namespace

std::vector<PartTrouble> TakePartTroubles() { return std::exchange(StateOf<PartTroubles>().troubles, {}); }

void NotePartTrouble(PartTrouble trouble) {
    std::vector<PartTrouble>& troubles = StateOf<PartTroubles>().troubles;
    const bool known = std::ranges::any_of(troubles, [&trouble](const PartTrouble& each) {
        return each.handle == trouble.handle && each.text == trouble.text;
    });
    if (!known) troubles.push_back(std::move(trouble));
}

std::string PartLabel(const std::string& handle, const std::string& name) {
    if (name.empty()) return handle;
    return "\"" + name + "\"" + (handle.empty() ? std::string() : " (" + handle + ")");
}

}  // namespace brenvik
