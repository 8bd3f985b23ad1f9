// Features that no recogniser makes: whatever is missing from a part's files is told with its place and size.
#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "base/text.h"
#include "cnc/proof/run_proof.h"
#include "cnc/recognition_fixture.h"

namespace brenvik {
namespace {

class ToldDifferences : public WholePartTest {
  protected:
    /// What the run tells of the part, square to the world and in millimetres.
    std::string Told(MadePart& part, Target target = Target::C2C) {
        PutDown(part, {"Millimetres", 2}, 0);
        RunAll(target);
        return Join(LastRunReport().unexplained, "\n");
    }
    /// The text of a difference begins so.
    static bool Has(const std::string& told, std::string_view text) {
        return told.find(text) != std::string::npos;
    }
    void ExpectTold(MadePart& part, std::string_view text) {
        const std::string told = Told(part);
        EXPECT_TRUE(Has(told, text)) << told;
    }
};

MadePart& ShakerDoor(MadePart& part) {
    part.Board(600, 400, 20);
    part.Pocket(Rectangle(50, 50, 550, 350), 14);
    return part;
}

/// The same with a nick in its wall that no bit gets into, so that the recess gets no path.
MadePart& NickedDoor(MadePart& part) {
    ShakerDoor(part);
    part.Pocket(Rectangle(549, 200, 551, 201), 14);
    return part;
}

TEST_F(ToldDifferences, ARecessThatNoBitFitsIsToldWithPlaceAndSize) {
    MadePart door = Made();
    ExpectTold(
        NickedDoor(door),
        "does not come out as it is drawn: wood stays that the part has not, 501 by 300, 6 deep, from ");
}

TEST_F(ToldDifferences, EveryTargetTellsIt) {
    for (const Target target : AllTargets) {
        MadePart door = Made();
        const std::string told = Told(NickedDoor(door), target);
        EXPECT_TRUE(Has(told, "501 by 300, 6 deep, from ")) << told;
        door.Solid().Delete();
    }
}

TEST_F(ToldDifferences, NoTargetTellsOfAOnePieceDoor) {
    for (const Target target : AllTargets) {
        MadePart door = Made();
        EXPECT_EQ(Told(ShakerDoor(door), target), "") << static_cast<int>(target);
        door.Solid().Delete();
    }
}

TEST_F(ToldDifferences, WithoutTheProofNothingIsTold) {
    SetProof(false);
    MadePart door = Made();
    EXPECT_EQ(Told(NickedDoor(door)), "");
}

TEST_F(ToldDifferences, ASoundPanelIsToldOnNoTarget) {
    for (const Target target : AllTargets) {
        for (const int scale : {1, 2}) {
            const Shop shop{"", scale};
            UseShop(shop);
            MadePart part = Made();
            part.Board(600, 400, 19.05);
            part.Hole(100, 100, 5, 12.7);
            part.Hole(132, 100, 5);
            part.HoleBelow(164, 100, 35, 12);
            part.Hole(500, 300, 60);
            part.Pocket(Rectangle(200, 150, 300, 250), 12);
            part.PocketBelow(Rectangle(400, -1, 419, 401), 8);
            part.Window(Rounded(50, 200, 150, 350, 20));
            part.Drill({0, 200, 9.5}, {1, 0, 0}, 30, 8);
            part.Drill({300, 400, 9.5}, {0, -1, 0}, 22, 5);
            PutDown(part, shop, 0);
            RunAll(target);
            EXPECT_EQ(LastRunReport().unexplained, std::vector<std::string>{})
                << static_cast<int>(target) << " " << scale;
            part.Solid().Delete();
        }
    }
}

TEST_F(ToldDifferences, ABoreWhoseHeightIsRoundedInItsNameIsNone) {
    // The names of some targets have two decimals, and both sides have the bore.
    for (const Target target : {Target::ROV, Target::CNI, Target::ASP, Target::WOP4, Target::WOP5}) {
        MadePart part = Made();
        part.Board(600, 400, 19.05);
        part.Drill({0, 200, 9.525}, {1, 0, 0}, 35.5, 5);
        part.HoleBelow(164, 100, 35, 12);
        part.Hole(100, 100, 5, 12);
        EXPECT_EQ(Told(part, target), "") << static_cast<int>(target);
        part.Solid().Delete();
    }
}

TEST_F(ToldDifferences, NeighbouringBoresOfUnlikeHeightAreNoneInEitherUnit) {
    // Near the top of a bore a name's last decimal of an inch leaves a hair on both sides of it, and one
    // between them at its floor.
    for (const int scale : {1, 2}) {
        for (const Target target : {Target::ASP, Target::CNI, Target::ROV}) {
            const Shop shop{"", scale};
            UseShop(shop);
            MadePart part = Made();
            part.Board(290, 176, 19.05);
            part.Drill({290, 56, 9.525}, {-1, 0, 0}, 16, 8);
            part.Drill({52.5, 0, 9.5}, {0, 1, 0}, 13.64, 8);
            part.Drill({235.5, 176, 9.525}, {0, -1, 0}, 25.5, 5);
            PutDown(part, shop, 0);
            RunAll(target);
            EXPECT_EQ(LastRunReport().unexplained, std::vector<std::string>{})
                << static_cast<int>(target) << " " << scale;
            part.Solid().Delete();
        }
    }
}

TEST_F(ToldDifferences, TheColourOfAPartMakesNoPathAnOutline) {
    for (const Target target : {Target::C2C, Target::ASP, Target::WOP5, Target::BW}) {
        for (const int color : {1, 2, 4}) {
            MadePart part = Made();
            part.Board(600, 400, 18);
            part.Pocket(Rectangle(200, 150, 300, 250), 12);
            part.PocketBelow(Rectangle(400, -1, 419, 401), 8);
            part.Window(Rectangle(50, 200, 150, 350));
            part.Solid().SetColor(color);
            EXPECT_EQ(Told(part, target), "") << static_cast<int>(target) << " " << color;
            EXPECT_EQ(part.Solid().Color(), color);
            part.Solid().Delete();
        }
    }
}

TEST_F(ToldDifferences, TheRunsOfAHalfLap) {
    MadePart part = Made();
    part.Board(600, 100, 40);
    part.Pocket(Rectangle(-1, -1, 301, 101), 20);
    const std::string told = Told(part);
    EXPECT_TRUE(CountBoth("PKC_") + CountBoth("RT_") > 0 || Has(told, "wood stays")) << told;
}

TEST_F(ToldDifferences, OneOfFiveWideDados) {
    MadePart part = Made();
    part.Board(1000, 300, 18);
    for (int dado = 0; dado < 5; ++dado)
        part.Pocket(Rectangle(60 + 190 * dado, -1, 180 + 190 * dado, 301), 10);
    const std::string told = Told(part);
    EXPECT_TRUE(CountBoth("PKC_") + CountBoth("RT_") == 5 || Has(told, "wood stays")) << told;
}

TEST_F(ToldDifferences, AHingeCupWithAScrewHoleOnItsRim) {
    MadePart part = Made();
    part.Board(600, 300, 18);
    part.Hole(100, 100, 35, 12);
    part.Hole(117.5, 100, 5, 15);
    const std::string told = Told(part);
    EXPECT_TRUE(!Faults(part.Solid()).empty() ? !told.empty() : told.empty()) << told;
}

TEST_F(ToldDifferences, AGrooveOverADowelBore) {
    MadePart part = Made();
    part.Board(600, 300, 18);
    part.Pocket(Rectangle(-1, 140, 601, 150), 8);
    part.Drill({100, 300, 9}, {0, -1, 0}, 200, 8);
    const std::string told = Told(part);
    EXPECT_TRUE(!Faults(part.Solid()).empty() ? !told.empty() : told.empty()) << told;
}

TEST_F(ToldDifferences, WhatABitLeavesInTheMiddleOfAFieldIsToldWithTheBit) {
    // The corners' short chords ask for a bit of 6 that follows the line.
    MadePart part = Made();
    part.Board(600, 400, 18);
    part.Pocket(Rounded(100, 100, 300, 250, 6.5), 12);
    ExpectTold(
        part,
        "wood stays that the part has not, 188 by 138, 6 deep, from 106,106 to 294,244 on the top face, "
        "in the middle of RT_Z6_T2_D6_S18000_F300_R_C0_1, whose bit of 6 does not reach it");
}

TEST_F(ToldDifferences, ClearCoresMakesAPocketOfWhatTheBitWouldLeaveACoreIn) {
    Set("ClearCores", "1");
    MadePart part = Made();
    part.Board(600, 400, 18);
    part.Pocket(Rounded(100, 100, 300, 250, 6.5), 12);
    // The bit of 12 clears this one by its line.
    part.Pocket(Rectangle(400, 100, 500, 120), 12);
    EXPECT_EQ(Told(part), "");
    EXPECT_EQ(Only(FirstSide(), "PKC_").layer.substr(0, 14), "PKC_Z6_T2_D6_S");
    EXPECT_EQ(Only(FirstSide(), "RT_").layer.substr(0, 14), "RT_Z6_T1_D12_S");
}

TEST_F(ToldDifferences, ARabbetThatHasRunOffTheEdgeMayBeTooWideForItsBit) {
    // 20 wide and 6.857 off the edge: twice 12 leaves the rest between the two ways of the bit.
    for (const char* clear : {"0", "1"}) {
        Set("ClearCores", clear);
        MadePart part = Made();
        part.Board(600, 400, 18);
        part.Pocket(Rectangle(-1, -1, 601, 20), 12);
        const std::string told = Told(part);
        const bool cleared = clear[0] == '1';
        EXPECT_EQ(Has(told, "2.857"), !cleared) << told;
        EXPECT_EQ(told.empty(), cleared) << told;
        EXPECT_EQ(CountBoth(clear[0] == '0' ? "RT_" : "PKC_"), 1U) << clear;
        part.Solid().Delete();
    }
}

TEST_F(ToldDifferences, ANarrowRabbetAndADadoAreClearedByTheirLine) {
    MadePart part = Made();
    part.Board(600, 400, 18);
    part.Pocket(Rectangle(-1, -1, 601, 17), 12);
    part.Pocket(Rectangle(-1, 200, 601, 223), 12);
    EXPECT_EQ(Told(part), "");
}

TEST_F(ToldDifferences, ToolsOfOneDiameterLeaveTheBitOfAnEarlierPathInHand) {
    WriteMaterials({"18"}, {12, 6, 6});
    MadePart part = Made();
    part.Board(600, 400, 18);
    part.Window(Rectangle(100, 100, 200, 108));
    part.Pocket(Rectangle(300, 100, 400, 115), 12);
    ExpectTold(part, "tools 2 and 3 of the material 18 OAK are of one diameter, 6, so the cut-out from ");
}

TEST_F(ToldDifferences, AToolOfTheNumberZeroInAName) {
    WriteMaterials({"18"}, {12, 6, 3});
    std::string text = files.ReadFile(MaterialsPath());
    files.RemoveFile(MaterialsPath());
    files.WriteFile(MaterialsPath(), ReplaceAll(text, "tool1=1", "tool1=0"));
    MadePart part = Made();
    part.Board(600, 400, 18);
    ExpectTold(part,
               "a path whose tool is 0, which stands for none, on layer OT_Z18p3_T0_D12_S18000_F300_R_C0");
}

TEST_F(ToldDifferences, ABlindHoleWhoseNameSaysRightThrough) {
    MadePart part = Made();
    part.Board(600, 400, 18);
    part.Pocket(Rectangle(100, 100, 200, 200), 12);
    part.Hole(150, 150, 8, 12);
    PutDown(part, {"Millimetres", 2}, 0);
    RunAll(Target::WOP4);
    const std::string told = Join(LastRunReport().unexplained, "\n");
    EXPECT_TRUE(Has(told, "a name that gives a hole right through where it is 12 deep on layer ZD12"))
        << told;
}

TEST_F(ToldDifferences, ABevelIsToldOnceByWhoHasSeenIt) {
    MadePart part = Made();
    part.AlongX({{0, 0}, {300, 0}, {300, 18}, {18, 18}}, 600);
    const std::string told = Told(part);
    EXPECT_TRUE(Has(told, "sloped face of 600 by 25.456")) << told;
    EXPECT_FALSE(Has(told, "wood stays")) << told;
}

TEST_F(ToldDifferences, ARecessAllRoundASmallPinIsClearedOverItsParting) {
    for (const double diameter : {12, 16, 20, 24, 34}) {
        for (const double top : {15.5, 18.0}) {
            MadePart part = Made();
            part.Board(500, 300, 18);
            part.Pocket(Rectangle(160, 165, 325, 275), 13);
            part.Unite(*part.Body({{242.5 - diameter / 2, 220, 1}, {242.5 + diameter / 2, 220, 1}}, 13, top));
            Set("ClearCores", "1");
            EXPECT_EQ(Told(part), "") << diameter << " " << top;
            part.Solid().Delete();
        }
    }
}

TEST_F(ToldDifferences, WithoutClearCoresTheMiddleOfARecessRoundAPinIsToldAsThat) {
    MadePart part = Made();
    part.Board(500, 300, 18);
    part.Pocket(Rectangle(160, 165, 325, 275), 13);
    part.Unite(*part.Body({{232.5, 220, 1}, {252.5, 220, 1}}, 13, 15.5));
    const std::string told = Told(part);
    EXPECT_TRUE(Has(told, "in the middle of RT_Z5")) << told;
    EXPECT_TRUE(Has(told, "(a pocket with the setting ClearCores)")) << told;
    EXPECT_FALSE(Has(told, "pin of")) << told;
}

TEST_F(ToldDifferences, ANoteOfAPinDoesNotSwallowWhatStaysAroundIt) {
    // The web over the parting is wider than the bits find their way to: no bit fits beside so thin a pin.
    MadePart part = Made();
    part.Board(500, 300, 18);
    part.Pocket(Rectangle(160, 165, 325, 275), 13);
    part.Unite(*part.Body({{240.5, 220, 1}, {244.5, 220, 1}}, 13, 15.5));
    Set("ClearCores", "1");
    const std::string told = Told(part);
    EXPECT_EQ(told.empty(), Faults(part.Solid()).empty()) << told;
    EXPECT_FALSE(Has(told, "pin of")) << told;
}

TEST_F(ToldDifferences, ASlantedRecessThatOpensIntoARabbetNearTheEdgeIsMade) {
    // Its right wall meets the edge just before the rabbet begins.
    MadePart part = Made();
    part.Board(500, 300, 18);
    part.Pocket(Rectangle(-5, 275, 505, 305), 10);
    Shape recess;
    for (const auto& [x, y] : {std::pair{-34.0, -22.75}, {34.0, -22.75}, {34.0, 22.75}, {-34.0, 22.75}}) {
        const double turn = -std::numbers::pi / 12;
        recess.push_back(
            {466 + x * std::cos(turn) - y * std::sin(turn), 270.5 + x * std::sin(turn) + y * std::cos(turn)});
    }
    part.Pocket(recess, 10.5);
    Set("ClearCores", "1");
    EXPECT_EQ(Told(part), "");
    EXPECT_EQ(Faults(part.Solid()), std::vector<std::string>{});
}

TEST_F(ToldDifferences, ASideThatASettingLeavesOutIsNoDifference) {
    Set("DontDoTwoSided", "1");
    MadePart part = Made();
    part.Board(600, 400, 18);
    part.Pocket(Rectangle(100, 100, 200, 200), 12);
    part.PocketBelow(Rectangle(300, 100, 400, 200), 6);
    EXPECT_EQ(Told(part), "");
}

TEST_F(ToldDifferences, AnOutlineThatASettingLeavesOutIsNoDifference) {
    for (const std::string_view name : {"DeleteOT", "BiesseWorksNest", "HorzBoreOn2"}) {
        Set(name, "1");
        MadePart part = Made();
        part.Upright(Rounded(0, 0, 600, 400, 50), 18);
        part.PocketBelow(Rectangle(300, 100, 400, 200), 6);
        part.Hole(100, 100, 5, 12);
        part.Drill({0, 200, 9}, {1, 0, 0}, 30, 8);
        EXPECT_EQ(Told(part), "") << name;
        part.Solid().Delete();
        Set(name, "0");
    }
}

}  // namespace
}  // namespace brenvik
