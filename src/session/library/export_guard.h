// Export as the user asks for it: a list with parts that have no letters, and so no sizes, asks first.
#pragma once

namespace brenvik {

class frmMain;

void ExportGrid(frmMain& form);  ///< Shows the export dialog; asks first if rows lack letters.

}  // namespace brenvik
