// A grid on the screen: a table view whose every edit goes through the grid's own rules of typing.
#pragma once

#include <memory>

#include "form_windows/control_binding.h"
#include "forms/grid_control.h"

namespace brenvik::desktop {

std::unique_ptr<ControlBinding> BindGrid(GridControl& grid, FormDesk& desk, QWidget* parent);

/// Goes to a cell as a click would, and types into it as keys would, Enter behind. False for a cell that
/// takes no typing. `binding` is one that BindGrid has made.
void GoToCell(ControlBinding& binding, int column, int row);
/// In the grid's units, and to the pixel that is nearest.
void SetColumnWidth(ControlBinding& binding, int column, double width);
bool TypeIntoCell(ControlBinding& binding, int column, int row, std::string_view text);

}  // namespace brenvik::desktop
