// What the widgets set going is thrown on only when the toolkit's code is behind us.
#include "form_windows/widget_hands.h"

#include <QMenu>
#include <QWidget>

#include "base/failure.h"
#include "form_windows/control_binding.h"
#include "form_windows/form_window.h"
#include "form_windows/grid_view.h"

namespace brenvik::desktop {

namespace {

constexpr std::int32_t InvalidCall = 5;

[[noreturn]] void Refuse(const Control& control, const std::string& what) {
    throw Failure(InvalidCall, control.Name(), "the window of the form " + what);
}

}  // namespace

ControlBinding& WidgetHands::Meet(Form& form, Control& control) const {
    const FormWindow* const window = mDesk.WindowOf(form);
    if (window == nullptr) Refuse(control, "isn't open");
    ControlBinding* const binding = window->BindingOf(control);
    if (binding == nullptr) Refuse(control, "has no place for " + control.Name());
    QWidget& widget = binding->Widget();
    const bool isMenu = qobject_cast<QMenu*>(&widget) != nullptr;
    if (!isMenu && !widget.isVisibleTo(window)) Refuse(control, "doesn't show " + control.Name());
    if (!widget.isEnabledTo(window)) Refuse(control, "has " + control.Name() + " disabled");
    return *binding;
}

void WidgetHands::Press(Form& form, Control& control) {
    Meet(form, control).Press();
    mDesk.RethrowKept();
}

void WidgetHands::PressKey(Form& form, ToolbarControl& toolbar, std::string_view key) {
    Meet(form, toolbar).PressKey(key);
    mDesk.RethrowKept();
}

void WidgetHands::Type(Form& form, Control& control, std::string_view text) {
    Meet(form, control).Type(text);
    mDesk.RethrowKept();
}

void WidgetHands::Pick(Form& form, ListControl& list, int item) {
    Meet(form, list).Pick(item);
    mDesk.RethrowKept();
}

void WidgetHands::Unpick(Form& form, ListControl& list, int item) {
    Meet(form, list).Unpick(item);
    mDesk.RethrowKept();
}

void WidgetHands::Pick(Form& form, TabStripControl& tabs, int item) {
    Meet(form, tabs).Pick(item);
    mDesk.RethrowKept();
}

void WidgetHands::Pick(Form& form, ListViewControl& view, int row) {
    Meet(form, view).Pick(row);
    mDesk.RethrowKept();
}

void WidgetHands::DoubleClick(Form& form, Control& control) {
    Meet(form, control).DoubleClick();
    mDesk.RethrowKept();
}

void WidgetHands::GoTo(Form& form, GridControl& grid, int column, int row) {
    GoToCell(Meet(form, grid), column, row);
    mDesk.RethrowKept();
}

bool WidgetHands::Edit(Form& form, GridControl& grid, int column, int row, std::string_view text) {
    const bool taken = TypeIntoCell(Meet(form, grid), column, row, text);
    mDesk.RethrowKept();
    return taken;
}

void WidgetHands::SetWidth(Form& form, GridControl& grid, int column, double width) {
    SetColumnWidth(Meet(form, grid), column, width);
    mDesk.RethrowKept();
}

void WidgetHands::Close(Form& form) {
    FormWindow* const window = mDesk.WindowOf(form);
    if (window == nullptr) return form.RequestClose(), void();
    window->close();
    mDesk.RethrowKept();
}

}  // namespace brenvik::desktop
