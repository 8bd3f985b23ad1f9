// Blocks of cells: what the clipboard gets, and what typing it in does.
#include "forms/grid_block.h"

#include <gtest/gtest.h>

namespace brenvik {
namespace {

class Blocks : public ::testing::Test {
  protected:
    Blocks() : grid("grid", {{"a", "A"}, {"b", "B", 0, true}, {"c", "C"}, {"d", "D", 0, false, true}}) {
        grid.SetMaxRows(3);
    }
    GridControl grid;
};

TEST_F(Blocks, ShownColumnsAlone) { EXPECT_EQ(ShownColumns(grid), (std::vector<int>{1, 3, 4})); }

TEST_F(Blocks, CellsArePartedByTabsAndOddOnesQuoted) {
    grid.SetCellText(1, 1, "x");
    grid.SetCellText(2, 1, "hidden");
    grid.SetCellText(3, 1, "a \"b\"");
    EXPECT_EQ(CopyBlock(grid, {1, 1, 3, 2}), "x\t\"a \"\"b\"\"\"\n\t\n");
}

TEST_F(Blocks, PastingGoesRightAndDownPastWhatIsHidden) {
    const BlockOutcome outcome = PasteBlock(grid, 1, 2, "1\t2\r\n3\t\"4\t5\"\n");
    EXPECT_EQ(grid.CellText(1, 2), "1");
    EXPECT_EQ(grid.CellText(2, 2), "");
    EXPECT_EQ(grid.CellText(3, 2), "2");
    EXPECT_EQ(grid.CellText(3, 3), "4\t5");
    EXPECT_EQ(outcome.taken, 4);
    EXPECT_EQ(outcome.refused, 0);
}

TEST_F(Blocks, LockedCellsRefuseAndTextsBeyondTheGridAreCounted) {
    const BlockOutcome outcome = PasteBlock(grid, 3, 3, "1\t2\t3\n4\n");
    EXPECT_EQ(outcome.taken, 1);
    EXPECT_EQ(outcome.refused, 1);
    EXPECT_EQ(outcome.beyond, 2);
    EXPECT_EQ(grid.CellText(4, 3), "");
}

TEST_F(Blocks, FillingDownTypesTheFirstRowIntoTheOthers) {
    grid.SetCellText(1, 1, "x");
    grid.SetCellText(3, 1, "y");
    FillDown(grid, {1, 1, 3, 3});
    EXPECT_EQ(grid.CellText(1, 3), "x");
    EXPECT_EQ(grid.CellText(3, 2), "y");
    ClearBlock(grid, {1, 1, 1, 2});
    EXPECT_EQ(grid.CellText(1, 2), "");
    EXPECT_EQ(grid.CellText(1, 3), "x");
}

}  // namespace
}  // namespace brenvik
