// Finding controls, items and cells by the names that a journal gives.
#include "journal/journal_lookup.h"

#include <algorithm>

#include "base/ascii.h"
#include "base/letter_case.h"
#include "base/numbers.h"
#include "base/text.h"

namespace brenvik {

namespace {

int WholeNumber(std::string_view text) { return static_cast<int>(LenientNumber(text)); }

std::string Listed(const std::vector<std::string>& items) {
    if (items.empty()) return "none";
    std::vector<std::string> quoted;
    quoted.reserve(items.size());
    for (const std::string& item : items) quoted.push_back(Quoted(item));
    return Join(quoted, ", ");
}

}  // namespace

std::string Quoted(std::string_view text) {
    return "\"" + ReplaceAll(ReplaceAll(text, "\r", "\\r"), "\n", "\\n") + "\"";
}

std::string_view KindInWords(ControlKind kind) {
    switch (kind) {
        case ControlKind::Label:
            return "the label";
        case ControlKind::TextBox:
            return "the text box";
        case ControlKind::CheckBox:
            return "the tick box";
        case ControlKind::OptionButton:
            return "the option button";
        case ControlKind::Button:
            return "the button";
        case ControlKind::MenuEntry:
            return "the menu entry";
        case ControlKind::ListBox:
            return "the list";
        case ControlKind::ComboBox:
            return "the combo box";
        case ControlKind::ListView:
            return "the list view";
        case ControlKind::TabStrip:
            return "the tab strip";
        case ControlKind::Toolbar:
            return "the toolbar";
        case ControlKind::StatusBar:
            return "the status bar";
        case ControlKind::Frame:
            return "the frame";
        case ControlKind::Grid:
            return "the grid";
        case ControlKind::DataControl:
            return "the data control";
    }
    return "the control";
}

std::string BehindPoint(std::string_view name) { return SplitAtFirst(name, '.').tail; }

Control& FindControl(const JournalStep& step, const Form& form, std::string_view name) {
    if (Control* control = form.Find(name)) return *control;
    FailStep(step, "a control " + Quoted(name) + " on " + form.Name(), "none of that name");
}

std::vector<std::string> ItemsOf(const JournalStep& step, const Control& control) {
    if (const auto* list = dynamic_cast<const ListControl*>(&control)) return list->Items();
    if (const auto* tabs = dynamic_cast<const TabStripControl*>(&control)) return tabs->captions;
    std::vector<std::string> items;
    if (const auto* view = dynamic_cast<const ListViewControl*>(&control)) {
        for (const ListViewControl::Row& row : view->rows) items.push_back(row.text);
        return items;
    }
    if (const auto* bar = dynamic_cast<const ToolbarControl*>(&control)) {
        for (const ToolbarControl::Key& key : bar->keys) items.push_back(key.key);
        return items;
    }
    FailStep(step, "a control with items",
             std::string(KindInWords(control.Kind())) + " " + Quoted(control.Name()));
}

int FindItem(const JournalStep& step, const Control& control, const std::string& item) {
    const std::vector<std::string> items = ItemsOf(step, control);
    const auto found = std::find(items.begin(), items.end(), item);
    if (found != items.end()) return static_cast<int>(found - items.begin());
    if (item.starts_with('#') && IsDigitsAlone(item.substr(1)) && item.size() <= 10) {
        const int index = WholeNumber(item.substr(1));
        if (index < static_cast<int>(items.size())) return index;
    }
    FailStep(step, "an item " + Quoted(item) + " in " + control.Name(), Listed(items));
}

int FindColumn(const JournalStep& step, const GridControl& grid, const std::string& column) {
    std::vector<std::string> headers;
    for (int place = 1; place <= grid.MaxCols(); ++place) {
        headers.push_back(grid.Column(place).header);
        if (EqualsIgnoreCase(headers.back(), column)) return place;
    }
    if (IsDigitsAlone(column) && column.size() <= 9) {
        const int place = WholeNumber(column);
        if (place >= 1 && place <= grid.MaxCols()) return place;
    }
    FailStep(step, "a column " + Quoted(column) + " in " + grid.Name(), Listed(headers));
}

int FindRow(const JournalStep& step, const GridControl& grid, const std::string& row, int lowest) {
    const int place = WholeNumber(row);
    if (place >= lowest && place <= grid.MaxRows()) return place;
    FailStep(step, "a row from " + std::to_string(lowest) + " to the last of " + grid.Name(),
             std::to_string(grid.MaxRows()) + " rows");
}

}  // namespace brenvik
