// Corners that meet the edge of a part run off it.
#include "cnc/routes/routing_overrun.h"

#include "cnc/cnc_fixture.h"
#include "cnc/drawing/polyline_shape.h"

namespace brenvik {
namespace {

constexpr Box3 Part{{0, 0, 0}, {600, 400, 18}};

class RoutingOverrun : public CncTest {
  protected:
    std::vector<PathVertex> RunOff(const std::vector<PathVertex>& vertices, double overrun = 7) {
        AcadLWPolyline& path = *document.ModelSpace().AddLightWeightPolyline(std::vector<double>{0, 0, 1, 1});
        SetVertices(path, vertices);
        path.SetClosed(true);
        RunOffEdges(path, Part, overrun);
        return VerticesOf(path);
    }
    static void ExpectVertices(const std::vector<PathVertex>& is, const std::vector<PathVertex>& wanted) {
        ASSERT_EQ(is.size(), wanted.size());
        for (std::size_t i = 0; i < is.size(); ++i) {
            EXPECT_NEAR(is[i].x, wanted[i].x, 1e-9) << i;
            EXPECT_NEAR(is[i].y, wanted[i].y, 1e-9) << i;
            EXPECT_NEAR(is[i].bulge, wanted[i].bulge, 1e-9) << i;
        }
    }
};

TEST_F(RoutingOverrun, IsTheDiameterByOneAndThreeQuarters) {
    EXPECT_EQ(OverrunOf(0.25), 0.14286);
    EXPECT_EQ(OverrunOf(12), 6.85714);
    EXPECT_EQ(OverrunOf(7), 4);
}

TEST_F(RoutingOverrun, APocketWithinThePartStays) {
    const std::vector<PathVertex> pocket{{100, 100}, {200, 100}, {200, 200}, {100, 200}};
    ExpectVertices(RunOff(pocket), pocket);
}

TEST_F(RoutingOverrun, ADadoAcrossThePartRunsOffBothEdges) {
    ExpectVertices(RunOff({{100, 0}, {119, 0}, {119, 400}, {100, 400}}),
                   {{100, -7}, {119, -7.00001}, {119, 407.00002}, {100, 407.00003}});
}

TEST_F(RoutingOverrun, AStoppedDadoRunsOffOneEdge) {
    ExpectVertices(RunOff({{0, 100}, {300, 100}, {300, 119}, {0, 119}}),
                   {{-7, 100}, {300, 100}, {300, 119}, {-7.00001, 119}});
}

TEST_F(RoutingOverrun, ARebateRunsOffTheEdgeThatItLiesInAndItsEnds) {
    // X of a corner before its Y, one corner after another.
    ExpectVertices(RunOff({{0, 0}, {10, 0}, {10, 400}, {0, 400}}),
                   {{-7, -7.00001}, {10, -7.00002}, {10, 407.00003}, {-7.00004, 407.00005}});
}

TEST_F(RoutingOverrun, CornersMeetTheEdgeAtFiveDecimals) {
    ExpectVertices(RunOff({{0.000004, 100}, {300, 100}, {300, 119}, {0.00002, 119}}),
                   // The last corner stands off the edge, so the first one only touches it.
                   {{0.000004, 100}, {300, 100}, {300, 119}, {0.00002, 119}});
    ExpectVertices(RunOff({{0.000004, 100}, {300, 100}, {300, 119}, {-0.000004, 119}}),
                   {{-6.999996, 100}, {300, 100}, {300, 119}, {-7.000014, 119}});
}

TEST_F(RoutingOverrun, ASlantedDadoIsProlongedInItsOwnLine) {
    // It climbs one in two; the line of each wall stays.
    ExpectVertices(RunOff({{0, 100}, {600, 400}, {550, 400}, {0, 125}}),
                   {{-7, 96.5}, {607.00001, 407.00002}, {564.00006, 407.00003}, {-7.00004, 121.49998}});
}

TEST_F(RoutingOverrun, ARoundEndAtTheEdgeKeepsItsArc) {
    // A half-moon on the left edge.
    ExpectVertices(RunOff({{0, 100, 1}, {0, 140, 0}}),
                   {{-7, 100, 0}, {0, 100, 1}, {0, 140, 0}, {-7.00001, 140, 0}});
}

TEST_F(RoutingOverrun, ARoundedPartCornerGrowsAboutItsCentre) {
    constexpr double quarter = 0.41421356237309503;
    // A rebate that follows the rounded lower left corner of the part, from the back edge to the right one.
    ExpectVertices(RunOff({{0, 400, 0},
                           {0, 30, quarter},
                           {30, 0, 0},
                           {600, 0, 0},
                           {600, 10, 0},
                           {30, 10, -quarter},
                           {10, 30, 0},
                           {10, 400, 0}}),
                   {{-7, 407.00001, 0},
                    {-7.00002, 30, quarter},
                    {30, -7.00003, 0},
                    {607.00004, -7.00005, 0},
                    {607.00006, 10, 0},
                    {30, 10, -quarter},
                    {10, 30, 0},
                    {10, 407.00007, 0}});
}

TEST_F(RoutingOverrun, ARoundThatTouchesTheEdgeStays) {
    const std::vector<PathVertex> round{{0, 100, 1}, {40, 100, 1}};
    ExpectVertices(RunOff(round), round);
}

TEST_F(RoutingOverrun, NoTwoMovedCornersCoincide) {
    const std::vector<PathVertex> moved = RunOff({{0, 0}, {600, 0}, {600, 400}, {0, 400}});
    for (std::size_t i = 0; i < moved.size(); ++i)
        for (std::size_t j = i + 1; j < moved.size(); ++j)
            EXPECT_TRUE(moved[i].x != moved[j].x && moved[i].y != moved[j].y);
}

}  // namespace
}  // namespace brenvik
