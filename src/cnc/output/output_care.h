// What the caller of a run, or of a part export, looks after in the output folders and in the drawing while
// it runs.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace brenvik {

struct OutputCare {
    /// Called as soon as the folders are claimed, ahead of anything that is removed there. Whoever calls a
    /// run has looked at them long before, since then a drawing has been read and others may have been at
    /// work. Gives the reason why the folders must not be emptied, or null.
    std::function<std::optional<std::string>()> mayEmpty = {};
    /// A run has emptied them and writes its first part file next.
    std::function<void()> emptied = {};
    /// All parts of a run have had their turn, or one of them has ended it, and its lists have their names.
    /// The claims hold still.
    std::function<void()> over = {};
    /// A drawing that the settings have saved is saved when all of this holds, not ahead of the first part:
    /// a run that was killed can then be called on the same drawing once more.
    bool savesAtTheEnd = false;
};

/// From now on, until the library is unloaded; null for nobody.
void CareForOutput(const OutputCare* care);
/// The present one; empty if nobody cares.
const OutputCare& CareOfOutput();

}  // namespace brenvik
