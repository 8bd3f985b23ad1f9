// The relation of captions and columns, in the order in which dialogs offer them.
#include "grid/column_relation.h"

#include <array>

#include "base/invariant.h"
#include "base/letter_case.h"
#include "parts/part_table.h"
#include "session/session.h"

namespace brenvik {

namespace {

// The raw extents stand last here, behind the columns that a list is usually sorted by.
constexpr auto RelatedColumns = std::to_array<std::string_view>({
    "bv_id",    "bv_qty",       "bv_partname", "bv_subassembly", "bv_material",  "bv_length",
    "bv_width", "bv_thickness", "bv_lwt",      "bv_notes",       "bv_userdata1", "bv_userdata2",
    "bv_pn",    "bv_price",     "bv_eb1",      "bv_eb2",         "bv_eb3",       "bv_eb4",
    "bv_face",  "bv_layer",     "bv_x",        "bv_y",           "bv_z",
});
static_assert(RelatedColumns.size() == ColumnRelationCount);

}  // namespace

void ColHeadRelationShip() {
    auto& relation = TheSession().ColumnRelation;
    for (ColumnRelationEntry& entry : relation) entry = {};
    for (std::size_t place = 0; place < RelatedColumns.size(); ++place) {
        const PartColumn* column = FindPartColumn(RelatedColumns[place]);
        Invariant(column != nullptr, "related columns are columns of the part table");
        relation[place] = {std::string(column->caption), std::string(column->column), {}};
    }
}

std::string ColumnForCaption(std::string_view caption) {
    const std::string wanted = FoldLower(caption);
    for (const ColumnRelationEntry& entry : TheSession().ColumnRelation)
        if (FoldLower(entry.caption) == wanted) return entry.column;
    return {};
}

std::string CaptionForColumn(std::string_view column) {
    const std::string wanted = FoldLower(column);
    for (const ColumnRelationEntry& entry : TheSession().ColumnRelation)
        if (FoldLower(entry.column) == wanted) return entry.caption;
    return {};
}

}  // namespace brenvik
