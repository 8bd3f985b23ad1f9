// What a user's hand does to a control: press, tick, type, pick, go to a cell, edit it.
#include "journal/journal_controls.h"

#include <algorithm>

#include "base/invariant.h"
#include "base/letter_case.h"
#include "journal/journal_lookup.h"

namespace brenvik {

namespace {

/// The control that the user's hand is to meet: shown and enabled.
Control& Usable(const JournalStep& step, const Form& form, const std::string& name) {
    Control& control = FindControl(step, form, name);
    const std::string wish = std::string(KindInWords(control.Kind())) + " " + Quoted(control.Name());
    if (!control.visible) FailStep(step, wish + " to be visible", "it hidden");
    if (!control.enabled) FailStep(step, wish + " to be enabled", "it disabled");
    return control;
}

template <class T>
T& UsableOf(const JournalStep& step, const Form& form, const std::string& expected) {
    const std::string& name = step.arguments[0];
    Usable(step, form, name);
    return FindControlOf<T>(step, form, name, expected);
}

void PressToolbarKey(const JournalStep& step, ToolbarControl& toolbar, const std::string& key) {
    for (const ToolbarControl::Key& candidate : toolbar.keys) {
        if (!EqualsIgnoreCase(candidate.key, key)) continue;
        // The handler may unload the form and with it, in the end, the key's text.
        const std::string pressed = candidate.key;
        toolbar.PressKey(pressed);
        return;
    }
    FailStep(step, "a toolbar key " + Quoted(key) + " of " + toolbar.Name(), "none of that name");
}

void PressControl(const JournalStep& step, Form& form) {
    Control& control = Usable(step, form, step.arguments[0]);
    switch (control.Kind()) {
        case ControlKind::Button:
        case ControlKind::MenuEntry:
        case ControlKind::CheckBox:
        case ControlKind::OptionButton:
        case ControlKind::Label:
            control.Press();
            return;
        case ControlKind::Toolbar:
            PressToolbarKey(step, dynamic_cast<ToolbarControl&>(control), BehindPoint(step.arguments[0]));
            return;
        case ControlKind::TextBox:
        case ControlKind::ListBox:
        case ControlKind::ComboBox:
        case ControlKind::ListView:
        case ControlKind::TabStrip:
        case ControlKind::StatusBar:
        case ControlKind::Frame:
        case ControlKind::Grid:
        case ControlKind::DataControl:
            FailStep(step, "a button, a menu entry, a toolbar key or a tick box",
                     std::string(KindInWords(control.Kind())) + " " + Quoted(control.Name()));
    }
}

void SetTick(const JournalStep& step, Form& form, bool on) {
    auto& box = UsableOf<CheckControl>(step, form, "a tick box or an option button");
    if ((box.Value() == 1) == on) return;
    if (!on && box.Kind() == ControlKind::OptionButton)
        FailStep(step, "a tick box", "an option button, which goes off only when another goes on");
    box.Press();
}

void TypeText(const JournalStep& step, Form& form) {
    Control& control = Usable(step, form, step.arguments[0]);
    if (control.Kind() != ControlKind::TextBox && control.Kind() != ControlKind::ComboBox)
        FailStep(step, "a text box or a combo box",
                 std::string(KindInWords(control.Kind())) + " " + Quoted(control.Name()));
    control.SetText(step.arguments[1]);
}

void PickItem(const JournalStep& step, Form& form) {
    Control& control = Usable(step, form, step.arguments[0]);
    const int item = FindItem(step, control, step.arguments[1]);
    if (auto* list = dynamic_cast<ListControl*>(&control)) {
        if (list->MultiSelect())
            list->SetSelected(item, true);
        else
            list->SetListIndex(item);
    } else if (auto* tabs = dynamic_cast<TabStripControl*>(&control)) {
        tabs->SetSelectedTab(item);
    } else if (auto* view = dynamic_cast<ListViewControl*>(&control)) {
        view->selectedRow = item;
        if (view->onClick) view->onClick();
    } else {
        FailStep(step, "a list, a combo box, a list view or a tab strip",
                 std::string(KindInWords(control.Kind())) + " " + Quoted(control.Name()));
    }
}

void DoubleClickItem(const JournalStep& step, Form& form) {
    PickItem(step, form);
    Control& control = FindControl(step, form, step.arguments[0]);
    if (control.onDoubleClick) control.onDoubleClick();
}

struct CellPlace {
    GridControl& grid;
    int column, row;
};

CellPlace UsableCell(const JournalStep& step, Form& form) {
    auto& grid = UsableOf<GridControl>(step, form, "a grid");
    const int row = FindRow(step, grid, step.arguments[1], 1);
    const int column = FindColumn(step, grid, step.arguments[2]);
    if (grid.Column(column).hidden) FailStep(step, "a column that is shown", "a hidden one");
    return {grid, column, row};
}

void EditCell(const JournalStep& step, Form& form) {
    const CellPlace cell = UsableCell(step, form);
    if (!cell.grid.UserEdit(cell.column, cell.row, step.arguments[3]))
        FailStep(step, "a cell that takes typing", "a locked one");
}

}  // namespace

void ActOnForm(const JournalStep& step, Form& form) {
    if (step.kind == StepKind::Press) return PressControl(step, form);
    if (step.kind == StepKind::Check) return SetTick(step, form, true);
    if (step.kind == StepKind::Uncheck) return SetTick(step, form, false);
    if (step.kind == StepKind::Toggle) return UsableOf<CheckControl>(step, form, "a tick box").Press();
    if (step.kind == StepKind::Type) return TypeText(step, form);
    if (step.kind == StepKind::Pick) return PickItem(step, form);
    if (step.kind == StepKind::DoubleClick) return DoubleClickItem(step, form);
    if (step.kind == StepKind::Cell) return EditCell(step, form);
    if (step.kind == StepKind::Goto) {
        const CellPlace cell = UsableCell(step, form);
        return cell.grid.SetActiveCell(cell.column, cell.row);
    }
    Invariant(step.kind == StepKind::Close, "a step that acts on a form");
    form.RequestClose();
}

}  // namespace brenvik
