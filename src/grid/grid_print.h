// Printing the grid.
#pragma once

#include "session/ports/dialog_port.h"

namespace brenvik {

class frmMain;

/// The settings that every print of the grid has.
PrintJob GridPrintJob();

/// Prints the whole grid. Does nothing while rows are written to the drawing; a platform without a printer
/// says so. Fails as the printer does.
void PrintTheGrid(frmMain& form);

}  // namespace brenvik
