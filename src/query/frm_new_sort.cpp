// The controls of the sort dialog and how columns move between its lists and boxes.
#include "query/frm_new_sort.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/letter_case.h"
#include "base/skip.h"
#include "base/text.h"
#include "grid/column_relation.h"
#include "query/relation_rows.h"
#include "session/session.h"

namespace brenvik {

namespace {

constexpr std::string_view Ascending = "  [Asc]", Descending = "  [Desc]";

/// Captions of the boxes. A box's tag is the row of the relation that it stands for.
constexpr auto BoxCaptions = std::to_array<std::string_view>({
    "Part Name", "Part Name", "Sub Assembly", "Material",   "Length", "Width", "Thickness",
    "ORIE",      "Notes",     "User Data1",   "User Data2", "PN",     "Price", "EB1",
    "EB2",       "EB3",       "EB4",          "Face",       "Layer",
});
static_assert(BoxCaptions.size() == frmNewSort::BoxCount);

/// The column's name in an item of the list of selected columns.
std::string NameOfItem(std::string_view item) { return Trim(item.substr(0, item.find('['))); }

/// Removes the first item of this text, if there is one.
void RemoveItemOf(ListControl& list, std::string_view text) {
    const auto found = std::ranges::find(list.Items(), text);
    if (found != list.Items().end()) list.RemoveItem(static_cast<int>(found - list.Items().begin()));
}

}  // namespace

frmNewSort::frmNewSort()
    : Form("frmNewSort", "Column Sorting"),
      List1(Add<ListControl>(ControlKind::ListBox, "List1")),
      List2(Add<ListControl>(ControlKind::ListBox, "List2")) {
    width = 9000;
    height = 6600;
    AddSortControls();
    AddGroupControls();
    AddButton("btnOK", "&OK", &frmNewSort::Confirm);
    AddButton("Command2", "&Cancel", &frmNewSort::Unload);
}

void frmNewSort::AddButton(const char* name, const char* buttonCaption, void (frmNewSort::*handler)()) {
    Add<Control>(ControlKind::Button, name, buttonCaption).onClick = [this, handler] { (this->*handler)(); };
}

void frmNewSort::AddSortControls() {
    Add<Control>(ControlKind::Label, "lblAvailable", "Available Columns");
    Add<Control>(ControlKind::Label, "lblAvailableNote", "Dbl-Click to Add");
    Add<Control>(ControlKind::Label, "lblSelected", "Selected Columns");
    Add<Control>(ControlKind::Label, "lblSelectedNote", "Dbl-Click to Toggle Asc/Desc");
    AddButton("btnAddOne", ">", &frmNewSort::AddOne);
    AddButton("btnAddAll", ">>", &frmNewSort::AddAll);
    AddButton("btnRemoveOne", "<", &frmNewSort::RemoveOne);
    AddButton("btnRemoveAll", "<<", &frmNewSort::RemoveAll);
    List1.onDoubleClick = [this] { Get<Control>("btnAddOne").Press(); };
    List2.onDoubleClick = [this] { ToggleDirection(); };
}

void frmNewSort::AddGroupControls() {
    Add<Control>(ControlKind::Frame, "fraGrouping", "Column Grouping");
    Add<Control>(ControlKind::Label, "lblGroupBy", "Group By Columns");
    Add<Control>(ControlKind::Label, "lblGroupingOn",
                 "Clicking Select All or checking any box turns Grouping on");
    Add<Control>(ControlKind::Label, "lblGroupingOff", "Clicking DeSelect All turns Grouping off");
    for (std::size_t index = 0; index < BoxCount; ++index) {
        auto& box = Add<CheckControl>(ControlKind::CheckBox, "Check1(" + std::to_string(index) + ")",
                                      std::string(BoxCaptions[index]));
        box.tag = std::to_string(index + 1);
        box.onClick = [this, &box] { BoxClicked(box); };
        Check1[index] = &box;
    }
    Check1[0]->visible = false;
    AddButton("Command1", "Select All", &frmNewSort::SelectAll);
    AddButton("Command3", "DeSelect All", &frmNewSort::DeselectAll);
}

void frmNewSort::OnLoad() {
    mStatementRefused = false;
    if (!TheSession().GroupFields.empty()) check_names(TheSession().GroupFields);
    LoadListBoxes();
    SetSelectedItems();
}

void frmNewSort::PressByCode(std::string_view button) {
    Load();
    Get<Control>(button).Press();
}

bool frmNewSort::AnyBoxTicked() const {
    return std::ranges::any_of(ListedBoxes(), [](const CheckControl* box) { return box->Value() == 1; });
}

void frmNewSort::check_names(std::string_view groupFields) {
    Loading = true;
    for (const std::string& piece : Split(groupFields, ',')) {
        const std::string name = CaptionForColumn(Trim(piece));
        const auto boxes = ListedBoxes();
        const auto found =
            std::ranges::find_if(boxes, [&](const CheckControl* box) { return box->Text() == name; });
        if (found != boxes.end()) (*found)->SetValue(1);
    }
    Loading = false;
}

void frmNewSort::LoadListBoxes() {
    Grouped = AnyBoxTicked();
    List1.Clear();
    if (!Grouped) {
        for (const ColumnRelationEntry& entry : RelationRowsBehindId())
            if (!entry.caption.empty()) List1.AddItem(entry.caption);
        return;
    }
    for (const CheckControl* box : ListedBoxes())
        if (box->Value() == 1) List1.AddItem(box->Text());
}

int frmNewSort::InSelectedFields(std::string_view columnCaption) const {
    int row = -1;
    Skip([&] {
        const std::string wanted = FoldLower(Trim(ColumnForCaption(columnCaption)));
        const std::vector<SortField>& fields = TheSession().SortFields;
        const auto found = std::ranges::find_if(
            fields, [&](const SortField& sort) { return FoldLower(Trim(sort.field)) == wanted; });
        if (found != fields.end()) row = static_cast<int>(found - fields.begin());
    });
    return row;
}

void frmNewSort::SetSelectedItems() {
    Skip([&] {
        std::vector<int> moved;
        for (int item = 0; item < List1.ListCount(); ++item) {
            const std::string name = List1.Items()[static_cast<std::size_t>(item)];
            const int row = InSelectedFields(name);
            if (row < 0) continue;
            List2.AddItem(name + "  [" + TheSession().SortFields[static_cast<std::size_t>(row)].direction +
                          "]");
            moved.push_back(item);
        }
        std::ranges::reverse(moved);
        for (const int item : moved) List1.RemoveItem(item);
    });
}

void frmNewSort::AddOne() {
    const int item = List1.ListIndex();
    if (item < 0) return;
    List2.AddItem(List1.Text() + std::string(Ascending));
    List1.RemoveItem(item);
}

void frmNewSort::AddAll() {
    for (const std::string& item : List1.Items()) List2.AddItem(item + std::string(Ascending));
    List1.Clear();
}

void frmNewSort::RemoveOne() {
    const int item = List2.ListIndex();
    if (item < 0) return;
    List1.AddItem(NameBeforeDirection(List2.Text()));
    List2.RemoveItem(item);
}

void frmNewSort::RemoveAll() {
    LoadListBoxes();
    List2.Clear();
}

void frmNewSort::ToggleDirection() {
    const int item = List2.ListIndex();
    if (item < 0) return;
    const std::string text = List2.Text();
    // Both ways cut as many characters as the shorter direction has, so each return to ascending leaves one
    // more blank. Readers trim.
    const std::string name = DropRight(text, Ascending.size());
    if (text.ends_with(Ascending))
        List2.SetItem(item, name + std::string(Descending));
    else if (text.ends_with(Descending))
        List2.SetItem(item, name + std::string(Ascending));
}

void frmNewSort::BoxClicked(const CheckControl& box) {
    if (Loading) return;
    // The first box that is ticked turns grouping on; what was chosen from all columns goes.
    if (!Grouped) List2.Clear();
    Grouped = AnyBoxTicked();
    if (box.Value() == 0) {
        const auto found = std::ranges::find_if(
            List2.Items(), [&](const std::string& item) { return NameOfItem(item) == box.Text(); });
        if (found != List2.Items().end()) List2.RemoveItem(static_cast<int>(found - List2.Items().begin()));
    }
    List1.Clear();
    if (Grouped)
        OfferTickedBoxes();
    else
        OfferAllRows();
}

void frmNewSort::OfferAllRows() {
    List2.Clear();
    // The empty rows of the relation are offered too, as blank items at the end.
    for (const ColumnRelationEntry& entry : RelationRowsBehindId()) List1.AddItem(entry.caption);
}

void frmNewSort::OfferTickedBoxes() {
    for (const CheckControl* box : ListedBoxes())
        if (box->Value() == 1) List1.AddItem(RelationRow(box->tag).caption);
    for (const std::string& item : List2.Items()) RemoveItemOf(List1, NameOfItem(item));
}

void frmNewSort::SetAllBoxes(int value) {
    Loading = true;
    for (CheckControl* box : ListedBoxes()) box->SetValue(value);
    Loading = false;
    LoadListBoxes();
}

void frmNewSort::SelectAll() { SetAllBoxes(1); }

void frmNewSort::DeselectAll() { SetAllBoxes(0); }

}  // namespace brenvik
