// Splines through points: they run through them, with the slopes that are given and a steady curvature.
#include "drafting_host/dwg/fitted_spline.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace brenvik::dwg {
namespace {

/// The point of a cubic at a parameter, by repeated division of its control polygon.
Point3 At(const SplineData& spline, double parameter) {
    std::size_t span = 3;
    while (span + 2 < spline.controlPoints.size() + 1 && spline.knots[span + 1] <= parameter) ++span;
    std::array<Point3, 4> points{};
    for (std::size_t i = 0; i < 4; ++i) points[i] = spline.controlPoints[span - 3 + i];
    for (std::size_t level = 1; level <= 3; ++level) {
        for (std::size_t i = 3; i >= level; --i) {
            const double low = spline.knots[span - 3 + i], high = spline.knots[span + 1 + i - level];
            const double share = (parameter - low) / (high - low);
            const Point3 &a = points[i - 1], &b = points[i];
            points[i] = {a.x + (b.x - a.x) * share, a.y + (b.y - a.y) * share, a.z + (b.z - a.z) * share};
        }
    }
    return points[3];
}

void ExpectNear(const Point3& left, const Point3& right, double tolerance) {
    EXPECT_NEAR(left.x, right.x, tolerance);
    EXPECT_NEAR(left.y, right.y, tolerance);
    EXPECT_NEAR(left.z, right.z, tolerance);
}

TEST(FittedSpline, TwoPointsWithSlopesMakeOnePiece) {
    SplineData spline;
    spline.fitPoints = {{0, 0, 0}, {9, 0, 0}};
    ASSERT_TRUE(FitThroughPoints(spline, {{3, 6, 0}, {3, -6, 0}, KnotKind::Uniform}));
    EXPECT_EQ(spline.knots, (std::vector<double>{0, 0, 0, 0, 1, 1, 1, 1}));
    ASSERT_EQ(spline.controlPoints.size(), 4U);
    ExpectNear(spline.controlPoints[1], {1, 2, 0}, 1e-12);
    ExpectNear(spline.controlPoints[2], {8, 2, 0}, 1e-12);
    EXPECT_TRUE(spline.fitPoints.empty());
}

TEST(FittedSpline, RunsThroughEachPointWithSteadyCurvature) {
    const std::vector<Point3> points = {{0, 0, 0}, {10, 5, 1}, {12, 20, 0}, {30, 21, -4}, {31, 0, 2}};
    for (const KnotKind kind : {KnotKind::Chord, KnotKind::SquareRoot, KnotKind::Uniform}) {
        for (const bool hasSlopes : {true, false}) {
            SplineData spline;
            spline.fitPoints = points;
            const FitEnds ends{hasSlopes ? Point3{1, 2, 0} : Point3{},
                               hasSlopes ? Point3{0, -1, 0} : Point3{}, kind};
            ASSERT_TRUE(FitThroughPoints(spline, ends));
            ASSERT_EQ(spline.controlPoints.size(), points.size() + 2);
            ASSERT_EQ(spline.knots.size(), spline.controlPoints.size() + 4);
            for (std::size_t i = 0; i < points.size(); ++i)
                ExpectNear(At(spline, spline.knots[i + 3]), points[i], 1e-9);
            // Each side's second difference at an inner knot.
            constexpr double step = 1e-3;
            for (std::size_t i = 1; i + 1 < points.size(); ++i) {
                const double knot = spline.knots[i + 3];
                const auto bend = [&](double side) {
                    const Point3 a = At(spline, knot), b = At(spline, knot + side),
                                 c = At(spline, knot + 2 * side);
                    return Point3{a.x - 2 * b.x + c.x, a.y - 2 * b.y + c.y, a.z - 2 * b.z + c.z};
                };
                ExpectNear(bend(step), bend(-step), 1e-6);
            }
        }
    }
}

TEST(FittedSpline, StaysAsPointsWhereItsCurveIsNotSettled) {
    SplineData spline;
    spline.fitPoints = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}};
    const SplineData before = spline;
    EXPECT_FALSE(FitThroughPoints(spline, {{}, {}, KnotKind::Chord, true}));
    EXPECT_FALSE(FitThroughPoints(spline, {{}, {}, KnotKind::Own}));
    EXPECT_EQ(spline, before);
    spline.fitPoints = {{0, 0, 0}, {0, 0, 0}, {1, 1, 0}};
    EXPECT_FALSE(FitThroughPoints(spline, {}));
}

TEST(FittedSpline, PlaneAndStraightOnesAreMarked) {
    constexpr int planar = 8, linear = 16;
    SplineData spline;
    spline.controlPoints = {{0, 0, 5}, {1, 0, 5}, {1, 1, 5}};
    MarkFlatness(spline);
    EXPECT_EQ(spline.flags, planar);
    EXPECT_EQ(spline.normal, (Point3{0, 0, 1}));
    spline = {};
    spline.controlPoints = {{0, 0, 0}, {1, 2, 3}, {2, 4, 6}};
    MarkFlatness(spline);
    EXPECT_EQ(spline.flags, planar | linear);
    spline = {};
    spline.controlPoints = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 1}};
    MarkFlatness(spline);
    EXPECT_EQ(spline.flags, 0);
}

}  // namespace
}  // namespace brenvik::dwg
