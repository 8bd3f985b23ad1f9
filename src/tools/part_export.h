// One drawing for each selected part, laid flat and turned by its letters, for CAM packages that take their
// parts by hand; and a drawing saved under a second name beside them.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

class AcadApplication;

/// The messages before and after.
inline constexpr std::string_view PartExportWarning =
    "This utility will set your ucsfollow and ucsortho system variables to 0. "
    "It will also set your plinetype to 2, osnapcoord to 2, and turn off backup copies. "
    "You will may need to manually set these variable back to your preferences. "
    "Please wait for the -- Export Complete! -- message before continuing.";
inline constexpr std::string_view PartExportComplete = "-- Export Complete! --";

/// What its folder is in for, in the words of a refusal.
inline constexpr std::string_view PartExportEmpties = "the export empties its folder";

/// What the last export came to, for programs that call it: the folder may be somebody else's by now.
struct PartExportReport {
    std::vector<std::string> written;  ///< Names of the finished drawings, in the order of the parts.
};
const PartExportReport& LastPartExport();

/// Empties "C:\BV-DWG\" and writes each solid of the previous selection to a drawing there. A part that fails
/// is reported and passed over; one without an edge to be laid by ends the command, its drawing still open. A
/// folder where another program's run is in progress, or that holds the drawing itself, is refused.
/// `applyOpenGrid` is called before the work.
void ExportParts(AcadApplication& app, const std::function<void()>& applyOpenGrid);

namespace commands {

/// Saves the active drawing under its own name to "C:\BV-DWG\", and again under that name with a "2" behind
/// it; goes on with the first. Fails with 52 for a drawing that has no name yet, and as the host does where
/// the folder can't be written.
void BVDWG2(AcadApplication& app);

}  // namespace commands

}  // namespace brenvik
