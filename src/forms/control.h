// Controls of a form as plain models: what a control shows, whether it can be used, and what happens
// when the user acts on it. Nothing here draws; a dialog platform shows the models and calls them.
// Handlers run both for the user's act and for a change made by code, as in the toolkit that the forms
// were made for: setting a tick box or a list's selection is a click.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace brenvik {

enum class ControlKind {
    Label,
    TextBox,
    CheckBox,
    OptionButton,
    Button,
    MenuEntry,
    ListBox,
    ComboBox,
    ListView,
    TabStrip,
    Toolbar,
    StatusBar,
    Frame,
    Grid,
    DataControl,
};

/// What all controls have. An array member carries its index in the name: "cboCol(0)".
class Control {
  public:
    Control(ControlKind kind, std::string name, std::string text = {});
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    ControlKind Kind() const { return mKind; }
    const std::string& Name() const { return mName; }

    /// Caption, or the text of a text box or of a combo box's edit field.
    virtual std::string Text() const { return text; }
    /// Runs `onChange` when the text differs from before.
    virtual void SetText(std::string_view newText);

    bool enabled = true;
    bool visible = true;
    std::string tag;
    std::function<void()> onClick;
    std::function<void()> onChange;
    std::function<void()> onDoubleClick;

    /// The user's click, or a press by code. Does nothing on a disabled control.
    virtual void Press();

    /// What the form was designed with is kept before its first load and put back before every later one,
    /// without running a handler: a form loaded again begins as it was designed.
    virtual void KeepDesign();
    virtual void RestoreDesign();

  protected:
    std::string text;

  private:
    struct Design {
        std::string text, tag;
        bool enabled = true, visible = true;
    };
    ControlKind mKind;
    std::string mName;
    Design mDesign;
};

/// A tick box or an option button: 0 or 1. Option buttons of one form and one `group` exclude each other.
class CheckControl : public Control {
  public:
    CheckControl(ControlKind kind, std::string name, std::string caption, std::string group = {});
    int Value() const { return mValue; }
    /// A changed value runs `onClick`, unless an option button is switched off. Any value but 0 counts as 1.
    void SetValue(int newValue);
    /// The user's click: a tick box turns over, an option button is switched on.
    void Press() override;
    const std::string& Group() const { return mGroup; }
    /// Set by the form for option buttons: switches the others of the group off, without a click.
    std::function<void(CheckControl&)> excludeOthers;
    void KeepDesign() override;
    void RestoreDesign() override;

  private:
    friend class Form;
    int mValue = 0;
    int mDesignValue = 0;
    std::string mGroup;
};

/// A list box or a combo box. `ListIndex` is -1 when nothing is chosen.
class ListControl : public Control {
  public:
    ListControl(ControlKind kind, std::string name, bool multiSelect = false);
    const std::vector<std::string>& Items() const { return mItems; }
    int ListCount() const { return static_cast<int>(mItems.size()); }
    void AddItem(std::string_view item);
    /// Later items move up, and so does a selection behind the place; the removed item's selection goes.
    /// Fails outside the list with 381, as the other operations by place do.
    void RemoveItem(int index);
    void SetItem(int index, std::string_view item);
    void Clear();
    int ListIndex() const { return mListIndex; }
    /// Chooses an item (-1: none) and runs `onClick`. In a multi-select list this is the item that has the
    /// focus; what is selected stays.
    void SetListIndex(int index);
    /// Whether an item is chosen: the one of `ListIndex`, or one of those of a multi-select list.
    bool Selected(int index) const;
    /// A change runs `onClick`. A list that isn't multi-select has one selected item at most.
    void SetSelected(int index, bool on);
    bool MultiSelect() const { return mMultiSelect; }
    /// The chosen item of a list box, the edit field of a combo box.
    std::string Text() const override;
    /// A list box chooses the first item of this text, if there is one. A combo box takes any text; where an
    /// item has it, that item counts as chosen, and no click runs.
    void SetText(std::string_view newText) override;
    void KeepDesign() override;
    void RestoreDesign() override;

  private:
    std::size_t Place(int index) const;

    std::vector<std::string> mItems, mDesignItems;
    std::vector<bool> mSelected;
    int mListIndex = -1, mDesignListIndex = -1;
    bool mMultiSelect;
};

/// A list view in report form: rows of a text, sub-items, a key and a tag.
class ListViewControl : public Control {
  public:
    struct Row {
        std::string text, key, tag;
        std::vector<std::string> subItems;
    };
    explicit ListViewControl(std::string name, std::vector<std::string> columnHeaders = {});
    std::vector<std::string> columnHeaders;
    std::vector<Row> rows;
    int selectedRow = -1;
    void RestoreDesign() override;
};

/// A tab strip: one tab is always selected; selecting one runs `onClick`.
class TabStripControl : public Control {
  public:
    TabStripControl(std::string name, std::vector<std::string> captions);
    std::vector<std::string> captions;
    int SelectedTab() const { return mSelectedTab; }
    /// From 0; fails outside with 381. Runs `onClick` each time.
    void SetSelectedTab(int index);
    void RestoreDesign() override;

  private:
    int mSelectedTab = 0;
};

/// A toolbar whose buttons are identified by keys.
class ToolbarControl : public Control {
  public:
    struct Key {
        std::string key, caption;
        bool separatorBefore = false;
    };
    ToolbarControl(std::string name, std::vector<Key> keys);
    std::vector<Key> keys;
    std::function<void(std::string_view key)> onKey;
    /// Does nothing on a disabled toolbar; fails with 5 for a key that isn't there. Keys compare without
    /// regard to case, and the handler gets the key as it was designed.
    void PressKey(std::string_view key);
};

class StatusBarControl : public Control {
  public:
    StatusBarControl(std::string name, int panelCount);
    std::vector<std::string> panels;
    void RestoreDesign() override;
};

}  // namespace brenvik
