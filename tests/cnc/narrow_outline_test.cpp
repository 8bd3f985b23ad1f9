// The bit of the outline: the first one, unless the outline has a place that is narrower.
#include <numbers>

#include "cnc/outline/narrow_places.h"
#include "cnc/recognition_fixture.h"

namespace brenvik {
namespace {

constexpr double Bit = 12;

std::optional<double> Narrowest(const Shape& shape) {
    std::vector<PathVertex> path;
    for (const ShapeCorner& corner : shape) path.push_back({corner.x, corner.y, corner.bulge});
    return NarrowestPlace(path, Bit);
}
const double Quarter = std::tan(std::numbers::pi / 8);

/// A board with a slot open to its right edge.
Shape Slotted(double width) {
    return {{0, 0},     {400, 0}, {400, 100}, {300, 100}, {300, 100 + width}, {400, 100 + width},
            {400, 300}, {0, 300}};
}

TEST(NarrowPlaces, WhatStandsOutIsNeverNarrow) {
    EXPECT_FALSE(Narrowest(Rectangle(0, 0, 5, 400)));
    EXPECT_FALSE(Narrowest(Rounded(0, 0, 400, 300, 2)));
    EXPECT_FALSE(Narrowest({{0, 0}, {400, 0}, {400, 298}, {398, 300}, {0, 300}}));
    // A tongue of 5.
    EXPECT_FALSE(
        Narrowest({{0, 0}, {400, 0}, {400, 100}, {440, 100}, {440, 105}, {400, 105}, {400, 300}, {0, 300}}));
}

TEST(NarrowPlaces, AnInnerCornerIsNoneHoweverItIsMade) {
    EXPECT_FALSE(Narrowest({{0, 0}, {400, 0}, {400, 100}, {100, 100}, {100, 300}, {0, 300}}));
    EXPECT_FALSE(Narrowest({{0, 0}, {400, 0}, {400, 100}, {103, 100}, {100, 103}, {100, 300}, {0, 300}}));
    EXPECT_FALSE(
        Narrowest({{0, 0}, {400, 0}, {400, 100}, {103, 100, -Quarter}, {100, 103}, {100, 300}, {0, 300}}));
    // An acute one.
    EXPECT_FALSE(Narrowest({{0, 0}, {400, 0}, {400, 140}, {200, 150}, {400, 160}, {400, 300}, {0, 300}}));
}

TEST(NarrowPlaces, ASlotOpenToTheEdgeIsAsWideAsItIs) {
    EXPECT_FALSE(Narrowest(Slotted(12)));
    EXPECT_FALSE(Narrowest(Slotted(40)));
    ASSERT_TRUE(Narrowest(Slotted(5)));
    EXPECT_NEAR(*Narrowest(Slotted(5)), 5, 0.02);
    // With a round end.
    EXPECT_FALSE(Narrowest(
        {{0, 0}, {400, 0}, {400, 100}, {300, 100, -1}, {300, 113}, {400, 113}, {400, 300}, {0, 300}}));
    const auto round = Narrowest(
        {{0, 0}, {400, 0}, {400, 100}, {300, 100, -1}, {300, 108}, {400, 108}, {400, 300}, {0, 300}});
    ASSERT_TRUE(round);
    EXPECT_NEAR(*round, 8, 0.05);
}

TEST(NarrowPlaces, AHalfRoundNotchIsAsWideAsItsCircle) {
    EXPECT_FALSE(Narrowest({{0, 0}, {400, 0}, {400, 100, -1}, {400, 113}, {400, 300}, {0, 300}}));
    const auto notch = Narrowest({{0, 0}, {400, 0}, {400, 100, -1}, {400, 110}, {400, 300}, {0, 300}});
    ASSERT_TRUE(notch);
    EXPECT_NEAR(*notch, 10, 0.1);
}

class NarrowOutline : public WholePartTest {
  protected:
    Shape mShape = Slotted(5);
    MadePart SlottedPart() {
        MadePart part = Made();
        part.Upright(mShape, 18);
        PutDown(part);
        return part;
    }
};

TEST_F(NarrowOutline, IsCutWithABitThatComesIntoItsSlot) {
    for (const Target target : {Target::C2C, Target::Enroute}) {
        MadePart part = SlottedPart();
        dialogs.messages.clear();
        RunAll(target);
        ExpectQuiet();
        EXPECT_EQ(Faults(part.Solid()), std::vector<std::string>{});
        EXPECT_NE(Only(FirstSide(), "OT_").layer.find("_T3_D3_"), std::string::npos)
            << Only(FirstSide(), "OT_").layer;
        part.Solid().Delete();
    }
}

TEST_F(NarrowOutline, BothSidesHaveOneBit) {
    MadePart part = Made();
    part.Upright(mShape, 18);
    part.Pocket(Rectangle(20, 20, 80, 80), 10);
    part.PocketBelow(Rectangle(20, 120, 80, 180), 8);
    PutDown(part);
    RunAll();
    ExpectQuiet();
    EXPECT_EQ(Only(FirstSide(), "OT_").layer, Only(SecondSide(), "OT_").layer);
    EXPECT_NE(Only(FirstSide(), "OT_").layer.find("_T3_D3_"), std::string::npos);
}

TEST_F(NarrowOutline, ASlotNarrowerThanEveryBitIsAskedAboutAndLeavingSkipsThePart) {
    mShape = Slotted(2.5);
    SlottedPart();
    RunAll();
    EXPECT_FALSE(FirstSide());
    const std::vector<std::string> between = Between();
    ASSERT_FALSE(between.empty());
    EXPECT_EQ(between.front(),
              "Your router bits appears too big, for your material 18 OAK, with a route path who's shortest "
              "line is 2.5 long, so you need to make a choice.");
    EXPECT_EQ(LastRunReport().skipped.size(), 1U);
}

TEST_F(NarrowOutline, ChamfersAndShortSidesKeepTheFirstBit) {
    mShape = {{0, 0}, {397, 0}, {400, 3}, {400, 100}, {100, 100}, {100, 300}, {0, 300}};
    SlottedPart();
    RunAll();
    ExpectQuiet();
    EXPECT_NE(Only(FirstSide(), "OT_").layer.find("_T1_D12_"), std::string::npos);
}

}  // namespace
}  // namespace brenvik
