// The statements of the sort dialog, and what its OK does to session and grid.
#include "core/query/query_fixture.h"
#include "session/library/loading.h"

namespace brenvik {
namespace {

using SortStatement = QueryTest;

constexpr const char* DefaultGroups = "bv_partName, bv_material, bv_length, bv_width, bv_thickness";

TEST_F(SortStatement, WithoutAnyChoiceIsTheBaseStatement) {
    OpenSort();
    Sort().PrepSQL();
    EXPECT_EQ(Sort().BuildSQL(), BaseStatement);
    EXPECT_EQ(State().SortClause, "");
    EXPECT_EQ(State().GroupFields, "");
}

TEST_F(SortStatement, FieldsComeFromTheSelectedListInItsOrder) {
    frmNewSort& form = OpenSort();
    AddSortColumns(form, {"-Width", "Length"});
    form.List2.SetListIndex(1);
    form.List2.onDoubleClick();
    form.List2.onDoubleClick();
    State().SortFields = {{"bv_face", "Asc"}};
    form.PrepSQL();
    ASSERT_EQ(State().SortFields.size(), 2U);
    EXPECT_EQ(State().SortFields[0].field, "bv_width");
    EXPECT_EQ(State().SortFields[0].direction, "Desc");
    EXPECT_EQ(State().SortFields[1].field, "bv_length");
    EXPECT_EQ(State().SortFields[1].direction, "Asc");
}

TEST_F(SortStatement, NoSelectedColumnErasesTheFields) {
    State().SortFields = {{"bv_nothing", "Asc"}};
    OpenSort().PrepSQL();
    EXPECT_TRUE(State().SortFields.empty());
}

TEST_F(SortStatement, AnItemWithoutADirectionEndsThePreparationSilently) {
    frmNewSort& form = OpenSort();
    AddSortColumns(form, {"Width"});
    form.List2.AddItem("short");
    form.List2.AddItem("Length  [Asc]");
    form.PrepSQL();
    ASSERT_EQ(State().SortFields.size(), 1U);
    EXPECT_EQ(State().SortFields[0].field, "bv_width");
    EXPECT_EQ(Messages(), Texts{});
}

TEST_F(SortStatement, SortsAnUngroupedList) {
    frmNewSort& form = OpenSort();
    AddSortColumns(form, {"Length", "-Material"});
    form.PrepSQL();
    EXPECT_EQ(form.BuildSQL(), BaseStatement + " order by bv_length Asc, bv_material Desc");
    EXPECT_EQ(State().SortClause, "bv_length Asc, bv_material Desc");
}

TEST_F(SortStatement, FiltersAndSortsAnUngroupedList) {
    State().WhereClause = " Where bv_material = 'Oak' ";
    frmNewSort& form = OpenSort();
    AddSortColumns(form, {"Length"});
    form.PrepSQL();
    EXPECT_EQ(form.BuildSQL(), BaseStatement + " Where bv_material = 'Oak'  order by bv_length Asc");
}

TEST_F(SortStatement, GroupsAndSorts) {
    frmNewSort& form = OpenSort();
    Tick(form, "Length");
    Tick(form, "Part Name");
    AddSortColumns(form, {"Length"});
    form.PrepSQL();
    EXPECT_EQ(form.BuildSQL(),
              "Select count(bv_partname) as bv_qty, bv_partname, bv_length from brenvik_data Group by "
              "bv_partname, bv_length order by bv_length Asc");
    EXPECT_EQ(State().GroupFields, "bv_partname, bv_length");
}

TEST_F(SortStatement, GroupsAFilteredListWithTheBlanksOfTheClause) {
    State().WhereClause = " Where bv_length > 12 ";
    frmNewSort& form = OpenSort();
    Tick(form, "Material");
    form.PrepSQL();
    EXPECT_EQ(
        form.BuildSQL(),
        "Select count(bv_partname) as bv_qty, bv_material from brenvik_data  Where bv_length > 12  Group "
        "by bv_material");
}

TEST_F(SortStatement, GroupsByEveryBoxInTheOrderOfTheBoxes) {
    frmNewSort& form = OpenSort();
    Press(form, "Command1");
    form.PrepSQL();
    form.BuildSQL();
    EXPECT_EQ(
        State().GroupFields,
        "bv_partname, bv_subassembly, bv_material, bv_length, bv_width, bv_thickness, bv_lwt, bv_notes, "
        "bv_userdata1, bv_userdata2, bv_pn, bv_price, bv_eb1, bv_eb2, bv_eb3, bv_eb4, bv_face, bv_layer");
}

TEST_F(SortStatement, AGroupedStatementNeverNamesTheIdentity) {
    frmNewSort& form = OpenSort();
    Press(form, "Command1");
    form.PrepSQL();
    EXPECT_EQ(form.BuildSQL().find("bv_id"), std::string::npos);
}

TEST_F(SortStatement, AFailureGivesNothingSilently) {
    State().GroupFields = "bv_face";
    State().SortClause = "bv_face Asc";
    frmNewSort& form = OpenSort();
    form.Check1[17]->tag = "no row";
    form.PrepSQL();
    EXPECT_EQ(form.BuildSQL(), "");
    EXPECT_EQ(State().GroupFields, "") << "cleared ahead of the failure";
    EXPECT_EQ(State().SortClause, "");
    form.Check1[17]->tag = "51";
    EXPECT_EQ(form.BuildSQL(), "");
    EXPECT_EQ(Messages(), Texts{});
}

TEST_F(SortStatement, SelectedColumnsWithoutFieldsAreAFailure) {
    frmNewSort& form = OpenSort();
    AddSortColumns(form, {"Length"});
    State().SortFields.clear();
    EXPECT_EQ(form.BuildSQL(), "");
}

TEST_F(SortStatement, OkShowsTheStatementInTheGrid) {
    frmNewSort& form = OpenSort();
    AddSortColumns(form, {"-Length"});
    const std::string statement = BaseStatement + " order by bv_length Desc";
    database.valuesOf[statement] = {"a", "b", "c", "d", "e"};
    Press(form, "btnOK");
    EXPECT_FALSE(form.Loaded());
    EXPECT_FALSE(form.StatementRefused());
    EXPECT_EQ(State().CurrentSQL, statement);
    EXPECT_EQ(Main().Adodc1.recordSource, statement);
    EXPECT_EQ(database.opened, Texts{statement});
    EXPECT_EQ(Main().fpSpread1.MaxRows(), 5);
    EXPECT_TRUE(Main().fpSpread1.reDraw);
}

TEST_F(SortStatement, OkTakesTheRowsOfAGridThatIsNotBound) {
    Main().fpSpread1.SetDataSource(nullptr);
    database.values = {"a", "b"};
    Press(OpenSort(), "btnOK");
    EXPECT_EQ(Main().fpSpread1.MaxRows(), 2);
}

TEST_F(SortStatement, ARefusedStatementIsShownAndLeavesTheGrid) {
    Main().fpSpread1.Column(3).hidden = true;
    const int rows = Main().fpSpread1.MaxRows();
    const std::string source = Main().Adodc1.recordSource;
    database.refused = {"order by bv_length"};
    database.values = {"other"};
    frmNewSort& form = OpenSort();
    AddSortColumns(form, {"Length"});
    Press(form, "btnOK");
    EXPECT_EQ(Messages(), Texts{StatementDatabase::RefusalBox});
    EXPECT_EQ(dialogs.messages[0].title, "");
    EXPECT_EQ(dialogs.messages[0].icon, MessageIcon::None);
    EXPECT_TRUE(form.StatementRefused());
    EXPECT_FALSE(form.Loaded());
    EXPECT_EQ(Main().fpSpread1.MaxRows(), rows);
    EXPECT_TRUE(Main().fpSpread1.Column(3).hidden);
    EXPECT_EQ(Main().Adodc1.recordSource, source);
}

TEST_F(SortStatement, AfterARefusalAllWorksFromTheListOnScreen) {
    frmNewSort& form = OpenSort();
    Tick(form, "Face");
    AddSortColumns(form, {"-Face"});
    Press(form, "btnOK");
    const std::string shown = State().CurrentSQL;
    Press(OpenSort(), "Command3");
    Press(form, "btnRemoveAll");
    AddSortColumns(form, {"Length"});
    database.refused = {"order by bv_length"};
    Press(form, "btnOK");
    EXPECT_EQ(Main().Adodc1.recordSource, shown);
    EXPECT_EQ(State().CurrentSQL, shown);
    EXPECT_EQ(State().GroupFields, "bv_face");
    EXPECT_EQ(State().SortClause, "bv_face Desc");
    ASSERT_EQ(State().SortFields.size(), 1U);
    EXPECT_EQ(State().SortFields[0].field, "bv_face");
}

TEST_F(SortStatement, ABlankItemMakesAStatementThatTheEngineHasToRefuse) {
    frmNewSort& form = OpenSort();
    Tick(form, "Face");
    Tick(form, "Face", 0);
    form.List1.SetListIndex(49);
    Press(form, "btnAddOne");
    Press(form, "btnOK");
    EXPECT_EQ(State().CurrentSQL, BaseStatement + " order by  Asc");
}

TEST_F(SortStatement, OkWithoutAStatementLeavesTheSourceButShowsTheColumns) {
    State().GroupFields = "bv_face";
    frmNewSort& form = OpenSort();
    form.Check1[17]->tag = "no row";
    const std::string source = Main().Adodc1.recordSource;
    Press(form, "btnOK");
    EXPECT_EQ(State().CurrentSQL, BaseStatement);
    EXPECT_EQ(Main().Adodc1.recordSource, source);
    EXPECT_EQ(database.opened, Texts{});
    EXPECT_EQ(VisibleHeaders(), Texts{"Qty"}) << "an empty statement names no column";
    EXPECT_FALSE(form.Loaded());
    EXPECT_EQ(Messages(), Texts{});
}

TEST_F(SortStatement, AnUngroupedListShowsEveryColumnButIdentityAndOldExtents) {
    for (int column = 1; column <= 26; ++column) Main().fpSpread1.Column(column).hidden = column % 2 == 0;
    Press(OpenSort(), "btnOK");
    EXPECT_EQ(VisibleHeaders(),
              (Texts{"Qty",        "Part Name",  "Sub Assembly", "Material", "Length",  "Width",
                     "Thickness",  "ORIE",       "Value 1",      "Value 2",  "Value 3", "Notes",
                     "User Data1", "User Data2", "PN",           "Price",    "EB1",     "EB2",
                     "EB3",        "EB4",        "Face",         "Layer"}));
}

TEST_F(SortStatement, AColumnWithoutAHeaderIsHiddenInAnUngroupedList) {
    Main().fpSpread1.Column(5).header = "";
    Main().fpSpread1.Column(6).header = "OLDvalue";
    Press(OpenSort(), "btnOK");
    EXPECT_TRUE(Main().fpSpread1.Column(5).hidden);
    EXPECT_TRUE(Main().fpSpread1.Column(6).hidden) << "any part of the text will do";
}

TEST_F(SortStatement, AGroupedListShowsTheColumnsThatItsStatementNames) {
    frmNewSort& form = OpenSort();
    for (const char* column : {"Material", "Length", "Width", "ORIE", "EB3"}) Tick(form, column);
    Press(form, "btnOK");
    EXPECT_EQ(VisibleHeaders(), (Texts{"Qty", "Material", "Length", "Width", "ORIE", "EB3"}));
}

TEST_F(SortStatement, TheCountAtTheHeadDoesNotShowThePartName) {
    frmNewSort& form = OpenSort();
    Tick(form, "Part Name");
    Press(form, "btnOK");
    EXPECT_EQ(VisibleHeaders(), (Texts{"Qty", "Part Name"}));
}

TEST_F(SortStatement, AGroupedListShowsEveryColumnThatHasABox) {
    frmNewSort& form = OpenSort();
    Press(form, "Command1");
    Press(form, "btnOK");
    EXPECT_EQ(VisibleHeaders(), (Texts{"Qty", "Part Name", "Sub Assembly", "Material", "Length", "Width",
                                       "Thickness", "ORIE", "Notes", "User Data1", "User Data2", "PN",
                                       "Price", "EB1", "EB2", "EB3", "EB4", "Face", "Layer"}));
}

TEST_F(SortStatement, AColumnThatOnlyTheFilterNamesIsShownToo) {
    State().WhereClause = " Where bv_notes = 'x' ";
    frmNewSort& form = OpenSort();
    Tick(form, "Face");
    Press(form, "btnOK");
    EXPECT_EQ(VisibleHeaders(), (Texts{"Qty", "Notes", "Face"}));
}

TEST_F(SortStatement, AGroupedListNeverShowsTheRawExtents) {
    State().WhereClause = " Where bv_x < 1 and bv_y < 2 and bv_z < 3 ";
    frmNewSort& form = OpenSort();
    Tick(form, "Face");
    Press(form, "btnOK");
    EXPECT_EQ(VisibleHeaders(), (Texts{"Qty", "Face"}));
}

TEST_F(SortStatement, GroupingLeavesUnknownHeadersAndTheLastColumn) {
    Main().fpSpread1.Column(1).hidden = false;
    Main().fpSpread1.Column(26).hidden = false;
    Main().fpSpread1.Column(26).header = "Notes";
    frmNewSort& form = OpenSort();
    Tick(form, "Face");
    Press(form, "btnOK");
    EXPECT_EQ(VisibleHeaders(), (Texts{"bv_ID", "Qty", "Face", "Notes"}));
}

TEST_F(SortStatement, PressedByCodeItOpensUnseenFirst) {
    State().GroupFields = DefaultGroups;
    State().SortFields = {{"bv_width", "Desc"}, {"bv_length", "Asc"}, {"bv_face", "Asc"}};
    State().WhereClause = " Where bv_qty = '1' ";
    Sort().PressByCode("btnOK");
    EXPECT_EQ(
        State().CurrentSQL,
        "Select count(bv_partname) as bv_qty, bv_partname, bv_material, bv_length, bv_width, bv_thickness "
        "from brenvik_data  Where bv_qty = '1'  Group by bv_partname, bv_material, bv_length, bv_width, "
        "bv_thickness order by bv_length Asc, bv_width Desc");
    EXPECT_EQ(State().GroupFields, "bv_partname, bv_material, bv_length, bv_width, bv_thickness");
    EXPECT_EQ(dialogs.shownForms, Texts{});
    EXPECT_FALSE(Sort().Loaded());
}

TEST_F(SortStatement, GroupingIsTurnedOffByCode) {
    State().GroupFields = DefaultGroups;
    State().SortFields = {{"bv_length", "Desc"}};
    Sort().PressByCode("Command3");
    Sort().PressByCode("btnOK");
    EXPECT_EQ(State().GroupFields, "");
    EXPECT_EQ(State().CurrentSQL, BaseStatement + " order by bv_length Desc");
    EXPECT_EQ(database.opened, Texts{State().CurrentSQL});
}

TEST_F(SortStatement, TheStateOutlivesTheDialogAndGoesWithTheLibrary) {
    frmNewSort& form = OpenSort();
    AddSortColumns(form, {"Width", "Length"});
    Press(form, "btnOK");
    EXPECT_EQ(State().SortClause, "bv_width Asc, bv_length Asc");
    EXPECT_EQ(Items(OpenSort().List2), (Texts{"Length  [Asc]", "Width  [Asc]"}));
    LoadSystem({&dialogs, &settings, &database, &files, &measuring, nullptr, nullptr});
    EXPECT_FALSE(Sort().Loaded());
    EXPECT_EQ(State().CurrentSQL, BaseStatement);
    EXPECT_TRUE(State().SortFields.empty());
}

}  // namespace
}  // namespace brenvik
