// The table made from the list of methods, and the look-ups in it.
#include "session/library/command_table.h"

#include <array>

#include "base/letter_case.h"
#include "export/frm_adjustments.h"
#include "session/library/automatic_update.h"
#include "session/library/cnc_commands.h"
#include "session/library/commands.h"
#include "settings/frm_materials.h"
#include "tools/drawing_tools.h"
#include "tools/part_export.h"

namespace brenvik {

namespace {

constexpr auto Table = std::to_array<CommandEntry>({
#define BRENVIK_ENTRY(method, hostCommands, description, work) \
    {Command::method, #method, hostCommands, description, CommandStart::TakesApplication, work, nullptr},
#define BRENVIK_SELF_STARTING_ENTRY(method, hostCommands, description, work) \
    {Command::method, #method, hostCommands, description, CommandStart::SelfStarting, work, nullptr},
#define BRENVIK_PLAIN_ENTRY(method, hostCommands, description, work) \
    {Command::method, #method, hostCommands, description, CommandStart::Plain, nullptr, work},
    BRENVIK_COMMANDS(BRENVIK_ENTRY, BRENVIK_SELF_STARTING_ENTRY, BRENVIK_PLAIN_ENTRY)
#undef BRENVIK_ENTRY
#undef BRENVIK_SELF_STARTING_ENTRY
#undef BRENVIK_PLAIN_ENTRY
});

}  // namespace

std::span<const CommandEntry> CommandTable() { return Table; }

const CommandEntry& CommandEntryOf(Command command) { return Table[static_cast<std::size_t>(command)]; }

const CommandEntry* FindCommand(std::string_view method) {
    for (const CommandEntry& entry : Table)
        if (EqualsIgnoreCase(entry.method, method)) return &entry;
    return nullptr;
}

}  // namespace brenvik
