// List boxes and combo boxes: items, the chosen one, and the many chosen ones of a multi-select list.
#include <algorithm>
#include <utility>

#include "base/failure.h"
#include "forms/control.h"

namespace brenvik {

ListControl::ListControl(ControlKind controlKind, std::string controlName, bool multi)
    : Control(controlKind, std::move(controlName)), mMultiSelect(multi) {}

std::size_t ListControl::Place(int index) const {
    if (index < 0 || index >= ListCount())
        throw Failure(381, Name(), "Invalid property array index", std::to_string(index));
    return static_cast<std::size_t>(index);
}

void ListControl::AddItem(std::string_view item) {
    mItems.emplace_back(item);
    mSelected.push_back(false);
}

void ListControl::RemoveItem(int index) {
    const auto place = static_cast<std::ptrdiff_t>(Place(index));
    mItems.erase(mItems.begin() + place);
    mSelected.erase(mSelected.begin() + place);
    if (mListIndex == index) {
        mListIndex = -1;
        text.clear();
    } else if (mListIndex > index) {
        --mListIndex;
    }
}

void ListControl::SetItem(int index, std::string_view item) {
    mItems[Place(index)] = item;
    if (mListIndex == index) text = item;
}

void ListControl::Clear() {
    mItems.clear();
    mSelected.clear();
    mListIndex = -1;
    text.clear();
}

void ListControl::SetListIndex(int index) {
    text = index == -1 ? std::string() : mItems[Place(index)];
    mListIndex = index;
    if (onClick) onClick();
}

bool ListControl::Selected(int index) const {
    const std::size_t place = Place(index);
    return mMultiSelect ? mSelected[place] : mListIndex == index;
}

void ListControl::SetSelected(int index, bool on) {
    if (Selected(index) == on) return;
    if (!mMultiSelect) return SetListIndex(on ? index : -1);
    mSelected[Place(index)] = on;
    mListIndex = index;
    text = mItems[Place(index)];
    if (onClick) onClick();
}

std::string ListControl::Text() const { return text; }

void ListControl::SetText(std::string_view newText) {
    const auto found = std::find(mItems.begin(), mItems.end(), newText);
    const int index = found == mItems.end() ? -1 : static_cast<int>(found - mItems.begin());
    if (Kind() == ControlKind::ListBox) {
        if (index >= 0) SetListIndex(index);
        return;
    }
    mListIndex = index;
    Control::SetText(newText);
}

void ListControl::KeepDesign() {
    Control::KeepDesign();
    mDesignItems = mItems;
    mDesignListIndex = mListIndex;
}

void ListControl::RestoreDesign() {
    Control::RestoreDesign();
    mItems = mDesignItems;
    mSelected.assign(mItems.size(), false);
    mListIndex = mDesignListIndex;
}

}  // namespace brenvik
