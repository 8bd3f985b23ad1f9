// What a part becomes doesn't hang on how it stands in its drawing.
#include "cnc/poses_fixture.h"

namespace brenvik {
namespace {

TEST_F(PosesTest, ARabbetBelowAndAGrooveAbove) {
    WriteMaterials({"32"}, {12, 6, 3});
    ExpectSameFromEveryPose([](MadePart& part) {
        part.Board(337.5, 65, 32);
        part.PocketBelow(Rectangle(-1, -1, 400, 32), 6);
        part.Pocket(Rectangle(-1, 23, 400, 42), 22.5);
    });
}

TEST_F(PosesTest, APanelWithEverythingOnIt) {
    ExpectSameFromEveryPose([](MadePart& part) {
        part.Board(600, 400, 18);
        part.Hole(132, 100, 5);
        part.HoleBelow(164, 110, 35, 12);
        part.Pocket(Rectangle(200, 150, 300, 250), 12);
        part.PocketBelow(Rectangle(400, -1, 419, 401), 8);
        part.Window(Rounded(50, 200, 150, 350, 20));
        part.Drill({0, 170, 9}, {1, 0, 0}, 30, 8);
        part.Drill({300, 400, 9}, {0, -1, 0}, 22, 5);
    });
}

TEST_F(PosesTest, ANotchedPartWithALedge) {
    ExpectSameFromEveryPose(
        [](MadePart& part) {
            part.Upright({{0, 0}, {500, 0}, {500, 120}, {430, 120}, {430, 260}, {60, 260}, {0, 200}}, 19);
            part.Pocket(Rectangle(-1, -1, 501, 12), 9);
            part.PocketBelow(Rectangle(480, -1, 501, 121), 11);
        },
        Target::ATP);
}

TEST_F(PosesTest, AThickRailWithGroovesOnTwoSides) {
    ExpectSameFromEveryPose(
        [](MadePart& part) {
            part.Board(420, 60, 40);
            part.Pocket(Rectangle(-1, 20, 421, 30), 28);
            part.PocketBelow(Rectangle(50, -1, 70, 61), 12);
            part.Hole(200, 45, 8, 20);
        },
        Target::Enroute);
}

TEST_F(PosesTest, APartThatStandsOnEdgeByItsLetters) {
    for (const std::string_view letters : {"LTW", "TLW"}) {
        SCOPED_TRACE(letters);
        for (Acad3DSolid* solid : All<Acad3DSolid>(document)) solid->Delete();
        WriteMaterials({"60", "150"}, {12, 6, 3});
        ExpectSameFromEveryPose(
            [](MadePart& part) {
                part.Board(150, 60, 19);
                part.Drill({40, 0, 9.5}, {0, 1, 0}, 20, 6);
            },
            Target::C2C, letters);
    }
}

}  // namespace
}  // namespace brenvik
