// States of the grid form that hold for the length of a piece of work and end with it, by a failure too.
#pragma once

#include <algorithm>

#include "grid/frm_main.h"
#include "session/session.h"

namespace brenvik {

/// Toolbar and grid take nothing, and the form refuses to close.
class GridBusy {
  public:
    explicit GridBusy(frmMain& busyForm) : mForm(busyForm) { Set(true); }
    ~GridBusy() { Set(false); }
    GridBusy(const GridBusy&) = delete;
    GridBusy& operator=(const GridBusy&) = delete;

  private:
    void Set(bool busy) {
        mForm.tbMain.enabled = !busy;
        mForm.fpSpread1.enabled = !busy;
        TheSession().ApplyBusy = busy;
    }
    frmMain& mForm;
};

/// Column and row are the active ones again afterwards, as far as the grid still has them.
class ActiveCellKept {
  public:
    explicit ActiveCellKept(GridControl& keptGrid)
        : mGrid(keptGrid), mColumn(mGrid.ActiveColumn()), mRow(mGrid.ActiveRow()) {}
    ~ActiveCellKept() {
        if (mColumn >= 1 && mColumn <= mGrid.MaxCols())
            mGrid.PutActiveCell(mColumn, std::min(mRow, mGrid.MaxRows()));
    }
    ActiveCellKept(const ActiveCellKept&) = delete;
    ActiveCellKept& operator=(const ActiveCellKept&) = delete;

  private:
    GridControl& mGrid;
    int mColumn, mRow;
};

}  // namespace brenvik
