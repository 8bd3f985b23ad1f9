// What a user does to a control, in the words of a journal.
#pragma once

#include <string>
#include <string_view>

#include "forms/form.h"
#include "forms/grid_control.h"

namespace brenvik::desktop {

/// A button, an entry of a menu, a tick box; ahead of the press.
std::string PressStep(const Control& control);
/// `verb` is pick, unpick or doubleclick.
std::string ItemStep(std::string_view verb, const ListControl& list, int item);
std::string PickStep(const TabStripControl& tabs, int tab);
std::string PickStep(const ListViewControl& view, int row);
std::string WidthStep(const GridControl& grid, int column);
std::string GotoStep(const GridControl& grid, int column, int row);
std::string CellStep(const GridControl& grid, int column, int row, std::string_view text);

}  // namespace brenvik::desktop
