// Recesses that open into air run off into it, so that their mouths are cut whole, run to their files.
#include <functional>

#include "base/text.h"
#include "cnc/proof/run_proof.h"
#include "cnc/recognition_fixture.h"

namespace brenvik {
namespace {

/// A board of 400 by 250 by 18 with a recess that opens into air.
struct Opening {
    std::string_view name;
    std::function<void(MadePart&)> make;
    /// The kinds of the operations of the first side.
    std::string_view kinds;
    /// What the run tells of the part, or nothing.
    std::string_view told = {};

    friend void PrintTo(const Opening& opening, std::ostream* out) { *out << opening.name; }
};

const std::vector<Opening>& Openings() {
    static const std::vector<Opening> openings{
        {"PocketIntoNotch",
         [](MadePart& part) {
             part.Window(Rectangle(150, -1, 250, 60));
             part.Pocket(Rectangle(170, 50, 230, 120), 10);
         },
         "OT 1 PKC 1 PL 1"},
        {"RoundPocketIntoNotch",
         [](MadePart& part) {
             part.Window(Rectangle(150, -1, 250, 60));
             part.Hole(200, 40, 60, 8);
         },
         "OT 1 PKC 1 PL 1"},
        {"PocketIntoSlot",
         [](MadePart& part) {
             part.Window(Rectangle(100, 50, 300, 70));
             part.Pocket(Rectangle(150, 60, 250, 140), 10);
         },
         "OT 1 PKC 1 PL 1 RT 1"},
        {"GrooveIntoNotch",
         [](MadePart& part) {
             part.Window(Rectangle(150, -1, 250, 60));
             part.Pocket(Rectangle(190, 50, 210, 200), 10);
         },
         "OT 1 PL 1 RT 1"},
        {"PocketIntoDeeperPocket",
         [](MadePart& part) {
             part.Pocket(Rectangle(100, 50, 300, 100), 6);
             part.Pocket(Rectangle(150, 90, 250, 140), 12);
         },
         "OT 1 PKC 2 PL 1"},
        {"PocketRoundADeeperOneWithRoundedCornersAtItsWall",
         [](MadePart& part) {
             part.Pocket(Rectangle(98, 40, 163, 90), 13);
             part.Pocket(Rounded(113, 55, 163, 73, 4), 9);
         },
         "OT 1 PKC 2 PL 1"},
        {"PocketIntoRoundHole",
         [](MadePart& part) {
             part.Window({{160, 120, 1}, {240, 120, 1}});
             part.Pocket(Rectangle(200, 100, 300, 140), 10);
         },
         "OT 1 PKC 1 PL 1 RT 1"},
    };
    return openings;
}

class OpenMouths : public WholePartTest, public ::testing::WithParamInterface<Opening> {
  protected:
    void SetUp() override {
        WholePartTest::SetUp();
        Set("ClearCores", "1");
    }
};

TEST_P(OpenMouths, TheRecessIsCutWholeInEveryPose) {
    for (std::size_t pose = 0; pose < 3; ++pose) {
        MadePart part = Made();
        part.Board(400, 250, 18);
        GetParam().make(part);
        PutDown(part, {"Millimetres", 2}, pose);
        RunAll();
        EXPECT_EQ(LastRunReport().skipped, std::vector<std::string>{});
        EXPECT_EQ(LastRunReport().unexplained, std::vector<std::string>{});
        EXPECT_EQ(Faults(part.Solid(), 0, {0, {"PK", "RT"}}), std::vector<std::string>{});
        EXPECT_EQ(Kinds(FirstSide()), GetParam().kinds);
        part.Solid().Delete();
    }
}

INSTANTIATE_TEST_SUITE_P(All, OpenMouths, ::testing::ValuesIn(Openings()),
                         [](const auto& one) { return std::string(one.param.name); });

class MouthsOfPaths : public WholePartTest {};

TEST_F(MouthsOfPaths, RunOffInTheLineOfTheirWallsSoFarThatTwoRoundsDoNotMeet) {
    MadePart part = Made();
    part.Board(400, 250, 18);
    part.Window(Rectangle(150, -1, 250, 60));
    part.Pocket(Rectangle(170, 50, 230, 120), 10);
    PutDown(part, {"Millimetres", 2}, 0);
    RunAll();
    const Drawn path = Only(FirstSide(), "PKC_");
    ASSERT_EQ(path.points.size(), 4U);
    std::vector<double> xs, ys;
    for (const Point3& corner : path.points) {
        xs.push_back(corner.x);
        ys.push_back(corner.y);
    }
    // 60 between the walls, and 60 deep with half of this bit and of the widest more: both are 12.
    const auto [lowX, highX] = std::ranges::minmax(xs);
    const auto [lowY, highY] = std::ranges::minmax(ys);
    EXPECT_NEAR(highX - lowX, 60, 1e-6);
    EXPECT_NEAR(highY - lowY, 60 + 12, 1e-6);
}

TEST_F(MouthsOfPaths, WhereTheAirIsTooNarrowForTheBitTheRestIsToldAsNoCornerOfThePart) {
    MadePart part = Made();
    part.Board(400, 250, 18);
    part.Window(Rectangle(100, 56, 300, 60));
    part.Pocket(Rectangle(170, 58, 230, 120), 10);
    PutDown(part, {"Millimetres", 2}, 0);
    RunAll();
    const std::string told = Join(LastRunReport().unexplained, "\n");
    EXPECT_NE(told.find("round that is none of the part"), std::string::npos) << told;
    EXPECT_NE(told.find(", 8 deep, from "), std::string::npos) << told;
}

TEST_F(MouthsOfPaths, AFollowedLineLeavesNoMiddleStandingForItsMouth) {
    MadePart part = Made();
    part.Board(400, 250, 18);
    part.Window(Rectangle(100, -1, 300, 60));
    // A ledge along the notch, 22 deep: the bit of 12 goes around it once.
    part.Pocket(Rectangle(140, 50, 260, 82), 10);
    PutDown(part, {"Millimetres", 2}, 0);
    RunAll();
    EXPECT_EQ(LastRunReport().unexplained, std::vector<std::string>{});
    EXPECT_EQ(CountBoth("RT_"), 1U);
}
/// Floors whose contour has a side shorter than any bit, where another recess has cut it.
const std::vector<Opening>& ShortMouths() {
    static const std::vector<Opening> openings{
        {"PocketBittenAtItsCorner",
         [](MadePart& part) {
             part.Pocket(Rectangle(100, 50, 200, 100), 12);
             part.Pocket(Rectangle(199, 90, 260, 140), 6);
         },
         "OT 1 PKC 2 PL 1", "3.47 by 0.747, 6 deep"},
        {"PocketWhoseWallIsCutShort",
         [](MadePart& part) {
             part.Pocket(Rectangle(100, 50, 200, 100), 12);
             part.Pocket(Rectangle(150, 30, 198, 80), 6);
         },
         "OT 1 PKC 2 PL 1", "2 by 4.472, 6 deep"},
        {"RabbetBittenByDeeperHoles",
         [](MadePart& part) {
             part.Pocket(Rectangle(-5, -5, 405, 14), 10);
             for (const double x : {60.0, 92.0, 124.0}) part.Hole(x, 16.3, 5, 12);
         },
         "OT 1 PL 1 RT 1 VD 3"},
        {"HoleHalfCutByAPocket",
         [](MadePart& part) {
             part.Pocket(Rectangle(100, 50, 200, 100), 6);
             part.Hole(150, 100, 2.5, 10);
         },
         "OT 1 PKC 1 PL 1 VD 1"},
    };
    return openings;
}

TEST_F(MouthsOfPaths, AShortSideTowardsAnotherRecessAsksForNoBit) {
    for (const Opening& opening : ShortMouths()) {
        for (std::size_t pose = 0; pose < 2; ++pose) {
            MadePart part = Made();
            part.Board(400, 250, 18);
            opening.make(part);
            PutDown(part, {"Millimetres", 2}, pose);
            RunAll();
            const std::string told = Join(LastRunReport().unexplained, "\n");
            EXPECT_EQ(LastRunReport().skipped, std::vector<std::string>{}) << opening.name << " " << pose;
            EXPECT_NE(told.find(opening.told), std::string::npos) << opening.name << " " << told;
            EXPECT_EQ(told.empty(), opening.told.empty()) << opening.name << " " << told;
            EXPECT_EQ(Faults(part.Solid(), 0, {0, {"PK", "RT", "VD"}}), std::vector<std::string>{})
                << opening.name;
            EXPECT_EQ(Kinds(FirstSide()), opening.kinds) << opening.name << " " << pose;
            part.Solid().Delete();
        }
    }
    EXPECT_EQ(Join(Messages(), "\n").find("small enough router bit"), std::string::npos);
}

TEST_F(MouthsOfPaths, WithoutTheProofAShortMouthAsksToo) {
    SetProof(false);
    MadePart part = Made();
    part.Board(400, 250, 18);
    ShortMouths().front().make(part);
    PutDown(part, {"Millimetres", 2}, 0);
    RunAll();
    EXPECT_EQ(LastRunReport().skipped.size(), 1U);
}

TEST_F(MouthsOfPaths, AShortWallAsksForABitAllTheSame) {
    MadePart part = Made();
    part.Board(400, 250, 18);
    part.Pocket(Rectangle(100, 50, 200, 100), 12);
    part.Pocket(Rectangle(150, 80, 201, 140), 12);
    PutDown(part, {"Millimetres", 2}, 0);
    RunAll();
    ASSERT_EQ(LastRunReport().skipped.size(), 1U);
    EXPECT_NE(Join(Between(), "\n").find("who's shortest line is 1 long"), std::string::npos);
}

}  // namespace
}  // namespace brenvik
