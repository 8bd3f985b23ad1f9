// The groups as they stand in the menu bar.
#include "windows/command_groups.h"

#include <algorithm>
#include <array>

#include "base/letter_case.h"
#include "base/text.h"
#include "drafting_host/command/commands/built_in_commands.h"

namespace brenvik::desktop {

namespace {

/// Of the host's own: those that take objects by windows and picks, those that go by the line of sight or
/// into its plane, and those that turn the view from where it is.
constexpr auto SeeingHostCommands = std::to_array<std::string_view>(
    {"UNION", "SUBTRACT", "INTERSECT", "SLICE",  "SOLIDEDIT", "ERASE",    "MOVE",
     "COPY",  "ROTATE",   "SCALE",     "SELECT", "STRETCH",   "ROTATE3D", "MIRROR3D",
     "ALIGN", "EXPLODE",  "PEDIT",     "UCS",    "-GROUP",    "-VIEW",    "DVIEW"});

}  // namespace

std::span<const CommandGroup> CommandGroups() {
    constexpr bool changes = true, parts = true, alongView = true;
    static const std::vector<CommandGroup> groups{
        {"&Cut list",
         {{Command::Show, changes, parts, "Ctrl+L"},
          {Command::BVAdjustments},
          {Command::UpdateNow, changes, parts},
          {Command::UpdateNow2, changes, parts},
          {Command::EventBrenvik, changes, parts}}},
        {"C&NC",
         {{Command::BVC2C, changes, parts},
          {Command::BVATP, changes, parts},
          {Command::BVRover1, changes, parts},
          {Command::BVCNI, changes, parts},
          {Command::BVASP, changes, parts},
          {Command::BVWOP4, changes, parts},
          {Command::BVWOP5, changes, parts},
          {Command::BVTHERM, changes, parts},
          {Command::BVBW, changes, parts},
          {Command::BVEnroute, changes, parts},
          {Command::BVABC, changes, parts},
          {Command::BVRCIM, changes, parts},
          {Command::BVDWG2, changes}},
         true},
        {"&Tools",
         {{Command::BVMove, changes, parts, {}, alongView},
          {Command::BVCopy, changes, parts, {}, alongView},
          {Command::BVGroup, changes, parts},
          {Command::BVExplode, changes, parts},
          {Command::BVSection1, changes, parts},
          {Command::BVSection2, changes, parts},
          {Command::BVMakeView, changes, parts},
          {Command::BVFreezeSections, changes},
          {Command::BVUNFreezeSections, changes},
          {Command::BVExportDWG, changes, parts}}},
        {"&Show",
         {{Command::ShowSelectedOnly, changes, parts},
          {Command::HideSelectedEntities, changes, parts},
          {Command::ShowAllEntities, changes},
          {Command::ShowSelectedEntities, changes}}},
        {"&Materials and settings",
         {{Command::BVMaterial, false, false, "Ctrl+M"}, {Command::ShowSettings, false, false, "Ctrl+,"}}}};
    return groups;
}

bool LooksAlongView(std::string_view typed) {
    const std::string trimmed = Trim(typed), word = trimmed.substr(0, trimmed.find(' '));
    const HostCommand* const own = FindBuiltInCommand(word);
    if (own != nullptr) return std::ranges::find(SeeingHostCommands, own->name) != SeeingHostCommands.end();
    const auto isTyped = [&](const GroupedCommand& command) {
        const auto names = Split(CommandEntryOf(command.command).hostCommands, ',');
        return command.looksAlongView && std::ranges::any_of(names, [&](const std::string& name) {
                   return EqualsIgnoreCase(Trim(name), word);
               });
    };
    return std::ranges::any_of(CommandGroups(), [&](const CommandGroup& group) {
        return std::ranges::any_of(group.commands, isTyped);
    });
}

}  // namespace brenvik::desktop
