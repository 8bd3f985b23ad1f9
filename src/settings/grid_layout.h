// The settings that keep the layout of the grid form, by name.
#pragma once

#include <string>
#include <string_view>

namespace brenvik {

/// The setting of a column's width, by its key.
std::string WidthName(std::string_view key);

/// Deletes place, size and widths, so that the next start uses those of the design.
void ResetGridLayout();

}  // namespace brenvik
