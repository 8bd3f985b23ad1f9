// Vertical holes by circles placed by hand on the work layers of a board that has the holes.
#include <algorithm>

#include "cnc/cnc_fixture.h"
#include "cnc/holes/level_shapes.h"
#include "cnc/holes/vertical_drilling.h"
#include "cnc/part/run_state.h"

namespace brenvik {
namespace {

constexpr double Thick = 19;

class VerticalDrilling : public CncTest {
  protected:
    VerticalDrilling() {
        Set("DrillSpoilAmount", "0.5");
        for (const std::string_view layer : {layers::MaxCircleHold, layers::CircleHold})
            AddLayer(document, layer);
    }
    /// A board of 600 by 400 by 19 with holes drilled and recesses cut by the test.
    app::Workpiece& Wood() { return wood; }
    void Hole(double x, double y, double from, double to, double diameter) {
        wood.Drill({x, y, from}, app::Axis::Z, to - from, diameter);
    }
    AcadCircle& Circle(std::string_view layer, double x, double y, double z, double diameter) {
        AcadCircle& circle = *document.ModelSpace().AddCircle({x, y, z}, diameter / 2);
        circle.SetLayer(layer);
        return circle;
    }
    AcadCircle& Top(double x, double y, double diameter) {
        return Circle(layers::MaxCircleHold, x, y, Thick, diameter);
    }
    AcadCircle& Level(double x, double y, double z, double diameter) {
        return Circle(layers::CircleHold, x, y, z, diameter);
    }
    RunState Start(Target target = Target::C2C) {
        RunState run = RunOn(document, target);
        run.part.PartThickness = Thick;
        run.part.PartVolume = wood.Solid().Volume();
        return run;
    }
    /// With a ledge over the whole part, so that every hole is tried for material above it.
    PassOutcome Drill(RunState& run) {
        AcadLayer* const active = document.ActiveLayer();
        document.SetActiveLayer(AddLayer(document, layers::BrenvikExplode));
        AcadCircle& ledge = *document.ModelSpace().AddCircle({300, 200, Thick - 0.00005}, 1000);
        const LevelShapes everywhere = LevelShapes::Of(document, wood.Solid().GetBoundingBox());
        ledge.Delete();
        document.SetActiveLayer(*active);
        return DrillVertically(run, everywhere);
    }
    std::vector<Drawn> Circles() {
        std::vector<Drawn> found;
        for (const Drawn& drawn : DrawnIn(document))
            if (drawn.kind == "AcDbCircle") found.push_back(drawn);
        return found;
    }
    void ExpectOne(std::string_view layer, double x, double y, double diameter, double thickness) {
        const std::vector<Drawn> circles = Circles();
        ASSERT_EQ(circles.size(), 1U);
        ExpectHole(circles[0], layer, x, y, diameter, thickness);
    }
    static void ExpectHole(const Drawn& hole, std::string_view layer, double x, double y, double diameter,
                           double thickness) {
        EXPECT_EQ(hole.layer, layer);
        EXPECT_EQ(hole.color, 4);
        EXPECT_EQ(hole.points[0], (Point3{x, y, Thick}));
        EXPECT_EQ(hole.diameter, diameter);
        EXPECT_EQ(hole.thickness, thickness);
    }

    app::Workpiece wood = Board(600, 400, Thick);
};

TEST_F(VerticalDrilling, AThroughHoleIsOneCircleOnTheTopPlaneWithSpoil) {
    Hole(100, 50, 19, 0, 8);
    Top(100, 50, 8);
    Level(100, 50, 0, 8);
    RunState run = Start();
    Drill(run);
    ExpectOne("VD_Z19p5_T_D8", 100, 50, 8, -19.5);
    EXPECT_FALSE(run.part.NeedSecondSide);
    EXPECT_EQ(run.part.LastAddedLayer, "VD_Z19p5_T_D8");
    EXPECT_TRUE(run.part.unexplained.empty());
}

TEST_F(VerticalDrilling, ABlindHoleHasItsDepthAndNoSpoil) {
    Hole(100, 50, 19, 7, 5);
    Top(100, 50, 5);
    Level(100, 50, 7, 5);
    RunState run = Start();
    Drill(run);
    ExpectOne("VD_Z12_T_D5", 100, 50, 5, -12);
}

TEST_F(VerticalDrilling, EveryTargetLeavesOneCircleForAHole) {
    Hole(100, 50, 19, 0, 8);
    for (const Target target : AllTargets) {
        SCOPED_TRACE(static_cast<int>(target));
        for (AcadCircle* circle : All<AcadCircle>(document)) circle->Delete();
        Top(100, 50, 8);
        Level(100, 50, 0, 8);
        RunState run = Start(target);
        Drill(run);
        const std::vector<Drawn> circles = Circles();
        ASSERT_EQ(circles.size(), 1U);
        EXPECT_EQ(circles[0].points[0].z, Thick);
        EXPECT_EQ(circles[0].color, 4);
    }
}

TEST_F(VerticalDrilling, TheHighestFloorWinsAndTheLowerOneBelongsToTheOtherSide) {
    Hole(100, 50, 19, 12, 8);
    Top(100, 50, 8);
    Level(100, 50, 0, 8);
    Level(100, 50, 12, 8);
    Level(100, 50, 5, 8);
    RunState run = Start();
    Drill(run);
    ExpectOne("VD_Z7_T_D8", 100, 50, 8, -7);
    EXPECT_TRUE(run.part.NeedSecondSide);
    EXPECT_TRUE(run.part.ThroughRouteSeen);
}

TEST_F(VerticalDrilling, AWiderRecessBelowBelongsToTheOtherSide) {
    Hole(100, 50, 19, 0, 5);
    Hole(100, 50, 0, 9, 12);
    Top(100, 50, 5);
    Level(100, 50, 9, 5);
    Level(100, 50, 9, 12);
    Level(100, 50, 0, 12);
    RunState run = Start();
    Drill(run);
    ExpectOne("VD_Z10_T_D5", 100, 50, 5, -10);
    EXPECT_TRUE(run.part.NeedSecondSide);
    EXPECT_TRUE(run.part.ThroughRouteSeen);
    EXPECT_TRUE(run.part.unexplained.empty());
}

TEST_F(VerticalDrilling, OnlyTheFirstSideSaysThatAThroughRouteWasSeen) {
    Hole(100, 50, 19, 9, 5);
    Top(100, 50, 5);
    Level(100, 50, 9, 5);
    Level(100, 50, 4, 5);
    RunState run = Start();
    run.part.SecondSidePass = true;
    Drill(run);
    EXPECT_TRUE(run.part.NeedSecondSide);
    EXPECT_FALSE(run.part.ThroughRouteSeen);
}

TEST_F(VerticalDrilling, OfTwoFloorsAtOneHeightTheLaterIsTakenWithoutAFlag) {
    Hole(100, 50, 19, 5, 8);
    Top(100, 50, 8);
    const std::string first = Level(100, 50, 5, 8).Handle(), second = Level(100, 50, 5, 8).Handle();
    RunState run = Start();
    Drill(run);
    EXPECT_FALSE(run.part.NeedSecondSide);
    const auto layerOf = [&](const std::string& handle) {
        return dynamic_cast<AcadEntity*>(document.HandleToObject(handle))->Layer();
    };
    EXPECT_EQ(layerOf(second), "VD_Z14_T_D8");
    EXPECT_EQ(layerOf(first), layers::CircleHold);
    EXPECT_TRUE(run.part.unexplained.empty());
}

TEST_F(VerticalDrilling, ACounterboreAndTheHoleInItAreBothDrilled) {
    Hole(100, 50, 19, 12, 12);
    Hole(100, 50, 12, 0, 5);
    Level(100, 50, 0, 5);
    Level(100, 50, 12, 5);
    Level(100, 50, 12, 12);
    Top(100, 50, 12);
    RunState run = Start();
    Drill(run);
    const std::vector<Drawn> circles = Circles();
    ASSERT_EQ(circles.size(), 2U);
    ExpectHole(circles[0], "VD_Z19p5_T_D5", 100, 50, 5, -19.5);
    ExpectHole(circles[1], "VD_Z7_T_D12", 100, 50, 12, -7);
    EXPECT_FALSE(run.part.NeedSecondSide);
}

TEST_F(VerticalDrilling, AHoleInAPocketFloorIsMeasuredFromTheTopPlane) {
    Wood().Cut({80, 30, 12}, {120, 70, 30});
    Hole(100, 50, 12, 4, 5);
    Level(100, 50, 12, 5);
    Level(100, 50, 4, 5);
    RunState run = Start();
    Drill(run);
    ExpectOne("VD_Z15_T_D5", 100, 50, 5, -15);
    EXPECT_FALSE(run.part.NeedSecondSide);
}

TEST_F(VerticalDrilling, NestedCounterboresInARecessAreAllDrilled) {
    Wood().Cut({80, 30, 16}, {120, 70, 30});
    Hole(100, 50, 16, 10, 12);
    Hole(100, 50, 10, 0, 5);
    Level(100, 50, 10, 5);
    Level(100, 50, 0, 5);
    Level(100, 50, 16, 12);
    Level(100, 50, 10, 12);
    RunState run = Start();
    Drill(run);
    const std::vector<Drawn> circles = Circles();
    ASSERT_EQ(circles.size(), 2U);
    ExpectHole(circles[0], "VD_Z19p5_T_D5", 100, 50, 5, -19.5);
    ExpectHole(circles[1], "VD_Z9_T_D12", 100, 50, 12, -9);
    EXPECT_FALSE(run.part.NeedSecondSide);
}

TEST_F(VerticalDrilling, AHoleFromBelowIsLeftToTheOtherSide) {
    Hole(100, 50, 0, 10, 8);
    Hole(300, 50, 0, 10, 8);
    for (const double x : {100.0, 300.0}) {
        Level(x, 50, 0, 8);
        Level(x, 50, 10, 8);
    }
    RunState run = Start();
    Drill(run);
    EXPECT_TRUE(Circles().empty());
    EXPECT_TRUE(run.part.NeedSecondSide);
    EXPECT_TRUE(run.part.ThroughRouteSeen);
    EXPECT_TRUE(run.part.unexplained.empty());
    EXPECT_EQ(All<Acad3DSolid>(document).size(), 1U);
}

TEST_F(VerticalDrilling, ARecessHoleWithoutAFloorIsToldAndTheOthersAreDrilled) {
    Wood().Cut({80, 30, 12}, {320, 70, 30});
    Hole(100, 50, 12, 6, 5);
    Hole(300, 50, 12, 4, 5);
    Level(100, 50, 6, 5);
    Level(300, 50, 12, 5);
    Level(300, 50, 4, 5);
    RunState run = Start();
    Drill(run);
    EXPECT_EQ(OnLayers(Circles(), "VD_").size(), 1U);
    EXPECT_EQ(run.part.unexplained, std::vector<std::string>{"hole of 5 at 100,50,6: no operation"});
}

TEST_F(VerticalDrilling, ARimWithoutAFloorIsTold) {
    Hole(300, 50, 19, 0, 8);
    Top(100, 50, 12);
    Top(300, 50, 8);
    Level(300, 50, 0, 8);
    RunState run = Start();
    Drill(run);
    EXPECT_EQ(OnLayers(Circles(), "VD_").size(), 1U);
    EXPECT_EQ(run.part.unexplained, std::vector<std::string>{"hole of 12 at 100,50,19: no operation"});
}

TEST_F(VerticalDrilling, AHoleIsToldOnceWhicheverSideItIsSeenFrom) {
    Hole(100, 350, 19, 0, 12);
    Top(100, 50, 12);
    RunState run = Start();
    Drill(run);
    for (AcadCircle* circle : All<AcadCircle>(document)) circle->Delete();
    run.part.SecondSidePass = true;
    Level(100, 350, 0, 12);
    Drill(run);
    EXPECT_EQ(run.part.unexplained, std::vector<std::string>{"hole of 12 at 100,50,19: no operation"});
}

TEST_F(VerticalDrilling, AThroughHoleOfTheFirstSideYieldsNothingOnTheSecond) {
    Hole(500, 50, 19, 9, 8);
    Top(100, 50, 8);
    Level(100, 50, 0, 8);
    Hole(100, 50, 19, 0, 8);
    // From a recess.
    Wood().Cut({280, 30, 12}, {320, 70, 30});
    Hole(300, 50, 12, 0, 8);
    Level(300, 50, 12, 8);
    Level(300, 50, 1e-13, 8);
    // Blind from this side.
    Top(500, 50, 8);
    Level(500, 50, 9, 8);
    RunState run = Start();
    run.part.SecondSidePass = true;
    Drill(run);
    ExpectOne("VD_Z10_T_D8", 500, 50, 8, -10);
    EXPECT_TRUE(run.part.unexplained.empty());
}

TEST_F(VerticalDrilling, AHoleDrilledThroughFromARecessIsNotDrilledAgainFromTheOtherSide) {
    Hole(500, 350, 19, 7, 8);
    Hole(100, 350, 19, 7, 8);
    Wood().Cut({80, 30, 12}, {120, 70, 30});
    Hole(100, 50, 12, 0, 8);
    Level(100, 50, 12, 8);
    Level(100, 50, 0, 8);
    RunState run = Start();
    Drill(run);
    ExpectOne("VD_Z19p5_T_D8", 100, 50, 8, -19.5);
    for (AcadCircle* circle : All<AcadCircle>(document)) circle->Delete();

    // Turned over about X: the recess lies below now.
    run.part.SecondSidePass = true;
    Top(100, 350, 8);
    Level(100, 350, 7, 8);
    Top(500, 350, 8);
    Level(500, 350, 7, 8);
    Drill(run);
    ExpectOne("VD_Z12_T_D8", 500, 350, 8, -12);
}

TEST_F(VerticalDrilling, AFloorThatIsNotBelowTheTopEndsThePart) {
    Circle(layers::MaxCircleHold, 100, 50, 25, 8);
    Level(100, 50, 20, 8);
    RunState run = Start();
    EXPECT_EQ(Drill(run), PassOutcome::SkipPart);
    EXPECT_EQ(Messages(), std::vector<std::string>{"error"});
}

TEST_F(VerticalDrilling, PlacesAreComparedAtSixDecimals) {
    Hole(100, 50, 19, 3, 8);
    Top(100, 50, 8);
    Level(100.0000004, 50, 3, 8.0000001);
    Top(300, 50, 8);
    Level(300.00001, 50, 3, 8);
    RunState run = Start();
    Drill(run);
    EXPECT_EQ(OnLayers(Circles(), "VD_").size(), 1U);
}

TEST_F(VerticalDrilling, SpoilThatIsNoNumberFails) {
    Set("DrillSpoilAmount", "");
    RunState run = Start();
    EXPECT_THROW(Drill(run), Failure);
}

}  // namespace
}  // namespace brenvik
