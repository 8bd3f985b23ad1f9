// The plain hand.
#include "journal/journal_hands.h"

#include <string>

namespace brenvik {

void JournalHands::Press(Form&, Control& control) { control.Press(); }

void JournalHands::PressKey(Form&, ToolbarControl& toolbar, std::string_view key) {
    // The handler may unload the form and with it, in the end, the key's text.
    const std::string pressed(key);
    toolbar.PressKey(pressed);
}

void JournalHands::Type(Form&, Control& control, std::string_view text) { control.SetText(text); }

void JournalHands::Pick(Form&, ListControl& list, int item) {
    if (list.MultiSelect())
        list.SetSelected(item, true);
    else
        list.SetListIndex(item);
}

void JournalHands::Unpick(Form&, ListControl& list, int item) { list.SetSelected(item, false); }

void JournalHands::Pick(Form&, TabStripControl& tabs, int item) { tabs.SetSelectedTab(item); }

void JournalHands::Pick(Form&, ListViewControl& view, int row) {
    view.selectedRow = row;
    if (view.onClick) view.onClick();
}

void JournalHands::DoubleClick(Form&, Control& control) {
    if (control.onDoubleClick) control.onDoubleClick();
}

void JournalHands::GoTo(Form&, GridControl& grid, int column, int row) { grid.SetActiveCell(column, row); }

bool JournalHands::Edit(Form&, GridControl& grid, int column, int row, std::string_view text) {
    return grid.UserEdit(column, row, text);
}

void JournalHands::SetWidth(Form&, GridControl& grid, int column, double width) {
    grid.Column(column).width = width;
}

void JournalHands::Close(Form& form) { form.RequestClose(); }

}  // namespace brenvik
