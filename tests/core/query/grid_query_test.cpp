// The grid's actions for sorting, filtering and grouping.
#include "grid/grid_query.h"

#include "core/query/query_fixture.h"
#include "session/library/grid_actions.h"

namespace brenvik {
namespace {

using GridQuery = QueryTest;

constexpr int Orie = 9;

TEST_F(GridQuery, SortOpensTheDialogAndLocksTheLettersOfAGroupedList) {
    database.values = {"a", "b"};
    dialogs.onModal = [](Form& form) {
        Tick(dynamic_cast<frmNewSort&>(form), "Material");
        Press(form, "btnOK");
    };
    Main().tbMain.PressKey("SORT");
    EXPECT_EQ(dialogs.shownForms, Texts{"frmNewSort"});
    EXPECT_EQ(State().GroupFields, "bv_material");
    EXPECT_TRUE(Main().fpSpread1.CellLocked(Orie, 1));
    EXPECT_TRUE(Main().fpSpread1.CellLocked(Orie, 2));
    EXPECT_FALSE(Main().fpSpread1.CellLocked(8, 1));

    dialogs.onModal = [](Form& form) {
        Press(form, "Command3");
        Press(form, "btnOK");
    };
    Main().tbMain.PressKey("SORT");
    EXPECT_EQ(State().GroupFields, "");
    EXPECT_FALSE(Main().fpSpread1.CellLocked(Orie, 1));
    EXPECT_FALSE(Main().fpSpread1.CellLocked(Orie, 2));
}

TEST_F(GridQuery, TheLettersGoByTheGroupFieldsEvenWhenTheDialogIsCancelled) {
    State().GroupFields = "bv_material";
    dialogs.onModal = [](Form& form) { Press(form, "Command2"); };
    Main().tbMain.PressKey("SORT");
    EXPECT_TRUE(Main().fpSpread1.CellLocked(Orie, 1));
}

TEST_F(GridQuery, FilterOpensItsDialog) {
    dialogs.onModal = [](Form& form) {
        FillRow(dynamic_cast<frmFilter&>(form), 0, "Material", "<> Not equal", "Oak");
        Press(form, "btnOK");
    };
    Main().tbMain.PressKey("FILTER");
    EXPECT_EQ(dialogs.shownForms, Texts{"frmFilter"});
    EXPECT_EQ(State().CurrentSQL, BaseStatement + " Where bv_material <> 'Oak' ");
    EXPECT_FALSE(Main().fpSpread1.CellLocked(Orie, 1));
}

TEST_F(GridQuery, TickingGroupingShowsTheSameRowsAndPreparesTheSortDialog) {
    State().CurrentSQL = BaseStatement + " order by bv_face Asc";
    Main().Get<CheckControl>("CheckGroup").Press();
    EXPECT_EQ(State().GroupFields, "bv_partName, bv_material, bv_length, bv_width, bv_thickness");
    EXPECT_EQ(State().CurrentSQL, BaseStatement + " order by bv_face Asc");
    EXPECT_EQ(Main().Adodc1.recordSource, State().CurrentSQL);
    EXPECT_EQ(database.opened, Texts{State().CurrentSQL});
    EXPECT_EQ(Ticked(OpenSort()), (Texts{"Part Name", "Material", "Length", "Width", "Thickness"}));
}

TEST_F(GridQuery, UntickingGroupingKeepsTheGroupFields) {
    auto& box = Main().Get<CheckControl>("CheckGroup");
    box.Press();
    State().GroupFields = "bv_face";
    State().CurrentSQL = "Select count(bv_partname) as bv_qty, bv_face from brenvik_data Group by bv_face";
    box.Press();
    EXPECT_EQ(State().GroupFields, "bv_face");
    EXPECT_EQ(Main().Adodc1.recordSource, State().CurrentSQL);
    EXPECT_EQ(database.opened.back(), State().CurrentSQL);
}

TEST_F(GridQuery, GroupingDoesNothingWhileTheFormIsStarting) {
    Main().Loading = true;
    Main().Get<CheckControl>("CheckGroup").Press();
    EXPECT_EQ(State().GroupFields, "");
    EXPECT_EQ(database.opened, Texts{});
}

TEST_F(GridQuery, ARefusedStatementOfTheGroupingSwitchIsShownAndChangesNothing) {
    const std::string source = Main().Adodc1.recordSource;
    State().CurrentSQL = "refused";
    database.refused = {"refused"};
    const int rows = Main().fpSpread1.MaxRows();
    Main().Get<CheckControl>("CheckGroup").Press();
    EXPECT_EQ(Messages(), Texts{StatementDatabase::RefusalBox});
    EXPECT_EQ(Main().fpSpread1.MaxRows(), rows);
    EXPECT_EQ(Main().Adodc1.recordSource, source);
    EXPECT_EQ(State().GroupFields, "");
}

TEST_F(GridQuery, AShownStatementSetsTheRows) {
    database.values = {"a", "b", "c", "d"};
    EXPECT_TRUE(ShowStatementInGrid("any"));
    EXPECT_EQ(Main().fpSpread1.MaxRows(), 4);
    database.refused = {"bad"};
    EXPECT_FALSE(ShowStatementInGrid("bad"));
    EXPECT_EQ(Main().Adodc1.recordSource, "any");
    EXPECT_EQ(Main().fpSpread1.MaxRows(), 4);
    EXPECT_EQ(Main().fpSpread1.CellText(3, 4), "d");
}

}  // namespace
}  // namespace brenvik
