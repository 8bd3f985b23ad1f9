// Module Mod4Spread: what other modules ask of the grid.
#pragma once

#include <string>
#include <string_view>

namespace brenvik::Mod4Spread {

/// The text of one cell, blank if the grid refuses.
std::string GetCellText(int column, int row);

/// The number of the first column whose header equals the caption, both in lower case; -1 if none does.
int FindColumn(std::string_view caption);

/// Makes the grid give up a cell that is being edited, so that the value reaches the table.
void FlushGrid();

}  // namespace brenvik::Mod4Spread
