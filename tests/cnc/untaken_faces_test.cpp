// Faces that no machine of three axes takes: mitres, bevels, round floors. The operator is told of each.
#include "cnc/recognition_fixture.h"

namespace brenvik {
namespace {

class UntakenFaces : public WholePartTest {
  protected:
    /// Runs the part at an angle and gives what is told of it; empty where all was taken.
    std::string ToldOf(MadePart& part, std::size_t pose = 1, const Shop& shop = {"Millimetres", 2}) {
        UseShop(shop);
        PutDown(part, shop, pose);
        RunAll();
        const std::vector<std::string> told = LastRunReport().unexplained;
        EXPECT_LE(told.size(), 1U) << Join(told, "\n");
        return told.empty() ? "" : told.front();
    }
    static std::size_t Times(const std::string& text, std::string_view what) {
        std::size_t times = 0;
        for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++times;
        return times;
    }
};

TEST_F(UntakenFaces, BevelIsToldWithItsSizeAndPlace) {
    MadePart part = Made();
    part.AlongX({{0, 0}, {400, 0}, {382, 18}, {0, 18}}, 600);
    const std::string told = ToldOf(part, 0);
    EXPECT_EQ(Times(told, "sloped face of 600 by 25.456 at 300,"), 1U);
    EXPECT_EQ(Times(told, "sloped face"), 1U) << told;
    EXPECT_EQ(Times(told, "no operation"), 1U) << told;
}

TEST_F(UntakenFaces, BevelIsToldInTheUnitsOfTheRun) {
    MadePart part = Made();
    part.AlongX({{0, 0}, {400, 0}, {382, 18}, {0, 18}}, 600);
    EXPECT_EQ(Times(ToldOf(part, 1, {"MillimetresToInches", 4}), "sloped face of 23.622 by 1.002 at "), 1U);
}

TEST_F(UntakenFaces, EachOfFourBevelsIsToldOnceOverBothPasses) {
    MadePart part = Made();
    part.AlongX({{5, 0}, {395, 0}, {400, 9}, {390, 18}, {10, 18}, {0, 9}}, 600);
    part.HoleBelow(100, 100, 8, 5);
    EXPECT_EQ(Times(ToldOf(part), "sloped face"), 4U);
}

TEST_F(UntakenFaces, GrooveOfTwoSlopesAtAnAngleToTheSidesIsTwoFaces) {
    MadePart part = Made();
    part.Board(600, 400, 18);
    MadePart tool = Made();
    tool.AlongX({{-30, 0}, {30, 0}, {0, 30}}, 2000);
    tool.Solid().Rotate3D({0, 0, 0}, {1, 0, 0}, std::numbers::pi);
    tool.Solid().Move({1000, 0, 0}, {300, 200, 36});
    tool.Solid().Rotate({300, 200, 0}, std::numbers::pi / 6);
    part.Subtract(tool.Solid());
    const std::string told = ToldOf(part);
    EXPECT_EQ(Times(told, "sloped face"), 2U) << told;
}

TEST_F(UntakenFaces, GrooveWithARoundFloorIsToldOnce) {
    MadePart part = Made();
    part.Board(600, 400, 18);
    part.Drill({0, 200, 18}, {1, 0, 0}, 600, 12);
    const std::string told = ToldOf(part, 0);
    EXPECT_EQ(Times(told, "round face of radius 6 by 600 at 300,200,"), 1U);
    EXPECT_EQ(Times(told, "round face"), 1U) << told;
}

TEST_F(UntakenFaces, RoundedOverEdgeIsTold) {
    MadePart part = Made();
    part.Upright({{0, 0}, {18, 0}, {18, 394, std::tan(std::numbers::pi / 8)}, {12, 400}, {0, 400}}, 600);
    const std::string told = ToldOf(part);
    EXPECT_EQ(Times(told, "round face of radius 6 by 600 at "), 1U);
}

struct PlainCase {
    std::string_view name;
    void (*make)(MadePart& part);
    friend void PrintTo(const PlainCase& each, std::ostream* out) { *out << each.name; }
};

const std::vector<PlainCase> Plain{
    {"Board", [](MadePart& part) { part.Board(600, 400, 18); }},
    {"HolesOfAllKinds",
     [](MadePart& part) {
         part.Board(600, 400, 18);
         part.Hole(50, 50, 5);
         part.Hole(100, 50, 8, 12);
         part.HoleBelow(150, 50, 8, 12);
         part.Hole(300, 200, 60);
         part.Drill({0, 100, 9}, {1, 0, 0}, 30, 8);
         part.Drill({600, 100, 9}, {-1, 0, 0}, 30, 8);
         part.Drill({300, 0, 9}, {0, 1, 0}, 30, 8);
     }},
    {"CamHoleMetByItsBore",
     [](MadePart& part) {
         part.Board(600, 400, 18);
         part.Hole(34, 100, 15, 13);
         part.Drill({0, 100, 9}, {1, 0, 0}, 34, 8);
     }},
    {"BoreAsWideAsTheHoleItMeets",
     [](MadePart& part) {
         part.Board(600, 400, 18);
         part.Hole(34, 100, 8, 14);
         part.Drill({0, 100, 9}, {1, 0, 0}, 34, 8);
     }},
    {"BoreThatEndsInAPocket",
     [](MadePart& part) {
         part.Board(600, 400, 18);
         part.Pocket(Rounded(100, 100, 300, 250, 30), 4);
         part.Drill({0, 170, 10}, {1, 0, 0}, 150, 8);
     }},
    {"RoundedCornersAndCutOut",
     [](MadePart& part) {
         part.Upright(Rounded(0, 0, 600, 400, 60), 18);
         part.Window(Rounded(300, 100, 500, 300, 30));
         part.Pocket(Rounded(80, 100, 250, 250, 30), 8);
     }},
    {"MitredInPlan",
     [](MadePart& part) {
         part.Upright({{0, 0}, {600, 0}, {600, 300}, {500, 400}, {50, 400}, {0, 350}}, 18);
     }},
};

class UntakenFacesOfPlainParts : public UntakenFaces,
                                 public ::testing::WithParamInterface<std::tuple<PlainCase, std::size_t>> {};

TEST_P(UntakenFacesOfPlainParts, AreNoneInAnyPose) {
    const auto& [each, pose] = GetParam();
    MadePart part = Made();
    each.make(part);
    const std::string told = ToldOf(part, pose);
    EXPECT_EQ(Times(told, " face "), 0U) << told;
    EXPECT_EQ(Times(told, "curved edge"), 0U) << told;
}

INSTANTIATE_TEST_SUITE_P(Plain, UntakenFacesOfPlainParts,
                         ::testing::Combine(::testing::ValuesIn(Plain),
                                            ::testing::Range<std::size_t>(0, OddPoses.size())),
                         [](const auto& made) {
                             return std::string(std::get<0>(made.param).name) + "_" +
                                    std::to_string(std::get<1>(made.param));
                         });

TEST_F(UntakenFaces, SlantedHoleIsToldAsAHoleAlone) {
    MadePart part = Made();
    part.Board(600, 400, 18);
    part.Drill({300, 200, 18}, {1, 0, -1}, 15, 8);
    const std::string told = ToldOf(part);
    EXPECT_EQ(Times(told, "slanted hole"), 1U) << told;
    EXPECT_EQ(Times(told, "no operation"), 1U) << told;
}

TEST_F(UntakenFaces, SlantedHoleFromAnEdgeIsToldOnce) {
    MadePart part = Made();
    part.Board(600, 400, 18);
    part.Drill({0, 200, 9}, {2, 1, 0.2}, 40, 5);
    const std::string told = ToldOf(part);
    EXPECT_EQ(Times(told, "no operation"), 1U) << told;
}

}  // namespace
}  // namespace brenvik
