// Circles, arcs and lines on the work layers that their place and their normals call for.
#include "cnc/round_bores.h"
#include "cnc/sorting/edge_sorting.h"

namespace brenvik {
namespace {

class SortingTest : public RoundBoreTest {
  protected:
    SortingTest() { BoardWith({0, 0}); }
    std::size_t CountOn(std::string_view layer) { return AllOn<AcadEntity>(document, layer).size(); }
};

TEST_F(SortingTest, ARimInTheTopIsPartedFromTheOtherLevels) {
    RunState run = RunOn(document);
    Circle({50, 50, 20}, 8);
    Circle({50, 50, 5}, 8);
    Circle({90, 50, 0}, 8);
    Sort(run);
    EXPECT_EQ(On(layers::MaxCircleHold), (std::vector<RimOf>{RimOf{8, 20}}));
    EXPECT_EQ(On(layers::CircleHold), (std::vector<RimOf>{RimOf{8, 5}, RimOf{8, 0}}));
}

TEST_F(SortingTest, UprightCirclesAllLookUp) {
    RunState run = RunOn(document);
    Circle({50, 50, 20}, 8, layers::CircleHold, {0, 0, -1});
    Sort(run);
    EXPECT_EQ(AllOn<AcadCircle>(document, layers::MaxCircleHold).at(0)->Normal(), (Point3{0, 0, 1}));
}

TEST_F(SortingTest, EdgeBoresGoToTheLayerOfTheTargetsGroup) {
    for (const auto& [target, layer] :
         {std::pair{Target::C2C, layers::HorzCircleHold}, {Target::BW, layers::MyHorzCircleHold}}) {
        RunState run = RunOn(document, target);
        AcadCircle& bore = Circle({0, 50, 10}, 8, layers::CircleHold, {-1, 0, 0});
        Sort(run);
        EXPECT_EQ(bore.Layer(), layer);
        bore.Delete();
    }
}

TEST_F(SortingTest, OfTwinsOneStays) {
    RunState run = RunOn(document);
    Circle({50, 50, 5}, 8);
    Circle({50.00009, 50, 5}, 8.00005, layers::CircleHold, {0, 0, -1});
    Circle({50, 50, 5}, 8);
    Sort(run);
    EXPECT_EQ(On(layers::CircleHold), (std::vector<RimOf>{RimOf{8, 5}}));
}

TEST_F(SortingTest, NeighboursThatDifferByMoreThanTheToleranceAreNoTwins) {
    RunState run = RunOn(document);
    Circle({50, 50, 5}, 8);
    Circle({50.0002, 50, 5}, 8);
    Circle({50, 50, 5.0002}, 8);
    Circle({50, 50, 5}, 8.0002);
    Sort(run);
    EXPECT_EQ(On(layers::CircleHold).size(), 4U);
}

TEST_F(SortingTest, OfACrowdOfTwinsTheLastInTheDrawingStays) {
    RunState run = RunOn(document);
    std::string last;
    for (int copy = 0; copy < 5; ++copy) last = Circle({50, 50, 5}, 8).Handle();
    Sort(run);
    ASSERT_EQ(CountOn(layers::CircleHold), 1U);
    EXPECT_EQ(AllOn<AcadCircle>(document, layers::CircleHold).at(0)->Handle(), last);
}

TEST_F(SortingTest, SpecksAndProjectedCirclesGo) {
    RunState run = RunOn(document);
    Circle({50, 50, 20}, 0.0019);
    Circle({60, 50, 20}, 0.002);
    Circle({70, 50, 0}, 8, "PV-1F");
    Circle({80, 50, 20}, 8, layers::BrenvikExplode);
    Circle({90, 50, 20}, 8, layers::NextBiggestRegion);
    const AcadCircle& kept = Circle({95, 50, 0}, 8, layers::RegionCopy);
    Sort(run);
    EXPECT_EQ(On(layers::MaxCircleHold), (std::vector<RimOf>{RimOf{0.002, 20}}));
    EXPECT_EQ(kept.Layer(), layers::RegionCopy);
    EXPECT_EQ(All<AcadCircle>(document).size(), 2U);
}

TEST_F(SortingTest, ASlantedHoleStaysAndIsToldOnce) {
    RunState run = RunOn(document);
    const Point3 slant{0.6, 0, 0.8};
    AcadCircle& rim = Circle({50, 50, 16}, 8, layers::CircleHold, slant);
    Circle({50, 50, 16}, 8, layers::CircleHold, {-0.6, 0, -0.8});
    Circle({44, 50, 8}, 8, layers::CircleHold, slant);
    Sort(run);
    EXPECT_EQ(rim.Layer(), layers::CircleHold);
    EXPECT_EQ(run.part.unexplained, std::vector<std::string>{"slanted hole of 8 at 50,50,16: no operation"});
}

TEST_F(SortingTest, TheLimitIsTheNumberAtTheHeadOfItsText) {
    Set("CircleSize", "12.5 mm");
    RunState run = RunOn(document);
    Circle({50, 50, 20}, 12.5);
    Sort(run);
    EXPECT_EQ(run.part.CircleSize, 12.5);
    EXPECT_EQ(On(layers::MaxCircleHold), (std::vector<RimOf>{RimOf{12.5, 20}}));
}

TEST_F(SortingTest, ArcsInsideThePartMayBeRoutesAndTheOthersOutline) {
    RunState run = RunOn(document);
    AddLayer(document, layers::BrenvikExplode);
    AddLayer(document, layers::RegionCopy);
    AddLayer(document, "PV-1F");
    const auto arcAt = [&](double z, std::string_view layer) -> AcadArc& {
        AcadArc& arc = *document.ModelSpace().AddArc({50, 50, z}, 5, 0, 1);
        arc.SetLayer(layer);
        return arc;
    };
    const AcadArc &projected = arcAt(0, "PV-1F"), &inside = arcAt(10, "PV-1F"),
                  &kept = arcAt(0, layers::RegionCopy), &edge = arcAt(20, layers::BrenvikExplode);
    SortArcsAndLines(run, LastSolid(document).GetBoundingBox());
    EXPECT_EQ(projected.Layer(), layers::ArcPv);
    EXPECT_EQ(inside.Layer(), layers::BrenvikExplode);
    EXPECT_EQ(kept.Layer(), layers::RegionCopy);
    EXPECT_EQ(edge.Layer(), layers::BrenvikExplode);
}

TEST_F(SortingTest, LinesOfFloorsLookUpAndThoseOfWallsInsideGo) {
    RunState run = RunOn(document);
    AddLayer(document, layers::BrenvikExplode);
    const auto lineAt = [&](double z, const Point3& normal) {
        AcadLine& line = *document.ModelSpace().AddLine({10, 10, z}, {60, 10, z});
        line.SetNormal(normal);
        line.SetLayer(layers::BrenvikExplode);
    };
    lineAt(10, {0, 0, -1});
    lineAt(10, {0, 1, 0});
    lineAt(20, {0, 1, 0});
    SortArcsAndLines(run, LastSolid(document).GetBoundingBox());
    const std::vector<AcadLine*> left = AllOn<AcadLine>(document, layers::BrenvikExplode);
    ASSERT_EQ(left.size(), 2U);
    EXPECT_EQ(left[0]->Normal(), (Point3{0, 0, 1}));
    EXPECT_EQ(left[1]->StartPoint().z, 20);
}

}  // namespace
}  // namespace brenvik
