// Sorting, ranking and matching of three extents.
#include <gtest/gtest.h>

#include "parts/extent_matching.h"
#include "parts/mautocad.h"

namespace brenvik::mAutoCAD {
namespace {

TEST(SmallestOfThree, TakesTheSmallestWhereverItStands) {
    EXPECT_EQ(SmallestOfThree(1, 2, 3), 1);
    EXPECT_EQ(SmallestOfThree(2, 1, 3), 1);
    EXPECT_EQ(SmallestOfThree(3, 2, 1), 1);
    EXPECT_EQ(SmallestOfThree(2, 3, 1), 1);
    EXPECT_EQ(SmallestOfThree(3, 1, 2), 1);
    EXPECT_EQ(SmallestOfThree(1, 3, 2), 1);
    EXPECT_EQ(SmallestOfThree(4, 4, 4), 4);
    EXPECT_EQ(SmallestOfThree(1, 1, 2), 1);
    EXPECT_EQ(SmallestOfThree(2, 1, 1), 1);
}

TEST(SmallestOfThree, RoundsEachInputToFiveDecimals) {
    EXPECT_EQ(SmallestOfThree(18.0000049, 600, 400), 18);
    EXPECT_EQ(SmallestOfThree(18.000006, 600, 400), 18.00001);
    // 18.000004 and 18 are the same size after rounding.
    EXPECT_EQ(SmallestOfThree(18.000004, 18, 18.000001), 18);
}

TEST(LargestOfThree, TakesTheLargestWhereverItStands) {
    EXPECT_EQ(LargestOfThree(1, 2, 3), 3);
    EXPECT_EQ(LargestOfThree(1, 3, 2), 3);
    EXPECT_EQ(LargestOfThree(3, 2, 1), 3);
    EXPECT_EQ(LargestOfThree(2, 3, 3), 3);
    EXPECT_EQ(LargestOfThree(3, 3, 2), 3);
}

TEST(LargestOfThree, RoundsEachInputToFiveDecimals) { EXPECT_EQ(LargestOfThree(600.000004, 18, 400), 600); }

TEST(IndexOfLargest, OfEqualLargestValuesTheLastWins) {
    EXPECT_EQ(IndexOfLargest(1, 2, 3), 3);
    EXPECT_EQ(IndexOfLargest(3, 2, 1), 1);
    EXPECT_EQ(IndexOfLargest(2, 3, 1), 2);
    EXPECT_EQ(IndexOfLargest(3, 3, 1), 2);
    EXPECT_EQ(IndexOfLargest(3, 1, 3), 3);
    EXPECT_EQ(IndexOfLargest(5, 5, 5), 3);
    EXPECT_EQ(IndexOfLargest(0, 0, 0), 3);
}

TEST(IndexOfSmallest, OfEqualSmallestValuesTheFirstWins) {
    EXPECT_EQ(IndexOfSmallest(1, 2, 3), 1);
    EXPECT_EQ(IndexOfSmallest(3, 2, 1), 3);
    EXPECT_EQ(IndexOfSmallest(2, 1, 3), 2);
    EXPECT_EQ(IndexOfSmallest(1, 1, 3), 1);
    EXPECT_EQ(IndexOfSmallest(3, 1, 1), 2);
    EXPECT_EQ(IndexOfSmallest(5, 5, 5), 1);
}

TEST(ThirdIndex, IsWhatTheTwoOthersLeave) {
    EXPECT_EQ(ThirdIndex(1, 2), 3);
    EXPECT_EQ(ThirdIndex(3, 1), 2);
    EXPECT_EQ(ThirdIndex(2, 3), 1);
}

TEST(ConsumeExtent, TakesAnExtentOnce) {
    ExtentsTaken taken;
    EXPECT_TRUE(ConsumeExtent(taken, "400", 18, 600, 400));
    EXPECT_FALSE(ConsumeExtent(taken, "400", 18, 600, 400));
    EXPECT_TRUE(ConsumeExtent(taken, "18", 18, 600, 400));
    EXPECT_FALSE(ConsumeExtent(taken, "601", 18, 600, 400));
    EXPECT_TRUE(ConsumeExtent(taken, "600", 18, 600, 400));
}

TEST(ConsumeExtent, GivesEqualExtentsToEqualValuesOneByOne) {
    ExtentsTaken taken;
    EXPECT_TRUE(ConsumeExtent(taken, "18", 18, 18, 18));
    EXPECT_TRUE(ConsumeExtent(taken, "18", 18, 18, 18));
    EXPECT_TRUE(ConsumeExtent(taken, "18", 18, 18, 18));
    EXPECT_FALSE(ConsumeExtent(taken, "18", 18, 18, 18));
}

TEST(ConsumeExtent, ComparesItsTextAsANumber) {
    ExtentsTaken taken;
    EXPECT_TRUE(ConsumeExtent(taken, "18.0 mm", 18, 600, 400));
    EXPECT_FALSE(ConsumeExtent(taken, "", 18, 600, 400));
}

TEST(MatchOldValue, GivesTheMatchedExtentAsText) {
    ExtentsTaken taken;
    EXPECT_EQ(MatchOldValue(taken, "600.50", 18, 600.5, 400), "600.5");
    EXPECT_EQ(MatchOldValue(taken, "600.5", 18, 600.5, 400), "0");
    EXPECT_EQ(MatchOldValue(taken, "18", 18, 600.5, 400), "18");
    EXPECT_TRUE(taken.Small);
    EXPECT_TRUE(taken.Big);
    EXPECT_FALSE(taken.Mid);
}

TEST(MatchOldValue, OfEqualExtentsTakesTheLargestAheadOfTheMiddle) {
    ExtentsTaken taken;
    EXPECT_EQ(MatchOldValue(taken, "600", 18, 600, 600), "600");
    EXPECT_TRUE(taken.Big);
    EXPECT_FALSE(taken.Mid);
    EXPECT_EQ(MatchOldValue(taken, "600", 18, 600, 600), "600");
    EXPECT_TRUE(taken.Mid);
    EXPECT_FALSE(taken.Small);
}

TEST(MatchOldValue, WalksApartFromTheCount) {
    ExtentsTaken counted, matched;
    EXPECT_TRUE(ConsumeExtent(counted, "18", 18, 600, 400));
    EXPECT_EQ(MatchOldValue(matched, "18", 18, 600, 400), "18");
}

}  // namespace
}  // namespace brenvik::mAutoCAD
