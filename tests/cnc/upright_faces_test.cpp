// Parts whose largest face stands upright when they lie as their letters say: strips on edge, square posts,
// cubes. Their outline comes from the sections alone, and lies flat.
#include "cnc/recognition_fixture.h"

namespace brenvik {
namespace {

constexpr auto OnEdge = std::to_array<std::string_view>({"LTW", "TLW", "WTL", "TWL"});

class UprightFaces : public WholePartTest {
  protected:
    UprightFaces() {
        WriteMaterials({"19", "20", "60", "65", "80", "100", "150", "300", "600"}, {12, 6, 3});
        Set("ClearCores", "1");
    }

    /// Runs the part for one target, expects sound files without a box, and an outline that lies flat.
    void ExpectMade(MadePart& part, std::string_view letters, Target target, std::size_t pose = 1) {
        SCOPED_TRACE(std::string(letters) + " for target " + std::to_string(static_cast<int>(target)));
        dialogs.messages.clear();
        PutDown(part, {"Millimetres", 2}, pose, letters);
        RunAll(target);
        ExpectQuiet();
        EXPECT_EQ(Faults(part.Solid(), 0, {0, {"H"}}), std::vector<std::string>{});
        for (const auto& side : {FirstSide(), SecondSide()})
            for (const Drawn& drawn : side.value_or(std::vector<Drawn>{}))
                if (drawn.color == layers::OutlineColor) {
                    EXPECT_NEAR(drawn.normal.z, 1, 1e-9);
                }
        part.Solid().Delete();
    }
};

TEST_F(UprightFaces, AStripOnEdgeHasItsOutlineFlat) {
    for (const std::string_view letters : OnEdge)
        for (const Target target : {Target::C2C, Target::RCIM}) {
            MadePart part = Made();
            part.Board(300, 60, 19);
            ExpectMade(part, letters, target);
        }
}

TEST_F(UprightFaces, HolesInTheFaceOfAStripOnEdgeAreEdgeBores) {
    for (const Target target : {Target::C2C, Target::ATP}) {
        MadePart part = Made();
        part.Board(300, 60, 19);
        part.Hole(100, 30, 8, 10);
        part.Drill({200, 0, 9.5}, {0, 1, 0}, 22, 5);
        ExpectMade(part, "LTW", target);
    }
}

TEST_F(UprightFaces, WhatGoesRightThroughAStripOnEdgeIsCutOut) {
    for (const Target target : {Target::C2C, Target::ATP}) {
        MadePart part = Made();
        part.Board(300, 60, 80);
        part.Window(Rectangle(40, 20, 80, 40));
        part.Hole(200, 30, 10);
        part.Pocket(Rectangle(120, 15, 160, 45), 70);
        // The largest face is 300 by 80, and stands upright.
        ExpectMade(part, "LTW", target);
    }
}

TEST_F(UprightFaces, ANotchedStripOnEdgeKeepsItsNotches) {
    for (const std::string_view letters : OnEdge) {
        MadePart part = Made();
        part.Board(300, 60, 19);
        part.Cut(Rectangle(-1, -1, 40, 20), -1, 20);
        // One in the middle opens upwards or downwards only where the width stands upright.
        if (letters.back() == 'W' ? letters.front() == 'L' : letters.front() == 'W')
            part.Cut(Rectangle(200, 40, 230, 61), -1, 20);
        ExpectMade(part, letters, Target::C2C);
    }
}

TEST_F(UprightFaces, SquarePostsAndCubes) {
    for (const Target target : {Target::C2C, Target::Enroute})
        for (const std::size_t pose : {0, 1, 2, 3}) {
            MadePart post = Made();
            post.Board(600, 65, 65);
            ExpectMade(post, "LWT", target, pose);
            MadePart cube = Made();
            cube.Board(100, 100, 100);
            ExpectMade(cube, "LWT", target, pose);
        }
}

TEST_F(UprightFaces, APostWithMortisesAndBores) {
    for (const Target target : {Target::C2C, Target::ATP})
        for (const std::string_view letters : {"LWT", "LTW"}) {
            MadePart post = Made();
            post.Board(600, 65, 65);
            post.Pocket(Rectangle(40, 25, 80, 40), 35);
            post.PocketBelow(Rectangle(500, 20, 540, 45), 30);
            post.Drill({300, 0, 32.5}, {0, 1, 0}, 25, 10);
            ExpectMade(post, letters, target);
        }
}

}  // namespace
}  // namespace brenvik
