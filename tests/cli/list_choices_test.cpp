// Sorted, grouped and filtered lists of the sample job, and choices that are refused.
#include "checkout_paths.h"
#include "program.h"

namespace brenvik::cli_test {
namespace {

class ListChoices : public ProgramTest {
  protected:
    Outcome List(const std::vector<std::string>& choices) const {
        std::vector<std::string> words{"list", ShippedSample().string()};
        words.insert(words.end(), choices.begin(), choices.end());
        return Run(words);
    }
    /// The part names of a list, one a line.
    std::string Names(const std::vector<std::string>& choices) const {
        std::vector<std::string> words{"--format", "json"};
        words.insert(words.end(), choices.begin(), choices.end());
        const Outcome outcome = List(words);
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        std::string names;
        const std::string key = "\"bv_partname\": \"";
        for (std::size_t at = outcome.output.find(key); at != std::string::npos;
             at = outcome.output.find(key, at + 1)) {
            const std::size_t begin = at + key.size();
            names += outcome.output.substr(begin, outcome.output.find('"', begin) - begin) + "\n";
        }
        return names;
    }
};

TEST_F(ListChoices, GroupedTableHasQuantityAndTheGroupedColumnsAlone) {
    const Outcome outcome = List({"--group", "Material, Thickness"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.output,
              "Qty  Material        Thickness\n"
              "---  --------------  ---------\n"
              "  2                          0\n"
              "  1  Birch Ply              12\n"
              "  4  Birch Ply              15\n"
              "  2  Cherry                 19\n"
              "  1  White HDF               8\n"
              "  6  White Melamine         18\n");
}

TEST_F(ListChoices, GroupedCsvAndJsonHaveTheSameColumns) {
    EXPECT_EQ(List({"--group", "material, thickness", "--sort", "thickness desc", "--format", "csv"}).output,
              "Qty,Material,Thickness\r\n2,Cherry,19\r\n6,White Melamine,18\r\n4,Birch Ply,15\r\n"
              "1,Birch Ply,12\r\n1,White HDF,8\r\n2,,0\r\n");
    EXPECT_EQ(List({"--group", "Material, Thickness", "--filter", "Material = Birch Ply", "--format", "json"})
                  .output,
              "[\n {\"bv_qty\": 1, \"bv_material\": \"Birch Ply\", \"bv_thickness\": 12},\n"
              " {\"bv_qty\": 4, \"bv_material\": \"Birch Ply\", \"bv_thickness\": 15}\n]\n");
}

TEST_F(ListChoices, TheFiveColumnsOfACutListBecomeOneRowForEachBoard) {
    EXPECT_EQ(List({"--group", "Part Name, Material, Length, Width, Thickness", "--filter",
                    "Sub Assembly = Drawer", "--sort", "Length desc, Width"})
                  .output,
              "Qty  Part Name          Material   Length  Width  Thickness\n"
              "---  -----------------  ---------  ------  -----  ---------\n"
              "  1  Drawer Back        Birch Ply     508     92         15\n"
              "  1  Drawer Sub Front   Birch Ply     508    110         15\n"
              "  1  Drawer Side Left   Birch Ply     500    110         15\n"
              "  1  Drawer Side Right  Birch Ply     500    110         15\n");
}

TEST_F(ListChoices, SortKeepsThePriorityOfItsColumns) {
    EXPECT_EQ(Names({"--filter", "Material = Birch Ply", "--sort", "Width desc, Length"}),
              "Tray Divider\nDrawer Side Left\nDrawer Side Right\nDrawer Sub Front\nDrawer Back\n");
    EXPECT_EQ(Names({"--filter", "Material = Birch Ply", "--sort", "Length, Width desc"}),
              "Tray Divider\nDrawer Side Left\nDrawer Side Right\nDrawer Sub Front\nDrawer Back\n");
    EXPECT_EQ(Names({"--filter", "Material = Birch Ply", "--sort", "Length desc, Width"}),
              "Drawer Back\nDrawer Sub Front\nDrawer Side Left\nDrawer Side Right\nTray Divider\n");
}

TEST_F(ListChoices, FilterHasTheOperatorsOfTheDialog) {
    EXPECT_EQ(Names({"--filter", "Length > 620"}), "Left Side\nRight Side\n");
    EXPECT_EQ(Names({"--filter", "Length < 140"}), "\nAdjustable Shelf\n");
    EXPECT_EQ(Names({"--filter", "ORIE <> LWT"}), "Door\nDrawer Front\n\nAdjustable Shelf\n");
    EXPECT_EQ(Names({"--filter", "Part Name like Top"}), "Top Rail Front\nTop Rail Back\n");
    EXPECT_EQ(Names({"--filter", "Part Name like %Back"}), "Top Rail Back\nBack\nDrawer Back\n");
    EXPECT_EQ(Names({"--filter", "Part Name = "}), "\n");
}

TEST_F(ListChoices, AFilterThatNoPartMeetsLeavesTheHead) {
    const Outcome outcome = List({"--filter", "Material = Oak", "--format", "json"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "[]\n");
    EXPECT_EQ(outcome.errors, "the filter \"Material = Oak\" leaves none of 16 parts\n");
}

TEST_F(ListChoices, AFilterSaysThatItLeavesBlanksOff) {
    const std::string remark =
        "--filter: the blanks around \"Cherry\" were left off; a value in double quotes keeps them\n";
    const Outcome cut = List({"--filter", "Material = Cherry ", "--format", "csv"});
    EXPECT_EQ(cut.status, 0);
    EXPECT_EQ(cut.errors, remark);
    EXPECT_EQ(cut.output, List({"--filter", "Material = Cherry", "--format", "csv"}).output);
    EXPECT_EQ(Run({"export", ShippedSample().string(), "out.csv", "--filter", "Material = Cherry "})
                  .errors.find(remark),
              0u);
}

TEST_F(ListChoices, AFilterFindsBlanksInDoubleQuotes) {
    std::string drawing = ReadFile(ShippedSample());
    for (std::size_t at = drawing.find("Cherry\r\n"); at != std::string::npos;
         at = drawing.find("Cherry\r\n", at + 7))
        drawing.insert(at + 6, " ");
    Write("blank.dxf", drawing);
    EXPECT_EQ(Run({"list", "blank.dxf", "--filter", "Material = Cherry", "--format", "json"}).output, "[]\n");
    const Outcome found =
        Run({"list", "blank.dxf", "--filter", "Material = \"Cherry \"", "--format", "json"});
    EXPECT_NE(found.output.find("\"Door\""), std::string::npos);
    EXPECT_EQ(found.errors, "");
}

TEST_F(ListChoices, AreKeptByNoLaterList) {
    ASSERT_EQ(List({"--group", "Material", "--filter", "Length > 500"}).status, 0);
    EXPECT_EQ(List({}).output,
              ReadFile(std::filesystem::path(BRENVIK_SOURCE_DIR) / "tests/cli/base-cabinet.txt"));
}

TEST_F(ListChoices, OfADrawingWithoutSolidsShowTheColumnsAskedFor) {
    Write("line.dxf",
          "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n  8\n0\n 10\n0\n 20\n0\n 30\n0\n 11\n1\n 21\n1\n 31\n0\n"
          "  0\nENDSEC\n  0\nEOF\n");
    EXPECT_EQ(Run({"list", "line.dxf", "--format", "csv", "--group", "Width, Material"}).output,
              "Qty,Material,Width\r\n");
}

struct Refused {
    const char* name;
    std::vector<std::string> words;
    std::string message;

    friend void PrintTo(const Refused& each, std::ostream* out) { *out << each.name; }
};

class RefusedChoice : public ListChoices, public ::testing::WithParamInterface<Refused> {};

TEST_P(RefusedChoice, IsAWrongWordBeforeTheDrawingIsRead) {
    std::vector<std::string> words{"list", "nowhere.dxf"};
    words.insert(words.end(), GetParam().words.begin(), GetParam().words.end());
    const Outcome outcome = Run(words);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.errors, "brenvik: " + GetParam().message + "\n");
}

INSTANTIATE_TEST_SUITE_P(
    All, RefusedChoice,
    ::testing::Values(
        Refused{"UnknownSortColumn",
                {"--sort", "Colour"},
                "--sort: there is no column \"Colour\"; the columns are Qty, Part Name, Sub Assembly, "
                "Material, Length, Width, Thickness, ORIE, Value1, Value2, Value3, Notes, User Data1, User "
                "Data2, PN, Price, EB1, EB2, EB3, EB4, Face, Layer"},
        Refused{"SortColumnTwice", {"--sort", "Length, length desc"}, "--sort: \"Length\" is named twice"},
        Refused{"UnknownGroupColumn",
                {"--group", "Qty"},
                "--group: there is no column \"Qty\"; the columns are Part Name, Sub Assembly, Material, "
                "Length, Width, Thickness, ORIE, Notes, User Data1, User Data2, PN, Price, EB1, EB2, EB3, "
                "EB4, Face, Layer"},
        Refused{"SortOutsideTheGroup",
                {"--group", "Material", "--sort", "Length"},
                "--sort: \"Length\" is not in the grouped list; the columns are Material"},
        Refused{"FilterWithoutOperator",
                {"--filter", "Oak"},
                "--filter: \"Oak\" has no operator; it takes a column, an operator and a value, and the "
                "operators are =, >, <, <> and like"},
        Refused{"TextForNumbers",
                {"--filter", "Length = long"},
                "--filter: \"Length\" holds numbers, and \"long\" is none"}),
    [](const auto& refused) { return std::string(refused.param.name); });

TEST_F(ListChoices, AFilterTakesEveryFormOfANumber) {
    const std::string long600 = Names({"--filter", "Length > 600"});
    ASSERT_NE(long600, "");
    for (const char* number : {"6d2", "6D+2", "6e2", "600.", "+600", ".6E3", "6000d-1"})
        EXPECT_EQ(Names({"--filter", std::string("Length > ") + number}), long600) << number;
}

TEST_F(ListChoices, AFilterThatLeavesNothingIsRemarkedOn) {
    const std::string remark = "the filter \"Material = Oka\" leaves none of 16 parts\n";
    EXPECT_EQ(List({"--filter", "Material = Oka"}).errors, remark);
    EXPECT_EQ(List({"--filter", "Material = Oka", "--group", "Material"}).errors, remark);
    EXPECT_EQ(List({"--filter", "Material = Oka", "--quiet"}).errors, "");
    const Outcome exported = Run({"export", ShippedSample().string(), "out.csv", "--filter", "Length > 1e6"});
    EXPECT_EQ(exported.status, 0);
    EXPECT_NE(exported.errors.find("the filter \"Length > 1e6\" leaves none of 16 parts\n"),
              std::string::npos)
        << exported.errors;
}

TEST_F(ListChoices, QuotesInTheValueAreRefusedHoweverManyThereAre) {
    for (const char* value : {"O''Hara", "x' or 'a' = 'a"}) {
        const Outcome outcome = List({"--filter", std::string("Material = ") + value});
        EXPECT_EQ(outcome.status, 2) << value;
        EXPECT_NE(outcome.errors.find("Syntax error: a single quote stands in a text of the statement"),
                  std::string::npos)
            << outcome.errors;
    }
}

TEST_F(ListChoices, AQuoteInTheValueIsRefusedByThePartTable) {
    const Outcome outcome = List({"--filter", "Material = O'Hara"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.output, "");
    EXPECT_NE(outcome.errors.find("syntax error"), std::string::npos) << outcome.errors;
    EXPECT_NE(outcome.errors.find(
                  "brenvik: --filter: the part table refused the statement, and the list stays as it was: no "
                  "value with a single quote can be looked for"),
              std::string::npos)
        << outcome.errors;
}

}  // namespace
}  // namespace brenvik::cli_test
