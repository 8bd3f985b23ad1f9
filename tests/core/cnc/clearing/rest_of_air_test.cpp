// What a board's recess asks for where no operation has taken any of it yet.
#include "cnc/clearing/rest_of_air.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace brenvik {
namespace {

std::vector<PlanSide> Around(const std::vector<PlanPoint>& corners) {
    std::vector<PlanSide> sides;
    for (std::size_t i = 0; i < corners.size(); ++i)
        sides.push_back({corners[i], corners[(i + 1) % corners.size()]});
    return sides;
}

/// 600 by 400 by 18, with a recess 6 deep: `beside` is the section at its height.
class RecessedBoard : public SolidSections {
  public:
    explicit RecessedBoard(std::vector<PlanSide> beside) : mBeside(std::move(beside)) {}
    Box3 Box() const override { return {{0, 0, 0}, {600, 400, 18}}; }
    const std::vector<double>& Levels() const override { return mLevels; }
    const std::vector<HeightSpan>& Slopes() const override { return mSlopes; }
    const std::vector<LevelRound>& Rounds() const override { return mRounds; }
    std::vector<PlanSide> At(double height) const override {
        return height < 12 ? Around({{0, 0}, {600, 0}, {600, 400}, {0, 400}}) : mBeside;
    }

  private:
    std::vector<PlanSide> mBeside;
    std::vector<double> mLevels{0, 12, 18};
    std::vector<HeightSpan> mSlopes;
    std::vector<LevelRound> mRounds;
};

TEST(RestOfAir, ARecessWhoseWallsConvergeTowardsTheEdgeGetsNoPathFarOutside) {
    // Its walls would meet 90 in front of the board.
    const RecessedBoard board(Around(
        {{0, 0}, {120, 0}, {100, 60}, {150, 75}, {200, 60}, {180, 0}, {600, 0}, {600, 400}, {0, 400}}));
    const PartSlabs slabs(board, 1);
    const Rest rest = RestOf({board, slabs, {}, 1, 12}, true);
    ASSERT_EQ(rest.cuts.size(), 1U);
    double lowest = 0;
    for (const PlanSide& side : rest.cuts[0].path) lowest = std::min(lowest, side.from.y);
    EXPECT_GE(lowest, -12);
    EXPECT_EQ(rest.cuts[0].floor, 12);
}

}  // namespace
}  // namespace brenvik
