// The sort dialog's lists and boxes: what they offer, and how columns move between them.
#include "query/frm_new_sort.h"

#include "core/query/query_fixture.h"

namespace brenvik {
namespace {

using SortDialog = QueryTest;

const Texts AllColumns{"Qty",       "Part Name", "Sub Assembly", "Material",   "Length",     "Width",
                       "Thickness", "ORIE",      "Notes",        "User Data1", "User Data2", "PN",
                       "Price",     "EB1",       "EB2",          "EB3",        "EB4",        "Face",
                       "Layer",     "Value1",    "Value2",       "Value3"};
const Texts BoxColumns(AllColumns.begin() + 1, AllColumns.begin() + 19);

TEST_F(SortDialog, HasTheWordsOfItsDesign) {
    frmNewSort& form = Sort();
    EXPECT_EQ(form.Name(), "frmNewSort");
    EXPECT_EQ(form.caption, "Column Sorting");
    const std::map<std::string, std::string> captions{{"btnAddOne", ">"},           {"btnAddAll", ">>"},
                                                      {"btnRemoveOne", "<"},        {"btnRemoveAll", "<<"},
                                                      {"Command1", "Select All"},   {"btnOK", "&OK"},
                                                      {"Command3", "DeSelect All"}, {"Command2", "&Cancel"}};
    for (const auto& [name, text] : captions) EXPECT_EQ(form.Get<Control>(name).Text(), text);
    Texts words;
    for (const auto& control : form.Controls())
        if (control->Kind() == ControlKind::Label || control->Kind() == ControlKind::Frame)
            words.push_back(control->Text());
    EXPECT_EQ(words, (Texts{"Available Columns", "Dbl-Click to Add", "Selected Columns",
                            "Dbl-Click to Toggle Asc/Desc", "Column Grouping", "Group By Columns",
                            "Clicking Select All or checking any box turns Grouping on",
                            "Clicking DeSelect All turns Grouping off"}));
}

TEST_F(SortDialog, BoxesStandForRowsOfTheRelation) {
    frmNewSort& form = Sort();
    for (std::size_t box = 0; box < frmNewSort::BoxCount; ++box) {
        const std::string name = "Check1(" + std::to_string(box) + ")";
        EXPECT_EQ(&form.Get<CheckControl>(name), form.Check1[box]);
        EXPECT_EQ(form.Check1[box]->tag, std::to_string(box + 1));
        EXPECT_EQ(form.Check1[box]->visible, box != 0) << name;
        if (box > 0) {
            EXPECT_EQ(form.Check1[box]->Text(), State().ColumnRelation[box + 1].caption);
        }
    }
    EXPECT_EQ(form.Check1[0]->Text(), "Part Name");
}

TEST_F(SortDialog, OpensUngroupedWithEveryColumnButTheIdentity) {
    frmNewSort& form = OpenSort();
    EXPECT_EQ(Items(form.List1), AllColumns);
    EXPECT_EQ(Items(form.List2), Texts{});
    EXPECT_FALSE(form.Grouped);
    EXPECT_EQ(Ticked(form), Texts{});
}

TEST_F(SortDialog, OpensGroupedWithTheGroupedColumnsAlone) {
    State().GroupFields = "bv_partName, bv_material,bv_LENGTH , bv_nothing, bv_qty";
    frmNewSort& form = OpenSort();
    EXPECT_TRUE(form.Grouped);
    EXPECT_EQ(Ticked(form), (Texts{"Part Name", "Material", "Length"}));
    EXPECT_EQ(Items(form.List1), (Texts{"Part Name", "Material", "Length"}));
    EXPECT_FALSE(form.Loading);
}

TEST_F(SortDialog, OpeningPutsSortColumnsIntoColumnOrder) {
    State().SortFields = {{"bv_width", "Desc"}, {"BV_LENGTH ", "Asc"}, {"bv_nothing", "Asc"}};
    frmNewSort& form = OpenSort();
    EXPECT_EQ(Items(form.List2), (Texts{"Length  [Asc]", "Width  [Desc]"}));
    Texts rest = AllColumns;
    std::erase(rest, "Length");
    std::erase(rest, "Width");
    EXPECT_EQ(Items(form.List1), rest);
}

TEST_F(SortDialog, ASortColumnThatIsNotGroupedIsDroppedFromAGroupedList) {
    State().GroupFields = "bv_material, bv_length";
    State().SortFields = {{"bv_layer", "Asc"}, {"bv_length", "Desc"}};
    frmNewSort& form = OpenSort();
    EXPECT_EQ(Items(form.List2), Texts{"Length  [Desc]"});
    EXPECT_EQ(Items(form.List1), Texts{"Material"});
}

TEST_F(SortDialog, EachOpeningBeginsAsDesigned) {
    frmNewSort& form = OpenSort();
    AddSortColumns(form, {"Qty"});
    Tick(form, "Face");
    Press(form, "Command2");
    EXPECT_FALSE(form.Loaded());
    EXPECT_EQ(Items(OpenSort().List1), AllColumns);
    EXPECT_EQ(Items(form.List2), Texts{});
    EXPECT_EQ(Ticked(form), Texts{});
}

TEST_F(SortDialog, CancelChangesNothing) {
    State().SortFields = {{"bv_width", "Desc"}};
    State().SortClause = "bv_width Desc";
    State().GroupFields = "bv_width";
    frmNewSort& form = OpenSort();
    Press(form, "btnRemoveAll");
    Press(form, "Command3");
    Press(form, "Command2");
    EXPECT_FALSE(form.Loaded());
    EXPECT_EQ(State().SortFields.size(), 1U);
    EXPECT_EQ(State().SortClause, "bv_width Desc");
    EXPECT_EQ(State().GroupFields, "bv_width");
    EXPECT_EQ(State().CurrentSQL, BaseStatement);
    EXPECT_EQ(database.opened, Texts{});
}

TEST_F(SortDialog, RowOfASelectedField) {
    State().SortFields = {{"bv_width", "Desc"}, {" BV_Length ", "Asc"}};
    EXPECT_EQ(Sort().InSelectedFields("Width"), 0);
    EXPECT_EQ(Sort().InSelectedFields("length"), 1);
    EXPECT_EQ(Sort().InSelectedFields("Face"), -1);
    EXPECT_EQ(Sort().InSelectedFields("no column"), -1);
}

TEST_F(SortDialog, AddsTheChosenColumn) {
    frmNewSort& form = OpenSort();
    Press(form, "btnAddOne");
    EXPECT_EQ(Items(form.List2), Texts{}) << "nothing is chosen";
    Choose(form.List1, "Width");
    Press(form, "btnAddOne");
    Choose(form.List1, "Length");
    form.List1.onDoubleClick();
    EXPECT_EQ(Items(form.List2), (Texts{"Width  [Asc]", "Length  [Asc]"}));
    EXPECT_EQ(form.List1.ListCount(), 20);
    EXPECT_EQ(form.List1.ListIndex(), -1);
}

TEST_F(SortDialog, AddsAndRemovesAllColumns) {
    frmNewSort& form = OpenSort();
    AddSortColumns(form, {"Width"});
    Press(form, "btnAddAll");
    EXPECT_EQ(Items(form.List1), Texts{});
    ASSERT_EQ(form.List2.ListCount(), 22);
    EXPECT_EQ(form.List2.Items()[0], "Width  [Asc]");
    EXPECT_EQ(form.List2.Items()[1], "Qty  [Asc]");
    EXPECT_EQ(form.List2.Items()[21], "Value3  [Asc]");
    Press(form, "btnRemoveAll");
    EXPECT_EQ(Items(form.List1), AllColumns);
    EXPECT_EQ(Items(form.List2), Texts{});
}

TEST_F(SortDialog, RemovesTheChosenColumnToTheEndOfTheList) {
    frmNewSort& form = OpenSort();
    AddSortColumns(form, {"Width", "-Qty"});
    Press(form, "btnRemoveOne");
    EXPECT_EQ(form.List2.ListCount(), 1) << "the descending one is still chosen";
    EXPECT_EQ(form.List1.Items().back(), "Qty");
    Press(form, "btnRemoveOne");
    EXPECT_EQ(form.List2.ListCount(), 1) << "nothing is chosen any more";
    Choose(form.List2, "Width  [Asc]");
    Press(form, "btnRemoveOne");
    EXPECT_EQ(form.List1.Items().back(), "Width");
    EXPECT_EQ(Items(form.List2), Texts{});
}

TEST_F(SortDialog, DoubleClickTurnsTheDirectionAndLeavesABlankEachRound) {
    frmNewSort& form = OpenSort();
    form.List2.onDoubleClick();
    AddSortColumns(form, {"Length"});
    form.List2.SetListIndex(0);
    for (const char* item : {"Length  [Desc]", "Length   [Asc]", "Length   [Desc]", "Length    [Asc]"}) {
        form.List2.onDoubleClick();
        EXPECT_EQ(Items(form.List2), Texts{item});
    }
    Press(form, "btnRemoveOne");
    EXPECT_EQ(form.List1.Items().back(), "Length") << "readers trim";
}

TEST_F(SortDialog, DoubleClickLeavesAnItemWithoutDirection) {
    frmNewSort& form = OpenSort();
    form.List2.AddItem("Length");
    form.List2.SetListIndex(0);
    form.List2.onDoubleClick();
    EXPECT_EQ(Items(form.List2), Texts{"Length"});
}

TEST_F(SortDialog, TheFirstBoxClearsAnUngroupedSort) {
    frmNewSort& form = OpenSort();
    AddSortColumns(form, {"Length", "Qty"});
    Tick(form, "Length");
    EXPECT_TRUE(form.Grouped);
    EXPECT_EQ(Items(form.List2), Texts{});
    EXPECT_EQ(Items(form.List1), Texts{"Length"});
}

TEST_F(SortDialog, OnlyGroupedColumnsAreOfferedInTheOrderOfTheBoxes) {
    frmNewSort& form = OpenSort();
    Tick(form, "Layer");
    Tick(form, "Material");
    AddSortColumns(form, {"-Layer"});
    Tick(form, "Part Name");
    EXPECT_EQ(Items(form.List1), (Texts{"Part Name", "Material"}));
    EXPECT_EQ(Items(form.List2), Texts{"Layer  [Desc]"});
}

TEST_F(SortDialog, UntickingASortColumnRemovesIt) {
    frmNewSort& form = OpenSort();
    Tick(form, "Material");
    Tick(form, "Length");
    Tick(form, "Width");
    AddSortColumns(form, {"-Length", "Width"});
    // A round more, so that a blank more stands ahead of the bracket.
    form.List2.SetListIndex(0);
    form.List2.onDoubleClick();
    Tick(form, "Length", 0);
    EXPECT_EQ(Items(form.List2), Texts{"Width  [Asc]"});
    EXPECT_EQ(Items(form.List1), Texts{"Material"});
}

TEST_F(SortDialog, UntickingTheLastBoxOffersAllRowsTheEmptyOnesToo) {
    frmNewSort& form = OpenSort();
    Tick(form, "Face");
    AddSortColumns(form, {"Face"});
    Tick(form, "Face", 0);
    EXPECT_FALSE(form.Grouped);
    EXPECT_EQ(Items(form.List2), Texts{});
    Texts offered = AllColumns;
    offered.resize(AllColumns.size() + 28);
    EXPECT_EQ(Items(form.List1), offered);
}

TEST_F(SortDialog, ATagNamesTheColumnThatABoxOffers) {
    frmNewSort& form = OpenSort();
    form.Check1[3]->tag = "20";
    form.Check1[3]->SetValue(1);
    EXPECT_EQ(Items(form.List1), Texts{"Value1"});
}

TEST_F(SortDialog, SelectAllGroupsByEveryBoxAndLeavesTheSelectedColumns) {
    frmNewSort& form = OpenSort();
    AddSortColumns(form, {"Qty", "Length"});
    Press(form, "Command1");
    EXPECT_EQ(Ticked(form), BoxColumns);
    EXPECT_TRUE(form.Grouped);
    EXPECT_EQ(Items(form.List1), BoxColumns) << "a column can stand in both lists";
    EXPECT_EQ(Items(form.List2), (Texts{"Qty  [Asc]", "Length  [Asc]"}));
}

TEST_F(SortDialog, DeselectAllTurnsGroupingOffAndLeavesTheSelectedColumns) {
    frmNewSort& form = OpenSort();
    Tick(form, "Material");
    Tick(form, "Length");
    AddSortColumns(form, {"Length"});
    Press(form, "Command3");
    EXPECT_EQ(Ticked(form), Texts{});
    EXPECT_FALSE(form.Grouped);
    EXPECT_EQ(Items(form.List1), AllColumns) << "a column can stand in both lists";
    EXPECT_EQ(Items(form.List2), Texts{"Length  [Asc]"});
}

TEST_F(SortDialog, TheUnseenBoxIsNeverVisited) {
    frmNewSort& form = OpenSort();
    form.Check1[0]->SetValue(1);
    EXPECT_FALSE(form.Grouped);
    EXPECT_EQ(form.List1.ListCount(), 50);
    Press(form, "Command3");
    EXPECT_EQ(Ticked(form), Texts{"unseen Part Name"});
}

TEST_F(SortDialog, NamesAreLookedUpByColumnAndTickedByCaption) {
    frmNewSort& form = OpenSort();
    form.check_names("");
    EXPECT_EQ(Ticked(form), Texts{});
    form.check_names("bv_lwt,bv_PN,,bv_x, bv_partname");
    EXPECT_EQ(Ticked(form), (Texts{"Part Name", "ORIE", "PN"}));
    EXPECT_FALSE(form.Grouped) << "boxes set by code click nothing";
}

}  // namespace
}  // namespace brenvik
