// Where sections differ, by rectangles, circles and slivers whose areas are known.
#include "cnc/plan/plan_difference.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace brenvik {
namespace {

using Sides = std::vector<PlanSide>;

Sides Rectangle(double x0, double y0, double x1, double y1) {
    return {{{x0, y0}, {x1, y0}}, {{x1, y0}, {x1, y1}}, {{x1, y1}, {x0, y1}}, {{x0, y1}, {x0, y0}}};
}

Sides Circle(double x, double y, double radius) {
    return {{{x - radius, y}, {x + radius, y}, 1}, {{x + radius, y}, {x - radius, y}, 1}};
}

/// About the origin, by degrees.
Sides Turned(Sides sides, double degrees) {
    const double c = std::cos(degrees * std::numbers::pi / 180),
                 s = std::sin(degrees * std::numbers::pi / 180);
    const auto turn = [&](PlanPoint& p) { p = {c * p.x - s * p.y, s * p.x + c * p.y}; };
    for (PlanSide& side : sides) {
        turn(side.from);
        turn(side.to);
    }
    return sides;
}

Sides Backwards(Sides sides) {
    for (PlanSide& side : sides) {
        std::swap(side.from, side.to);
        side.bulge = -side.bulge;
    }
    return sides;
}

Sides operator+(Sides a, const Sides& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

PlanShape Stock(Sides sides) { return {PlanShape::Role::Stock, std::move(sides), -1}; }
PlanShape Cut(Sides sides, int operation = 0) {
    return {PlanShape::Role::Removal, std::move(sides), operation};
}

std::vector<PlanSpot> Spots(const Sides& part, const std::vector<PlanShape>& shapes) {
    return CompareInPlan(part, shapes, 0.01);
}

TEST(PlanDifference, WhatIsCutAsItIsDrawnLeavesNoSpot) {
    for (const double angle : {0.0, 0.001, 17.0, 45.0, 89.999, 90.0, 133.0}) {
        const Sides board = Turned(Rectangle(0, 0, 600, 400), angle);
        const Sides window = Turned(Rectangle(50, 50, 250, 350), angle);
        const Sides hole = Turned(Circle(400, 200, 17.5), angle);
        EXPECT_TRUE(
            Spots(board + window + hole, {Stock(board), Cut(window), Cut(Backwards(hole), 1)}).empty())
            << angle;
    }
}

TEST(PlanDifference, SidesThatMissByTheNoiseOfFilesLeaveNoSpot) {
    for (const double noise : {1e-12, 1e-9, 1e-7, 1e-6, 1e-4}) {
        const Sides board = Rectangle(0, 0, 600, 400);
        const Sides hole = Circle(400, 200, 17.5), cut = Circle(400 + noise, 200 - noise, 17.5 + noise / 2);
        const Sides window = Rectangle(50, 50, 250, 350);
        const Sides route = Rectangle(50 - noise, 50 + noise, 250 + noise, 350);
        EXPECT_TRUE(Spots(board + hole + window, {Stock(board), Cut(cut), Cut(route, 1)}).empty()) << noise;
    }
}

TEST(PlanDifference, AMissingRecessStands) {
    const Sides board = Rectangle(0, 0, 600, 400);
    const std::vector<PlanSpot> spots = Spots(board + Rectangle(50, 50, 550, 350), {Stock(board)});
    ASSERT_EQ(spots.size(), 1U);
    EXPECT_EQ(spots[0].difference, Difference::Standing);
    EXPECT_NEAR(spots[0].area, 500.0 * 300, 1e-6);
    EXPECT_NEAR(spots[0].width, 300, 1e-9);
    EXPECT_EQ(spots[0].box.minX, 50);
    EXPECT_EQ(spots[0].box.maxY, 350);
}

TEST(PlanDifference, AMissingRoundHoleHasTheAreaOfItsCircle) {
    const Sides board = Turned(Rectangle(0, 0, 600, 400), 30);
    const std::vector<PlanSpot> spots = Spots(board + Turned(Circle(100, 100, 4), 30), {Stock(board)});
    ASSERT_EQ(spots.size(), 1U);
    EXPECT_NEAR(spots[0].area, std::numbers::pi * 16, 1e-9);
    EXPECT_NEAR(spots[0].width, 8, 1e-9);
}

TEST(PlanDifference, AnOperationTooManyTakesWoodAndIsNamed) {
    const Sides board = Rectangle(0, 0, 600, 400);
    const std::vector<PlanSpot> spots = Spots(board, {Stock(board), Cut(Rectangle(500, 100, 700, 200), 7)});
    ASSERT_EQ(spots.size(), 1U);
    EXPECT_EQ(spots[0].difference, Difference::Gone);
    EXPECT_EQ(spots[0].operation, 7);
    EXPECT_NEAR(spots[0].area, 100.0 * 100, 1e-6);
}

TEST(PlanDifference, ABridgeInAGrooveIsOneSpotHoweverSmallItsShare) {
    const Sides board = Rectangle(0, 0, 600, 400), groove = Rectangle(-20, 100, 620, 110);
    const Sides part = Rectangle(0, 0, 600, 100) + Rectangle(0, 110, 600, 400);
    const std::vector<PlanSpot> spots = Spots(
        part, {Stock(board), Cut(Rectangle(-20, 100, 296, 110), 0), Cut(Rectangle(304, 100, 620, 110), 1)});
    ASSERT_EQ(spots.size(), 1U);
    EXPECT_EQ(spots[0].difference, Difference::Standing);
    EXPECT_NEAR(spots[0].area, 80, 1e-9);
    EXPECT_TRUE(Spots(part, {Stock(board), Cut(groove)}).empty());
}

TEST(PlanDifference, ASliverCountsFromTheWidthThatIsAskedForWhicheverWayItRuns) {
    for (const double angle : {0.0, 30.0, 89.0, 90.0}) {
        const Sides board = Turned(Rectangle(0, 0, 600, 400), angle);
        const auto spotsOf = [&](double wide) {
            const Sides part =
                Turned(Rectangle(0, 0, 600, 400), angle) + Turned(Rectangle(50, 50, 250, 350), angle);
            return Spots(part, {Stock(board), Cut(Turned(Rectangle(50 + wide, 50, 250, 350), angle))});
        };
        EXPECT_TRUE(spotsOf(0.009).empty()) << angle;
        EXPECT_EQ(spotsOf(0.02).size(), 1U) << angle;
    }
}

// Where the walls of a spot run into each other its width is taken for up to twice as large: no spot is lost
// by that.
TEST(PlanDifference, SliversAreAsNarrowAsTheyAreWhereAHairJoinsThem) {
    // Both long sides of a slot lie off by a sliver, and its end by a hair.
    const Sides board = Rectangle(0, 0, 600, 400);
    for (const double hair : {1e-5, 0.005, 0.02}) {
        const Sides part = board + Rectangle(100, 100, 200, 108);
        const Sides cut = Rectangle(100, 99.98, 200 + hair, 108.02);
        for (const double angle : {0.0, 90.0, 17.0}) {
            const auto spots =
                Spots(Turned(part, angle), {Stock(Turned(board, angle)), Cut(Turned(cut, angle))});
            ASSERT_FALSE(spots.empty());
            for (const PlanSpot& spot : spots) EXPECT_LT(spot.width, 0.041) << hair << " " << angle;
        }
    }
}

TEST(PlanDifference, ARingBetweenTwoCirclesIsAtLeastAsWideAsTheirRadiiDiffer) {
    const Sides board = Rectangle(0, 0, 600, 400);
    const auto spotsOf = [&](double wide) {
        return Spots(board + Circle(300, 200, 100), {Stock(board), Cut(Circle(300, 200, 100 - wide))});
    };
    EXPECT_TRUE(spotsOf(0.004).empty());
    const std::vector<PlanSpot> spots = spotsOf(0.5);
    ASSERT_EQ(spots.size(), 1U);
    EXPECT_NEAR(spots[0].area, std::numbers::pi * (10000 - 99.5 * 99.5), 1e-6);
    EXPECT_GE(spots[0].width, 0.5 - 1e-9);
    EXPECT_LE(spots[0].width, 1);
}

TEST(PlanDifference, OverlappingCutsCountOnce) {
    const Sides board = Rectangle(0, 0, 600, 400);
    const Sides cross = Rectangle(100, 180, 500, 220), other = Rectangle(280, 50, 320, 350);
    const Sides part = Rectangle(0, 0, 600, 400) +
                       Sides{{{100, 180}, {280, 180}}, {{280, 180}, {280, 50}},  {{280, 50}, {320, 50}},
                             {{320, 50}, {320, 180}},  {{320, 180}, {500, 180}}, {{500, 180}, {500, 220}},
                             {{500, 220}, {320, 220}}, {{320, 220}, {320, 350}}, {{320, 350}, {280, 350}},
                             {{280, 350}, {280, 220}}, {{280, 220}, {100, 220}}, {{100, 220}, {100, 180}}};
    EXPECT_TRUE(Spots(part, {Stock(board), Cut(cross), Cut(Backwards(other), 1)}).empty());
}

TEST(PlanDifference, TheLoopsOfLeadsOutsideOfAnOutlineTakeNothing) {
    // A corner at (600,0) where the path runs on, crosses over, and comes in anew.
    const Sides outline{{{0, 0}, {615, 0}},       {{615, 0}, {615, -15}}, {{615, -15}, {600, -15}},
                        {{600, -15}, {600, 400}}, {{600, 400}, {0, 400}}, {{0, 400}, {0, 0}}};
    EXPECT_TRUE(Spots(Rectangle(0, 0, 600, 400), {Stock(outline)}).empty());
}

TEST(PlanDifference, WithoutTheSheetOutsideNothingStays) {
    const Sides board = Rectangle(0, 0, 600, 400);
    const std::vector<PlanSpot> spots = Spots(board, {Stock(Rectangle(0, 0, 590, 400))});
    ASSERT_EQ(spots.size(), 1U);
    EXPECT_EQ(spots[0].difference, Difference::Gone);
    EXPECT_EQ(spots[0].operation, -1);
}

}  // namespace
}  // namespace brenvik
