// The comparison of what was, what is and what is wanted.
#include "settings/seen_values.h"

namespace brenvik {

void SeenValues::NoteStored(std::string_view name, std::string_view stored) {
    mValues[std::string(name)].stored = stored;
}

void SeenValues::NoteShown(std::string_view name, std::string_view shown) {
    mValues[std::string(name)].shown = shown;
}

ValueChange SeenValues::ChangeOf(std::string_view name, std::string_view stored,
                                 std::string_view chosen) const {
    const auto seen = mValues.find(name);
    if (seen == mValues.end()) return ValueChange::Here;
    const bool isChosen = chosen != seen->second.shown, isReplaced = stored != seen->second.stored;
    if (!isChosen) return isReplaced ? ValueChange::Elsewhere : ValueChange::None;
    if (!isReplaced) return ValueChange::Here;
    return stored == chosen ? ValueChange::None : ValueChange::Both;
}

}  // namespace brenvik
