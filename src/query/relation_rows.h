// Rows of the relation of captions and columns, and items of the sort dialog's lists, as the dialogs use
// them.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "session/session.h"

namespace brenvik {

/// All rows but the first, which is the identity of a part; the last ones are empty.
std::span<const ColumnRelationEntry> RelationRowsBehindId();
/// The row that a tag names. Fails with 13 for a tag that is no number, with 9 for one beyond the rows.
const ColumnRelationEntry& RelationRow(std::string_view tag);

/// The column of an item "Caption  [Asc]" or "Caption  [Desc]". Fails with 5 for an item that is too short to
/// hold a direction.
std::string NameBeforeDirection(std::string_view item);

}  // namespace brenvik
