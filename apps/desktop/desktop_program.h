// The desktop program as a whole: with a person in front of it, or playing a journal on its windows.
#pragma once

#include <string>
#include <vector>

#include "shell/exit_status.h"

namespace brenvik::desktop {

struct DesktopOptions {
    std::string home, drawing, journal;
    /// Drawings to open beside the first one.
    std::vector<std::string> furtherDrawings;
    /// The journal to write of what a person does; blank for none.
    std::string record;
    /// A folder for pictures of each window as it opens; blank for none.
    std::string pictures;
    /// A part file to paint, and the picture to write.
    std::string partFile, out;
    bool quiet = false;
};

/// Shows the main window until it is closed.
app::ExitStatus RunForAPerson(const DesktopOptions& options);
/// Plays the journal by pressing what the windows show.
app::ExitStatus RunForAJournal(const DesktopOptions& options);
/// Paints a part file as a PNG file, without a window.
app::ExitStatus PaintPartFile(const DesktopOptions& options);

}  // namespace brenvik::desktop
