// How texts compare in statements: Latin letters without case, and Like with % and _.
#pragma once

#include <string_view>

struct sqlite3;

namespace brenvik::part_table {

/// The order of two texts without regard to case: below, at or above 0.
int CompareWithoutCase(std::string_view a, std::string_view b);

/// Puts these rules in the place of the engine's own, which know no letter beyond ASCII. Returns the
/// engine's code.
int InstallTextRules(sqlite3* handle);

}  // namespace brenvik::part_table
