// Whether a cell holds what its table doesn't, as the list finds the rows that were edited.
#pragma once

#include "forms/grid_control.h"

namespace brenvik {

inline bool IsUnsaved(const GridControl& grid, int column, int row) {
    return grid.CellText(column, row) != grid.SavedText(column, row);
}

}  // namespace brenvik
