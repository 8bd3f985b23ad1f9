// Part numbers by the order of the rows.
#include <string>

#include "forms/repaint_off.h"
#include "grid/frm_main.h"
#include "grid/grid_states.h"
#include "grid/grouping_interlock.h"
#include "grid/mod4spread.h"
#include "grid/typed_values.h"

namespace brenvik {

void frmMain::AutoPN() {
    if (RefusedByGrouping("You cannot number parts while GROUPING is active.")) return;
    int column = Mod4Spread::FindColumn("PN");
    if (column < 0) column = Mod4Spread::FindColumn("Part Number");
    if (column < 0) return;
    const ActiveCellKept activeCellKept(fpSpread1);
    fpSpread1.PutActiveCell(column, fpSpread1.ActiveRow());
    if (fpSpread1.Column(column).hidden || fpSpread1.Column(column).locked) return;
    const RepaintOff repaintOff(fpSpread1);
    int counter = 0;
    for (int row = 1; row <= fpSpread1.MaxRows(); ++row)
        fpSpread1.SetCellText(column, row, std::to_string(++counter));
    fpSpread1.SaveOrTell();
    fpSpread1.ClearMarks();
    NoteEditedRows();
}

}  // namespace brenvik
