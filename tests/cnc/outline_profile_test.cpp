// The outside profile of a part as the kept face has it.
#include "cnc/outline/outline.h"
#include "cnc/outline_fixture.h"

namespace brenvik {
namespace {

TEST_F(OutlineTest, ARectangleIsOnePathCounterClockwiseOnTheTopPlane) {
    RunState run = Sorted(Body(Rectangle(0, 0, 600, 400), 0, 18));
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    const Drawn outline = Profile();
    EXPECT_EQ(outline.layer, "OT_Z18p3_T1_D12_S18000_F300_R_C0");
    EXPECT_EQ(run.part.OutlineLayer, outline.layer);
    EXPECT_EQ(outline.color, 2);
    EXPECT_TRUE(outline.closed);
    EXPECT_NEAR(outline.thickness, -18.3, 1e-12);
    EXPECT_EQ(outline.points.size(), 4U);
    EXPECT_EQ(outline.points[0].z, 18);
    EXPECT_EQ(CornersOf(outline), CornersOf(Rectangle(0, 0, 600, 400)));
    EXPECT_GT(Turning(outline), 0);
    EXPECT_EQ(run.part.RouteDirection, "CounterClockwise");
    EXPECT_FALSE(run.part.NeedSecondSide);
    EXPECT_TRUE(run.part.unexplained.empty());
}

TEST_F(OutlineTest, AnOutlineInInchesIsAsDeepInInches) {
    UseImperial();
    RunState run = Sorted(Body(Rectangle(0, 0, 24, 12), 0, 0.75));
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    const double deep = 0.75 + run.SpoilAmount;
    EXPECT_NEAR(Profile().thickness, -deep, 1e-12);
    EXPECT_EQ(Profile().layer, "OT_Z" + LayerNumberText(deep, 6, "p") + "_T1_Dp5_S18000_F300_R_C0");
}

TEST_F(OutlineTest, TheDepthOfTheNameComesFromTheThicknessByLetters) {
    RunState run = Sorted(Body(Rectangle(0, 0, 600, 400), 0, 18));
    run.part.DimT = "0";
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    EXPECT_TRUE(Profile().layer.starts_with("OT_Zp3_")) << Profile().layer;
    EXPECT_NEAR(Profile().thickness, -18.3, 1e-12);
}

TEST_F(OutlineTest, ANotchStaysInTheOutline) {
    const std::vector<Corner> shape{{0, 0},     {600, 0},   {600, 400}, {350, 400},
                                    {350, 330}, {250, 330}, {250, 400}, {0, 400}};
    RunState run = Sorted(Body(shape, 0, 18));
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    EXPECT_EQ(Profile().points.size(), 8U);
    EXPECT_EQ(CornersOf(Profile()), CornersOf(shape));
    EXPECT_GT(Turning(Profile()), 0);
    EXPECT_FALSE(run.part.NeedSecondSide);
}

TEST_F(OutlineTest, AMitredOutlineKeepsItsCorners) {
    const std::vector<Corner> shape{{0, 0}, {600, 0}, {520, 80}, {80, 80}};
    RunState run = Sorted(Body(shape, 0, 18));
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    EXPECT_EQ(Profile().points.size(), 4U);
    EXPECT_EQ(CornersOf(Profile()), CornersOf(shape));
}

TEST_F(OutlineTest, RoundedCornersStayTrueArcs) {
    const std::vector<Corner> shape = RoundedRectangle(0, 0, 600, 400, 40);
    RunState run = Sorted(Body(shape, 0, 18));
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    const Drawn outline = Profile();
    EXPECT_EQ(outline.points.size(), 8U);
    EXPECT_EQ(CornersOf(outline), CornersOf(shape));
    EXPECT_EQ(BulgesOf(outline), 4U);
    for (const double bulge : outline.bulges)
        EXPECT_TRUE(bulge == 0 || std::abs(bulge - Quarter) < 1e-9) << bulge;
    EXPECT_TRUE(run.part.unexplained.empty());
}

TEST_F(OutlineTest, ArcsThatTheProjectionLacksAreDrawnFromTheFace) {
    RunState run = Sorted(Body(RoundedRectangle(0, 0, 600, 400, 40), 0, 18));
    for (AcadArc* arc : AllOn<AcadArc>(document, layers::ArcPv)) arc->Delete();
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    EXPECT_EQ(BulgesOf(Profile()), 4U);
    EXPECT_EQ(Profile().points.size(), 8U);
}

TEST_F(OutlineTest, AnOutlineOfTwoHalfCirclesAndTwoLines) {
    const std::vector<Corner> shape{{100, 0}, {500, 0, Half}, {500, 200}, {100, 200, Half}};
    RunState run = Sorted(Body(shape, 0, 18));
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    EXPECT_EQ(Profile().points.size(), 4U);
    EXPECT_EQ(BulgesOf(Profile()), 2U);
    EXPECT_GT(Turning(Profile()), 0);
}

TEST_F(OutlineTest, AnOutlineOfOneArcAndOneLine) {
    RunState run = Sorted(Body({{0, 0}, {400, 0, Half}}, 0, 18));
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    EXPECT_EQ(Profile().points.size(), 2U);
    EXPECT_EQ(run.part.RouteDirection, "CounterClockwise");
}

TEST_F(OutlineTest, AnOutlineOfArcsAlone) {
    const std::vector<Corner> shape{{0, 0, 0.3}, {500, 0, 0.6}, {500, 200, 0.3}, {0, 200, 0.6}};
    RunState run = Sorted(Body(shape, 0, 18));
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    EXPECT_EQ(Profile().points.size(), 4U);
    EXPECT_EQ(BulgesOf(Profile()), 4U);
    EXPECT_FALSE(run.part.NeedSecondSide);
}

TEST_F(OutlineTest, TheArcsOfASteppedCornerLeadNoChainAstray) {
    // A quarter circle is cut halfway down beside a corner of the outline: its arc ends on that corner.
    Acad3DSolid& part = Body({{0, 0}, {600, 0}, {600, 400}, {100, 400}, {100, 300}, {0, 300}}, 0, 18);
    RunState run = Sorted(part);
    Project({100, 300, 0}, 50, {100, 250, 0}, {150, 300, 0});
    Project({60, 300, 0}, 40, {60, 260, 0}, {100, 300, 0});
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    EXPECT_EQ(Profile().points.size(), 6U);
    EXPECT_EQ(BulgesOf(Profile()), 0U);
    EXPECT_TRUE(run.part.unexplained.empty());
}

TEST_F(OutlineTest, LeftoverCirclesOfTheWorkLayersGoAndNamedOnesStay) {
    RunState run = Sorted(Body(Rectangle(0, 0, 600, 400), 0, 18));
    const auto circleOn = [&](std::string_view layer, const Point3& normal) {
        AddLayer(document, layer);
        AcadCircle* circle = Model().AddCircle({300, 200, 9}, 4);
        circle->SetNormal(normal);
        circle->SetLayer(layer);
    };
    for (const std::string_view layer : {"RegionCopy", "circleHold", "circlePV"}) {
        circleOn(layer, {0, 0, 1});
        circleOn(layer, {0, 0, -1});
        circleOn(layer, {1, 0, 0});
    }
    for (const std::string_view layer : {"VD_Z10_D8", "RouteCirclePV", "PKS_Z5_T1", "MAXCircleHold"})
        circleOn(layer, {0, 0, 1});
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    for (const std::string_view layer : {"RegionCopy", "circleHold", "circlePV"})
        EXPECT_EQ(AllOn<AcadCircle>(document, layer).size(), 1U) << layer;
    for (const std::string_view layer : {"VD_Z10_D8", "RouteCirclePV", "PKS_Z5_T1", "MAXCircleHold"})
        EXPECT_EQ(AllOn<AcadCircle>(document, layer).size(), 1U) << layer;
}

TEST_F(OutlineTest, AnEdgeThatIsNeitherStraightNorRoundIsTold) {
    RunState run = Sorted(Body(Rectangle(0, 0, 600, 400), 0, 18));
    AllOn<AcadLine>(document, layers::RegionCopy).front()->Delete();
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    ASSERT_EQ(run.part.unexplained.size(), 1U);
    EXPECT_EQ(run.part.unexplained[0],
              "the part's face has a chain of edges that doesn't close: no operation");
    // The sections know the outline all the same.
    EXPECT_EQ(CornersOf(Profile()), CornersOf(Rectangle(0, 0, 600, 400)));
}

TEST_F(OutlineTest, NothingIsLeftOnTheLayersOfTheSections) {
    RunState run = Sorted(Body({{0, 0}, {600, 0}, {600, 400}, {300, 400}, {300, 200}, {0, 200}}, 0, 18));
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    EXPECT_TRUE(On("regionPV").empty());
    EXPECT_TRUE(On("Border2").empty());
    EXPECT_TRUE(On("ThroughxRoute").empty());
    EXPECT_EQ(All<Acad3DSolid>(document).size(), 1U);
    EXPECT_TRUE(All<AcadRegion>(document).empty());
}

}  // namespace
}  // namespace brenvik
