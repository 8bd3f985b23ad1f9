// Edge bores by circles placed by hand on the work layer, with twins as exploded faces bring them.
#include <algorithm>

#include "cnc/cnc_fixture.h"
#include "cnc/holes/horizontal_boring.h"
#include "cnc/part/run_state.h"
#include "cnc/targets/target_table.h"

namespace brenvik {
namespace {

constexpr double Long = 600, Wide = 400, Thick = 19;

class HorizontalBoring : public CncTest {
  protected:
    HorizontalBoring() { DrawKeptEdges(Long, Wide); }
    AcadCircle& Circle(Target target, const Point3& center, double diameter, const Point3& normal) {
        const std::string_view layer = TraitsOf(target).horizontalWorkLayer;
        AddLayer(document, layer);
        AcadCircle& circle = *document.ModelSpace().AddCircle(center, diameter / 2);
        circle.SetNormal(normal);
        circle.SetLayer(layer);
        return circle;
    }
    /// Rim and floor, each once as a face of the box or the floor brings it and once as the wall does.
    void Bore(Target target, const Point3& rim, const Point3& floor, double diameter) {
        const double length = std::hypot(floor.x - rim.x, floor.y - rim.y);
        const Point3 out{(rim.x - floor.x) / length, (rim.y - floor.y) / length, 0};
        const Point3 in{-out.x, -out.y, 0};
        Circle(target, rim, diameter, out);
        Circle(target, floor, diameter, out);
        Circle(target, rim, diameter, in);
        Circle(target, floor, diameter, in);
    }
    RunState Start(Target target) {
        RunState run = RunOn(document, target);
        run.part.PartThickness = Thick;
        return run;
    }
    std::vector<Drawn> Made(std::string_view workLayer) {
        std::vector<Drawn> found;
        for (const Drawn& drawn : DrawnIn(document))
            if (drawn.kind != "AcDb3dSolid" && drawn.kind != "AcDbLine" && drawn.layer != workLayer)
                found.push_back(drawn);
        return found;
    }

    app::Workpiece wood = Board(Long, Wide, Thick);
};

TEST_F(HorizontalBoring, ABoreInEachEdgeLooksOutwardAndIsMadeOnce) {
    Bore(Target::C2C, {100, 0, 9}, {100, 30, 9}, 8);
    Bore(Target::C2C, {150, Wide, 9}, {150, 360, 9}, 8);
    Bore(Target::C2C, {0, 100, 9}, {20, 100, 9}, 8);
    Bore(Target::C2C, {Long, 100, 9}, {550, 100, 9}, 8);
    RunState run = Start(Target::C2C);
    BoreHorizontally(run);
    struct Wanted {
        std::string layer;
        Point3 center, normal;
        double thickness;
    };
    const std::vector<Wanted> wanted{{"HF_T", {100, 0, 9}, {0, -1, 0}, -30},
                                     {"HB_T", {150, Wide, 9}, {0, 1, 0}, -40},
                                     {"HL_T", {0, 100, 9}, {-1, 0, 0}, -20},
                                     {"HR_T", {Long, 100, 9}, {1, 0, 0}, -50}};
    for (const Wanted& each : wanted) {
        const std::vector<Drawn> bores = OnLayers(DrawnIn(document), each.layer);
        ASSERT_EQ(bores.size(), 1U) << each.layer;
        EXPECT_EQ(bores[0].points[0], each.center);
        EXPECT_EQ(bores[0].normal, each.normal);
        EXPECT_EQ(bores[0].thickness, each.thickness);
        EXPECT_EQ(bores[0].color, 8);
    }
    EXPECT_EQ(run.part.edgeBores, 4);
    EXPECT_TRUE(run.part.unexplained.empty());
}

TEST_F(HorizontalBoring, NormalsAreRepairedWhicheverWayTheCirclesLook) {
    for (const double y : {1.0, -1.0}) {
        Circle(Target::ATP, {100 + 10 * y, 0, 9}, 8, {0, y, 0});
        Circle(Target::ATP, {100 + 10 * y, 30, 9}, 8, {0, -y, 0});
    }
    RunState run = Start(Target::ATP);
    BoreHorizontally(run);
    const std::vector<Drawn> bores = OnLayers(DrawnIn(document), "HF_T8_D30");
    ASSERT_EQ(bores.size(), 2U);
    for (const Drawn& bore : bores) EXPECT_EQ(bore.normal, (Point3{0, -1, 0}));
}

TEST_F(HorizontalBoring, TheNearerOfTwoFloorsWins) {
    for (const bool nearFirst : {true, false}) {
        const double x = nearFirst ? 100 : 200;
        Circle(Target::ATP, {x, 0, 9}, 8, {0, -1, 0});
        Circle(Target::ATP, {x, nearFirst ? 30.0 : 50.0, 9}, 8, {0, -1, 0});
        Circle(Target::ATP, {x, nearFirst ? 50.0 : 30.0, 9}, 8, {0, -1, 0});
    }
    RunState run = Start(Target::ATP);
    BoreHorizontally(run);
    EXPECT_EQ(OnLayers(DrawnIn(document), "HF_T8_D30").size(), 2U);
}

TEST_F(HorizontalBoring, DiametersMatchWithinATenThousandth) {
    Circle(Target::C2C, {100, 0, 9}, 8, {0, -1, 0});
    Circle(Target::C2C, {100, 30, 9}, 8.00005, {0, -1, 0});
    Circle(Target::C2C, {200, 0, 9}, 8, {0, -1, 0});
    Circle(Target::C2C, {200, 30, 9}, 8.0002, {0, -1, 0});
    RunState run = Start(Target::C2C);
    BoreHorizontally(run);
    const std::vector<Drawn> bores = OnLayers(DrawnIn(document), "HF_T");
    ASSERT_EQ(bores.size(), 1U);
    EXPECT_EQ(bores[0].points[0].x, 100);
}

TEST_F(HorizontalBoring, ABoreInTheCornerOfTheFaceIsNone) {
    Bore(Target::C2C, {0, 0, 9}, {0, 30, 9}, 8);
    RunState run = Start(Target::C2C);
    BoreHorizontally(run);
    EXPECT_TRUE(OnLayers(DrawnIn(document), "HF_T").empty());
    EXPECT_FALSE(run.part.unexplained.empty());
}

TEST_F(HorizontalBoring, ACircleWithoutAFloorStaysAndIsTold) {
    Circle(Target::C2C, {100, 0, 9}, 8, {0, -1, 0});
    RunState run = Start(Target::C2C);
    BoreHorizontally(run);
    const std::vector<Drawn> left = OnLayers(DrawnIn(document), layers::HorzCircleHold);
    ASSERT_EQ(left.size(), 1U);
    EXPECT_EQ(left[0].thickness, 0);
    EXPECT_EQ(run.part.unexplained, std::vector<std::string>{"edge bore of 8 at 100,0,9: no operation"});
}

TEST_F(HorizontalBoring, AThroughBoreIsMadeFromBothFaces) {
    Bore(Target::C2C, {100, 0, 9}, {100, Wide, 9}, 8);
    RunState run = Start(Target::C2C);
    BoreHorizontally(run);
    for (const char* layer : {"HF_T", "HB_T"}) {
        const std::vector<Drawn> bores = OnLayers(DrawnIn(document), layer);
        ASSERT_EQ(bores.size(), 1U) << layer;
        EXPECT_EQ(bores[0].thickness, -Wide);
    }
}

TEST_F(HorizontalBoring, AStepInABoreIsOneOperationAndTheNarrowPartIsTold) {
    Bore(Target::C2C, {100, 0, 9}, {100, 20, 9}, 10);
    Bore(Target::C2C, {100, 20, 9}, {100, 50, 9}, 6);
    RunState run = Start(Target::C2C);
    BoreHorizontally(run);
    EXPECT_EQ(OnLayers(DrawnIn(document), "HF_T").size(), 1U);
    EXPECT_EQ(run.part.unexplained, std::vector<std::string>{"edge bore of 6 at 100,50,9: no operation"});
}

TEST_F(HorizontalBoring, ReceiversWithoutEdgeFacesGetOneRectangleForABore) {
    Bore(Target::ROV, {100, 0, 9}, {100, 30, 9}, 8);
    Bore(Target::ROV, {150, Wide, 9}, {150, 360, 9}, 8);
    Bore(Target::ROV, {0, 100, 9}, {20, 100, 9}, 8);
    Bore(Target::ROV, {Long, 100, 9}, {550, 100, 9}, 8);
    RunState run = Start(Target::ROV);
    BoreHorizontally(run);
    EXPECT_TRUE(All<AcadCircle>(document).empty());
    struct Wanted {
        std::string layer;
        Point3 min, max;
    };
    const std::vector<Wanted> wanted{{"SIDEB0_9_8_30", {96, 0, 0}, {104, 30, 0}},
                                     {"SIDED0_9_8_40", {146, 360, 0}, {154, Wide, 0}},
                                     {"SIDEA0_9_8_20", {0, 96, 0}, {20, 104, 0}},
                                     {"SIDEC0_9_8_50", {550, 96, 0}, {Long, 104, 0}}};
    const std::vector<AcadLWPolyline*> rectangles = All<AcadLWPolyline>(document);
    ASSERT_EQ(rectangles.size(), wanted.size());
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        EXPECT_EQ(rectangles[i]->Layer(), wanted[i].layer);
        EXPECT_EQ(rectangles[i]->Color(), 15);
        EXPECT_TRUE(rectangles[i]->Closed());
        EXPECT_EQ(rectangles[i]->Thickness(), 0);
        const Box3 box = rectangles[i]->GetBoundingBox();
        EXPECT_EQ(box.min, wanted[i].min);
        EXPECT_EQ(box.max, wanted[i].max);
        // This receiver knows each edge by a group, too.
        AcadGroup* group = document.Groups().Item(wanted[i].layer.substr(0, 5));
        ASSERT_EQ(group->Count(), 1);
        EXPECT_EQ(group->Item(0)->Handle(), rectangles[i]->Handle());
    }
    EXPECT_EQ(run.part.edgeBores, 4);
}

TEST_F(HorizontalBoring, OnlyOneReceiverKnowsEdgesByGroups) {
    Bore(Target::CNI, {100, 0, 9}, {100, 30, 9}, 8);
    RunState run = Start(Target::CNI);
    BoreHorizontally(run);
    EXPECT_EQ(run.part.edgeBores, 1);
    EXPECT_EQ(document.Groups().Count(), 0);
}

TEST_F(HorizontalBoring, EveryTargetMakesTheBoreOnce) {
    for (const Target target : AllTargets) {
        SCOPED_TRACE(TraitsOf(target).name);
        for (AcadEntity* entity : All<AcadEntity>(document))
            if (entity->ObjectName() != "AcDb3dSolid" && entity->ObjectName() != "AcDbLine") entity->Delete();
        Bore(target, {100, 0, 9}, {100, 30, 9}, 8);
        RunState run = Start(target);
        BoreHorizontally(run);
        const std::vector<Drawn> made = Made(TraitsOf(target).horizontalWorkLayer);
        ASSERT_EQ(made.size(), 1U);
        EXPECT_EQ(made[0].kind, TraitsOf(target).firstFamily ? "AcDbCircle" : "AcDbPolyline");
    }
}

TEST_F(HorizontalBoring, ABoreToldFromBothSidesIsToldOnce) {
    Circle(Target::C2C, {100, 0, 6}, 8, {0, -1, 0});
    RunState run = Start(Target::C2C);
    BoreHorizontally(run);
    for (AcadCircle* circle : All<AcadCircle>(document)) circle->Delete();
    run.part.SecondSidePass = true;
    Circle(Target::C2C, {100, Wide, Thick - 6}, 8, {0, 1, 0});
    BoreHorizontally(run);
    EXPECT_EQ(run.part.unexplained.size(), 1U);
}

TEST_F(HorizontalBoring, ABoreWithoutAFloorGoesAsFarAsItsWall) {
    Circle(Target::C2C, {0, 100, 9}, 8, {-1, 0, 0});
    AcadArc& end = *document.ModelSpace().AddArc({0, 0, 0}, 4, 0, 1);
    // Laid into the plane across the bore.
    end.Rotate3D({0, 0, 0}, {0, 1, 0}, std::numbers::pi / 2);
    end.Move({0, 0, 0}, {34, 100, 9});
    RunState run = Start(Target::C2C);
    BoreHorizontally(run);
    const std::vector<Drawn> bores = OnLayers(DrawnIn(document), "HL_T");
    ASSERT_EQ(bores.size(), 1U);
    EXPECT_EQ(bores[0].thickness, -34);
    EXPECT_TRUE(run.part.unexplained.empty());
}

TEST_F(HorizontalBoring, ABoreWhoseMouthARecessHasBittenIsMadeFromTheFace) {
    // The floor is whole; of the rim on the face the lower half is left.
    const auto bore = [this](double x) {
        Circle(Target::C2C, {x, 40, 9}, 8, {0, -1, 0});
        AcadArc& rim = *document.ModelSpace().AddArc({0, 0, 0}, 4, std::numbers::pi, 2 * std::numbers::pi);
        rim.Rotate3D({0, 0, 0}, {1, 0, 0}, std::numbers::pi / 2);
        rim.Move({0, 0, 0}, {x, 0, 9});
    };
    bore(100);
    wood.Drill({100, 0, 9}, app::Axis::Y, 40, 8);
    // Here wood stands in the way.
    bore(200);
    RunState run = Start(Target::C2C);
    BoreHorizontally(run);
    const std::vector<Drawn> bores = OnLayers(DrawnIn(document), "HF_T");
    ASSERT_EQ(bores.size(), 1U);
    EXPECT_EQ(bores[0].points[0], (Point3{100, 0, 9}));
    EXPECT_EQ(bores[0].normal, (Point3{0, -1, 0}));
    EXPECT_EQ(bores[0].thickness, -40);
    EXPECT_EQ(run.part.unexplained.size(), 1U);
}

TEST_F(HorizontalBoring, APinThatStandsOutOfAnEdgeIsNotBoredAway) {
    app::Workpiece pin(document.ModelSpace(), {0, 0, 0}, {Long, Wide, Thick}, "Parts");
    Acad3DSolid* post = document.ModelSpace().AddCylinder({Long + 10, 100, 9}, 4, 22);
    post->Rotate3D({Long + 10, 100, 9}, {Long + 10, 101, 9}, std::numbers::pi / 2);
    pin.Solid().Boolean(BooleanKind::Union, *post);
    Circle(Target::C2C, {Long + 21, 100, 9}, 8, {1, 0, 0});
    Circle(Target::C2C, {Long, 100, 9}, 8, {1, 0, 0});
    RunState run = Start(Target::C2C);
    BoreHorizontally(run);
    EXPECT_TRUE(OnLayers(DrawnIn(document), "HR_T").empty());
    EXPECT_EQ(run.part.edgeBores, 0);
    EXPECT_FALSE(run.part.unexplained.empty());
}

}  // namespace
}  // namespace brenvik
