// Whether a part reaches beyond an outline, told from sections that the test makes up.
#include "cnc/outline/reach.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

namespace brenvik {
namespace {

std::vector<PlanSide> Rectangle(double left, double front, double right, double back) {
    const PlanPoint a{left, front}, b{right, front}, c{right, back}, d{left, back};
    return {{a, b}, {b, c}, {c, d}, {d, a}};
}

/// A part of two storeys: from 0 to 6, and from 6 to 18.
class MadePart : public SolidSections {
  public:
    MadePart(std::vector<PlanSide> below, std::vector<PlanSide> above)
        : mBelow(std::move(below)), mAbove(std::move(above)) {}

    MadePart& With(LevelRound round) {
        mRounds.push_back(round);
        mSlopes.push_back({round.on.z - round.radius, round.on.z + round.radius});
        return *this;
    }
    MadePart& WithSlope(HeightSpan span) {
        mSlopes.push_back(span);
        return *this;
    }

    Box3 Box() const override { return {{0, 0, 0}, {600, 300, 18}}; }
    const std::vector<double>& Levels() const override { return mLevels; }
    const std::vector<HeightSpan>& Slopes() const override { return mSlopes; }
    const std::vector<LevelRound>& Rounds() const override { return mRounds; }
    std::vector<PlanSide> At(double height) const override { return height < 6 ? mBelow : mAbove; }

  private:
    std::vector<PlanSide> mBelow, mAbove;
    std::vector<double> mLevels{0, 6, 18};
    std::vector<HeightSpan> mSlopes;
    std::vector<LevelRound> mRounds;
};

const std::vector<PlanSide> Board = Rectangle(0, 0, 600, 300);

LevelRound Bore(double height) { return {{300, 0, height}, {0, 1, 0}, 4, true}; }

TEST(PartReach, AnOutlineAsWideAsThePartHoldsIt) {
    EXPECT_EQ(ReachBeyond(MadePart(Board, Board), Board), PartReach::Within);
    EXPECT_EQ(ReachBeyond(MadePart(Rectangle(10, 0, 600, 300), Board), Board), PartReach::Within);
}

TEST(PartReach, OneStoreyThatStandsOutIsEnough) {
    const std::vector<PlanSide> narrow = Rectangle(0, 0, 600, 290);
    EXPECT_EQ(ReachBeyond(MadePart(Board, narrow), narrow), PartReach::Beyond);
    EXPECT_EQ(ReachBeyond(MadePart(narrow, Board), narrow), PartReach::Beyond);
}

TEST(PartReach, AnIslandBesideTheOutlineStandsOut) {
    std::vector<PlanSide> two = Rectangle(0, 0, 600, 266);
    for (const PlanSide& side : Rectangle(0, 284, 600, 300)) two.push_back(side);
    EXPECT_EQ(ReachBeyond(MadePart(two, Rectangle(0, 0, 600, 266)), Rectangle(0, 0, 600, 266)),
              PartReach::Beyond);
}

TEST(PartReach, ASliverIsLeftToACut) {
    EXPECT_EQ(ReachBeyond(MadePart(Board, Rectangle(0, 0, 600, 300.001)), Board), PartReach::Unclear);
}

TEST(PartReach, SlopedFacesAreLeftToACut) {
    EXPECT_EQ(ReachBeyond(MadePart(Board, Board).WithSlope({6, 18}), Board), PartReach::Unclear);
}

TEST(PartReach, EdgeBoresAtOneHeightDontHideAnything) {
    MadePart part(Board, Board);
    part.With(Bore(9)).With(Bore(9));
    EXPECT_TRUE(IsWidestAtLevels(part));
    EXPECT_EQ(ReachBeyond(part, Board), PartReach::Within);
    EXPECT_EQ(ReachBeyond(part, Rectangle(0, 0, 600, 290)), PartReach::Beyond);
}

// Between two bores one above the other wood may stand that neither has at its level.
TEST(PartReach, EdgeBoresAtTwoHeightsMayHideWood) {
    MadePart part(Board, Board);
    part.With(Bore(9)).With(Bore(4));
    EXPECT_FALSE(IsWidestAtLevels(part));
    EXPECT_EQ(ReachBeyond(part, Board), PartReach::Unclear);
}

TEST(PartReach, ARoundedEdgeMayBeWiderBetweenLevels) {
    MadePart part(Board, Board);
    part.With({{300, 0, 9}, {1, 0, 0}, 9, false});
    EXPECT_FALSE(IsWidestAtLevels(part));
}

}  // namespace
}  // namespace brenvik
