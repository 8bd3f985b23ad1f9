// The grid's side of sorting, grouping and filtering.
#include "query/grid_query.h"

#include <string>

#include "base/skip.h"
#include "grid/frm_main.h"
#include "query/frm_filter.h"
#include "query/frm_new_sort.h"
#include "session/message.h"
#include "session/module_state.h"
#include "session/session.h"

namespace brenvik {

namespace {

constexpr int OrieColumn = 9;

/// What ticking the box "Grouping" groups by: what makes two parts the same board.
constexpr std::string_view DefaultGroupFields = "bv_partName, bv_material, bv_length, bv_width, bv_thickness";

}  // namespace

bool ShowStatementInGrid(std::string_view statement) {
    frmMain& form = GridFormInstance();
    form.Adodc1.recordSource = statement;
    if (!ShowAndResume(ShowFailure, [&] { form.Adodc1.Refresh(); })) return false;
    if (const Recordset* records = form.Adodc1.Records()) form.fpSpread1.SetMaxRows(records->RecordCount());
    return true;
}

void LockLettersWhileGrouped(frmMain& form) {
    // The letters of a row that stands for several parts belong to no single one of them.
    const bool grouped = !TheSession().GroupFields.empty();
    form.fpSpread1.SetBlockLocked(OrieColumn, 1, form.fpSpread1.MaxRows(), grouped);
}

void SortGrid(frmMain& form) {
    ThePlatform().dialogs->ShowModal(StateOf<frmNewSort>());
    LockLettersWhileGrouped(form);
}

void FilterGrid(frmMain&) { ThePlatform().dialogs->ShowModal(StateOf<frmFilter>()); }

void GroupingSwitched(frmMain& form) {
    if (form.Loading) return;
    // Ticking prepares the sort dialog, which groups the rows once it is confirmed; unticking takes nothing
    // back, since only a new statement clears the group fields.
    if (form.Get<CheckControl>("CheckGroup").Value() == 1) TheSession().GroupFields = DefaultGroupFields;
    form.Adodc1.recordSource = TheSession().CurrentSQL;
    ShowAndResume(ShowFailure, [&] { form.Adodc1.Refresh(); });
}

}  // namespace brenvik
