// States of the grid form that hold for the length of a piece of work and end with it, by a failure too.
#pragma once

#include <algorithm>

#include "grid/frm_main.h"
#include "session/session.h"

namespace brenvik {

/// Toolbar and grid take nothing, and the form refuses to close.
class GridBusy {
  public:
    explicit GridBusy(frmMain& busyForm) : form(busyForm) { Set(true); }
    ~GridBusy() { Set(false); }
    GridBusy(const GridBusy&) = delete;
    GridBusy& operator=(const GridBusy&) = delete;

  private:
    void Set(bool busy) {
        form.tbMain.enabled = !busy;
        form.fpSpread1.enabled = !busy;
        TheSession().ApplyBusy = busy;
    }
    frmMain& form;
};

/// Column and row are the active ones again afterwards, as far as the grid still has them.
class ActiveCellKept {
  public:
    explicit ActiveCellKept(GridControl& keptGrid)
        : grid(keptGrid), column(grid.ActiveColumn()), row(grid.ActiveRow()) {}
    ~ActiveCellKept() {
        if (column >= 1 && column <= grid.MaxCols())
            grid.PutActiveCell(column, std::min(row, grid.MaxRows()));
    }
    ActiveCellKept(const ActiveCellKept&) = delete;
    ActiveCellKept& operator=(const ActiveCellKept&) = delete;

  private:
    GridControl& grid;
    int column, row;
};

}  // namespace brenvik
