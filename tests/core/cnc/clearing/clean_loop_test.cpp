// Ways that meet themselves or turn back, and what is left of them.
#include "cnc/clearing/clean_loop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace brenvik {
namespace {

constexpr double Same = 2e-5;
constexpr SpikeLimits Limits{0.005, 0.049, 4};

PlanLoop Around(const std::vector<PlanPoint>& corners) {
    PlanLoop loop;
    for (std::size_t i = 0; i < corners.size(); ++i)
        loop.push_back({corners[i], corners[(i + 1) % corners.size()], 0});
    return loop;
}

bool Closes(const PlanLoop& loop) {
    for (std::size_t i = 0; i < loop.size(); ++i) {
        const PlanPoint &end = loop[i].to, &begin = loop[(i + 1) % loop.size()].from;
        if (std::hypot(end.x - begin.x, end.y - begin.y) > 1e-9) return false;
    }
    return !loop.empty();
}

double FarthestAlongX(const PlanLoop& loop) {
    double farthest = 0;
    for (const PlanSide& side : loop) farthest = std::max(farthest, std::abs(side.from.x));
    return farthest;
}

TEST(CleanLoop, AWayOutAndBackOnOneLineIsLeftOut) {
    const PlanLoop clean =
        WithoutSpikes(Around({{0, 0}, {40, 0}, {40, 10}, {42, 10}, {40, 10}, {40, 30}, {0, 30}}), Limits);
    EXPECT_TRUE(Closes(clean));
    EXPECT_NEAR(SignedArea(clean), 1200, 1e-9);
    EXPECT_NEAR(FarthestAlongX(clean), 40, 1e-9);
}

TEST(CleanLoop, ATipThatARoundRunsOutToIsCutOffWhereItIsWideEnough) {
    // A quarter round of 6.5 that touches the line beside it: at x before the tip they are x²/13 apart.
    const double quarter = std::tan(std::acos(-1.0) / 8);
    PlanLoop loop = Around({{0, 0}, {60, 0}, {60, 23.5}, {66.5, 30}, {0, 30}});
    loop[2].bulge = -quarter;
    const PlanLoop mirrored = [&] {
        PlanLoop turned;
        for (const PlanSide& side : loop)
            turned.push_back({{-side.to.x, side.to.y}, {-side.from.x, side.from.y}, side.bulge});
        std::ranges::reverse(turned);
        return turned;
    }();
    for (const PlanLoop& each : {loop, mirrored}) {
        const PlanLoop clean = WithoutSpikes(each, Limits);
        EXPECT_TRUE(Closes(clean));
        const auto isShort = [](const PlanSide& side) {
            const double length = std::hypot(side.to.x - side.from.x, side.to.y - side.from.y);
            return length > 0.03 && length < 0.06;
        };
        EXPECT_EQ(std::ranges::count_if(clean, isShort), 1);
        EXPECT_NEAR(SignedArea(clean), SignedArea(each), 0.03);
        EXPECT_NEAR(FarthestAlongX(clean), 66.5 - 0.8, 0.02);
    }
}

TEST(CleanLoop, AVertexThatStandsTwiceStandsOnce) {
    const PlanLoop clean = WithoutSpikes(Around({{0, 0}, {40, 0}, {40, 0.001}, {40, 30}, {0, 30}}), Limits);
    EXPECT_TRUE(Closes(clean));
    EXPECT_EQ(clean.size(), 4U);
}

TEST(CleanLoop, ALongSlitStays) {
    const PlanLoop slit = Around({{0, 0}, {40, 0}, {40, 10}, {60, 10}, {40, 10.01}, {40, 30}, {0, 30}});
    EXPECT_EQ(WithoutSpikes(slit, Limits).size(), slit.size());
}

TEST(CleanLoop, AWayThatCrossesItselfFallsIntoItsPlaces) {
    const PlanLoop bow = Around({{0, 0}, {40, 30}, {40, 0}, {0, 30}});
    EXPECT_FALSE(IsSimple(bow, Same));
    EXPECT_EQ(PlacesWithin(bow, Same).size(), 2U);
    EXPECT_TRUE(IsSimple(Around({{0, 0}, {40, 0}, {40, 30}, {0, 30}}), Same));
}

}  // namespace
}  // namespace brenvik
