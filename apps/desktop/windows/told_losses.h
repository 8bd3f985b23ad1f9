// What lists, exports and the library have lost, changed or taken by default without a message box of their
// own.
#pragma once

#include <string>
#include <vector>

namespace brenvik::desktop {

struct ToldLosses {
    /// All of it, a line each, for the command history.
    std::vector<std::string> lines;
    /// Those of them that nobody may overlook, and that no box has shown.
    std::vector<std::string> losses;
};

/// What came up since the last call.
ToldLosses TakeToldLosses();

/// Shows the losses in one box; no box without any.
void ShowLosses(const std::vector<std::string>& losses);

}  // namespace brenvik::desktop
