// From the choices of the sort dialog to the statement, and from the statement to the grid's columns.
#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "base/failure.h"
#include "base/letter_case.h"
#include "base/skip.h"
#include "base/text.h"
#include "forms/repaint_off.h"
#include "grid/column_relation.h"
#include "grid/frm_main.h"
#include "grid/grid_query.h"
#include "grid/mod4spread.h"
#include "parts/part_table.h"
#include "query/frm_new_sort.h"
#include "query/relation_rows.h"
#include "session/session.h"

namespace brenvik {

namespace {

/// What parts the columns of a list in a statement.
constexpr std::string_view ListSeparator = ", ";

/// Never shown while the list isn't grouped.
constexpr std::string_view HiddenHeaders = "bv_id**oldvalue1**oldvalue2**oldvalue3**";

struct GroupedColumn {
    std::string_view header, field;
    std::size_t searchFrom = 0;  ///< Place in the statement from 0.
};

/// Columns that a grouped list shows only where its statement names them. The raw extents are looked for
/// under names that no statement holds, so they are hidden always. The count at the head of the statement
/// names the part name's column without showing it, so the search for that begins inside the name.
constexpr auto GroupedColumns = std::to_array<GroupedColumn>({
    {"material", "bv_material"},
    {"part name", "bv_partname", 17},
    {"sub assembly", "bv_subassembly"},
    {"notes", "bv_notes"},
    {"face", "bv_face"},
    {"user data1", "bv_userdata1"},
    {"user data2", "bv_userdata2"},
    {"pn", "bv_pn"},
    {"price", "bv_price"},
    {"eb1", "bv_eb1"},
    {"eb2", "bv_eb2"},
    {"eb3", "bv_eb3"},
    {"eb4", "bv_eb4"},
    {"length", "bv_length"},
    {"width", "bv_width"},
    {"thickness", "bv_thickness"},
    {"orie", "bv_lwt"},
    {"value 1", "bv_value1"},
    {"value 2", "bv_value2"},
    {"value 3", "bv_value3"},
    {"layer", "bv_layer"},
});

void ShowColumnsOfList(GridControl& grid) {
    for (int column = 1; column <= grid.MaxCols(); ++column) {
        const std::string header = FoldLower(Mod4Spread::GetCellText(column, 0));
        grid.Column(column).hidden = HiddenHeaders.find(header) != std::string_view::npos;
    }
}

void ShowColumnsOfGroups(GridControl& grid, std::string_view statement) {
    // The last column is not looked at.
    for (int column = 1; column <= grid.MaxCols() - 1; ++column) {
        const std::string header = FoldLower(Mod4Spread::GetCellText(column, 0));
        const auto found = std::ranges::find(GroupedColumns, header, &GroupedColumn::header);
        if (found != GroupedColumns.end())
            grid.Column(column).hidden =
                statement.find(found->field, found->searchFrom) == std::string_view::npos;
    }
}

}  // namespace

void frmNewSort::PrepSQL() {
    std::vector<SortField>& fields = TheSession().SortFields;
    fields.clear();
    Skip([&] {
        for (const std::string& item : List2.Items()) {
            const bool descending = item.find("[Desc]") != std::string::npos;
            fields.push_back({ColumnForCaption(NameBeforeDirection(item)), descending ? "Desc" : "Asc"});
        }
    });
}

std::string frmNewSort::OrderBy() {
    const std::vector<SortField>& fields = TheSession().SortFields;
    if (fields.empty()) throw SubscriptOutOfRange("sort fields");
    std::string list;
    for (const SortField& sort : fields)
        list += sort.field + " " + sort.direction + std::string(ListSeparator);
    return DropRight(list, ListSeparator.size());
}

std::string frmNewSort::GroupList() const {
    std::string list;
    for (const CheckControl* box : ListedBoxes())
        if (box->Value() == 1) list += RelationRow(box->tag).column + std::string(ListSeparator);
    return DropRight(list, ListSeparator.size());
}

std::string frmNewSort::BuildSQL() {
    std::string statement;
    const bool built = Skip([&] {
        Session& session = TheSession();
        session.GroupFields.clear();
        session.SortClause.clear();
        statement = FullSelect() + session.WhereClause;
        if (List2.ListCount() > 0) {
            session.SortClause = OrderBy();
            statement += " order by " + session.SortClause;
        }
        if (!Grouped) return;
        session.GroupFields = GroupList();
        statement = "Select count(bv_partname) as bv_qty, " + session.GroupFields + " from brenvik_data";
        if (!session.WhereClause.empty()) statement += " " + session.WhereClause;
        statement += " Group by " + session.GroupFields;
        if (!session.SortClause.empty()) statement += " order by " + session.SortClause;
    });
    return built ? statement : std::string();
}

void frmNewSort::Confirm() {
    ListState before = KeepListState();
    PrepSQL();
    const std::string statement = BuildSQL();
    mStatementRefused = false;
    if (!statement.empty()) {
        TheSession().CurrentSQL = statement;
        mStatementRefused = !ShowStatementInGrid(statement);
    }
    // The rows of a refused statement never came, so all stays as the rows on screen need it.
    if (mStatementRefused)
        PutListStateBack(std::move(before));
    else
        ShowColumns(statement);
    Unload();
}

void frmNewSort::ShowColumns(std::string_view statement) {
    GridControl& grid = GridFormInstance().fpSpread1;
    const RepaintOff repaintOff(grid);
    if (Grouped)
        ShowColumnsOfGroups(grid, statement);
    else
        ShowColumnsOfList(grid);
}

}  // namespace brenvik
