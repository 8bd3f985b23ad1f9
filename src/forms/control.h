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

    ControlKind Kind() const { return kind; }
    const std::string& Name() const { return name; }

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

  protected:
    std::string text;

  private:
    ControlKind kind;
    std::string name;
};

/// A tick box or an option button: 0 or 1. Option buttons of one form and one `group` exclude each other.
class CheckControl : public Control {
  public:
    CheckControl(ControlKind kind, std::string name, std::string caption, std::string group = {});
    int Value() const { return value; }
    /// A changed value runs `onClick`.
    void SetValue(int newValue);
    /// The user's click: a tick box turns over, an option button goes on.
    void Press() override;
    const std::string& Group() const { return group; }
    /// Set by the form for option buttons: switches the others of the group off, without a click.
    std::function<void(CheckControl&)> excludeOthers;

  private:
    friend class Form;
    int value = 0;
    std::string group;
};

/// A list box or a combo box. `ListIndex` is -1 when nothing is chosen.
class ListControl : public Control {
  public:
    ListControl(ControlKind kind, std::string name, bool multiSelect = false);
    const std::vector<std::string>& Items() const { return items; }
    int ListCount() const { return static_cast<int>(items.size()); }
    void AddItem(std::string_view item);
    /// Later items move up, and so does a selection behind the place; the removed item's selection goes.
    void RemoveItem(int index);
    void SetItem(int index, std::string_view item);
    void Clear();
    int ListIndex() const { return listIndex; }
    /// Chooses an item (-1: none) and runs `onClick`; fails outside the list with 381.
    void SetListIndex(int index);
    /// For a multi-select list: the items chosen, in order.
    bool Selected(int index) const;
    void SetSelected(int index, bool on);
    bool MultiSelect() const { return multiSelect; }
    std::string Text() const override;
    void SetText(std::string_view newText) override;

  private:
    std::vector<std::string> items;
    std::vector<bool> selected;
    int listIndex = -1;
    bool multiSelect;
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
};

/// A tab strip: one tab is always selected; selecting one runs `onClick`.
class TabStripControl : public Control {
  public:
    TabStripControl(std::string name, std::vector<std::string> captions);
    std::vector<std::string> captions;
    int SelectedTab() const { return selectedTab; }
    /// From 0; fails outside with 381.
    void SetSelectedTab(int index);

  private:
    int selectedTab = 0;
};

/// A toolbar whose buttons are told apart by keys.
class ToolbarControl : public Control {
  public:
    struct Key {
        std::string key, caption;
        bool separatorBefore = false;
    };
    ToolbarControl(std::string name, std::vector<Key> keys);
    std::vector<Key> keys;
    std::function<void(std::string_view key)> onKey;
    /// Does nothing on a disabled toolbar; fails with 5 for a key that isn't there.
    void PressKey(std::string_view key);
};

class StatusBarControl : public Control {
  public:
    StatusBarControl(std::string name, int panelCount);
    std::vector<std::string> panels;
};

}  // namespace brenvik
