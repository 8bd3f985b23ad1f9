// Rows of the relation by tag, and the names in items with a direction.
#include "query/relation_rows.h"

#include "base/failure.h"
#include "base/numbers.h"
#include "base/text.h"

namespace brenvik {

std::span<const ColumnRelationEntry> RelationRowsBehindId() {
    return std::span<const ColumnRelationEntry>(TheSession().ColumnRelation).subspan(1);
}

const ColumnRelationEntry& RelationRow(std::string_view tag) {
    const auto& relation = TheSession().ColumnRelation;
    const auto row = StrictInteger(tag);
    if (row < 0 || static_cast<std::size_t>(row) >= relation.size())
        throw SubscriptOutOfRange("row " + std::string(tag) + " of the column relation");
    return relation[static_cast<std::size_t>(row)];
}

std::string NameBeforeDirection(std::string_view item) {
    // As long as "[Desc]"; of "  [Asc]" it leaves one of the two blanks.
    constexpr std::size_t directionLength = 6;
    if (CharacterCount(item) < directionLength) throw InvalidCall(std::string(item));
    return Trim(DropRight(item, directionLength));
}

}  // namespace brenvik
