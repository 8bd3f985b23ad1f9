// Impossible values that a list or a run has taken from a part: letters that name no sizes, a quantity that
// is no number. The rules let the work continue with them, so they have to be reported by part.
#pragma once

#include <string>
#include <vector>

namespace brenvik {

struct PartTrouble {
    std::string handle, name;
    /// What stands there, and what was expected.
    std::string text;
    /// A box has reported it, but without the part.
    bool toldInABox = false;
    /// No failure: a default was taken, as the rules say, and the user has to know.
    bool isRemark = false;
};

/// What came up since the last call, in its order, each once.
std::vector<PartTrouble> TakePartTroubles();

/// For whatever meets it.
void NotePartTrouble(PartTrouble trouble);

/// How messages name a part: its name, if it has one, and its handle.
std::string PartLabel(const std::string& handle, const std::string& name);

}  // namespace brenvik
