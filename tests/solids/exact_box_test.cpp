// Boxes without a tolerance gap.
#include "drafting_host/solids/exact_box.h"

#include <gtest/gtest.h>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepBuilderAPI_NurbsConvert.hxx>
#include <BRepOffsetAPI_MakePipe.hxx>
#include <GeomAPI_PointsToBSpline.hxx>
#include <GeomAPI_PointsToBSplineSurface.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_BSplineSurface.hxx>
#include <TColgp_Array1OfPnt.hxx>
#include <TColgp_Array2OfPnt.hxx>

#include <cmath>
#include <numbers>

#include "base/failure.h"
#include "solids/parts.h"

namespace brenvik::solids {
namespace {

using namespace test;

void ExpectBox(const Box& box, const gp_Pnt& low, const gp_Pnt& high, double margin) {
    for (int axis = 1; axis <= 3; ++axis) {
        EXPECT_NEAR(box.min.Coord(axis), low.Coord(axis), margin) << "low " << axis;
        EXPECT_NEAR(box.max.Coord(axis), high.Coord(axis), margin) << "high " << axis;
    }
}

TEST(ExactBox, BoardGivesItsCornersToTheLastBit) {
    const Box box = ExactBox(Moved(Board(596.3, 381.7, 18.9), gp_Vec(10.1, 20.2, 30.3)));
    EXPECT_EQ(box.min.X(), 10.1);
    EXPECT_EQ(box.min.Y(), 20.2);
    EXPECT_EQ(box.min.Z(), 30.3);
    EXPECT_EQ(box.max.X(), 10.1 + 596.3);
    EXPECT_EQ(box.max.Z(), 30.3 + 18.9);
}

TEST(ExactBox, CylinderReachesItsRadiusExactly) {
    const Box box = ExactBox(BRepPrimAPI_MakeCylinder(12.3, 45.6).Shape());
    EXPECT_EQ(box.min.X(), -12.3);
    EXPECT_EQ(box.max.X(), 12.3);
    EXPECT_EQ(box.min.Y(), -12.3);
    EXPECT_EQ(box.max.Y(), 12.3);
    EXPECT_EQ(box.max.Z(), 45.6);
}

TEST(ExactBox, QuarterOfACylinderStaysInItsQuarter) {
    const Box box = ExactBox(BRepPrimAPI_MakeCylinder(10, 5, std::numbers::pi / 2).Shape());
    ExpectBox(box, gp_Pnt(0, 0, 0), gp_Pnt(10, 10, 5), 1e-14);
}

TEST(ExactBox, ArcThatEndsBeforeItsPeakDoesNotReachIt) {
    const double angle = std::numbers::pi / 3;
    const Box box = ExactBox(BRepPrimAPI_MakeCylinder(10, 5, angle).Shape());
    ExpectBox(box, gp_Pnt(0, 0, 0), gp_Pnt(10, 10 * std::sin(angle), 5), 1e-13);
}

TEST(ExactBox, SphereAndTorusReachTheirRadii) {
    ExpectBox(ExactBox(BRepPrimAPI_MakeSphere(gp_Pnt(1, 2, 3), 7.7).Shape()), gp_Pnt(-6.7, -5.7, -4.7),
              gp_Pnt(8.7, 9.7, 10.7), 1e-13);
    ExpectBox(ExactBox(BRepPrimAPI_MakeTorus(40, 10).Shape()), gp_Pnt(-50, -50, -10), gp_Pnt(50, 50, 10),
              1e-13);
}

TEST(ExactBox, TiltedTorusFollowsItsFormula) {
    const double tilt = 0.4;
    const TopoDS_Shape ring =
        Rotated(BRepPrimAPI_MakeTorus(40, 10).Shape(), gp_Ax1(gp_Pnt(), gp::DX()), tilt);
    const Box box = ExactBox(ring);
    EXPECT_NEAR(box.max.Z(), 40 * std::sin(tilt) + 10, 1e-12);
    EXPECT_NEAR(box.max.Y(), 40 * std::cos(tilt) + 10, 1e-12);
    EXPECT_NEAR(box.max.X(), 50, 1e-12);
}

TEST(ExactBox, SphereCapDoesNotReachBelowItsFlat) {
    const TopoDS_Shape cap = BRepPrimAPI_MakeSphere(10, std::numbers::pi / 6, std::numbers::pi / 2).Shape();
    const double rim = 10 * std::cos(std::numbers::pi / 6);
    ExpectBox(ExactBox(cap), gp_Pnt(-rim, -rim, 5), gp_Pnt(rim, rim, 10), 1e-12);
}

TEST(ExactBox, SplineFormsOfRoundPartsAgreeWithTheFormulas) {
    for (const TopoDS_Shape& part :
         {BRepPrimAPI_MakeSphere(10).Shape(), BRepPrimAPI_MakeTorus(40, 10).Shape(),
          BRepPrimAPI_MakeCylinder(10, 30).Shape()}) {
        const TopoDS_Shape turned = Transformed(part, OddPlace());
        const Box round = ExactBox(turned);
        const Box spline = ExactBox(BRepBuilderAPI_NurbsConvert(turned, true).Shape());
        ExpectBox(spline, round.min, round.max, 1e-9);
    }
}

TEST(ExactBox, FreeFormPillowReachesItsTopInside) {
    // z = x(100-x) y(100-y) / 1e5: the top of 62.5 lies in the middle, away from every edge.
    TColgp_Array2OfPnt points(1, 15, 1, 15);
    for (int row = 1; row <= 15; ++row) {
        for (int column = 1; column <= 15; ++column) {
            const double x = 100.0 * (row - 1) / 14, y = 100.0 * (column - 1) / 14;
            points(row, column) = gp_Pnt(x, y, x * (100 - x) * y * (100 - y) / 1e5);
        }
    }
    const Handle(Geom_BSplineSurface) pillow = GeomAPI_PointsToBSplineSurface(points, 3, 8, GeomAbs_C2, 1e-6);
    const Box box = ExactBox(BRepBuilderAPI_MakeFace(pillow, 1e-7).Face());
    EXPECT_NEAR(box.max.Z(), 62.5, 1e-3);
    EXPECT_NEAR(box.max.Z(), pillow->Value(0.5, 0.5).Z(), 1e-6);
    EXPECT_NEAR(box.min.Z(), 0, 1e-6);
}

TEST(ExactBox, FrameGivesCoordinatesFromItsOrigin) {
    const gp_Ax3 frame(gp_Pnt(100, 50, 0), gp_Dir(1, 2, 3), gp_Dir(3, 0, -1));
    gp_Trsf place;
    place.SetTransformation(frame, gp_Ax3());
    const TopoDS_Shape board = Transformed(DrilledBoard(600, 400, 18, 5), place);
    ExpectBox(ExactBoxIn(board, frame), gp_Pnt(0, 0, 0), gp_Pnt(600, 400, 18), 1e-11);
}

TEST(ExactBox, NothingToBoxIsTold) {
    EXPECT_THROW(ExactBox(TopoDS_Shape()), Failure);
    EXPECT_THROW(ExactBox(Moved(Board(1, 1, 1), gp_Vec(0, std::nan(""), 0))), Failure);
}

TEST(ExactBox, BoxesThatTouchDoNotOverlap) {
    const Box one{gp_Pnt(0, 0, 0), gp_Pnt(10, 10, 10)};
    EXPECT_FALSE(Overlap(one, Box{gp_Pnt(10, 0, 0), gp_Pnt(20, 10, 10)}));
    EXPECT_TRUE(Overlap(one, Box{gp_Pnt(9, 9, 9), gp_Pnt(20, 20, 20)}));
    EXPECT_FALSE(Overlap(one, Box{gp_Pnt(0, 0, 11), gp_Pnt(10, 10, 20)}));
}

}  // namespace
}  // namespace brenvik::solids
