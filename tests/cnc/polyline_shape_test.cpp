// The way a polyline runs, its sides and its footprint.
#include "cnc/drawing/polyline_shape.h"

#include "cnc/cnc_fixture.h"

namespace brenvik {
namespace {

class PolylineShape : public CncTest {
  protected:
    AcadLWPolyline& Draw(const std::vector<PathVertex>& vertices) {
        std::vector<double> flat;
        for (const PathVertex& vertex : vertices) flat.insert(flat.end(), {vertex.x, vertex.y});
        AcadLWPolyline& polyline = *document.ModelSpace().AddLightWeightPolyline(flat);
        for (std::size_t i = 0; i < vertices.size(); ++i)
            polyline.SetBulge(static_cast<int>(i), vertices[i].bulge);
        polyline.SetClosed(true);
        return polyline;
    }
    static void ExpectVertices(const AcadLWPolyline& polyline, const std::vector<PathVertex>& wanted) {
        const std::vector<PathVertex> is = VerticesOf(polyline);
        ASSERT_EQ(is.size(), wanted.size());
        for (std::size_t i = 0; i < is.size(); ++i) {
            EXPECT_EQ(is[i].x, wanted[i].x) << i;
            EXPECT_EQ(is[i].y, wanted[i].y) << i;
            EXPECT_EQ(is[i].bulge, wanted[i].bulge) << i;
        }
    }
};

TEST_F(PolylineShape, DirectionIsTheSignOfTheArea) {
    EXPECT_EQ(DirectionOf(Draw({{0, 0}, {4, 0}, {4, 3}})), "CounterClockwise");
    EXPECT_EQ(DirectionOf(Draw({{0, 0}, {4, 3}, {4, 0}})), "Clockwise");
}

TEST_F(PolylineShape, ArcsAloneHaveADirection) {
    EXPECT_EQ(DirectionOf(Draw({{0, 0, 1}, {4, 0, 1}})), "CounterClockwise");
    EXPECT_EQ(DirectionOf(Draw({{0, 0, -1}, {4, 0, -1}})), "Clockwise");
}

TEST_F(PolylineShape, AnArcCanTurnTheDirectionOfItsChords) {
    // The triangle of the chords runs clockwise, but the great arc outside of it doesn't.
    EXPECT_EQ(DirectionOf(Draw({{0, 0, 3}, {1, 0, 0}, {0.5, -0.1, 0}})), "CounterClockwise");
}

TEST_F(PolylineShape, DirectionHoldsFarFromTheOrigin) {
    EXPECT_EQ(DirectionOf(Draw({{1e8, 1e8}, {1e8 + 0.5, 1e8}, {1e8 + 0.5, 1e8 + 0.5}})), "CounterClockwise");
}

TEST_F(PolylineShape, ReversingKeepsTheFirstVertexAndTheCurve) {
    AcadLWPolyline& polyline = Draw({{0, 0, 0}, {10, 0, 0.5}, {10, 5, 0}, {0, 5, -0.25}});
    const double area = polyline.Area();
    Reverse(polyline);
    ExpectVertices(polyline, {{0, 0, 0.25}, {0, 5, 0}, {10, 5, -0.5}, {10, 0, 0}});
    EXPECT_NEAR(polyline.Area(), area, 1e-9);
    Reverse(polyline);
    ExpectVertices(polyline, {{0, 0, 0}, {10, 0, 0.5}, {10, 5, 0}, {0, 5, -0.25}});
}

TEST_F(PolylineShape, BringingToADirectionTurnsOnlyWhatRunsTheOtherWay) {
    AcadLWPolyline& polyline = Draw({{0, 0}, {4, 0}, {4, 3}});
    BringToDirection(polyline, CounterClockwise);
    ExpectVertices(polyline, {{0, 0}, {4, 0}, {4, 3}});
    BringToDirection(polyline, Clockwise);
    ExpectVertices(polyline, {{0, 0}, {4, 3}, {4, 0}});
}

TEST_F(PolylineShape, SidesAreStraightDistancesWithTheClosingSide) {
    EXPECT_EQ(SideLengths(Draw({{0, 0}, {4, 0, 1}, {4, 3}})), (std::vector<double>{4, 3, 5}));
}

TEST_F(PolylineShape, FootprintIsRoundedToSixDecimals) {
    const Footprint footprint = FootprintOf(Draw({{0.0000004, 0}, {4, 0}, {4, 3.0000006}}));
    EXPECT_EQ(footprint, (Footprint{0, 0, 4, 3.000001}));
}

TEST_F(PolylineShape, FootprintReachesToTheTopOfAnArc) {
    EXPECT_EQ(FootprintOf(Draw({{0, 0, 1}, {4, 0, 1}})), (Footprint{0, -2, 4, 2}));
}

TEST_F(PolylineShape, EnclosingIsStrictOnAllFourSides) {
    const Footprint outer{0, 0, 10, 10};
    EXPECT_TRUE(outer.Encloses({1, 1, 9, 9}));
    EXPECT_FALSE(outer.Encloses({0, 1, 9, 9}));
    EXPECT_FALSE(outer.Encloses({1, 0, 9, 9}));
    EXPECT_FALSE(outer.Encloses({1, 1, 10, 9}));
    EXPECT_FALSE(outer.Encloses({1, 1, 9, 10}));
    EXPECT_FALSE(outer.Encloses(outer));
}

TEST_F(PolylineShape, VerticesCanBecomeMore) {
    AcadLWPolyline& polyline = Draw({{0, 0}, {4, 0}, {4, 3}});
    const std::vector<PathVertex> more{{0, 0, 0.5}, {4, 0, 0}, {4, 3, 0}, {0, 3, -0.5}, {-1, 1, 0}};
    SetVertices(polyline, more);
    ExpectVertices(polyline, more);
    EXPECT_TRUE(polyline.Closed());
}

}  // namespace
}  // namespace brenvik
