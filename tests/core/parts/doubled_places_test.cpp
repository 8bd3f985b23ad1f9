// Which solids stand in one another.
#include "parts/doubled_places.h"

#include <gtest/gtest.h>

namespace brenvik {
namespace {

PlacedSize Board(Point3 corner, Point3 size, double share = 1, Point3 pull = {}) {
    const Point3 end{corner.x + size.x, corner.y + size.y, corner.z + size.z};
    return {{corner, end},
            [=] { return share * size.x * size.y * size.z; },
            [=] {
                return Point3{(corner.x + end.x) / 2 + pull.x, (corner.y + end.y) / 2 + pull.y,
                              (corner.z + end.z) / 2 + pull.z};
            }};
}

TEST(DoubledPlaces, OfThreeInOnePlaceTwoStandInTheFirst) {
    const Point3 side{600, 400, 18};
    const auto doubled = DoubledPlaces({Board({0, 0, 0}, side), Board({700, 0, 0}, side),
                                        Board({1e-7, 0, -1e-7}, side), Board({0, -1e-9, 0}, side)});
    ASSERT_EQ(doubled.size(), 2U);
    EXPECT_EQ(doubled[0].solid, 2U);
    EXPECT_EQ(doubled[0].first, 0U);
    EXPECT_EQ(doubled[1].solid, 3U);
    EXPECT_EQ(doubled[1].first, 0U);
}

TEST(DoubledPlaces, WhatSharesTheBoxAloneIsNoDouble) {
    const Point3 side{600, 400, 18};
    EXPECT_TRUE(DoubledPlaces({Board({0, 0, 0}, side), Board({0, 0, 0}, side, 0.9)}).empty());
    // The halves of a board cut along its diagonal.
    EXPECT_TRUE(DoubledPlaces(
                    {Board({0, 0, 0}, side, 0.5, {-100, -66, 0}), Board({0, 0, 0}, side, 0.5, {100, 66, 0})})
                    .empty());
    EXPECT_TRUE(DoubledPlaces({Board({0, 0, 0}, side), Board({0, 0, 0.01}, side)}).empty());
    EXPECT_TRUE(DoubledPlaces({}).empty());
}

TEST(DoubledPlaces, NothingIsIntegratedWhereBoxesDiffer) {
    int asked = 0;
    std::vector<PlacedSize> row;
    for (int i = 0; i < 10000; ++i) {
        row.push_back(Board({20.0 * (i % 100), 0, 700.0 * (i / 100)}, {18, 560, 600}));
        row.back().volume = [&asked] { return ++asked; };
    }
    EXPECT_TRUE(DoubledPlaces(row).empty());
    EXPECT_EQ(asked, 0);
}

}  // namespace
}  // namespace brenvik
