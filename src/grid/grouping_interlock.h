// What a grouped list refuses: its rows are sums of parts, so none of them can be written to a solid.
#pragma once

#include <string_view>

namespace brenvik {

bool GroupingIsActive();

inline constexpr std::string_view ApplyWhileGrouped =
    "You cannot apply changes to the Drawing while GROUPING is active.";

/// Shows the text with the title "Error" while grouping is active. Returns whether it is.
bool RefusedByGrouping(std::string_view text);

}  // namespace brenvik
