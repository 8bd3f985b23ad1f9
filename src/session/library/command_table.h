// The public methods, said once: name, host commands, what the method does, and the function that does it.
// The class, its look-up by name, the host's command definitions and the help are made from this list.
#pragma once

#include <span>
#include <string_view>

namespace brenvik {

class AcadApplication;

/// The work of a method. The session's application, document and install folder are set when it runs, unless
/// the method is self-starting.
using CommandWork = void (*)(AcadApplication&);

/// One method: COMMAND(Method, "HOSTCOMMAND,…", "what it does", work). SELF_STARTING is for the methods that
/// decide for themselves when, and with which failures ignored, they take the application; PLAIN for the one
/// that has none. The order is that of the class.
// clang-format off
#define BRENVIK_COMMANDS(COMMAND, SELF_STARTING, PLAIN)                                                     \
    COMMAND(Show, "BRENVIK", "Open the cut list on the previous selection, then run the chosen CNC target", \
            &commands::Show)                                                                                \
    PLAIN(ShowSettings, "BSET", "Open the settings", &commands::ShowSettings)                               \
    SELF_STARTING(EventBrenvik, "BVEVENT", "Update the ORIE letters, if automatic updating is on",          \
                  &commands::EventBrenvik)                                                                  \
    COMMAND(ShowSelectedOnly, "BVSHOWONLY", "Show only the selected entities",                              \
            &commands::ShowSelectedOnly)                                                                    \
    COMMAND(ShowAllEntities, "BVSHOWALL", "Show all entities again", &commands::ShowAllEntities)            \
    COMMAND(HideSelectedEntities, "BVHIDE", "Hide the selected entities", &commands::HideSelectedEntities)  \
    COMMAND(ShowSelectedEntities, "BVSHOW", "Show all entities again", &commands::ShowAllEntities)          \
    SELF_STARTING(UpdateNow, "33", "Update the ORIE letters now", &commands::UpdateNow)                     \
    SELF_STARTING(UpdateNow2, "BVUPDATE", "Update the ORIE letters, if automatic updating is on",           \
                  &commands::UpdateNow2)                                                                    \
    COMMAND(BVExportDWG, "BVEXPORTDWG", "Write one drawing for each part", &commands::BVExportDWG)          \
    COMMAND(BVC2C, "BVC2C", "CNC run for C2C", &commands::CncRun<Target::C2C>)                              \
    COMMAND(BVExplode, "BVEXPLODE", "Make an exploded view", &commands::BVExplode)                          \
    COMMAND(BVMove, "BVMOVE", "Move parts", &commands::BVMove)                                              \
    COMMAND(BVCopy, "BVCOPY", "Copy parts", &commands::BVCopy)                                              \
    COMMAND(BVGroup, "BVGROUP", "Group parts", &commands::BVGroup)                                          \
    COMMAND(BVMaterial, "BVMAT", "Open the material library", &commands::BVMaterial)                        \
    COMMAND(BVSection1, "BVSECTION1", "Make a section, first form", &commands::BVSection1)                  \
    COMMAND(BVSection2, "BVSECTION2", "Make a section, second form", &commands::BVSection2)                 \
    COMMAND(BVMakeView, "BVMAKEVIEW", "Make a view", &commands::BVMakeView)                                 \
    COMMAND(BVATP, "BVATP", "CNC run for ATP", &commands::CncRun<Target::ATP>)                              \
    COMMAND(BVFreezeSections, "BVFREEZESECTIONS", "Freeze the section layers",                              \
            &commands::BVFreezeSections)                                                                    \
    COMMAND(BVUNFreezeSections, "BVUNFREEZESECTIONS", "Thaw the section layers",                            \
            &commands::BVUNFreezeSections)                                                                  \
    COMMAND(BVAdjustments, "BVADJUSTMENTS", "Open the size adjustments", &commands::BVAdjustments)          \
    COMMAND(BVRover1, "BVROVER1", "CNC run for ROV", &commands::CncRun<Target::ROV>)                        \
    COMMAND(BVCNI, "BVCNI", "CNC run for CNI", &commands::CncRun<Target::CNI>)                              \
    COMMAND(BVASP, "BVASP", "CNC run for ASP", &commands::CncRun<Target::ASP>)                              \
    COMMAND(BVWOP4, "BVWOP4", "CNC run for WOP4", &commands::CncRun<Target::WOP4>)                          \
    COMMAND(BVWOP5, "BVWOP5", "CNC run for WOP5", &commands::CncRun<Target::WOP5>)                          \
    COMMAND(BVTHERM, "BVTHERM", "CNC run for THERM", &commands::CncRun<Target::THERM>)                      \
    COMMAND(BVBW, "BVBW", "CNC run for BW", &commands::CncRun<Target::BW>)                                  \
    COMMAND(BVEnroute, "BVENROUTE", "CNC run for Enroute", &commands::CncRun<Target::Enroute>)              \
    COMMAND(BVDWG2, "BVDWG2", "Save the drawing for the CAM package, under two names", &commands::BVDWG2)   \
    COMMAND(BVABC, "BVABC", "CNC run for ABC", &commands::CncRun<Target::ABC>)                              \
    COMMAND(BVRCIM, "BVRCIM", "CNC run for RCIM", &commands::CncRun<Target::RCIM>)
// clang-format on

/// The methods by name, in the order of the class.
enum class Command {
#define BRENVIK_COMMAND_NAME(method, hostCommands, description, work) method,
    BRENVIK_COMMANDS(BRENVIK_COMMAND_NAME, BRENVIK_COMMAND_NAME, BRENVIK_COMMAND_NAME)
#undef BRENVIK_COMMAND_NAME
};

/// What happens before a method's work.
enum class CommandStart { TakesApplication, SelfStarting, Plain };

struct CommandEntry {
    Command command;
    std::string_view method;
    std::string_view hostCommands;  ///< One or more, parted by commas.
    std::string_view description;
    CommandStart start;
    CommandWork work;     ///< Null for `Plain`, which uses `plainWork`.
    void (*plainWork)();  ///< Without an application.
};

/// All methods in the order of the class.
std::span<const CommandEntry> CommandTable();
const CommandEntry& CommandEntryOf(Command command);
/// By method name, compared without regard to case; null for an unknown one.
const CommandEntry* FindCommand(std::string_view method);

}  // namespace brenvik
