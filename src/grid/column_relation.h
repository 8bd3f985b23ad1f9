// Which caption belongs to which column of the part table: what sorting, filtering and exports look up.
#pragma once

#include <string>
#include <string_view>

namespace brenvik {

/// How many entries of the session's `ColumnRelation` are filled.
inline constexpr std::size_t ColumnRelationCount = 23;

/// Fills the session's `ColumnRelation`.
void ColHeadRelationShip();

/// The column of a caption, the caption of a column: the first entry that is equal in lower case, or blank.
std::string ColumnForCaption(std::string_view caption);
std::string CaptionForColumn(std::string_view column);

}  // namespace brenvik
