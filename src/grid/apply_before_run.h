// What becomes of the grid when a run or an export takes over.
#pragma once

namespace brenvik {

/// Applies and closes the grid if it is open, unless the settings turn that off. False when they ask for it
/// and no grid is open.
bool ApplyOpenGrid();

/// Writes the list that the grid closed on to its solids. A failure is shown.
void ApplyLastList();

}  // namespace brenvik
