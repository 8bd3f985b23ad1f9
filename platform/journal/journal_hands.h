// The hand that a journal's steps move: what a user does to a control, once it is known that the control can
// be used. The plain hand acts on the models; a program with windows has one that acts on what it shows.
#pragma once

#include <string_view>

#include "forms/form.h"
#include "forms/grid_control.h"

namespace brenvik {

class JournalHands {
  public:
    virtual ~JournalHands() = default;
    /// A button, a menu entry, a tick box, an option button or a label.
    virtual void Press(Form& form, Control& control);
    virtual void PressKey(Form& form, ToolbarControl& toolbar, std::string_view key);
    /// Replaces the text of a text box or of a combo box's edit field.
    virtual void Type(Form& form, Control& control, std::string_view text);
    virtual void Pick(Form& form, ListControl& list, int item);
    /// Of a list of which several items can be picked.
    virtual void Unpick(Form& form, ListControl& list, int item);
    virtual void Pick(Form& form, TabStripControl& tabs, int item);
    virtual void Pick(Form& form, ListViewControl& view, int row);
    /// Behind the pick of the item.
    virtual void DoubleClick(Form& form, Control& control);
    virtual void GoTo(Form& form, GridControl& grid, int column, int row);
    /// Goes there, types and ends the edit. False for a cell that takes no typing.
    virtual bool Edit(Form& form, GridControl& grid, int column, int row, std::string_view text);
    /// Drags a column to a width, in the grid's units.
    virtual void SetWidth(Form& form, GridControl& grid, int column, double width);
    /// As the window's button does.
    virtual void Close(Form& form);
};

}  // namespace brenvik
