// Controls that hold a text or a state: what setting them runs, and how they go back to their design.
#include "forms/control.h"

#include <utility>

#include "base/failure.h"
#include "base/letter_case.h"

namespace brenvik {

Control::Control(ControlKind controlKind, std::string controlName, std::string initialText)
    : text(std::move(initialText)), mKind(controlKind), mName(std::move(controlName)) {}

void Control::SetText(std::string_view newText) {
    if (text == newText) return;
    text = newText;
    if (onChange) onChange();
}

void Control::Press() {
    if (enabled && onClick) onClick();
}

void Control::KeepDesign() { mDesign = {text, tag, enabled, visible}; }

void Control::RestoreDesign() {
    text = mDesign.text;
    tag = mDesign.tag;
    enabled = mDesign.enabled;
    visible = mDesign.visible;
}

CheckControl::CheckControl(ControlKind controlKind, std::string controlName, std::string caption,
                           std::string groupName)
    : Control(controlKind, std::move(controlName), std::move(caption)), mGroup(std::move(groupName)) {}

void CheckControl::SetValue(int newValue) {
    const int normalised = newValue == 0 ? 0 : 1;
    if (mValue == normalised) return;
    mValue = normalised;
    const bool isOption = Kind() == ControlKind::OptionButton;
    if (isOption && mValue == 0) return;
    if (isOption && excludeOthers) excludeOthers(*this);
    if (onClick) onClick();
}

void CheckControl::Press() {
    if (!enabled) return;
    SetValue(Kind() == ControlKind::OptionButton ? 1 : 1 - mValue);
}

void CheckControl::KeepDesign() {
    Control::KeepDesign();
    mDesignValue = mValue;
}

void CheckControl::RestoreDesign() {
    Control::RestoreDesign();
    mValue = mDesignValue;
}

ListViewControl::ListViewControl(std::string controlName, std::vector<std::string> headers)
    : Control(ControlKind::ListView, std::move(controlName)), columnHeaders(std::move(headers)) {}

void ListViewControl::RestoreDesign() {
    Control::RestoreDesign();
    rows.clear();
    selectedRow = -1;
}

TabStripControl::TabStripControl(std::string controlName, std::vector<std::string> tabCaptions)
    : Control(ControlKind::TabStrip, std::move(controlName)), captions(std::move(tabCaptions)) {}

void TabStripControl::SetSelectedTab(int index) {
    if (index < 0 || index >= static_cast<int>(captions.size()))
        throw Failure(381, Name(), "Invalid property array index", std::to_string(index));
    mSelectedTab = index;
    if (onClick) onClick();
}

void TabStripControl::RestoreDesign() {
    Control::RestoreDesign();
    mSelectedTab = 0;
}

ToolbarControl::ToolbarControl(std::string controlName, std::vector<Key> toolbarKeys)
    : Control(ControlKind::Toolbar, std::move(controlName)), keys(std::move(toolbarKeys)) {}

void ToolbarControl::PressKey(std::string_view key) {
    if (!enabled) return;
    for (const Key& candidate : keys) {
        if (!EqualsIgnoreCase(candidate.key, key)) continue;
        // A copy, since the handler may close the form that the toolbar stands on.
        const std::string pressed = candidate.key;
        if (onKey) onKey(pressed);
        return;
    }
    throw InvalidCall(Name() + "." + std::string(key));
}

StatusBarControl::StatusBarControl(std::string controlName, int panelCount)
    : Control(ControlKind::StatusBar, std::move(controlName)), panels(static_cast<std::size_t>(panelCount)) {}

void StatusBarControl::RestoreDesign() {
    Control::RestoreDesign();
    for (std::string& panel : panels) panel.clear();
}

}  // namespace brenvik
