// Corners that meet the edge of a part run off it.
#include "cnc/routes/routing_overrun.h"

#include <cmath>
#include <utility>

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
    // It climbs one in two; the line of each wall stays, that to the part's corner too.
    const auto moved = RunOff({{0, 100}, {600, 400}, {550, 400}, {0, 125}});
    // The bit of radius 6.125 leaves the sharper corners round by 1.447 and 1.894 radii.
    const double left = 6.125 * (1 + std::sqrt(0.2)), back = 6.125 * (1 + std::sqrt(0.8));
    ExpectVertices(moved, {{-left, 100 - left / 2},
                           {600 + 2 * (back + 0.00001), 400 + back + 0.00001},
                           {550 + 2 * (back + 0.00002), 400 + back + 0.00002},
                           {-left - 0.00003, 125 - (left + 0.00003) / 2}});
}

TEST_F(RoutingOverrun, AWallThatWouldPassTheOtherEndOfAShortMouthGoesStraightOut) {
    // Prolonged, the wall at four in one would leave at Y 128, beyond the mouth's other end: the path would
    // cross itself.
    ExpectVertices(RunOff({{500, 100}, {575, 0.5}, {600, 100}, {600, 109}, {500, 109}}),
                   {{500, 100}, {575, 0.5}, {600, 100}, {607, 100}, {607.00001, 109}, {500, 109}});
    // Run the other way round it is the same.
    ExpectVertices(RunOff({{500, 109}, {600, 109}, {600, 100}, {575, 0.5}, {500, 100}}),
                   {{500, 109}, {607, 109}, {607.00001, 100}, {600, 100}, {575, 0.5}, {500, 100}});
}

TEST_F(RoutingOverrun, TheWallsOfASlantedGrooveAreProlongedHoweverShortItsMouth) {
    // Both ends of the mouth drift the same way by more than half of its length, and never meet.
    const double slope = std::sqrt(3);
    const auto moved = RunOff({{120 + 100 * slope, 300}, {120, 400}, {100, 400}, {100 + 100 * slope, 300}});
    ASSERT_EQ(moved.size(), 4U);
    for (const auto& [end, from] : {std::pair{moved[1], 120.0}, std::pair{moved[2], 100.0}}) {
        EXPECT_GT(end.y, 406.9);
        EXPECT_NEAR(end.x, from - (end.y - 400) * slope, 1e-6);
    }
}

TEST_F(RoutingOverrun, AnEndGoesAsFarAsItsSharperCornerNeeds) {
    // The recess cuts off the part's corner; its sides stay parallel to the edges.
    const auto moved = RunOff({{0, 0}, {120, 0}, {0, 50}});
    const double front = 6.125 * (1 + 12.0 / 13), left = 6.125 * (1 + 5.0 / 13);
    ASSERT_EQ(moved.size(), 3U);
    EXPECT_NEAR(moved[0].x, -left, 1e-4);
    EXPECT_NEAR(moved[0].y, -front, 1e-4);
    EXPECT_NEAR(moved[1].y, -front, 1e-4);
    EXPECT_NEAR(moved[2].x, -left, 1e-4);
    EXPECT_NEAR(moved[1].x, 120 + front * 12 / 5, 1e-3);
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
