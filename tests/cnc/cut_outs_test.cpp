// Contours inside the kept face: cut-outs, and what is no cut-out.
#include "cnc/outline/outline.h"
#include "cnc/outline_fixture.h"

namespace brenvik {
namespace {

const std::vector<Corner> Window = Rectangle(100, 100, 300, 200);

TEST_F(OutlineTest, ACutOutIsAClockwisePathCutIntoTheSpoilBoard) {
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Take(part, Body(Window, -10, 30));
    RunState run = Sorted(part);
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    const std::vector<Drawn> routes = On("RT_");
    ASSERT_EQ(routes.size(), 1U);
    EXPECT_EQ(routes[0].layer, "RT_Z18p3_T1_D12_S18000_F300_R_C0_1");
    EXPECT_EQ(routes[0].color, 1);
    EXPECT_NEAR(routes[0].thickness, -18.3, 1e-12);
    EXPECT_EQ(routes[0].points[0].z, 18);
    EXPECT_EQ(CornersOf(routes[0]), CornersOf(Window));
    EXPECT_LT(Turning(routes[0]), 0);
    EXPECT_FALSE(run.part.NeedSecondSide);
    EXPECT_EQ(CornersOf(Profile()), CornersOf(Rectangle(0, 0, 600, 400)));
}

TEST_F(OutlineTest, CutOutsAreCountedOn) {
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    for (int i = 0; i < 3; ++i) Take(part, Body(Rectangle(50 + 150 * i, 100, 150 + 150 * i, 200), -10, 30));
    RunState run = Sorted(part);
    run.part.RouteCount = 4;
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    for (const char* count : {"5", "6", "7"})
        EXPECT_EQ(On(std::string("RT_Z18p3_T1_D12_S18000_F300_R_C0_") + count).size(), 1U) << count;
    EXPECT_EQ(run.part.RouteCount, 7);
}

TEST_F(OutlineTest, RoundedCutOutsAreOnePathWithTrueArcs) {
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Take(part, Body(RoundedRectangle(100, 100, 300, 250, 20), -10, 30));
    RunState run = Sorted(part);
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    const std::vector<Drawn> routes = On("RT_");
    ASSERT_EQ(routes.size(), 1U);
    EXPECT_EQ(routes[0].points.size(), 8U);
    EXPECT_EQ(BulgesOf(routes[0]), 4U);
    for (const double bulge : routes[0].bulges) EXPECT_LE(bulge, 0);
    EXPECT_FALSE(run.part.NeedSecondSide);
}

TEST_F(OutlineTest, AHalfRoundCutOutOfTwoSidesIsCut) {
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Take(part, Body({{200, 150}, {300, 150, Half}}, -10, 30));
    RunState run = Sorted(part);
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    ASSERT_EQ(On("RT_").size(), 1U);
    EXPECT_EQ(On("RT_")[0].points.size(), 2U);
    EXPECT_EQ(run.part.RouteDirection, "CounterClockwise") << "the outline's, which comes last";
}

TEST_F(OutlineTest, TheBitFitsTheShortestSide) {
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Take(part, Body(Rectangle(100, 100, 200, 107), -10, 30));
    Take(part, Body(Rectangle(100, 200, 200, 212), -10, 30));
    Take(part, Body(Rectangle(100, 300, 200, 304), -10, 30));
    RunState run = Sorted(part);
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    std::set<std::string> tools;
    for (const Drawn& route : On("RT_")) tools.insert(route.layer.substr(0, 13));
    EXPECT_EQ(tools, (std::set<std::string>{"RT_Z18p3_T1_D", "RT_Z18p3_T3_D"}));
    EXPECT_EQ(On("RT_Z18p3_T3_D3_").size(), 2U) << "3 is tried before 6";
    EXPECT_EQ(On("RT_Z18p3_T1_D12_").size(), 1U) << "a bit exactly as wide as the side fits";
}

TEST_F(OutlineTest, NoBitForACutOutIsAskedAboutAndLeavingSkipsThePart) {
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Take(part, Body(Rectangle(100, 100, 200, 102), -10, 30));
    RunState run = Sorted(part);
    EXPECT_EQ(MakeOutline(run), PassOutcome::SkipPart);
    EXPECT_EQ(Messages(), std::vector<std::string>{
                              "Your router bits appears too big, for your material 18 OAK, with a route path "
                              "who's shortest line is 2 long, so you need to make a choice."});
    EXPECT_EQ(dialogs.shownForms, std::vector<std::string>{"frmChoice"});
}

TEST_F(OutlineTest, AContourWithMaterialAboveIsLeftForTheOtherSide) {
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Take(part, Body(Window, -10, 8));
    RunState run = Sorted(part);
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    EXPECT_TRUE(On("RT_").empty());
    EXPECT_TRUE(run.part.NeedSecondSide);
    EXPECT_TRUE(run.part.ThroughRouteSeen);
    EXPECT_EQ(run.part.RouteCount, 0);
    EXPECT_EQ(CornersOf(Profile()), CornersOf(Rectangle(0, 0, 600, 400)));
    EXPECT_TRUE(run.part.unexplained.empty());
}

TEST_F(OutlineTest, OnASecondPassOnlyTheNeedOfASecondSideIsRaised) {
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Take(part, Body(Window, -10, 8));
    RunState run = Sorted(part);
    run.part.SecondSidePass = true;
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    EXPECT_TRUE(run.part.NeedSecondSide);
    EXPECT_FALSE(run.part.ThroughRouteSeen);
}

TEST_F(OutlineTest, AnOpeningNarrowerAboveIsCutAtItsNarrowest) {
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Take(part, Body(Rectangle(80, 80, 320, 220), -10, 8));
    Take(part, Body(Window, -10, 30));
    RunState run = Sorted(part);
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    EXPECT_TRUE(run.part.NeedSecondSide);
    const std::vector<Drawn> routes = On("RT_");
    ASSERT_EQ(routes.size(), 1U);
    EXPECT_EQ(CornersOf(routes[0]), CornersOf(Window));
}

TEST_F(OutlineTest, AnOpeningThatARouteFollowsAlreadyIsNotCutAgain) {
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Take(part, Body(Rectangle(80, 80, 320, 220), -10, 8));
    Take(part, Body(Window, -10, 30));
    RunState run = Sorted(part);
    AddLayer(document, "RT_Z10_T1_D12_S18000_F300_R_C0_1");
    const std::array<double, 8> corners{100, 100, 300, 100, 300, 200, 100, 200};
    AcadLWPolyline* route = Model().AddLightWeightPolyline(corners);
    route->SetClosed(true);
    route->SetThickness(-10);
    route->SetElevation(18);
    route->SetLayer("RT_Z10_T1_D12_S18000_F300_R_C0_1");
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    EXPECT_EQ(On("RT_").size(), 1U);
}

TEST_F(OutlineTest, ArcsOfAPocketThatStopsInsideRaiseNothing) {
    // A pocket of arcs alone closes a ring in the projection, and so do the halves of a round one.
    const std::vector<Corner> leaf{{100, 100, 0.4}, {300, 100, 0.4}, {200, 250, 0.4}};
    const std::vector<Corner> round{{400, 200, Half}, {500, 200, Half}};
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Take(part, Body(leaf, 10, 30));
    Take(part, Body(round, 10, 30));
    RunState run = Sorted(part);
    for (int twin = 0; twin < 2; ++twin) {
        Project(leaf);
        Project(round);
    }
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    EXPECT_FALSE(run.part.NeedSecondSide);
    EXPECT_TRUE(On("RT_").empty());
    EXPECT_TRUE(run.part.unexplained.empty());
    EXPECT_EQ(Profile().points.size(), 4U);
}

TEST_F(OutlineTest, AnObroundPocketThatStopsInsideRaisesNothing) {
    const std::vector<Corner> obround{{100, 100}, {300, 100, Half}, {300, 160}, {100, 160, Half}};
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Take(part, Body(obround, 10, 30));
    RunState run = Sorted(part);
    Project(obround);
    Project(obround);
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    EXPECT_FALSE(run.part.NeedSecondSide);
    EXPECT_TRUE(On("RT_").empty());
    EXPECT_TRUE(run.part.unexplained.empty());
}

TEST_F(OutlineTest, ProjectedTwinsOfACutOutsArcsMakeNoSecondPath) {
    const std::vector<Corner> window = RoundedRectangle(100, 100, 300, 250, 20);
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Take(part, Body(window, -10, 30));
    RunState run = Sorted(part);
    Project(window);
    // Half of an arc that shows where a groove has taken the other half.
    Project({120, 120, 0}, 20, {100, 120, 0}, {120 - 20 * std::sqrt(0.5), 120 - 20 * std::sqrt(0.5), 0});
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    ASSERT_EQ(On("RT_").size(), 1U);
    EXPECT_EQ(On("RT_")[0].points.size(), 8U);
    EXPECT_TRUE(run.part.unexplained.empty());
}

TEST_F(OutlineTest, AHundredChainsAreJoinedAndMoreAreTold) {
    Acad3DSolid& part = Body(Rectangle(0, 0, 1200, 600), 0, 18);
    RunState run = Sorted(part);
    const auto square = [&](double x, double y) {
        const std::vector<Corner> shape = Rectangle(x, y, x + 20, y + 20);
        for (std::size_t i = 0; i < shape.size(); ++i) {
            const Corner &a = shape[i], &b = shape[(i + 1) % shape.size()];
            Model().AddLine({a.x, a.y, 0}, {b.x, b.y, 0})->SetLayer(layers::RegionCopy);
        }
    };
    for (int i = 0; i < 99; ++i) square(20 + 40 * (i % 20), 20 + 40 * (i / 20));
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    EXPECT_TRUE(run.part.unexplained.empty());
    for (AcadLWPolyline* path : All<AcadLWPolyline>(document)) path->Delete();

    DrawKeptFaceOf(part);
    for (int i = 0; i < 100; ++i) square(20 + 40 * (i % 20), 20 + 40 * (i / 20));
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    EXPECT_EQ(run.part.unexplained,
              std::vector<std::string>{"the part's face has edges that were not joined: no operation"});
}

TEST_F(OutlineTest, ACircularThroughRouteIsAPathOnTheTopPlane) {
    RunState run = Sorted(Body(Rectangle(0, 0, 600, 400), 0, 18));
    run.part.RouteCount = 2;
    for (int twin = 0; twin < 2; ++twin)
        Model().AddCircle({200, 150, 0}, 30)->SetLayer(layers::ThroughRouteCirclePv);
    Model().AddCircle({400, 150, 0}, 5)->SetLayer(layers::ThroughRouteCirclePv);
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    const std::vector<Drawn> routes = On("RT_");
    ASSERT_EQ(routes.size(), 2U);
    EXPECT_EQ(routes[0].layer, "RT_Z18p3_T1_D12_S18000_F300_R_C0_2");
    EXPECT_EQ(routes[0].points[0].z, 18);
    EXPECT_NEAR(routes[0].thickness, -18.3, 1e-12);
    EXPECT_EQ(routes[1].layer, "RT_Z18p3_T2_D6_S18000_F300_R_C0_3");
    EXPECT_EQ(run.part.RouteCount, 4);
}

TEST_F(OutlineTest, ACircularThroughRouteThatNoBitIsSmallEnoughForSkipsThePart) {
    RunState run = Sorted(Body(Rectangle(0, 0, 600, 400), 0, 18));
    Model().AddCircle({200, 150, 0}, 1)->SetLayer(layers::ThroughRouteCirclePv);
    EXPECT_EQ(MakeOutline(run), PassOutcome::SkipPart);
    EXPECT_EQ(Messages().size(), 1U);
}

}  // namespace
}  // namespace brenvik
