// From the export dialog to a CNC run: the dialog leaves the number of the target behind, and the run starts
// when the grid has closed.
#pragma once

#include <string_view>

namespace brenvik {

class frmExport;

/// The list that the hand-over works on, in the application folder.
inline constexpr std::string_view CncWorkFile = "CNCExportList.txt";

/// Hands the parts over to the run of a target (1 to 12). Says so where this build has no runs.
void HandOffToCnc(frmExport& form, int exportTarget);

}  // namespace brenvik
