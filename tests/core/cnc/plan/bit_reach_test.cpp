// What a bit leaves standing in the middle of what it runs around.
#include "cnc/plan/bit_reach.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "cnc/plan/plan_difference.h"

namespace brenvik {
namespace {

using Sides = std::vector<PlanSide>;

Sides Around(const std::vector<PlanPoint>& corners) {
    Sides sides;
    for (std::size_t i = 0; i < corners.size(); ++i)
        sides.push_back({corners[i], corners[(i + 1) % corners.size()]});
    return sides;
}

Sides Rectangle(double x0, double y0, double x1, double y1) {
    return Around({{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}});
}

Sides Rounded(double x0, double y0, double x1, double y1, double r) {
    const double bulge = std::tan(std::numbers::pi / 8);
    return {{{x0 + r, y0}, {x1 - r, y0}}, {{x1 - r, y0}, {x1, y0 + r}, bulge},
            {{x1, y0 + r}, {x1, y1 - r}}, {{x1, y1 - r}, {x1 - r, y1}, bulge},
            {{x1 - r, y1}, {x0 + r, y1}}, {{x0 + r, y1}, {x0, y1 - r}, bulge},
            {{x0, y1 - r}, {x0, y0 + r}}, {{x0, y0 + r}, {x0 + r, y0}, bulge}};
}

Sides Backwards(const Sides& sides) {
    Sides turned;
    for (auto side = sides.rbegin(); side != sides.rend(); ++side)
        turned.push_back({side->to, side->from, -side->bulge});
    return turned;
}

/// What stays standing within a route all by itself on a sheet whose inside should be gone.
std::vector<PlanSpot> Left(const Sides& line, double bit) {
    const Sides sheet = Rectangle(-500, -500, 1000, 1000);
    Sides part = sheet;
    part.insert(part.end(), line.begin(), line.end());
    const std::vector<PlanShape> shapes{{PlanShape::Role::Stock, sheet, -1, {}},
                                        {PlanShape::Role::Removal, line, 0, CoreOf(line, bit)}};
    return CompareInPlan(part, shapes, 0.01);
}

TEST(BitReach, ABitClearsAFieldUpToTwiceItsWidth) {
    EXPECT_TRUE(Left(Rectangle(0, 0, 100, 24), 12).empty());
    EXPECT_TRUE(Left(Rectangle(0, 0, 100, 20), 12).empty());
    EXPECT_TRUE(Left(Rectangle(0, 0, 10, 10), 12).empty());
    const std::vector<PlanSpot> spots = Left(Rectangle(0, 0, 100, 60), 12);
    ASSERT_EQ(spots.size(), 1U);
    EXPECT_NEAR(spots[0].area, 76 * 36, 1e-6);
    EXPECT_NEAR(spots[0].width, 36, 1e-6);
}

TEST(BitReach, TheCoreIsTheSameWhicheverWayTheLineRuns) {
    EXPECT_NEAR(Left(Backwards(Rectangle(0, 0, 100, 60)), 12).at(0).area, 76 * 36, 1e-6);
    EXPECT_TRUE(Left(Backwards(Rectangle(0, 0, 100, 20)), 12).empty());
}

TEST(BitReach, CornersTighterThanTheBitLeaveASquareCore) {
    EXPECT_NEAR(Left(Rounded(0, 0, 100, 60, 6.5), 12).at(0).area, 76 * 36, 1e-6);
    const double wide = Left(Rounded(0, 0, 100, 60, 18.5), 6).at(0).area;
    EXPECT_NEAR(wide, 88 * 48 - (4 - std::numbers::pi) * 12.5 * 12.5, 1e-6);
    EXPECT_TRUE(Left(Rounded(0, 0, 100, 20, 6.5), 12).empty());
    EXPECT_TRUE(Left(Rounded(0, 0, 13, 13, 6.5), 12).empty());
}

TEST(BitReach, AnInnerCornerIsRunAroundInAnArc) {
    const Sides angle = Around({{0, 0}, {100, 0}, {100, 100}, {60, 100}, {60, 40}, {0, 40}});
    const std::vector<PlanSpot> spots = Left(angle, 10);
    ASSERT_EQ(spots.size(), 1U);
    // The two legs' middles, the square where they meet less the quarter round about the inner corner.
    EXPECT_NEAR(spots[0].area, 80 * 20 + 20 * 60 + (100 - std::numbers::pi * 100 / 4), 1e-6);
}

TEST(BitReach, ALineThatNarrowsLeavesACoreOnEachSide) {
    // Two fields with a neck that the bit clears by itself.
    const Sides line = Around({{0, 0},
                               {60, 0},
                               {60, 20},
                               {100, 20},
                               {100, 0},
                               {160, 0},
                               {160, 60},
                               {100, 60},
                               {100, 40},
                               {60, 40},
                               {60, 60},
                               {0, 60}});
    EXPECT_EQ(Left(line, 12).size(), 2U);
}

}  // namespace
}  // namespace brenvik
