// List boxes and combo boxes: items, the chosen one, and the many chosen ones of a multi-select list.
#include <algorithm>
#include <utility>

#include "base/failure.h"
#include "forms/control.h"

namespace brenvik {

ListControl::ListControl(ControlKind controlKind, std::string controlName, bool multi)
    : Control(controlKind, std::move(controlName)), multiSelect(multi) {}

std::size_t ListControl::Place(int index) const {
    if (index < 0 || index >= ListCount())
        throw Failure(381, Name(), "Invalid property array index", std::to_string(index));
    return static_cast<std::size_t>(index);
}

void ListControl::AddItem(std::string_view item) {
    items.emplace_back(item);
    selected.push_back(false);
}

void ListControl::RemoveItem(int index) {
    const auto place = static_cast<std::ptrdiff_t>(Place(index));
    items.erase(items.begin() + place);
    selected.erase(selected.begin() + place);
    if (listIndex == index) {
        listIndex = -1;
        text.clear();
    } else if (listIndex > index) {
        --listIndex;
    }
}

void ListControl::SetItem(int index, std::string_view item) {
    items[Place(index)] = item;
    if (listIndex == index) text = item;
}

void ListControl::Clear() {
    items.clear();
    selected.clear();
    listIndex = -1;
    text.clear();
}

void ListControl::SetListIndex(int index) {
    text = index == -1 ? std::string() : items[Place(index)];
    listIndex = index;
    if (onClick) onClick();
}

bool ListControl::Selected(int index) const {
    const std::size_t place = Place(index);
    return multiSelect ? selected[place] : listIndex == index;
}

void ListControl::SetSelected(int index, bool on) {
    if (Selected(index) == on) return;
    if (!multiSelect) return SetListIndex(on ? index : -1);
    selected[Place(index)] = on;
    listIndex = index;
    text = items[Place(index)];
    if (onClick) onClick();
}

std::string ListControl::Text() const { return text; }

void ListControl::SetText(std::string_view newText) {
    const auto found = std::find(items.begin(), items.end(), newText);
    const int index = found == items.end() ? -1 : static_cast<int>(found - items.begin());
    if (Kind() == ControlKind::ListBox) {
        if (index >= 0) SetListIndex(index);
        return;
    }
    listIndex = index;
    Control::SetText(newText);
}

void ListControl::KeepDesign() {
    Control::KeepDesign();
    designItems = items;
    designListIndex = listIndex;
}

void ListControl::RestoreDesign() {
    Control::RestoreDesign();
    items = designItems;
    selected.assign(items.size(), false);
    listIndex = designListIndex;
}

}  // namespace brenvik
