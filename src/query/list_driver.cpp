// List options done through the dialogs, unseen.
#include "query/list_driver.h"

#include <algorithm>
#include <string>

#include "base/letter_case.h"
#include "forms/form_guards.h"
#include "grid/frm_main.h"
#include "grid/grid_query.h"
#include "query/frm_filter.h"
#include "query/frm_new_sort.h"
#include "session/module_state.h"

namespace brenvik {

namespace {

/// Chooses a column in a dialog's list. What is offered depends on the grid and on the other choices.
void ChooseColumn(std::string_view option, ListControl& list, std::string_view column) {
    std::string offered;
    for (int item = 0; item < list.ListCount(); ++item) {
        const std::string& text = list.Items()[static_cast<std::size_t>(item)];
        if (EqualsIgnoreCase(text, column)) return list.SetListIndex(item);
        if (!text.empty()) offered += (offered.empty() ? "" : ", ") + text;
    }
    RefuseOption(option,
                 "the column \"" + std::string(column) + "\" is not offered now; the columns are " + offered);
}

template <typename Dialog>
void RequireAccepted(std::string_view option, const Dialog& form) {
    if (form.StatementRefused())
        RefuseOption(option, "the part table refused the statement, and the list stays as it was");
}

void ApplyFilter(const FilterChoice& choice) {
    auto& form = StateOf<frmFilter>();
    form.Load();
    const UnloadAtEnd unload(form);
    form.Get<Control>("btnClear").Press();
    ChooseColumn("filter", *form.cboCol[0], choice.column);
    ChooseColumn("filter", *form.cboCrit[0], choice.shownOperator);
    form.cboCritData[0]->SetText(choice.value);
    form.Get<Control>("btnOK").Press();
    if (form.Loaded())
        RefuseOption("filter", "the dialog refused \"" + choice.value + "\" for the column " + choice.column);
    const bool holdsQuote = choice.value.find('\'') != std::string::npos;
    if (form.StatementRefused() && holdsQuote)
        RefuseOption("filter",
                     "the part table refused the statement, and the list stays as it was: no value "
                     "with a single quote can be looked for, and no part that has one is in the list");
    RequireAccepted("filter", form);
}

void TickBox(frmNewSort& form, std::string_view column) {
    // The first box has the caption of the second one, and counts for nothing.
    const auto box = std::find_if(form.Check1.begin() + 1, form.Check1.end(), [&](const CheckControl* each) {
        return EqualsIgnoreCase(each->Text(), column);
    });
    if (box == form.Check1.end())
        RefuseOption("group", "there is no group by the column \"" + std::string(column) + "\"");
    (*box)->SetValue(1);
}

void AddSortColumn(frmNewSort& form, const SortChoice& choice) {
    ChooseColumn("sort", form.List1, choice.column);
    form.Get<Control>("btnAddOne").Press();
    if (!choice.descending) return;
    form.List2.SetListIndex(form.List2.ListCount() - 1);
    form.List2.onDoubleClick();
}

void ApplySortAndGroup(const ListChoices& choices) {
    auto& form = StateOf<frmNewSort>();
    form.Load();
    const UnloadAtEnd unload(form);
    form.PressByCode("Command3");
    form.PressByCode("btnRemoveAll");
    for (const std::string& column : choices.group) TickBox(form, column);
    for (const SortChoice& choice : choices.sort) AddSortColumn(form, choice);
    form.PressByCode("btnOK");
    RequireAccepted(choices.group.empty() ? "sort" : "group", form);
    LockLettersWhileGrouped(GridFormInstance());
}

}  // namespace

void ApplyListChoices(const ListChoices& choices) {
    if (choices.filter) ApplyFilter(*choices.filter);
    if (!choices.sort.empty() || !choices.group.empty()) ApplySortAndGroup(choices);
}

}  // namespace brenvik
