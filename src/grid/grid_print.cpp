// The print settings of the grid and the print action.
#include "grid/grid_print.h"

#include "grid/frm_main.h"
#include "session/message.h"
#include "session/session.h"

namespace brenvik {

namespace {

constexpr double HalfAnInch = 720;

}  // namespace

PrintJob GridPrintJob() {
    PrintJob job;
    job.abortMessage = "Printing - Click Cancel to quit";
    job.jobName = "Brenvik";
    job.header = ProductTitle;
    job.columnHeaders = true;
    job.rowHeaders = false;
    job.margins = {HalfAnInch, HalfAnInch, HalfAnInch, HalfAnInch};
    job.gridLines = true;
    job.colour = false;
    // A cut list has more columns than fit across an upright sheet.
    job.orientation = PrintOrientation::Landscape;
    return job;
}

void PrintTheGrid(frmMain& form) {
    if (TheSession().ApplyBusy) return;
    PrintPort* printer = ThePlatform().print;
    if (printer == nullptr) return ShowNotAvailable("Print");
    printer->PrintGrid(form.fpSpread1, GridPrintJob());
}

}  // namespace brenvik
