// The hand of a journal on real windows: it presses what a person would press.
#pragma once

#include "form_windows/form_desk.h"
#include "journal/journal_dialogs.h"
#include "journal/journal_hands.h"

namespace brenvik::desktop {

class ControlBinding;

/// Acts on the control's widget. Fails with 5, naming the reason, if the window has no such widget, or it is
/// hidden or disabled.
class WidgetHands : public JournalHands {
  public:
    explicit WidgetHands(FormDesk& desk) : mDesk(desk) {}

    void Press(Form& form, Control& control) override;
    void PressKey(Form& form, ToolbarControl& toolbar, std::string_view key) override;
    void Type(Form& form, Control& control, std::string_view text) override;
    void Pick(Form& form, ListControl& list, int item) override;
    void Unpick(Form& form, ListControl& list, int item) override;
    void Pick(Form& form, TabStripControl& tabs, int item) override;
    void Pick(Form& form, ListViewControl& view, int row) override;
    void DoubleClick(Form& form, Control& control) override;
    void GoTo(Form& form, GridControl& grid, int column, int row) override;
    bool Edit(Form& form, GridControl& grid, int column, int row, std::string_view text) override;
    void SetWidth(Form& form, GridControl& grid, int column, double width) override;
    void Close(Form& form) override;

  private:
    ControlBinding& Meet(Form& form, Control& control) const;

    FormDesk& mDesk;
};

}  // namespace brenvik::desktop
