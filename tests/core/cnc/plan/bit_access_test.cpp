// Where a bit gets to within a line and around an outline.
#include "cnc/plan/bit_access.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace brenvik {
namespace {

using Sides = std::vector<PlanSide>;

const double Quarter = std::tan(std::numbers::pi / 8);

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
    return {{{x0 + r, y0}, {x1 - r, y0}}, {{x1 - r, y0}, {x1, y0 + r}, Quarter},
            {{x1, y0 + r}, {x1, y1 - r}}, {{x1, y1 - r}, {x1 - r, y1}, Quarter},
            {{x1 - r, y1}, {x0 + r, y1}}, {{x0 + r, y1}, {x0, y1 - r}, Quarter},
            {{x0, y1 - r}, {x0, y0 + r}}, {{x0, y0 + r}, {x0 + r, y0}, Quarter}};
}

Sides Circle(double x, double y, double radius) {
    return {{{x - radius, y}, {x + radius, y}, 1}, {{x + radius, y}, {x - radius, y}, 1}};
}

/// Two fields of 100 by 100 with a neck of 50 by `width` between them.
Sides DumbBell(double width) {
    const double low = 50 - width / 2, high = 50 + width / 2;
    return Around({{0, 0},
                   {100, 0},
                   {100, low},
                   {150, low},
                   {150, 0},
                   {250, 0},
                   {250, 100},
                   {150, 100},
                   {150, high},
                   {100, high},
                   {100, 100},
                   {0, 100}});
}

/// A round with a slot that leads out of it.
Sides Keyhole(double radius, double width, double length) {
    const double half = width / 2, x = std::sqrt(radius * radius - half * half);
    const double sweep = 2 * std::numbers::pi - 2 * std::atan2(half, x);
    return {{{x, half}, {x, -half}, std::tan(sweep / 4)},
            {{x, -half}, {x + length, -half}},
            {{x + length, -half}, {x + length, half}},
            {{x + length, half}, {x, half}}};
}

Sides Turned(const Sides& sides, double angle) {
    const auto turned = [angle](const PlanPoint& p) {
        return PlanPoint{p.x * std::cos(angle) - p.y * std::sin(angle) + 3.7,
                         p.x * std::sin(angle) + p.y * std::cos(angle) - 11.3};
    };
    Sides result;
    for (const PlanSide& side : sides) result.push_back({turned(side.from), turned(side.to), side.bulge});
    return result;
}

Sides Backwards(const Sides& sides) {
    Sides result;
    for (auto side = sides.rbegin(); side != sides.rend(); ++side)
        result.push_back({side->to, side->from, -side->bulge});
    return result;
}

/// The rest but for the rounds in corners, in millimetres.
Sides NotReached(const Sides& line, BitPath path, double bit) { return RestOfBit(line, path, bit, 1).border; }

/// What a cleared line leaves of its inside.
std::vector<PlanSpot> Left(const Sides& line, double bit) {
    PlanShape shape{PlanShape::Role::Removal, line, 0};
    shape.notReached = NotReached(line, BitPath::Within, bit);
    const Sides sheet = Rectangle(-500, -500, 1000, 1000);
    Sides part = sheet;
    part.insert(part.end(), line.begin(), line.end());
    return CompareInPlan(part, std::vector<PlanShape>{{PlanShape::Role::Stock, sheet, -1}, shape}, 0.01);
}

/// In any direction and either way round.
void ExpectAccess(const Sides& line, double bit, bool everywhere) {
    for (int turn = 0; turn < 8; ++turn) {
        const Sides turned = Turned(line, turn * 0.7853981 + (turn > 3 ? 0.21 : 0));
        EXPECT_EQ(NotReached(turned, BitPath::Within, bit).empty(), everywhere) << turn;
        EXPECT_EQ(NotReached(Backwards(turned), BitPath::Within, bit).empty(), everywhere) << turn;
    }
}

void ExpectAround(const Sides& outline, double bit, bool everywhere) {
    for (int turn = 0; turn < 8; ++turn) {
        const Sides turned = Turned(outline, turn * 0.7853981 + (turn > 3 ? 0.21 : 0));
        EXPECT_EQ(NotReached(turned, BitPath::Around, bit).empty(), everywhere) << turn;
        EXPECT_EQ(NotReached(Backwards(turned), BitPath::Around, bit).empty(), everywhere) << turn;
    }
}

TEST(BitAccess, SharpCornersAreNoRest) {
    ExpectAccess(Rectangle(0, 0, 100, 60), 12, true);
    ExpectAccess(Rectangle(0, 0, 100, 12), 12, true);
    ExpectAccess(Rectangle(0, 0, 12, 12), 12, true);
    ExpectAccess(Around({{0, 0}, {100, 0}, {100, 100}, {60, 100}, {60, 40}, {0, 40}}), 12, true);
    ExpectAccess(Around({{0, 0}, {100, 0}, {50, 100 * std::sqrt(3) / 2}}), 12, true);
    // One wall round.
    ExpectAccess({{{0, 0}, {100, 0}}, {{100, 0}, {0, 0}, 1}}, 12, true);
    ExpectAccess({{{0, 0}, {100, 0}}, {{100, 0}, {100, 80}}, {{100, 80}, {0, 80}, -0.2}, {{0, 80}, {0, 0}}},
                 12, true);
}

TEST(BitAccess, ALineThatComesBackOnItselfEnclosesNothing) {
    const PlanPoint from{127.5, 234.516671299}, middle{158.5, 264.5}, to{157.893876913, 270.5};
    const Sides thereAndBack{
        {from, to, 0.484750112}, {to, middle, -0.050382044}, {middle, from, -0.424012536}};
    EXPECT_TRUE(NotReached(thereAndBack, BitPath::Within, 6).empty());
}

TEST(BitAccess, AnAcuteCornerIsARest) {
    ExpectAccess(Around({{0, 0}, {100, 0}, {100, 30}}), 12, false);
    ExpectAccess(Around({{0, 0}, {100, 0}, {0, 100}}), 12, true);
}

TEST(BitAccess, ABitGetsThroughWhatIsAsWideAsItself) {
    ExpectAccess(DumbBell(12), 12, true);
    ExpectAccess(DumbBell(11.9985), 12, true);
    ExpectAccess(DumbBell(11.9), 12, false);
    ExpectAccess(DumbBell(8), 12, false);
    ExpectAccess(Keyhole(20, 12, 40), 12, true);
    ExpectAccess(Keyhole(20, 8, 40), 12, false);
}

TEST(BitAccess, ANoseOrAnArmThatTheBitDoesNotEnterIsARest) {
    const auto arm = [](double width) {
        return Around({{0, 0},
                       {100, 0},
                       {100, 100},
                       {40 + width, 100},
                       {40 + width, 130},
                       {40, 130},
                       {40, 100},
                       {0, 100}});
    };
    ExpectAccess(arm(12), 12, true);
    ExpectAccess(arm(10), 12, false);
    // As short as its width.
    ExpectAccess(Around({{0, 0}, {100, 0}, {100, 100}, {50, 100}, {50, 108}, {42, 108}, {42, 100}, {0, 100}}),
                 12, false);
}

TEST(BitAccess, ARoundingTighterThanTheBitIsARest) {
    ExpectAccess(Rounded(0, 0, 100, 60, 6), 12, true);
    ExpectAccess(Rounded(0, 0, 100, 60, 20), 12, true);
    ExpectAccess(Rounded(0, 0, 100, 60, 5), 12, false);
    ExpectAccess(Rounded(0, 0, 100, 12, 6 - 1e-9), 12, true);
    ExpectAccess(Circle(10, 20, 6), 12, true);
    ExpectAccess(Circle(10, 20, 40), 12, true);
    ExpectAccess(Circle(10, 20, 5), 12, false);
}

TEST(BitAccess, TheRestOfANeckIsAsWideAsTheNeck) {
    const std::vector<PlanSpot> spots = Left(DumbBell(8), 12);
    ASSERT_EQ(spots.size(), 1U);
    EXPECT_TRUE(spots[0].notReached);
    EXPECT_EQ(spots[0].operation, 0);
    EXPECT_NEAR(spots[0].width, 8, 0.1);
    // At its mouths the bit reaches in by the height of its cap.
    const double cap = 6 - std::sqrt(36 - 16.0);
    EXPECT_NEAR(spots[0].box.maxX - spots[0].box.minX, 50, 2 * cap);
    EXPECT_NEAR(WidestForPlace(DumbBell(8), BitPath::Within, spots[0].box, 12, 1), 8, 0.01);
}

TEST(BitAccess, TheRestOfARoundingIsWhatABitLeavesOfIt) {
    const Sides field = Rounded(0, 0, 100, 60, 4);
    const std::vector<PlanSpot> spots = Left(field, 12);
    ASSERT_EQ(spots.size(), 4U);
    for (const PlanSpot& spot : spots) {
        EXPECT_NEAR(spot.area, (36 - 16) * (1 - std::numbers::pi / 4), 0.1);
        EXPECT_NEAR(WidestForPlace(field, BitPath::Within, spot.box, 12, 1), 8, 0.02);
    }
}

TEST(BitAccess, NothingIsReachedWhereTheBitFitsNowhere) {
    const std::vector<PlanSpot> spots = Left(Rectangle(0, 0, 100, 8), 12);
    ASSERT_EQ(spots.size(), 1U);
    EXPECT_NEAR(spots[0].area, 800, 1e-6);
}

TEST(BitAccess, AnIslandsSideIsReachedAllAround) {
    // A field into which a round nose of wood reaches.
    ExpectAccess({{{0, 0}, {100, 0}},
                  {{100, 0}, {100, 100}},
                  {{100, 100}, {60, 100}},
                  {{60, 100}, {60, 50}},
                  {{60, 50}, {40, 50}, -1},
                  {{40, 50}, {40, 100}},
                  {{40, 100}, {0, 100}},
                  {{0, 100}, {0, 0}}},
                 12, true);
}

TEST(BitAccess, AFreeCurveInChordsIsReached) {
    std::vector<PlanPoint> corners;
    for (int i = 0; i < 200; ++i) {
        const double angle = 2 * std::numbers::pi * i / 200;
        corners.push_back({80 * std::cos(angle), 30 * std::sin(angle)});
    }
    // The tightest curve of the ellipse has a radius of 30 * 30 / 80.
    ExpectAccess(Around(corners), 20, true);
    ExpectAccess(Around(corners), 40, false);
}

TEST(BitAccess, AnOutlineIsReachedFromOutside) {
    ExpectAround(Rectangle(0, 0, 100, 5), 12, true);
    ExpectAround(Rounded(0, 0, 100, 60, 2), 12, true);
    ExpectAround(Around({{0, 0}, {100, 0}, {100, 100}, {60, 100}, {60, 40}, {0, 40}}), 12, true);
    const auto slotted = [](double width) {
        return Around({{0, 0},
                       {100, 0},
                       {100, 40},
                       {60, 40},
                       {60, 40 + width},
                       {100, 40 + width},
                       {100, 100},
                       {0, 100}});
    };
    ExpectAround(slotted(12), 12, true);
    ExpectAround(slotted(40), 12, true);
    ExpectAround(slotted(8), 12, false);
    // An inner corner that is rounded.
    const auto angle = [](double r) {
        return Sides{{{0, 0}, {100, 0}},        {{100, 0}, {100, 40}},
                     {{100, 40}, {40 + r, 40}}, {{40 + r, 40}, {40, 40 + r}, -Quarter},
                     {{40, 40 + r}, {40, 100}}, {{40, 100}, {0, 100}},
                     {{0, 100}, {0, 0}}};
    };
    ExpectAround(angle(6), 12, true);
    ExpectAround(angle(3), 12, false);
}

}  // namespace
}  // namespace brenvik
