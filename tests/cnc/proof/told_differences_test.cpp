// Features that no recogniser makes: whatever is missing from a part's files is told with its place and size.
#include <algorithm>

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

TEST_F(ToldDifferences, ABevelIsToldOnceByWhoHasSeenIt) {
    MadePart part = Made();
    part.AlongX({{0, 0}, {300, 0}, {300, 18}, {18, 18}}, 600);
    const std::string told = Told(part);
    EXPECT_TRUE(Has(told, "sloped face of 600 by 25.456")) << told;
    EXPECT_FALSE(Has(told, "wood stays")) << told;
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
