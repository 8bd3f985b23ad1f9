// The grid's side of sorting, grouping and filtering.
#include "grid/grid_query.h"

#include <string>
#include <utility>

#include "base/skip.h"
#include "grid/frm_main.h"
#include "session/message.h"
#include "session/session.h"

namespace brenvik {

namespace {

constexpr int OrieColumn = 9;

/// What ticking the box "Grouping" groups by: what makes two parts the same board.
constexpr std::string_view DefaultGroupFields = "bv_partName, bv_material, bv_length, bv_width, bv_thickness";

/// Returns whether the data control stands on the statement now; a refused one is reported.
bool RefreshFrom(DataControl& data, std::string_view statement) {
    std::string before = std::exchange(data.recordSource, std::string(statement));
    if (ShowAndResume(ShowFailure, [&] { data.Refresh(); })) return true;
    data.recordSource = std::move(before);
    return false;
}

}  // namespace

ListState KeepListState() {
    const Session& session = TheSession();
    return {session.CurrentSQL,  session.WhereClause, session.SortClause,
            session.GroupFields, session.SortFields,  session.FilterCriteria};
}

void PutListStateBack(ListState kept) {
    Session& session = TheSession();
    session.CurrentSQL = std::move(kept.CurrentSQL);
    session.WhereClause = std::move(kept.WhereClause);
    session.SortClause = std::move(kept.SortClause);
    session.GroupFields = std::move(kept.GroupFields);
    session.SortFields = std::move(kept.SortFields);
    session.FilterCriteria = std::move(kept.FilterCriteria);
}

bool ShowStatementInGrid(std::string_view statement) {
    frmMain& form = GridFormInstance();
    if (!RefreshFrom(form.Adodc1, statement)) return false;
    if (const Recordset* records = form.Adodc1.Records()) form.fpSpread1.SetMaxRows(records->RecordCount());
    return true;
}

void LockLettersWhileGrouped(frmMain& form) {
    // The letters of a row that stands for several parts belong to no single one of them.
    const bool grouped = !TheSession().GroupFields.empty();
    form.fpSpread1.SetBlockLocked(OrieColumn, 1, form.fpSpread1.MaxRows(), grouped);
}

void GroupingSwitched(frmMain& form) {
    if (form.Loading) return;
    // Ticking prepares the sort dialog, which groups the rows once it is confirmed; unticking takes nothing
    // back, since only a new statement clears the group fields.
    ListState before = KeepListState();
    if (form.Get<CheckControl>("CheckGroup").Value() == 1) TheSession().GroupFields = DefaultGroupFields;
    if (!RefreshFrom(form.Adodc1, TheSession().CurrentSQL)) PutListStateBack(std::move(before));
}

}  // namespace brenvik
