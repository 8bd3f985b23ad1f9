// Pockets, cut-outs and outlines with places that their bit doesn't get into, run to their files.
#include "base/text.h"
#include "cnc/recognition_fixture.h"

namespace brenvik {
namespace {

/// Two fields with a neck of 50 by `width` between them, 250 by 100.
Shape DumbBell(double x, double y, double width) {
    const double low = y + 50 - width / 2, high = y + 50 + width / 2;
    return {{x, y},          {x + 100, y},    {x + 100, low},     {x + 150, low},
            {x + 150, y},    {x + 250, y},    {x + 250, y + 100}, {x + 150, y + 100},
            {x + 150, high}, {x + 100, high}, {x + 100, y + 100}, {x, y + 100}};
}

/// A field of 100 by 100 with an arm of `width` by 60.
Shape WithArm(double x, double y, double width) {
    return {{x, y},
            {x + 100, y},
            {x + 100, y + 40},
            {x + 160, y + 40},
            {x + 160, y + 40 + width},
            {x + 100, y + 40 + width},
            {x + 100, y + 100},
            {x, y + 100}};
}

class NarrowPaths : public WholePartTest {
  protected:
    std::string Told(MadePart& part, Target target = Target::C2C) {
        PutDown(part, {"Millimetres", 2}, 0);
        RunAll(target);
        return Join(LastRunReport().unexplained, "\n");
    }
    static bool Has(const std::string& told, std::string_view text) {
        return told.find(text) != std::string::npos;
    }
    MadePart Board() {
        MadePart part = Made();
        part.Board(600, 400, 18);
        return part;
    }
};

TEST_F(NarrowPaths, ThePocketsNeckIsToldWithPlaceWidthAndBit) {
    MadePart part = Board();
    part.Pocket(DumbBell(100, 100, 8), 10);
    const std::string told = Told(part);
    EXPECT_TRUE(Has(told, "wood stays that the part has not, ")) << told;
    EXPECT_TRUE(Has(told, " by 8, 8 deep, from ")) << told;
    EXPECT_TRUE(Has(told, "is too narrow for its bit of 12 (the material's bit of 6 gets in)")) << told;
    EXPECT_TRUE(Has(told, " on the top face, where PKC_Z8_T1_D12_")) << told;
}

TEST_F(NarrowPaths, ANeckAsWideAsTheBitIsCut) {
    MadePart part = Board();
    part.Pocket(DumbBell(100, 100, 12), 10);
    EXPECT_EQ(Told(part), "");
}

TEST_F(NarrowPaths, AnArmOfACutOutIsTold) {
    MadePart part = Board();
    part.Window(WithArm(100, 100, 40));
    EXPECT_EQ(Told(part), "");
    MadePart narrow = Board();
    Shape keyhole = WithArm(100, 100, 20);
    // As wide as 20 at its end, and 2 at its mouth: the shortest side is 9.
    keyhole = {{100, 100}, {200, 100}, {200, 149}, {230, 149}, {230, 140}, {260, 140},
               {260, 160}, {230, 160}, {230, 151}, {200, 151}, {200, 200}, {100, 200}};
    part.Solid().Delete();
    narrow.Window(keyhole);
    const std::string told = Told(narrow);
    EXPECT_TRUE(Has(told, "right through, from ")) << told;
    EXPECT_TRUE(Has(told, "is too narrow for its bit of 3 (one of 2 would get in, and the material has none"))
        << told;
    EXPECT_TRUE(Has(told, " so narrow)")) << told;
}

TEST_F(NarrowPaths, ASlotBetweenTwoRoundFieldsIsTold) {
    MadePart part = Board();
    part.Pocket({{140, 196, 0}, {260, 196, 0}, {260, 204, 0}, {140, 204, 0}}, 10);
    part.Hole(110, 200, 80, 8);
    part.Hole(290, 200, 80, 8);
    const std::string told = Told(part);
    const bool cut = CountBoth("PKS_") == 2 && CountBoth("RT_") + CountBoth("PKC_") == 1;
    EXPECT_TRUE(cut || Has(told, "too narrow")) << told;
}

TEST_F(NarrowPaths, SharpCornersAreNotTold) {
    MadePart part = Board();
    part.Pocket({{100, 100}, {200, 100}, {200, 200}, {150, 200}, {150, 250}, {100, 250}}, 10);
    part.Window({{300, 100}, {420, 100}, {360, 200}});
    EXPECT_EQ(Told(part), "");
}

TEST_F(NarrowPaths, WhatASmallerPathClearsBesidesIsNotTold) {
    MadePart part = Board();
    part.Pocket(WithArm(100, 100, 8), 12);
    // A deeper groove runs through the arm, with a bit of its own.
    part.Pocket(Rectangle(206, 140, 300, 148), 8);
    const std::string told = Told(part);
    EXPECT_FALSE(Has(told, " by 8, 6 deep, from 206")) << told;
}

TEST_F(NarrowPaths, ARoundingTighterThanABitThatWasChosenByHandIsTold) {
    WriteMaterials({"18"}, {12, 12, 12});
    Set("Skipandcontinue", "1");
    Set("skipandcontinuevalue", "2");
    MadePart part = Board();
    part.Pocket(Rounded(100, 100, 300, 250, 4), 10);
    const std::string told = Told(part);
    EXPECT_TRUE(Has(told, "is too narrow for its bit of 12 (one of 8 would get in, and the")) << told;
    EXPECT_TRUE(Has(told, " material has none so narrow)")) << told;
}

TEST_F(NarrowPaths, AnInnerRoundingOfTheOutlineIsTold) {
    MadePart part = Made();
    const double quarter = -std::tan(std::numbers::pi / 8);
    part.Upright({{0, 0}, {400, 0}, {400, 100}, {103, 100, quarter}, {100, 103}, {100, 300}, {0, 300}}, 18);
    const std::string told = Told(part);
    EXPECT_TRUE(Has(told, "is too narrow for its bit of 12 (the material's bit of 6 gets in)")) << told;
    part.Solid().Delete();
    MadePart wide = Made();
    wide.Upright({{0, 0}, {400, 0}, {400, 100}, {106, 100, quarter}, {100, 106}, {100, 300}, {0, 300}}, 18);
    EXPECT_EQ(Told(wide), "");
}

TEST_F(NarrowPaths, EveryTargetTellsWhatNoBitOfTheMaterialReaches) {
    for (const Target target : AllTargets) {
        MadePart part = Board();
        part.Pocket(DumbBell(100, 100, 2), 10);
        const std::string told = Told(part, target);
        EXPECT_TRUE(Has(told, "too narrow for its bit of")) << static_cast<int>(target) << told;
        part.Solid().Delete();
    }
}

}  // namespace
}  // namespace brenvik
