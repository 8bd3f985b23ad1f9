// Sorting, grouping and filtering from the dialogs, with the statements run on the part table itself.
#include <algorithm>

#include "list_fixture.h"
#include "query/frm_filter.h"
#include "query/frm_new_sort.h"
#include "session/module_state.h"

namespace brenvik {
namespace {

using ListStatements = ListOnTable;

TEST_F(ListStatements, Sorts) {
    Apply("Length desc, Part Name", "", "");
    EXPECT_EQ(Shown("Length"), "700|700|700|600.5|600.5|80");
    EXPECT_EQ(Shown("bv_ID"), "5|1|2|6|3|4") << "names compare without case";
    EXPECT_TRUE(GridFormInstance().Adodc1.Records()->Updatable());
}

TEST_F(ListStatements, FiltersByEachOperator) {
    struct Case {
        const char *filter, *ids;
    };
    for (const Case& each : {Case{"Material = OAK", "1|2|4"},
                             {"Material <> Oak", "3|5|6"},
                             {"Length > 600.5", "1|2|5"},
                             {"Length < 600.5", "4"},
                             {"Part Name like side", "1|2|4"},
                             {"Part Name like %side", "1|2|5"},
                             {"Part Name =", "6"},
                             {"Qty = 1", "1|2|3|4|5|6"},
                             {"Qty > 1", ""},
                             {"Notes = none", ""}}) {
        Apply("ORIE", "", each.filter);
        EXPECT_EQ(Shown("bv_ID"), each.ids) << each.filter;
    }
    EXPECT_EQ(boxes.texts, std::vector<std::string>{});
}

TEST_F(ListStatements, GroupsCountTheParts) {
    Apply("Length desc, Material", "Material, Length", "Length > 100");
    EXPECT_EQ(Shown("Qty"), "1|2|1|1");
    EXPECT_EQ(Shown("Length"), "700|700|600.5|600.5");
    EXPECT_EQ(Shown("Part Name"), "|||") << "not in the statement";
    EXPECT_EQ(Shown("bv_ID"), "|||");
    EXPECT_FALSE(GridFormInstance().Adodc1.Records()->Updatable());
}

TEST_F(ListStatements, AGroupOfAllBoxesRuns) {
    auto& form = StateOf<frmNewSort>();
    form.PressByCode("Command1");
    form.PressByCode("btnOK");
    EXPECT_FALSE(form.StatementRefused());
    EXPECT_EQ(GridFormInstance().fpSpread1.MaxRows(), 5) << "two sides are one board";
}

TEST_F(ListStatements, AQuoteInTheValueIsRefusedAndKeepsTheRows) {
    EXPECT_EQ(FailureOf([] { Apply("", "", "Material = O'ak"); }).number(), failure_number::InvalidCall);
    EXPECT_EQ(boxes.texts,
              std::vector<std::string>{"-2147217900\r\nBrenvik part table\r\nnear \"ak\": syntax error"});
    EXPECT_EQ(Shown("bv_ID"), "1|2|3|4|5|6");
}

TEST_F(ListStatements, ASortByTheBlankColumnIsRefused) {
    auto& form = StateOf<frmNewSort>();
    form.Load();
    form.List2.AddItem("  [Asc]");
    form.PressByCode("btnOK");
    EXPECT_TRUE(form.StatementRefused());
    EXPECT_EQ(boxes.texts.size(), 1U);
    EXPECT_EQ(Shown("bv_ID"), "1|2|3|4|5|6");
}

TEST_F(ListStatements, OffersTheValuesOfAColumnOnce) {
    auto& form = StateOf<frmFilter>();
    form.Load();
    form.RetrieveColData("bv_length", 0);
    std::vector<std::string> lengths = form.cboCritData[0]->Items();
    std::ranges::sort(lengths);
    EXPECT_EQ(lengths, (std::vector<std::string>{"600.5", "700", "80"}));
    form.RetrieveColData("bv_material", 0);
    EXPECT_EQ(form.cboCritData[0]->ListCount(), 2) << "Oak and Birch, in one case each, and no blank";
}

}  // namespace
}  // namespace brenvik
