// List and combo boxes: items, the chosen one, and what choosing runs.
#include <gtest/gtest.h>

#include "base/failure.h"
#include "forms/control.h"
#include "support/failure_of.h"

namespace brenvik {
namespace {

void Fill(ListControl& list) {
    for (const char* item : {"Length", "Width", "Material"}) list.AddItem(item);
}

TEST(ListBox, BeginsWithNothingChosen) {
    ListControl list(ControlKind::ListBox, "List1");
    Fill(list);
    EXPECT_EQ(list.ListCount(), 3);
    EXPECT_EQ(list.ListIndex(), -1);
    EXPECT_EQ(list.Text(), "");
}

TEST(ListBox, ClicksWhenAnItemIsChosenByCode) {
    ListControl list(ControlKind::ListBox, "List1");
    Fill(list);
    int clicks = 0;
    list.onClick = [&] { ++clicks; };
    list.SetListIndex(1);
    EXPECT_EQ(list.Text(), "Width");
    list.SetListIndex(-1);
    EXPECT_EQ(list.Text(), "");
    EXPECT_EQ(clicks, 2);
}

TEST(ListBox, FailsOutsideItsItems) {
    ListControl list(ControlKind::ListBox, "List1");
    Fill(list);
    for (const int index : {-2, 3})
        EXPECT_EQ(FailureOf([&] { list.SetListIndex(index); }).number(), 381) << index;
    for (const int index : {-1, 3}) {
        EXPECT_EQ(FailureOf([&] { list.RemoveItem(index); }).number(), 381) << index;
        EXPECT_EQ(FailureOf([&] { list.SetItem(index, "x"); }).number(), 381) << index;
        EXPECT_EQ(FailureOf([&] { list.Selected(index); }).number(), 381) << index;
        EXPECT_EQ(FailureOf([&] { list.SetSelected(index, true); }).number(), 381) << index;
    }
}

TEST(ListBox, MovesTheSelectionUpWhenAnItemBeforeItGoes) {
    ListControl list(ControlKind::ListBox, "List1");
    Fill(list);
    list.SetListIndex(2);
    list.RemoveItem(0);
    EXPECT_EQ(list.ListIndex(), 1);
    EXPECT_EQ(list.Text(), "Material");
    list.RemoveItem(0);
    EXPECT_EQ(list.ListIndex(), 0);
}

TEST(ListBox, LosesTheSelectionWithItsItem) {
    ListControl list(ControlKind::ListBox, "List1");
    Fill(list);
    list.SetListIndex(1);
    list.RemoveItem(1);
    EXPECT_EQ(list.ListIndex(), -1);
    EXPECT_EQ(list.Items(), (std::vector<std::string>{"Length", "Material"}));
}

TEST(ListBox, KeepsTheSelectionWhenAnItemBehindItGoes) {
    ListControl list(ControlKind::ListBox, "List1");
    Fill(list);
    list.SetListIndex(0);
    list.RemoveItem(2);
    EXPECT_EQ(list.ListIndex(), 0);
}

TEST(ListBox, ShowsAChangedItemAsItsText) {
    ListControl list(ControlKind::ListBox, "List1");
    Fill(list);
    list.SetListIndex(1);
    list.SetItem(1, "Width  [Asc]");
    EXPECT_EQ(list.Text(), "Width  [Asc]");
}

TEST(ListBox, ChoosesByTextOnlyWhatItHolds) {
    ListControl list(ControlKind::ListBox, "List1");
    Fill(list);
    list.SetText("Width");
    EXPECT_EQ(list.ListIndex(), 1);
    list.SetText("Height");
    EXPECT_EQ(list.ListIndex(), 1);
}

TEST(ListBox, IsEmptyAndUnchosenAfterClearing) {
    ListControl list(ControlKind::ListBox, "List1");
    Fill(list);
    list.SetListIndex(1);
    list.Clear();
    EXPECT_EQ(list.ListCount(), 0);
    EXPECT_EQ(list.ListIndex(), -1);
    EXPECT_EQ(list.Text(), "");
}

TEST(ListBox, OfOneSelectionSelectsTheChosenItem) {
    ListControl list(ControlKind::ListBox, "List1");
    Fill(list);
    list.SetSelected(2, true);
    EXPECT_EQ(list.ListIndex(), 2);
    list.SetSelected(0, true);
    EXPECT_FALSE(list.Selected(2));
    list.SetSelected(0, false);
    EXPECT_EQ(list.ListIndex(), -1);
}

TEST(MultiSelectList, KeepsItsSelectionsApart) {
    ListControl list(ControlKind::ListBox, "lst", true);
    Fill(list);
    list.SetSelected(0, true);
    list.SetSelected(2, true);
    list.SetListIndex(1);
    EXPECT_TRUE(list.Selected(0));
    EXPECT_FALSE(list.Selected(1));
    EXPECT_TRUE(list.Selected(2));
    list.RemoveItem(0);
    EXPECT_FALSE(list.Selected(0));
    EXPECT_TRUE(list.Selected(1));
}

TEST(MultiSelectList, ClicksWhenASelectionChanges) {
    ListControl list(ControlKind::ListBox, "lst", true);
    Fill(list);
    int clicks = 0;
    list.onClick = [&] { ++clicks; };
    list.SetSelected(0, true);
    list.SetSelected(0, true);
    EXPECT_EQ(clicks, 1);
}

TEST(ComboBox, TakesAnyText) {
    ListControl combo(ControlKind::ComboBox, "cboCritData(0)");
    Fill(combo);
    int clicks = 0, changes = 0;
    combo.onClick = [&] { ++clicks; };
    combo.onChange = [&] { ++changes; };
    combo.SetText("Side%");
    EXPECT_EQ(combo.Text(), "Side%");
    EXPECT_EQ(combo.ListIndex(), -1);
    combo.SetText("Width");
    EXPECT_EQ(combo.ListIndex(), 1);
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(changes, 2);
}

TEST(ComboBox, ShowsTheChosenItem) {
    ListControl combo(ControlKind::ComboBox, "cboCol(0)");
    Fill(combo);
    combo.SetListIndex(2);
    EXPECT_EQ(combo.Text(), "Material");
    combo.Clear();
    EXPECT_EQ(combo.Text(), "");
}

}  // namespace
}  // namespace brenvik
