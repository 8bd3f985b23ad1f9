// The filter dialog: what it offers, what it stores, its clause, and what its OK does.
#include "query/frm_filter.h"

#include "core/query/query_fixture.h"
#include "support/failure_of.h"

namespace brenvik {
namespace {

using FilterDialog = QueryTest;

const Texts OfferedColumns{"",          "Qty",  "Part Name", "Sub Assembly", "Material",   "Length", "Width",
                           "Thickness", "ORIE", "Notes",     "User Data1",   "User Data2", "PN",     "Price",
                           "EB1",       "EB2",  "EB3",       "EB4",          "Face",       "Layer"};

TEST_F(FilterDialog, HasTheWordsOfItsDesign) {
    frmFilter& form = Filter();
    EXPECT_EQ(form.Name(), "frmFilter");
    EXPECT_EQ(form.caption, "Filter");
    EXPECT_EQ(form.Get<Control>("chkSort").Text(), "Retain Sort Condition");
    EXPECT_EQ(form.Get<Control>("btnOK").Text(), "&OK");
    EXPECT_EQ(form.Get<Control>("btnCancel").Text(), "&Cancel");
    EXPECT_EQ(form.Get<Control>("btnClear").Text(), "C&lear");
    for (std::size_t row = 0; row < frmFilter::RowCount; ++row) {
        const std::string place = "(" + std::to_string(row) + ")";
        EXPECT_EQ(&form.Get<ListControl>("cboCol" + place), form.cboCol[row]);
        EXPECT_EQ(&form.Get<ListControl>("cboCrit" + place), form.cboCrit[row]);
        EXPECT_EQ(&form.Get<ListControl>("cboCritData" + place), form.cboCritData[row]);
    }
}

TEST_F(FilterDialog, OpensWithTheVisibleColumnsAndEqual) {
    frmFilter& form = OpenFilter();
    for (std::size_t row = 0; row < frmFilter::RowCount; ++row) {
        EXPECT_EQ(Items(*form.cboCol[row]), OfferedColumns);
        EXPECT_EQ(form.cboCol[row]->ListIndex(), row == 0 ? -1 : 0);
        EXPECT_EQ(form.cboCol[row]->Text(), "");
        EXPECT_EQ(Items(*form.cboCrit[row]),
                  (Texts{"= Equal", "> Greater Than", "< Less Than", "<> Not equal", "* Like!"}));
        EXPECT_EQ(form.cboCrit[row]->Text(), "= Equal");
        EXPECT_EQ(form.cboCritData[row]->Text(), "");
    }
    EXPECT_EQ(database.opened, Texts{}) << "an empty column asks for no values";
}

TEST_F(FilterDialog, OffersNeitherHiddenNorBlankNorValueColumns) {
    GridControl& grid = Main().fpSpread1;
    for (int column = 1; column <= 26; ++column) grid.Column(column).hidden = true;
    for (const int shown : {1, 5, 6, 7, 10, 24, 25, 26}) grid.Column(shown).hidden = false;
    grid.Column(6).header = "";
    grid.Column(7).header = "My value";
    grid.Column(25).header = "Extra";
    grid.Column(26).header = "Last";
    EXPECT_EQ(Items(*OpenFilter().cboCol[2]), (Texts{"", "bv_ID", "Material", "Extra"}));
}

TEST_F(FilterDialog, AChosenColumnOffersItsValues) {
    frmFilter& form = OpenFilter();
    database.valuesOf["select distinct bv_length from brenvik_data"] = {FieldValue(), 600.0, 0.75,
                                                                        FieldValue(""), FieldValue("x")};
    form.cboCritData[1]->SetText("old");
    form.cboCritData[1]->AddItem("old");
    Choose(*form.cboCol[1], "Length");
    EXPECT_EQ(database.opened, Texts{"select distinct bv_length from brenvik_data"});
    EXPECT_EQ(Items(*form.cboCritData[1]), (Texts{"600", "0.75", "x"}));
    EXPECT_EQ(form.cboCritData[1]->Text(), "");
    EXPECT_EQ(Items(*form.cboCritData[0]), Texts{});
    EXPECT_EQ(database.connectionStrings,
              Texts{"Provider=Microsoft.Jet.OLEDB.4.0;User ID=admin;Data "
                    "Source=C:\\Brenvik\\_db\\bv04.mdb;Mode=Share Deny None;Persist Security Info=False"});
    EXPECT_EQ(database.openConnections, 2) << "the grid's and the scan's; its own is closed";
}

TEST_F(FilterDialog, NoFieldOpensTheTableAndReadsNothing) {
    frmFilter& form = OpenFilter();
    form.cboCritData[0]->AddItem("kept");
    form.RetrieveColData("", 0);
    EXPECT_EQ(database.connectionStrings.size(), 1U);
    EXPECT_EQ(database.opened, Texts{});
    EXPECT_EQ(Items(*form.cboCritData[0]), Texts{"kept"});
}

TEST_F(FilterDialog, ValuesThatCannotBeReadAreToldAndKeepTheList) {
    frmFilter& form = OpenFilter();
    form.cboCritData[0]->AddItem("kept");
    database.refused = {"select distinct bv_face"};
    Choose(*form.cboCol[0], "Face");
    EXPECT_EQ(Messages(), Texts{StatementDatabase::RefusalBox});
    EXPECT_EQ(Items(*form.cboCritData[0]), Texts{"kept"});
    EXPECT_EQ(FailureOf([&] { form.RetrieveColData("bv_face", 0); }).number(), -2147217900);
    EXPECT_EQ(database.openConnections, 2);
}

TEST_F(FilterDialog, PutsStoredRowsBackButEveryOperatorToEqual) {
    State().FilterCriteria = {{"Material", "<> Not equal", "Oak"}, {"Length", "> Greater Than", "12"}};
    frmFilter& form = OpenFilter();
    EXPECT_EQ(form.cboCol[0]->Text(), "Material");
    EXPECT_EQ(form.cboCritData[0]->Text(), "Oak");
    EXPECT_EQ(form.cboCol[1]->Text(), "Length");
    EXPECT_EQ(form.cboCritData[1]->Text(), "12");
    EXPECT_EQ(Items(*form.cboCritData[1]), (Texts{"Side", "Back", "Top"})) << "the values are offered too";
    EXPECT_EQ(form.cboCol[2]->Text(), "");
    for (const ListControl* list : form.cboCrit) EXPECT_EQ(list->Text(), "= Equal");
}

TEST_F(FilterDialog, TheListsAloneKeepTheStoredOperators) {
    frmFilter& form = OpenFilter();
    State().FilterCriteria = {{"Material", "<> Not equal", "Oak"}};
    form.LoadColumnLists();
    EXPECT_EQ(form.cboCrit[0]->Text(), "<> Not equal");
}

TEST_F(FilterDialog, AStoredColumnThatIsHiddenNowEndsThePuttingBack) {
    State().FilterCriteria = {
        {"Material", "= Equal", "Oak"}, {"Notes", "= Equal", "x"}, {"Face", "= Equal", "A"}};
    Main().fpSpread1.Column(13).hidden = true;
    frmFilter& form = OpenFilter();
    EXPECT_EQ(form.cboCol[0]->Text(), "Material");
    EXPECT_EQ(form.cboCol[1]->Text(), "");
    EXPECT_EQ(form.cboCol[2]->Text(), "");
    EXPECT_EQ(Messages(), Texts{});
}

TEST_F(FilterDialog, AFailureWhilePuttingBackIsSilent) {
    State().FilterCriteria = {{"Material", "= Equal", "Oak"}};
    database.failOnOpen = true;
    frmFilter& form = OpenFilter();
    EXPECT_TRUE(form.Loaded());
    EXPECT_EQ(form.cboCritData[0]->Text(), "");
    EXPECT_EQ(Messages(), Texts{});
}

struct OperatorCase {
    const char *shown, *word;
};

TEST(FilterRules, OperatorWords) {
    for (const OperatorCase& each : {OperatorCase{"= Equal", "="},
                                     {"> Greater Than", ">"},
                                     {"< Less Than", "<"},
                                     {"<> Not equal", "<>"},
                                     {"* Like!", "Like"},
                                     {"*", "Like"},
                                     {"", ""},
                                     {" =", ""},
                                     {"*x y", "*x"}})
        EXPECT_EQ(OperatorWord(each.shown), each.word) << each.shown;
}

TEST(FilterRules, OnlySizesStandWithoutQuotes) {
    for (const PartColumn& column : PartColumns()) {
        const std::string name(column.column);
        const bool bare = name == "bv_length" || name == "bv_width" || name == "bv_thickness" ||
                          name == "bv_x" || name == "bv_y" || name == "bv_z";
        EXPECT_EQ(ValueDelimiter(name), bare ? "" : "'") << name;
    }
    EXPECT_EQ(ValueDelimiter(""), "'");
}

TEST(FilterRules, CaptionsOfNumbersInAnyCase) {
    for (const char* caption : {"Qty", "LENGTH", "width", "Thickness"})
        EXPECT_TRUE(FilteredByNumber(caption));
    for (const char* caption : {"Value1", "Material", "", "Price"}) EXPECT_FALSE(FilteredByNumber(caption));
}

struct ClauseCase {
    std::vector<FilterCriterion> rows;
    const char* clause;
};

TEST_F(FilterDialog, MakesTheClause) {
    const ClauseCase cases[] = {
        {{}, ""},
        {{{"Material", "= Equal", "Oak"}}, " Where bv_material = 'Oak' "},
        {{{"part name", "* Like!", "Side%"}}, " Where bv_partname Like 'Side%' "},
        {{{"Length", "> Greater Than", "12"}}, " Where bv_length > 12 "},
        {{{"Qty", "<> Not equal", "1"}}, " Where bv_qty <> '1' "},
        {{{"Value2", "< Less Than", "3"}}, " Where bv_y < 3 "},
        {{{"Notes", "= Equal", ""}}, " Where bv_notes = '' "},
        {{{"Notes", "= Equal", "O'Brien"}}, " Where bv_notes = 'O'Brien' "},
        {{{"Notes", "= Equal", "this and"}}, " Where bv_notes = 'this and' "},
        // Only the last row takes effect, and an empty last row leaves no clause at all.
        {{{"Material", "= Equal", "Oak"}, {"Length", "> Greater Than", "12"}}, " Where bv_length > 12 "},
        {{{"Material", "= Equal", "Oak"}, {"", "= Equal", "12"}}, ""},
        {{{"Material", "= Equal", "Oak"}, {"Length", "", "12"}}, ""},
    };
    for (const ClauseCase& each : cases) {
        State().FilterCriteria = each.rows;
        EXPECT_EQ(BuildWhereClause(), each.clause);
    }
}

TEST_F(FilterDialog, OkFiltersAndThenPressesTheSortDialogsOk) {
    frmFilter& form = OpenFilter();
    FillRow(form, 0, "Material", "= Equal", "Oak");
    const std::string statement = BaseStatement + " Where bv_material = 'Oak' ";
    database.valuesOf[statement] = {"a"};
    database.opened.clear();
    Press(form, "btnOK");
    EXPECT_FALSE(form.Loaded());
    EXPECT_FALSE(Sort().Loaded());
    EXPECT_EQ(State().WhereClause, " Where bv_material = 'Oak' ");
    EXPECT_EQ(State().CurrentSQL, statement);
    EXPECT_EQ(Main().Adodc1.recordSource, statement);
    EXPECT_EQ(database.opened, (Texts{statement, statement})) << "once by each dialog";
    EXPECT_EQ(Main().fpSpread1.MaxRows(), 1);
    EXPECT_EQ(Messages(), Texts{});
}

TEST_F(FilterDialog, NoRowShowsTheFullList) {
    State().WhereClause = " Where bv_face = 'x' ";
    State().FilterCriteria = {{"Face", "= Equal", "x"}};
    frmFilter& form = OpenFilter();
    Choose(*form.cboCol[0], "");
    database.opened.clear();
    Press(form, "btnOK");
    EXPECT_EQ(State().WhereClause, "");
    EXPECT_TRUE(State().FilterCriteria.empty());
    EXPECT_EQ(State().CurrentSQL, BaseStatement);
}

struct RetainCase {
    int ticked;
    const char* first;
};

TEST_F(FilterDialog, TheSortIsKeptWhetherItIsRetainedOrNot) {
    for (const RetainCase& each :
         {RetainCase{0, ""}, RetainCase{1, " order by bv_width Asc, bv_length Desc"}}) {
        State().SortFields = {{"bv_width", "Asc"}, {"bv_length", "Desc"}};
        State().SortClause = "bv_width Asc, bv_length Desc";
        frmFilter& form = OpenFilter();
        form.chkSort->SetValue(each.ticked);
        database.opened.clear();
        Press(form, "btnOK");
        // The sort dialog puts the columns into their own order.
        EXPECT_EQ(database.opened, (Texts{BaseStatement + each.first,
                                          BaseStatement + " order by bv_length Desc, bv_width Asc"}));
    }
}

TEST_F(FilterDialog, WithoutASortThereIsNothingToRetain) {
    frmFilter& form = OpenFilter();
    form.chkSort->SetValue(1);
    Press(form, "btnOK");
    EXPECT_EQ(database.opened, (Texts{BaseStatement, BaseStatement}));
}

TEST_F(FilterDialog, AGroupedListStaysGrouped) {
    State().GroupFields = "bv_material, bv_length";
    frmFilter& form = OpenFilter();
    FillRow(form, 3, "Length", "> Greater Than", "12");
    Press(form, "btnOK");
    EXPECT_EQ(
        State().CurrentSQL,
        "Select count(bv_partname) as bv_qty, bv_material, bv_length from brenvik_data  Where bv_length > "
        "12  Group by bv_material, bv_length");
}

TEST_F(FilterDialog, RowsAreStoredWithoutGapsAndTheLastOneFilters) {
    frmFilter& form = OpenFilter();
    FillRow(form, 1, "Material", "= Equal", "Oak");
    FillRow(form, 3, "Length", "> Greater Than", "12");
    Press(form, "btnOK");
    ASSERT_EQ(State().FilterCriteria.size(), 2U);
    EXPECT_EQ(State().FilterCriteria[0].column, "Material");
    EXPECT_EQ(State().FilterCriteria[1].criterion, "> Greater Than");
    EXPECT_EQ(State().WhereClause, " Where bv_length > 12 ");
    OpenFilter();
    EXPECT_EQ(form.cboCol[0]->Text(), "Material");
    EXPECT_EQ(form.cboCol[1]->Text(), "Length");
    EXPECT_EQ(form.cboCrit[1]->Text(), "= Equal");
    EXPECT_EQ(form.cboCritData[1]->Text(), "12");
}

TEST_F(FilterDialog, ARowWithoutAnOperatorDoesNotCount) {
    frmFilter& form = OpenFilter();
    FillRow(form, 0, "Material", "= Equal", "Oak");
    form.cboCrit[0]->SetListIndex(-1);
    Press(form, "btnOK");
    EXPECT_TRUE(State().FilterCriteria.empty());
    EXPECT_EQ(State().WhereClause, "");
}

struct LikeCase {
    const char *typed, *stored;
};

TEST_F(FilterDialog, LikeTestsTheBeginningUnlessAPercentStandsInTheValue) {
    for (const LikeCase& each : {LikeCase{"Side", "Side%"}, {"%Side", "%Side"}, {"S%e", "S%e"}, {"", "%"}}) {
        frmFilter& form = OpenFilter();
        FillRow(form, 0, "Part Name", "* Like!", each.typed);
        Press(form, "btnOK");
        EXPECT_EQ(form.cboCritData[0]->Text(), each.stored);
        EXPECT_EQ(State().FilterCriteria.at(0).value, each.stored);
        EXPECT_EQ(State().WhereClause, " Where bv_partname Like '" + std::string(each.stored) + "' ");
    }
}

struct NumericCase {
    const char *column, *shownOperator, *value;
    bool refused;
};

TEST_F(FilterDialog, ColumnsOfNumbersTakeNoText) {
    const NumericCase cases[] = {
        {"Length", "= Equal", "", true},       {"Width", "> Greater Than", "wide", true},
        {"Thickness", "= Equal", "  ", true},  {"Qty", "= Equal", "one", true},
        {"Length", "* Like!", "12", true},     {"Length", "= Equal", "12", false},
        {"Qty", "= Equal", "2", false},        {"Width", "= Equal", " 1.5 ", false},
        {"Material", "= Equal", "Oak", false}, {"Price", "= Equal", "cheap", false},
        {"Notes", "= Equal", "", false},
    };
    for (const NumericCase& each : cases) {
        SCOPED_TRACE(std::string(each.column) + " " + each.shownOperator + " " + each.value);
        dialogs.messages.clear();
        frmFilter& form = OpenFilter();
        Press(form, "btnClear");
        FillRow(form, 0, each.column, each.shownOperator, each.value);
        Press(form, "btnOK");
        EXPECT_EQ(form.Loaded(), each.refused);
        EXPECT_EQ(dialogs.messages.size(), each.refused ? 1U : 0U);
        form.Unload();
    }
}

TEST_F(FilterDialog, ATextInAColumnOfNumbersStopsTheFilter) {
    frmFilter& form = OpenFilter();
    State().WhereClause = " Where bv_face = 'x' ";
    FillRow(form, 0, "Material", "= Equal", "Oak");
    FillRow(form, 1, "Length", "= Equal", "long");
    FillRow(form, 2, "Face", "= Equal", "A");
    database.opened.clear();
    const std::string source = Main().Adodc1.recordSource;
    Press(form, "btnOK");
    ASSERT_EQ(dialogs.messages.size(), 1U);
    EXPECT_EQ(dialogs.messages[0].title, "Invalid Search Condition");
    EXPECT_EQ(dialogs.messages[0].text, "Filtering for text on a numeric column is not permitted");
    EXPECT_EQ(dialogs.messages[0].icon, MessageIcon::Information);
    EXPECT_TRUE(form.Loaded());
    EXPECT_EQ(State().WhereClause, "");
    ASSERT_EQ(State().FilterCriteria.size(), 2U) << "the rows so far, with the one that stopped it";
    EXPECT_EQ(State().FilterCriteria[1].value, "long");
    EXPECT_EQ(State().CurrentSQL, BaseStatement);
    EXPECT_EQ(Main().Adodc1.recordSource, source);
    EXPECT_EQ(database.opened, Texts{});
}

TEST_F(FilterDialog, AQuoteInTheValueIsTheEnginesFailureAndTheFilterInForceStays) {
    FillRow(OpenFilter(), 0, "Material", "= Equal", "Oak");
    Press(Filter(), "btnOK");
    const std::string shown = BaseStatement + " Where bv_material = 'Oak' ";
    ASSERT_EQ(Main().Adodc1.recordSource, shown);
    database.opened.clear();

    frmFilter& form = OpenFilter();
    FillRow(form, 0, "Notes", "= Equal", "O'Brien");
    database.refused = {"O'Brien"};
    const int rows = Main().fpSpread1.MaxRows();
    Press(form, "btnOK");
    EXPECT_EQ(Messages(), Texts{StatementDatabase::RefusalBox});
    EXPECT_FALSE(form.Loaded());
    EXPECT_TRUE(form.StatementRefused());
    EXPECT_EQ(Main().fpSpread1.MaxRows(), rows);
    EXPECT_EQ(Main().Adodc1.recordSource, shown);
    // What a copy, the next sort and an export work from.
    EXPECT_EQ(State().CurrentSQL, shown);
    EXPECT_EQ(State().WhereClause, " Where bv_material = 'Oak' ");
    ASSERT_EQ(State().FilterCriteria.size(), 1U);
    EXPECT_EQ(State().FilterCriteria[0].value, "Oak");
    Main().Adodc1.Refresh();
}

TEST_F(FilterDialog, AFilterThatCannotBeSortedStaysUnsorted) {
    frmFilter& form = OpenFilter();
    FillRow(form, 0, "Material", "= Equal", "Oak");
    State().SortFields = {{"bv_face", "Asc"}};
    database.refused = {"order by bv_face"};
    Press(form, "btnOK");
    EXPECT_EQ(Messages(), Texts{StatementDatabase::RefusalBox});
    EXPECT_TRUE(form.StatementRefused());
    const std::string shown = BaseStatement + " Where bv_material = 'Oak' ";
    EXPECT_EQ(Main().Adodc1.recordSource, shown);
    EXPECT_EQ(State().CurrentSQL, shown);
    EXPECT_EQ(State().WhereClause, " Where bv_material = 'Oak' ");
    Press(OpenFilter(), "btnCancel");
    EXPECT_FALSE(form.StatementRefused());
}

TEST_F(FilterDialog, ClearForgetsTheRowsButNotTheClause) {
    State().WhereClause = " Where bv_face = 'x' ";
    State().FilterCriteria = {{"Face", "= Equal", "x"}};
    frmFilter& form = OpenFilter();
    Choose(*form.cboCrit[0], "* Like!");
    database.opened.clear();
    Press(form, "btnClear");
    EXPECT_TRUE(State().FilterCriteria.empty());
    EXPECT_EQ(form.cboCol[0]->Text(), "");
    EXPECT_EQ(form.cboCrit[0]->Text(), "= Equal");
    EXPECT_EQ(State().WhereClause, " Where bv_face = 'x' ");
    EXPECT_EQ(database.opened, Texts{});
    EXPECT_TRUE(form.Loaded());
}

TEST_F(FilterDialog, CancelChangesNothing) {
    State().FilterCriteria = {{"Face", "= Equal", "x"}};
    frmFilter& form = OpenFilter();
    FillRow(form, 0, "Material", "= Equal", "Oak");
    Press(form, "btnCancel");
    EXPECT_FALSE(form.Loaded());
    EXPECT_EQ(State().FilterCriteria.at(0).column, "Face");
    EXPECT_EQ(State().CurrentSQL, BaseStatement);
}

}  // namespace
}  // namespace brenvik
