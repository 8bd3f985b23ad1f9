// What acting on a control, or setting it by code, does and runs.
#include "forms/control.h"

#include <gtest/gtest.h>

#include "base/failure.h"
#include "forms/form.h"
#include "support/failure_of.h"

namespace brenvik {
namespace {

class TestForm : public Form {
  public:
    TestForm() : Form("frmTest", "Test") {}
    template <class T, class... Args>
    T& Put(Args&&... args) {
        return Add<T>(std::forward<Args>(args)...);
    }
};

TEST(ControlText, RunsItsChangeHandlerOnlyWhenItDiffers) {
    Control box(ControlKind::TextBox, "Text1", "35");
    int changes = 0;
    box.onChange = [&] { ++changes; };
    box.SetText("35");
    EXPECT_EQ(changes, 0);
    box.SetText("36");
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(box.Text(), "36");
}

TEST(ControlPress, RunsTheClickUnlessDisabled) {
    Control button(ControlKind::Button, "btnOK", "&OK");
    int clicks = 0;
    button.onClick = [&] { ++clicks; };
    button.Press();
    button.enabled = false;
    button.Press();
    EXPECT_EQ(clicks, 1);
}

TEST(ControlPress, OfAControlWithoutAHandlerDoesNothing) {
    Control label(ControlKind::Label, "Label1");
    EXPECT_NO_THROW(label.Press());
}

TEST(TickBox, ClicksWhenItsValueIsChangedByCode) {
    CheckControl box(ControlKind::CheckBox, "Check1", "");
    int clicks = 0;
    box.onClick = [&] { ++clicks; };
    box.SetValue(1);
    box.SetValue(1);
    EXPECT_EQ(clicks, 1);
    box.SetValue(0);
    EXPECT_EQ(clicks, 2);
    box.SetValue(7);
    EXPECT_EQ(box.Value(), 1);
}

TEST(TickBox, TurnsOverWhenPressedUnlessDisabled) {
    CheckControl box(ControlKind::CheckBox, "Check1", "");
    box.Press();
    EXPECT_EQ(box.Value(), 1);
    box.Press();
    EXPECT_EQ(box.Value(), 0);
    box.enabled = false;
    box.Press();
    EXPECT_EQ(box.Value(), 0);
}

TEST(TickBox, HasItsNewValueWhenTheClickRuns) {
    CheckControl box(ControlKind::CheckBox, "Check1", "");
    int seen = -1;
    box.onClick = [&] { seen = box.Value(); };
    box.Press();
    EXPECT_EQ(seen, 1);
}

TEST(OptionButtons, OfOneGroupExcludeEachOtherWithoutAClick) {
    TestForm form;
    auto& first = form.Put<CheckControl>(ControlKind::OptionButton, "Option1", "", "scale");
    auto& second = form.Put<CheckControl>(ControlKind::OptionButton, "Option2", "", "scale");
    auto& other = form.Put<CheckControl>(ControlKind::OptionButton, "Option3", "", "bit");
    int firstClicks = 0, secondClicks = 0;
    first.onClick = [&] { ++firstClicks; };
    second.onClick = [&] { ++secondClicks; };
    other.SetValue(1);
    first.Press();
    second.Press();
    EXPECT_EQ(first.Value(), 0);
    EXPECT_EQ(second.Value(), 1);
    EXPECT_EQ(other.Value(), 1);
    EXPECT_EQ(firstClicks, 1);
    EXPECT_EQ(secondClicks, 1);
}

TEST(OptionButtons, GoOffByCodeWithoutAClick) {
    TestForm form;
    auto& option = form.Put<CheckControl>(ControlKind::OptionButton, "Option1", "", "scale");
    option.SetValue(1);
    bool clicked = false;
    option.onClick = [&] { clicked = true; };
    option.SetValue(0);
    EXPECT_EQ(option.Value(), 0);
    EXPECT_FALSE(clicked);
}

TEST(OptionButtons, StayOnWhenPressedAgain) {
    TestForm form;
    auto& option = form.Put<CheckControl>(ControlKind::OptionButton, "Option1", "", "scale");
    option.Press();
    option.Press();
    EXPECT_EQ(option.Value(), 1);
}

TEST(OptionButtons, LeaveTickBoxesAlone) {
    TestForm form;
    auto& box = form.Put<CheckControl>(ControlKind::CheckBox, "Check1", "", "scale");
    auto& option = form.Put<CheckControl>(ControlKind::OptionButton, "Option1", "", "scale");
    box.SetValue(1);
    option.Press();
    EXPECT_EQ(box.Value(), 1);
}

TEST(TabStrip, ClicksWhenATabIsSelected) {
    TabStripControl tabs("TabStrip1", {"Measuring", "CNC"});
    int clicks = 0;
    tabs.onClick = [&] { ++clicks; };
    EXPECT_EQ(tabs.SelectedTab(), 0);
    tabs.SetSelectedTab(1);
    EXPECT_EQ(tabs.SelectedTab(), 1);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(FailureOf([&] { tabs.SetSelectedTab(2); }).number(), 381);
    EXPECT_EQ(FailureOf([&] { tabs.SetSelectedTab(-1); }).number(), 381);
}

TEST(Toolbar, RunsItsHandlerWithTheKeyAsDesigned) {
    ToolbarControl bar("tbMain", {{"SORT", "Sort", false}});
    std::string pressed;
    bar.onKey = [&](std::string_view key) { pressed = key; };
    bar.PressKey("sort");
    EXPECT_EQ(pressed, "SORT");
}

TEST(Toolbar, FailsForAKeyThatItLacks) {
    ToolbarControl bar("tbMain", {{"SORT", "Sort", false}});
    EXPECT_EQ(FailureOf([&] { bar.PressKey("HELP"); }).number(), failure_number::InvalidCall);
}

TEST(Toolbar, DoesNothingWhenDisabled) {
    ToolbarControl bar("tbMain", {{"SORT", "Sort", false}});
    bool pressed = false;
    bar.onKey = [&](std::string_view) { pressed = true; };
    bar.enabled = false;
    bar.PressKey("SORT");
    bar.PressKey("HELP");
    EXPECT_FALSE(pressed);
}

}  // namespace
}  // namespace brenvik
