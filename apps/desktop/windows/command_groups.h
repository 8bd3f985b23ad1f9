// The system's commands in groups that a shop knows, for menus and for the search of commands.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "session/library/command_table.h"

namespace brenvik::desktop {

struct GroupedCommand {
    Command command;
    /// Whether it can change the drawing, so that leaving it asks about saving.
    bool changesDrawing = false;
    /// It works on the selected parts, and without a selection has no effect.
    bool wantsParts = false;
    std::string_view key = {};  ///< A shortcut such as "Ctrl+L".
    /// Its points count in the plane of the host's view, which has to be that on the screen.
    bool looksAlongView = false;
};

struct CommandGroup {
    std::string_view caption;
    std::vector<GroupedCommand> commands;
    /// Its menu ends with the outcome of the last CNC run.
    bool endsWithOutcome = false;
};

/// Each command of the command table stands in one of them.
std::span<const CommandGroup> CommandGroups();
/// Whether what is typed starts a command that looks along the view.
bool LooksAlongView(std::string_view typed);

}  // namespace brenvik::desktop
