// What a run does before its first part file: folders, the warning, settings of the host, and the parts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cnc/part/run_state.h"
#include "session/ports/host_interface.h"

namespace brenvik {

/// The messages before and after a run.
inline constexpr std::string_view RunWarning =
    "This utility will set your ucsfollow and ucsortho system variables to 0, "
    "set your plinetype to 2, osnapcoord to 2, and turn off backup copies. "
    "You will may need to manually set these variable back to your preferences. "
    "By using this export you agree to take full responsibility for making sure that "
    "the dxf files created will not damage your machine or cause injury. "
    "Please wait for the -- Export Complete! -- message before continuing.";
inline constexpr std::string_view RunComplete = "-- Export Complete! --";
/// What the run will do to its folders, for a refusal.
inline constexpr std::string_view RunEmpties = "a run empties its output folder";
inline constexpr std::string_view ListUnreadable =
    "There has been some sort of error reading the file CNCExportList2.txt. It may not have been created due "
    "to "
    "user error or another problem. Please contact support. Now skipping export.";

/// Calls `PrepareDrawing`, reads the spoil setting, and minimizes the window if the settings ask for it.
void PrepareSession(RunState& run);

/// Quantities written to solids for the length of the part files: "1" again when this object is destroyed.
class LentQuantities {
  public:
    /// Quantities that stay lent, and would be saved with the drawing, are reported.
    explicit LentQuantities(RunReport& report) : mReport(report) {}
    ~LentQuantities();
    LentQuantities(const LentQuantities&) = delete;
    LentQuantities& operator=(const LentQuantities&) = delete;

    /// A layer that is locked is unlocked, as the run does with the layers of its parts anyway. False if the
    /// entity doesn't take the quantity.
    bool Lend(AcadDocument& drawing, AcadEntity& entity, int quantity);
    /// Gives one its "1" back, if it has a lent quantity.
    void GiveBack(AcadEntity& entity);

  private:
    struct Lent {
        AcadEntity* entity = nullptr;
        int quantity = 0;
        bool taken = false;  ///< The entity has it.
    };
    RunReport& mReport;
    std::vector<Lent> mLent;
};

/// Fills the set "prev" of the session drawing: form A from the previous selection, form B from the list.
/// Lines that name no part of the drawing go into the report. Returns null, after a message, if there is no
/// list.
AcadSelectionSet* TakeParts(RunState& run, LentQuantities& quantities);

/// Deletes all files of both output folders, lists ahead of drawings, so that no list of an earlier run
/// outlasts its files. Gives a line for each that can't be deleted: a machine would take it for one of this
/// run.
std::vector<std::string> EmptyOutputFolders();

/// Deletes the files of a run from both output folders, lists
/// before drawings; other files there stay.
void RemoveFilesOfRun();

/// Deletes a file that may not be there, or that can't be deleted.
void RemoveIfThere(const std::string& path);

}  // namespace brenvik
