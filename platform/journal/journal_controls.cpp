// What a user's hand does to a control: press, tick, type, pick, go to a cell, edit it.
#include "journal/journal_controls.h"

#include <algorithm>

#include "base/invariant.h"
#include "base/letter_case.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "journal/journal_hands.h"
#include "journal/journal_lookup.h"

namespace brenvik {

namespace {

/// Wider than any screen: what was meant is something else.
constexpr double WidestColumn = 1000;

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

/// A step with the form that it goes to and the hand that does it.
struct Act {
    const JournalStep& step;
    Form& form;
    JournalHands& hands;
};

void PressToolbarKey(const Act& act, ToolbarControl& toolbar, const std::string& key) {
    for (const ToolbarControl::Key& candidate : toolbar.keys) {
        if (!EqualsIgnoreCase(candidate.key, key)) continue;
        return act.hands.PressKey(act.form, toolbar, candidate.key);
    }
    FailStep(act.step, "a toolbar key " + Quoted(key) + " of " + toolbar.Name(), "none of that name");
}

void PressControl(const Act& act) {
    const JournalStep& step = act.step;
    Control& control = Usable(step, act.form, step.arguments[0]);
    switch (control.Kind()) {
        case ControlKind::Button:
        case ControlKind::MenuEntry:
        case ControlKind::CheckBox:
        case ControlKind::OptionButton:
        case ControlKind::Label:
            return act.hands.Press(act.form, control);
        case ControlKind::Toolbar:
            PressToolbarKey(act, dynamic_cast<ToolbarControl&>(control), BehindPoint(step.arguments[0]));
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

void SetTick(const Act& act, bool on) {
    const JournalStep& step = act.step;
    auto& box = UsableOf<CheckControl>(step, act.form, "a tick box or an option button");
    if ((box.Value() == 1) == on) return;
    if (!on && box.Kind() == ControlKind::OptionButton)
        FailStep(step, "a tick box", "an option button, which goes off only when another goes on");
    act.hands.Press(act.form, box);
}

void TypeText(const Act& act) {
    const JournalStep& step = act.step;
    Control& control = Usable(step, act.form, step.arguments[0]);
    if (control.Kind() != ControlKind::TextBox && control.Kind() != ControlKind::ComboBox)
        FailStep(step, "a text box or a combo box",
                 std::string(KindInWords(control.Kind())) + " " + Quoted(control.Name()));
    act.hands.Type(act.form, control, step.arguments[1]);
}

void PickItem(const Act& act) {
    const JournalStep& step = act.step;
    Control& control = Usable(step, act.form, step.arguments[0]);
    const int item = FindItem(step, control, step.arguments[1]);
    if (auto* list = dynamic_cast<ListControl*>(&control)) {
        act.hands.Pick(act.form, *list, item);
    } else if (auto* tabs = dynamic_cast<TabStripControl*>(&control)) {
        act.hands.Pick(act.form, *tabs, item);
    } else if (auto* view = dynamic_cast<ListViewControl*>(&control)) {
        act.hands.Pick(act.form, *view, item);
    } else {
        FailStep(step, "a list, a combo box, a list view or a tab strip",
                 std::string(KindInWords(control.Kind())) + " " + Quoted(control.Name()));
    }
}

void UnpickItem(const Act& act) {
    const JournalStep& step = act.step;
    const std::string expected = "a list of which several items can be picked";
    auto& list = UsableOf<ListControl>(step, act.form, expected);
    if (!list.MultiSelect())
        FailStep(step, expected, std::string(KindInWords(list.Kind())) + " " + Quoted(list.Name()));
    act.hands.Unpick(act.form, list, FindItem(step, list, step.arguments[1]));
}

void DoubleClickItem(const Act& act) {
    PickItem(act);
    act.hands.DoubleClick(act.form, FindControl(act.step, act.form, act.step.arguments[0]));
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

void SetWidth(const Act& act) {
    auto& grid = UsableOf<GridControl>(act.step, act.form, "a grid");
    const int column = FindColumn(act.step, grid, act.step.arguments[1]);
    if (grid.Column(column).hidden) FailStep(act.step, "a column that is shown", "a hidden one");
    const double width = StrictNumber(act.step.arguments[2]);
    if (!(width > 0 && width <= WidestColumn))
        FailStep(act.step, "a width above 0, of " + NumberToText(WidestColumn) + " characters at most",
                 act.step.arguments[2]);
    act.hands.SetWidth(act.form, grid, column, width);
}

void EditCell(const Act& act) {
    const CellPlace cell = UsableCell(act.step, act.form);
    if (!act.hands.Edit(act.form, cell.grid, cell.column, cell.row, act.step.arguments[3]))
        FailStep(act.step, "a cell that takes typing", "a locked one");
}

}  // namespace

void ActOnForm(const JournalStep& step, Form& form, JournalHands& hands) {
    const Act act{step, form, hands};
    if (step.kind == StepKind::Press) return PressControl(act);
    if (step.kind == StepKind::Check) return SetTick(act, true);
    if (step.kind == StepKind::Uncheck) return SetTick(act, false);
    if (step.kind == StepKind::Toggle)
        return hands.Press(form, UsableOf<CheckControl>(step, form, "a tick box"));
    if (step.kind == StepKind::Type) return TypeText(act);
    if (step.kind == StepKind::Pick) return PickItem(act);
    if (step.kind == StepKind::Unpick) return UnpickItem(act);
    if (step.kind == StepKind::DoubleClick) return DoubleClickItem(act);
    if (step.kind == StepKind::Cell) return EditCell(act);
    if (step.kind == StepKind::Width) return SetWidth(act);
    if (step.kind == StepKind::Goto) {
        const CellPlace cell = UsableCell(step, form);
        return hands.GoTo(form, cell.grid, cell.column, cell.row);
    }
    Invariant(step.kind == StepKind::Close, "a step that acts on a form");
    hands.Close(form);
}

}  // namespace brenvik
