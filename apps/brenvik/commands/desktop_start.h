// Going over to the desktop program.
#pragma once

#include <string>
#include <vector>

namespace brenvik::app {

/// Runs the program brenvik-desktop that lies beside this one, with these words, in this one's place. Returns
/// only where there is none, or where it can't be started.
void BecomeDesktop(const std::vector<std::string>& words);

}  // namespace brenvik::app
