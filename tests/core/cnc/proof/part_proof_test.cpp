// Operations against a board that has nothing in it.
#include "cnc/proof/part_proof.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numbers>

namespace brenvik {
namespace {

constexpr double length = 600, width = 400, thickness = 18;

std::vector<PlanSide> Rectangle(double left, double front, double right, double back) {
    const PlanPoint a{left, front}, b{right, front}, c{right, back}, d{left, back};
    return {{a, b}, {b, c}, {c, d}, {d, a}};
}

/// A board with an upright recess from the top, if it is given one.
class Board : public SolidSections {
  public:
    explicit Board(std::vector<PlanSide> recess = {}, double floor = 0)
        : mRecess(std::move(recess)), mFloor(floor), mLevels{0, thickness} {
        if (!mRecess.empty()) mLevels = {0, floor, thickness};
    }
    Box3 Box() const override { return {{0, 0, 0}, {length, width, thickness}}; }
    const std::vector<double>& Levels() const override { return mLevels; }
    const std::vector<HeightSpan>& Slopes() const override { return mSlopes; }
    const std::vector<LevelRound>& Rounds() const override { return mRounds; }
    std::vector<PlanSide> At(double height) const override {
        std::vector<PlanSide> sides = Rectangle(0, 0, length, width);
        if (height > mFloor) sides.insert(sides.end(), mRecess.begin(), mRecess.end());
        return sides;
    }

  private:
    std::vector<PlanSide> mRecess;
    double mFloor;
    std::vector<double> mLevels;
    std::vector<HeightSpan> mSlopes;
    std::vector<LevelRound> mRounds;
};

WrittenOperation Outline(bool secondSide = false) {
    return {OperationKind::Outline, "OT", secondSide, Rectangle(0, 0, length, width), -0.3, thickness};
}
WrittenOperation Path(const char* layer, std::vector<PlanSide> sides, double low, double high = thickness) {
    return {OperationKind::Pocket, layer, false, std::move(sides), low, high};
}

using Texts = std::vector<std::string>;

bool Tell(const Texts& faults, const std::string& text) {
    return std::ranges::any_of(faults, [&](const std::string& each) { return each.starts_with(text); });
}

TEST(PartProof, AnOperationThatPassesThePartByIsTold) {
    const std::vector<WrittenOperation> operations{
        Outline(), Path("PKC", Rectangle(700, 100, 800, 200), 6),
        Path("ABOVE", Rectangle(100, 100, 200, 200), thickness, thickness + 3)};
    const PartProof proof = ProvePart(Board(), operations, {}, 1);
    EXPECT_EQ(proof.faults, (Texts{"PKC passes the part by and cuts nothing",
                                   "ABOVE passes the part by and cuts nothing"}));
    EXPECT_TRUE(proof.spots.empty());
}

TEST(PartProof, APathWhoseBitGoesNowhereIsToldWithItsPlaceAndAllElseIsCompared) {
    // The path crosses itself: beyond the crossing its inside is to its right.
    const std::vector<PlanPoint> corners{{432, 275}, {427, 257}, {493, 240}, {504.6, 283}, {504.6, 275}};
    std::vector<PlanSide> sides;
    for (std::size_t i = 0; i < corners.size(); ++i)
        sides.push_back({corners[i], corners[(i + 1) % corners.size()]});
    WrittenOperation twisted = Path("RT", sides, 12);
    twisted.bit = 8;
    twisted.secondSide = true;
    const std::vector<WrittenOperation> operations{Outline(), twisted};
    const PartProof proof = ProvePart(Board(), operations, {}, 1);
    EXPECT_EQ(proof.faults,
              (Texts{"what the bit of 8 leaves of RT of the second side, 6 deep, from 427,240 to 504.6,283, "
                     "could not be compared, since its way does not close"}));
    EXPECT_FALSE(proof.spots.empty());
}

TEST(PartProof, WhatGoesThroughFromBothSidesStandsTwiceHoweverDeepInTheSpoilBoard) {
    const std::vector<PlanSide> window = Rectangle(100, 100, 200, 200);
    WrittenOperation fromBelow = Path("BELOW", window, 0, thickness + 0.3);
    fromBelow.secondSide = true;
    const std::vector<WrittenOperation> operations{Outline(), Outline(true), Path("ABOVE", window, -0.3),
                                                   fromBelow};
    EXPECT_EQ(ProvePart(Board(window), operations, {}, 1).faults,
              (Texts{"ABOVE and BELOW stand in one place"}));
}

TEST(PartProof, OneCourseFromOneSideStandsTwiceAtAnyDepthAndFromAnyCorner) {
    const std::vector<PlanSide> recess = Rectangle(100, 100, 200, 160);
    std::vector<PlanSide> backwards;
    for (const PlanSide& side : recess) backwards.insert(backwards.begin(), {side.to, side.from});
    std::ranges::rotate(backwards, backwards.begin() + 1);
    const std::vector<WrittenOperation> operations{Outline(), Path("DEEP", recess, 12),
                                                   Path("SHALLOW", backwards, 15)};
    EXPECT_EQ(ProvePart(Board(recess, 12), operations, {}, 1).faults,
              (Texts{"DEEP and SHALLOW stand in one place"}));
}

TEST(PartProof, AnOperationThatAnotherOneHoldsIsTold) {
    const std::vector<PlanSide> recess = Rectangle(100, 100, 200, 160);
    const auto faults = [&](const std::vector<PlanSide>& inner, double low) {
        const std::vector<WrittenOperation> operations{Outline(), Path("OUTER", recess, 12),
                                                       Path("INNER", inner, low)};
        return ProvePart(Board(recess, 12), operations, {}, 1).faults;
    };
    const Texts told{"INNER cuts nothing that OUTER does not cut, from 100.5,100 to 200,160"};
    EXPECT_EQ(faults(Rectangle(100.5, 100, 200, 160), 12), told);
    EXPECT_EQ(faults(Rectangle(100.5, 100, 200, 160), 16), told);
    EXPECT_EQ(faults(Rectangle(100.5, 100, 200, 160), 11.9), Texts());
    EXPECT_EQ(faults(Rectangle(90, 110, 190, 120), 12), Texts());
    WrittenOperation fromBelow = Path("BELOW", Rectangle(110, 110, 190, 150), 0, 6);
    fromBelow.secondSide = true;
    const std::vector<WrittenOperation> operations{Outline(), Path("WINDOW", recess, -0.3), fromBelow};
    EXPECT_TRUE(ProvePart(Board(recess), operations, {}, 1).faults.empty());
}

TEST(PartProof, APathThatSeveralOthersCoverTogetherIsTold) {
    const std::vector<PlanSide> recess = Rectangle(100, 100, 400, 160);
    const auto faults = [&](const std::vector<PlanSide>& added, double low) {
        const std::vector<WrittenOperation> operations{
            Outline(), Path("LEFT", Rectangle(100, 100, 210, 160), 12),
            Path("MIDDLE", Rectangle(200, 100, 310, 160), 12),
            Path("RIGHT", Rectangle(300, 100, 400, 160), 12), Path("ADDED", added, low)};
        return ProvePart(Board(recess, 12), operations, {}, 1).faults;
    };
    EXPECT_EQ(faults(Rectangle(110, 110, 390, 150), 12),
              (Texts{"ADDED cuts nothing that others do not cut already, from 110,110 to 390,150"}));
    EXPECT_EQ(faults(Rectangle(110, 110, 390, 150), 15),
              (Texts{"ADDED cuts nothing that others do not cut already, from 110,110 to 390,150"}));
    EXPECT_EQ(faults(Rectangle(110, 110, 390, 150), 11.9), Texts());
    EXPECT_EQ(faults(Rectangle(110, 99, 390, 150), 12), Texts());
}

TEST(PartProof, APathThatCutsNothingMoreButAirIsTold) {
    const std::vector<PlanSide> recess = Rectangle(0, 0, length, 15);
    for (const double along : {0.5, 5.0, 12.0}) {
        const std::vector<WrittenOperation> operations{
            Outline(), Path("RT", Rectangle(-7, -7, length + 7, 15), 12),
            Path("AGAIN", Rectangle(-7 + along, -7 - along, length + 7 + along, 15 - along), 12)};
        const Texts told = ProvePart(Board(recess, 12), operations, {}, 1).faults;
        EXPECT_TRUE(Tell(told, "AGAIN cuts nothing that RT does not cut, from ")) << along;
    }
}

TEST(PartProof, APathInTheNotchOfAnOutlinePassesThePartBy) {
    const std::vector<PlanSide> notch = Rectangle(500, 300, length, width);
    WrittenOperation outline = Outline();
    outline.sides = SidesAround({{0, 0}, {length, 0}, {length, 300}, {500, 300}, {500, width}, {0, width}});
    const std::vector<WrittenOperation> operations{outline, Path("RT", Rectangle(510, 310, 550, 350), 12),
                                                   Path("NEAR", Rectangle(505, 320, 590, 330), 0)};
    EXPECT_EQ(ProvePart(Board(notch, 0), operations, {}, 1).faults,
              (Texts{"NEAR passes the part by and cuts nothing", "RT passes the part by and cuts nothing"}));
}

TEST(PartProof, WhatTheBitOfTheLargerPathLeavesIsAnotherOnes) {
    // Within the line, but in the core of a route and in the corner of a pocket.
    const std::vector<PlanSide> recess = Rectangle(100, 100, 200, 160);
    WrittenOperation route = Path("RT", recess, 12);
    route.bit = 12;
    route.followed = true;
    const std::vector<WrittenOperation> cleared{Outline(), route,
                                                Path("CORE", Rectangle(110, 110, 190, 150), 12)};
    EXPECT_TRUE(ProvePart(Board(recess, 12), cleared, {}, 1).faults.empty());
    WrittenOperation pocket = Path("PKC", recess, 12);
    pocket.bit = 20;
    const std::vector<WrittenOperation> cornered{Outline(), pocket,
                                                 Path("CORNER", Rectangle(100, 100, 109, 109), 12)};
    EXPECT_TRUE(ProvePart(Board(recess, 12), cornered, {}, 1).faults.empty());
    // A groove as wide as its bit has no core.
    WrittenOperation groove = Path("GROOVE", Rectangle(100, 100, 200, 112), 12);
    groove.bit = 12;
    groove.followed = true;
    const std::vector<WrittenOperation> crossing{Outline(), groove,
                                                 Path("HOLE", Rectangle(140, 90, 150, 120), 0)};
    EXPECT_TRUE(ProvePart(Board(recess, 12), crossing, {}, 1).faults.empty());
}

TEST(PartProof, ASecondOutlineWithinTheFirstIsTold) {
    for (const double inset : {0.02, 0.1, 1.0, 50.0}) {
        SCOPED_TRACE(inset);
        WrittenOperation smaller = Outline();
        smaller.sides = Rectangle(inset, 0, length, width);
        const std::vector<WrittenOperation> operations{Outline(), smaller};
        const PartProof proof = ProvePart(Board(), operations, {}, 1);
        ASSERT_EQ(proof.faults.size(), 1U);
        EXPECT_TRUE(proof.faults[0].starts_with(
            "OT goes around wood within another outline, and cuts the part smaller, from "));
    }
    const std::vector<WrittenOperation> twice{Outline(), Outline()};
    EXPECT_EQ(ProvePart(Board(), twice, {}, 1).faults, Texts{"OT stands twice in one place"});
    const std::vector<WrittenOperation> bothSides{Outline(), Outline(true)};
    EXPECT_TRUE(ProvePart(Board(), bothSides, {}, 1).faults.empty());
}

/// A board with a window in which a lump stands that belongs to it.
class BoardWithLump : public Board {
  public:
    using Board::Board;
    std::vector<PlanSide> At(double height) const override {
        std::vector<PlanSide> sides = Board::At(height);
        for (const PlanSide& side : Rectangle(150, 150, 250, 250)) sides.push_back(side);
        return sides;
    }
};

TEST(PartProof, ALumpInAWindowHasAnOutlineOfItsOwn) {
    const std::vector<PlanSide> window = Rectangle(100, 100, 300, 300);
    WrittenOperation around = Outline();
    around.sides = Rectangle(150, 150, 250, 250);
    const std::vector<WrittenOperation> operations{Outline(), around, Path("RT", window, -0.3)};
    EXPECT_TRUE(ProvePart(BoardWithLump(window), operations, {}, 1).faults.empty());
}

TEST(PartProof, ACounterboredEdgeBoreIsTwoAndOneThatTheOtherHoldsIsTold) {
    const auto bore = [](const char* layer, double diameter, double depth) {
        WrittenOperation operation{OperationKind::Bore, layer, false, {}, 9 - diameter / 2, 9 + diameter / 2};
        operation.bore = LevelRound{{0, 200, 9}, {1, 0, 0}, diameter / 2};
        operation.boreDepth = depth;
        return operation;
    };
    const std::vector<WrittenOperation> stepped{Outline(), bore("WIDE", 8, 10), bore("DEEP", 5, 30)};
    EXPECT_TRUE(ProvePart(Board(), stepped, {}, 1).faults.empty());
    const std::vector<WrittenOperation> held{Outline(), bore("WIDE", 8, 30), bore("THIN", 5, 30)};
    EXPECT_EQ(ProvePart(Board(), held, {}, 1).faults, Texts{"WIDE and THIN stand in one place"});
    // By a hair the one is wider, and the other deeper.
    const std::vector<WrittenOperation> wider{Outline(), bore("DEEP", 8, 30), bore("WIDE", 8.02, 1)};
    EXPECT_EQ(ProvePart(Board(), wider, {}, 1).faults, Texts{"DEEP and WIDE stand in one place"});
    const std::vector<WrittenOperation> deeper{Outline(), bore("WIDE", 8, 30), bore("DEEP", 6, 30.01)};
    EXPECT_EQ(ProvePart(Board(), deeper, {}, 1).faults, Texts{"WIDE and DEEP stand in one place"});
}

TEST(PartProof, AVertexThatStandsTwiceAndAWayThatRunsTwiceAreTold) {
    std::vector<PlanSide> recess = Rectangle(100, 100, 200, 160);
    recess.insert(recess.begin(), {{100, 100}, {100, 100}, 1});
    const std::vector<WrittenOperation> vertex{Outline(), Path("PKC", recess, 12)};
    EXPECT_EQ(ProvePart(Board(recess, 12), vertex, {}, 1).faults,
              Texts{"PKC has a vertex twice, at 100,100"});
    std::vector<PlanSide> around = Rectangle(100, 100, 200, 160);
    around.insert(around.end(), recess.begin() + 1, recess.end());
    const std::vector<WrittenOperation> twice{Outline(), Path("PKC", around, 12)};
    EXPECT_EQ(ProvePart(Board(Rectangle(100, 100, 200, 160), 12), twice, {}, 1).faults,
              Texts{"PKC runs twice from 100,100 to 200,100"});
}

TEST(PartProof, ARouteLeavesWhatItsBitDoesNotReach) {
    const std::vector<PlanSide> recess = Rectangle(100, 100, 200, 160);
    WrittenOperation route = Path("RT", recess, 12);
    route.bit = 12;
    route.followed = true;
    const std::vector<WrittenOperation> operations{Outline(), route};
    const PartProof proof = ProvePart(Board(recess, 12), operations, {}, 1);
    ASSERT_EQ(proof.spots.size(), 1U);
    EXPECT_EQ(proof.spots[0].layer, "RT");
    EXPECT_EQ(proof.spots[0].bit, 12);
    EXPECT_NEAR(proof.spots[0].volume, 76 * 36 * 6, 1e-6);
}

WrittenOperation Pocket(std::vector<PlanSide> sides, double bit) {
    WrittenOperation pocket = Path("PKC", std::move(sides), 12);
    pocket.bit = bit;
    return pocket;
}

TEST(PartProof, ARoundInACornerOfThePartIsNone) {
    const std::vector<PlanSide> recess = Rectangle(100, 100, 200, 160);
    const std::vector<WrittenOperation> operations{Outline(), Pocket(recess, 12)};
    EXPECT_TRUE(ProvePart(Board(recess, 12), operations, {}, 1).spots.empty());
}

TEST(PartProof, ARoundInACornerOfThePathAloneIsTold) {
    // The recess is open at the board's front edge, where the path ends too early.
    const std::vector<PlanSide> recess = Rectangle(100, 0, 200, 60);
    const std::vector<WrittenOperation> operations{Outline(), Pocket(recess, 12)};
    const PartProof proof = ProvePart(Board(recess, 12), operations, {}, 1);
    ASSERT_EQ(proof.spots.size(), 2U);
    for (const ProofSpot& spot : proof.spots) {
        EXPECT_TRUE(spot.inCorner);
        EXPECT_EQ(spot.layer, "PKC");
        EXPECT_NEAR(spot.volume, 36 * (1 - std::numbers::pi / 4) * 6, 0.02);
    }
    const std::vector<WrittenOperation> runOff{Outline(), Pocket(Rectangle(100, -6.9, 200, 60), 12)};
    EXPECT_TRUE(ProvePart(Board(recess, 12), runOff, {}, 1).spots.empty());
}

TEST(PartProof, ARoundThatAnotherPathClearsIsNone) {
    const std::vector<PlanSide> recess = Rectangle(100, 0, 200, 60);
    const std::vector<WrittenOperation> operations{Outline(), Pocket(recess, 12),
                                                   Pocket(Rectangle(100, -10, 200, 20), 12)};
    EXPECT_TRUE(ProvePart(Board(recess, 12), operations, {}, 1).spots.empty());
}

/// A recess of 100 by 60 with a slot of a width at the middle of its right side.
std::vector<PlanSide> WithSlot(double slot, double reach) {
    const double low = 130 - slot / 2, high = 130 + slot / 2;
    const std::vector<PlanPoint> corners{{100, 100},          {200, 100},  {200, low}, {200 + reach, low},
                                         {200 + reach, high}, {200, high}, {200, 160}, {100, 160}};
    std::vector<PlanSide> sides;
    for (std::size_t i = 0; i < corners.size(); ++i)
        if (const PlanSide side{corners[i], corners[(i + 1) % corners.size()]};
            side.from.x != side.to.x || side.from.y != side.to.y)
            sides.push_back(side);
    return sides;
}

TEST(PartProof, ASlotOfAPathIntoBareWoodIsToldHoweverNarrowItIs) {
    const std::vector<PlanSide> recess = Rectangle(100, 100, 200, 160);
    for (const double slot : {0.5, 0.3, 0.1, 0.06}) {
        const std::vector<WrittenOperation> operations{Outline(), Pocket(WithSlot(slot, 40), 12)};
        const PartProof proof = ProvePart(Board(recess, 12), operations, {}, 1);
        ASSERT_EQ(proof.spots.size(), 1U) << slot;
        EXPECT_EQ(proof.spots[0].difference, Difference::Sought);
        EXPECT_EQ(proof.spots[0].layer, "PKC");
        EXPECT_NEAR(proof.spots[0].volume, slot * 40 * 6, 0.02);
        EXPECT_TRUE(proof.faults.empty());
    }
}

TEST(PartProof, ANarrowSlotThatThePartHasIsWoodThatStays) {
    const std::vector<PlanSide> recess = WithSlot(3, 40);
    const std::vector<WrittenOperation> operations{Outline(), Pocket(recess, 12)};
    const PartProof proof = ProvePart(Board(recess, 12), operations, {}, 1);
    ASSERT_EQ(proof.spots.size(), 1U);
    EXPECT_EQ(proof.spots[0].difference, Difference::Standing);
    EXPECT_TRUE(proof.spots[0].notReached);
}

TEST(PartProof, ASlotOfTheOutlineIntoThePartIsTold) {
    WrittenOperation outline = Outline();
    const std::vector<PlanPoint> corners{{0, 0},     {300, 0},    {300, 80},       {300.2, 80},
                                         {300.2, 0}, {length, 0}, {length, width}, {0, width}};
    outline.sides.clear();
    for (std::size_t i = 0; i < corners.size(); ++i)
        outline.sides.push_back({corners[i], corners[(i + 1) % corners.size()]});
    outline.bit = 12;
    const PartProof proof = ProvePart(Board(), std::vector{outline}, {}, 1);
    ASSERT_EQ(proof.spots.size(), 1U);
    EXPECT_EQ(proof.spots[0].difference, Difference::Sought);
    EXPECT_EQ(proof.spots[0].layer, "OT");
}

TEST(PartProof, APathThatRunsOutAndBackTheSameWayIsTold) {
    const std::vector<PlanSide> recess = Rectangle(100, 100, 200, 160);
    const auto told = [&](const std::vector<PlanSide>& path) {
        const std::vector<WrittenOperation> operations{Outline(), Pocket(path, 12)};
        return ProvePart(Board(recess, 12), operations, {}, 1).faults;
    };
    for (const double slot : {0.01, 0.03})
        EXPECT_TRUE(Tell(told(WithSlot(slot, 5)), "PKC runs out and back the same way")) << slot;
    EXPECT_TRUE(Tell(told(WithSlot(0, 40)), "PKC runs out and back the same way, from 240,130 to 200,130"));
    std::vector<PlanSide> round = WithSlot(0, 40);
    round[2].bulge = 0.3;
    round[3].bulge = -0.3;
    EXPECT_TRUE(Tell(told(round), "PKC runs out and back the same way"));
}

TEST(PartProof, AnOutlineThatRunsOutIntoTheAirAndBackIsTold) {
    const auto faults = [](const std::vector<PlanPoint>& spur) {
        std::vector<PlanPoint> corners{{0, 0}, {length, 0}};
        corners.insert(corners.end(), spur.begin(), spur.end());
        corners.insert(corners.end(), {{length, width}, {0, width}});
        WrittenOperation outline = Outline();
        outline.sides.clear();
        for (std::size_t i = 0; i < corners.size(); ++i)
            outline.sides.push_back({corners[i], corners[(i + 1) % corners.size()]});
        return ProvePart(Board(), std::vector{outline}, {}, 1).faults;
    };
    EXPECT_TRUE(Tell(faults({{length, 100}, {length + 5, 100}, {length, 100}}),
                     "OT runs out and back the same way, from "));
    EXPECT_TRUE(faults({{length, 100}}).empty());
}

TEST(PartProof, ASpikeOfAHairsBreadthIsToldInWoodAndInTheAir) {
    const std::vector<PlanSide> recess = Rectangle(100, 100, 200, 160);
    for (const double height : {0.2, 0.5, 1.0, -0.2, -0.5, -1.0})
        for (const double foot : {0.0, 0.01, 0.04}) {
            SCOPED_TRACE(height);
            SCOPED_TRACE(foot);
            std::vector<PlanPoint> corners{{100, 100}, {150, 100}, {150, 100 + height}, {150 + foot, 100},
                                           {200, 100}, {200, 160}, {100, 160}};
            const std::vector<WrittenOperation> operations{Outline(), Pocket(SidesAround(corners), 12)};
            const PartProof proof = ProvePart(Board(recess, 12), operations, {}, 1);
            // In the air the bit leaves the corners beside it.
            EXPECT_TRUE(Tell(proof.faults, "PKC runs out and back the same way") ||
                        Tell(proof.faults, "PKC leads ") || (height > 0 && !proof.spots.empty()));
        }
}

TEST(PartProof, ACornerInLineWithOneOfThePartLeadsIntoNoWood) {
    // Corners are exact to the noise of arithmetic, and those of the part and of a path have different noise.
    constexpr double noise = 3e-13;
    const std::vector<PlanSide> recess =
        SidesAround({{100, 100}, {196, 100 + noise}, {196 + noise, 60}, {260, 60}, {260, 160}, {100, 160}});
    for (const double off : {-2 * noise, 0.0, 0.5 * noise, 2 * noise}) {
        const std::vector<WrittenOperation> operations{Outline(),
                                                       Path("LEFT", Rectangle(100, 100, 196 + off, 160), 12),
                                                       Path("RIGHT", Rectangle(196 + off, 60, 260, 160), 12)};
        EXPECT_EQ(ProvePart(Board(recess, 12), operations, {}, 1).faults, Texts()) << off;
    }
}

TEST(PartProof, ASharpCornerRunsNowhereBack) {
    const std::vector<PlanPoint> corners{{100, 100}, {200, 107}, {100, 114}};
    std::vector<PlanSide> recess;
    for (std::size_t i = 0; i < 3; ++i) recess.push_back({corners[i], corners[(i + 1) % 3]});
    const std::vector<WrittenOperation> operations{Outline(), Pocket(recess, 3)};
    EXPECT_TRUE(ProvePart(Board(recess, 12), operations, {}, 1).faults.empty());
}

}  // namespace
}  // namespace brenvik
