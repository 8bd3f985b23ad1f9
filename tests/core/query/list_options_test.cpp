// Sort, group and filter as texts: how they are read, and what they do through the dialogs.
#include "query/list_options.h"
#include "query/list_driver.h"

#include "core/query/query_fixture.h"
#include "support/failure_of.h"

namespace brenvik {
namespace {

using ListOptions = QueryTest;

const std::string SortColumns =
    "the columns are Qty, Part Name, Sub Assembly, Material, Length, Width, Thickness, ORIE, Value1, Value2, "
    "Value3, Notes, User Data1, User Data2, PN, Price, EB1, EB2, EB3, EB4, Face, Layer";
const std::string GroupColumns =
    "the columns are Part Name, Sub Assembly, Material, Length, Width, Thickness, ORIE, Notes, User Data1, "
    "User Data2, PN, Price, EB1, EB2, EB3, EB4, Face, Layer";
const std::string FilterColumns =
    "the columns are Qty, Part Name, Sub Assembly, Material, Length, Width, Thickness, ORIE, Notes, User "
    "Data1, User Data2, PN, Price, EB1, EB2, EB3, EB4, Face, Layer";
const std::string Operators = "the operators are =, >, <, <> and like";

std::string SortText(std::string_view text) {
    std::string read;
    for (const SortChoice& choice : ParseListChoices(text, "", "").sort)
        read += "[" + choice.column + (choice.descending ? " down]" : "]");
    return read;
}

std::string GroupText(std::string_view text) {
    std::string read;
    for (const std::string& column : ParseListChoices("", text, "").group) read += "[" + column + "]";
    return read;
}

std::string FilterText(std::string_view text) {
    const std::optional<FilterChoice> choice = ParseListChoices("", "", text).filter;
    return choice ? choice->column + "|" + choice->shownOperator + "|" + choice->value : "none";
}

struct TextCase {
    const char *text, *read;
};

TEST(ListOptionTexts, Sort) {
    for (const TextCase& each : {TextCase{"", ""},
                                 {"  ", ""},
                                 {"Length", "[Length]"},
                                 {"Length desc, Material", "[Length down][Material]"},
                                 {" part name ASC ,user data1  Desc", "[Part Name][User Data1 down]"},
                                 {"Value2", "[Value2]"},
                                 {"qty", "[Qty]"}})
        EXPECT_EQ(SortText(each.text), each.read) << each.text;
}

TEST(ListOptionTexts, Group) {
    for (const TextCase& each :
         {TextCase{"", ""}, {"Part Name, material,LENGTH", "[Part Name][Material][Length]"}})
        EXPECT_EQ(GroupText(each.text), each.read) << each.text;
}

TEST(ListOptionTexts, Filter) {
    for (const TextCase& each : {TextCase{"", "none"},
                                 {" ", "none"},
                                 {"Material = Oak", "Material|= Equal|Oak"},
                                 {"material=White Oak", "Material|= Equal|White Oak"},
                                 {"Length > 12.5", "Length|> Greater Than|12.5"},
                                 {"Width<300", "Width|< Less Than|300"},
                                 {"Length > -5", "Length|> Greater Than|-5"},
                                 {"Qty <> 1", "Qty|<> Not equal|1"},
                                 {"Part Name like Side", "Part Name|* Like!|Side"},
                                 {"Part Name LIKE %side%", "Part Name|* Like!|%side%"},
                                 {"Part Name * Side", "Part Name|* Like!|Side"},
                                 {"Notes =", "Notes|= Equal|"},
                                 {"Notes like", "Notes|* Like!|"},
                                 {"Notes = = 5", "Notes|= Equal|= 5"},
                                 {"Notes = looks like oak", "Notes|= Equal|looks like oak"},
                                 {"Notes like a=b", "Notes|* Like!|a=b"},
                                 {"Material = Oak \t\r\n", "Material|= Equal|Oak"},
                                 {"Material = \" Oak \" ", "Material|= Equal| Oak "},
                                 {"Material=\"Oak\"", "Material|= Equal|Oak"},
                                 {"Notes = \"\"A\"\"", "Notes|= Equal|\"A\""},
                                 {"Notes = \"", "Notes|= Equal|\""},
                                 {"Notes = 3/4\"", "Notes|= Equal|3/4\""},
                                 {"Notes = \"\"", "Notes|= Equal|"},
                                 {"Length = \"600\"", "Length|= Equal|600"},
                                 {"\tMaterial = Oak", "Material|= Equal|Oak"},
                                 {"Notes = O'Brien", "Notes|= Equal|O'Brien"}})
        EXPECT_EQ(FilterText(each.text), each.read) << each.text;
}

TEST(ListOptionTexts, AFilterKnowsThatBlanksAroundItsValueWereLeftOff) {
    const auto leftOff = [](const char* text) { return ParseListChoices("", "", text).filter->gapsLeftOff; };
    for (const char* text :
         {"Material = Oak ", "Material =  Oak", "Material = Oak\t", "Part Name like Side "})
        EXPECT_TRUE(leftOff(text)) << text;
    for (const char* text : {"Material = Oak", "Material=Oak", "Material = ", "Material = \"Oak \" ",
                             "Notes =", "Length = 600 "})
        EXPECT_FALSE(leftOff(text)) << text;
}

TEST(ListOptionTexts, ErrorsSayWhatIsKnown) {
    struct ErrorCase {
        const char *sort, *group, *filter;
        std::string description;
    };
    const ErrorCase cases[] = {
        {"Lenght", "", "", "sort: there is no column \"Lenght\"; " + SortColumns},
        {"ID desc", "", "", "sort: there is no column \"ID\"; " + SortColumns},
        {"desc", "", "", "sort: there is no column \"desc\"; " + SortColumns},
        {"Length down", "", "", "sort: there is no column \"Length down\"; " + SortColumns},
        {"Length,,Width", "", "", "sort: a column is missing in \"Length,,Width\"; " + SortColumns},
        {"Length, length desc", "", "", "sort: \"Length\" is named twice"},
        {"", "Qty", "", "group: there is no column \"Qty\"; " + GroupColumns},
        {"", "Value1", "", "group: there is no column \"Value1\"; " + GroupColumns},
        {"", "Face,", "", "group: a column is missing in \"Face,\"; " + GroupColumns},
        {"", "Face,face", "", "group: \"Face\" is named twice"},
        {"Length", "Face, Layer", "",
         "sort: \"Length\" is not in the grouped list; the columns are Face, Layer"},
        {"", "", "Wood = Oak", "filter: there is no column \"Wood\"; " + FilterColumns},
        {"", "", "= Oak", "filter: there is no column \"\"; " + FilterColumns},
        {"", "", "Value1 = 5", "filter: there is no column \"Value1\"; " + FilterColumns},
        {"", "", "Length >= 5", "filter: there is no operator \">=\"; " + Operators},
        {"", "", "Notes =* a", "filter: there is no operator \"=*\"; " + Operators},
        {"", "", "Part Name contains Side", "filter: there is no operator \"contains\"; " + Operators},
        {"", "", "Material",
         "filter: \"Material\" has no operator; it takes a column, an operator and a value, and " +
             Operators},
        {"", "", "Length = long", "filter: \"Length\" holds numbers, and \"long\" is none"},
        {"", "", "Length =", "filter: \"Length\" holds numbers, and \"\" is none"},
        {"", "", "Qty like 1",
         "filter: \"Qty\" is filtered by a number, which like doesn't compare; the operators for it are =, "
         ">, < and <>"},
    };
    for (const ErrorCase& each : cases) {
        const Failure failure = FailureOf([&] { ParseListChoices(each.sort, each.group, each.filter); });
        EXPECT_EQ(failure.number(), failure_number::InvalidCall);
        EXPECT_EQ(failure.description(), each.description);
    }
}

TEST_F(ListOptions, AskingForNothingTouchesNothing) {
    ApplyListChoices(ParseListChoices("", "", ""));
    EXPECT_EQ(database.opened, Texts{});
}

TEST_F(ListOptions, SortsInTheOrderAskedFor) {
    ApplyListChoices(ParseListChoices("Width desc, Length", "", ""));
    EXPECT_EQ(State().CurrentSQL, BaseStatement + " order by bv_width Desc, bv_length Asc");
    EXPECT_EQ(database.opened, Texts{State().CurrentSQL});
    EXPECT_EQ(dialogs.shownForms, Texts{});
}

TEST_F(ListOptions, ReplacesTheSortAndGroupingOfTheSession) {
    State().SortFields = {{"bv_face", "Desc"}};
    State().GroupFields = "bv_face, bv_layer";
    ApplyListChoices(ParseListChoices("Qty", "", ""));
    EXPECT_EQ(State().CurrentSQL, BaseStatement + " order by bv_qty Asc");
    EXPECT_EQ(State().GroupFields, "");
}

TEST_F(ListOptions, GroupsByBoxesAndSortsAmongThem) {
    ApplyListChoices(
        ParseListChoices("Length desc, Part Name", "Part Name, Material, Length, Width, Thickness", ""));
    EXPECT_EQ(
        State().CurrentSQL,
        "Select count(bv_partname) as bv_qty, bv_partname, bv_material, bv_length, bv_width, bv_thickness "
        "from brenvik_data Group by bv_partname, bv_material, bv_length, bv_width, bv_thickness order by "
        "bv_length Desc, bv_partname Asc");
    EXPECT_EQ(VisibleHeaders(), (Texts{"Qty", "Part Name", "Material", "Length", "Width", "Thickness"}));
    EXPECT_TRUE(Main().fpSpread1.CellLocked(9, 1));
}

TEST_F(ListOptions, FiltersAndKeepsTheOrderOfTheSort) {
    ApplyListChoices(ParseListChoices("Width, Length", "", "Material = Oak"));
    EXPECT_EQ(State().CurrentSQL,
              BaseStatement + " Where bv_material = 'Oak'  order by bv_width Asc, bv_length Asc");
    EXPECT_EQ(State().FilterCriteria.size(), 1U);
}

TEST_F(ListOptions, AFilterReplacesStoredRows) {
    State().FilterCriteria = {{"Face", "= Equal", "A"}, {"Layer", "= Equal", "0"}};
    ApplyListChoices(ParseListChoices("", "", "Part Name like Side"));
    ASSERT_EQ(State().FilterCriteria.size(), 1U);
    EXPECT_EQ(State().WhereClause, " Where bv_partname Like 'Side%' ");
}

TEST_F(ListOptions, ARefusedStatementIsAFailureBehindItsBox) {
    database.refused = {"O'Brien", "order by bv_face"};
    EXPECT_EQ(
        FailureOf([] { ApplyListChoices(ParseListChoices("", "", "Notes = O'Brien")); }).description(),
        "filter: the part table refused the statement, and the list stays as it was: no value with a single "
        "quote can be looked for, and no part that has one is in the list");
    EXPECT_EQ(dialogs.messages.size(), 1U);
    EXPECT_FALSE(Filter().Loaded());
    EXPECT_EQ(FailureOf([] { ApplyListChoices(ParseListChoices("Face", "", "")); }).description(),
              "sort: the part table refused the statement, and the list stays as it was");
    EXPECT_FALSE(Sort().Loaded());
}

TEST_F(ListOptions, AColumnThatTheDialogDoesNotOfferIsAFailure) {
    for (int column = 1; column <= 26; ++column) Main().fpSpread1.Column(column).hidden = column > 3;
    const Failure failure = FailureOf([] { ApplyListChoices(ParseListChoices("", "", "Face = A")); });
    EXPECT_EQ(failure.description(),
              "filter: the column \"Face\" is not offered now; the columns are bv_ID, Qty, Part Name");
    EXPECT_FALSE(Filter().Loaded());
}

}  // namespace
}  // namespace brenvik
