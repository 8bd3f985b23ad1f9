// Items and columns by their words, which a reader of the journal knows; by number where that would mean
// another one.
#include "form_windows/form_steps.h"

#include <algorithm>

#include "base/letter_case.h"
#include "journal/journal_parser.h"
#include "toolkit/exact_text.h"

namespace brenvik::desktop {

namespace {

std::string ItemWord(const std::vector<std::string>& items, int item) {
    const auto first = std::ranges::find(items, items.at(static_cast<std::size_t>(item)));
    return first - items.begin() == item ? JournalText(*first) : "#" + std::to_string(item);
}

std::string ColumnWord(const GridControl& grid, int column) {
    const std::string& header = grid.Column(column).header;
    for (int place = 1; place <= grid.MaxCols() && !header.empty(); ++place)
        if (EqualsIgnoreCase(grid.Column(place).header, header)) {
            if (place == column) return JournalText(header);
            break;
        }
    return std::to_string(column);
}

std::string PlaceWords(const GridControl& grid, int column, int row) {
    return grid.Name() + " " + std::to_string(row) + " " + ColumnWord(grid, column);
}

}  // namespace

std::string PressStep(const Control& control) {
    const auto* const tick = dynamic_cast<const CheckControl*>(&control);
    if (tick == nullptr || control.Kind() != ControlKind::CheckBox) return "press " + control.Name();
    return (tick->Value() == 1 ? "uncheck " : "check ") + control.Name();
}

std::string ItemStep(std::string_view verb, const ListControl& list, int item) {
    return std::string(verb) + " " + list.Name() + " " + ItemWord(list.Items(), item);
}

std::string PickStep(const TabStripControl& tabs, int tab) {
    return "pick " + tabs.Name() + " " + ItemWord(tabs.captions, tab);
}

std::string PickStep(const ListViewControl& view, int row) {
    std::vector<std::string> items;
    for (const ListViewControl::Row& one : view.rows) items.push_back(one.text);
    return "pick " + view.Name() + " " + ItemWord(items, row);
}

std::string WidthStep(const GridControl& grid, int column) {
    return "width " + grid.Name() + " " + ColumnWord(grid, column) + " " +
           ExactText(grid.Column(column).width);
}

std::string GotoStep(const GridControl& grid, int column, int row) {
    return "goto " + PlaceWords(grid, column, row);
}

std::string CellStep(const GridControl& grid, int column, int row, std::string_view text) {
    return "cell " + PlaceWords(grid, column, row) + " " + JournalText(text);
}

}  // namespace brenvik::desktop
