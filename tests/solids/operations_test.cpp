// Extrusions, booleans, regions and sections.
#include "drafting_host/solids/operations.h"

#include <gtest/gtest.h>
#include <BRepAdaptor_Surface.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <gp_Circ.hxx>

#include <cmath>
#include <numbers>

#include "base/failure.h"
#include "drafting_host/solids/exact_box.h"
#include "drafting_host/solids/mass.h"
#include "drafting_host/solids/regions.h"
#include "solids/parts.h"

namespace brenvik::solids {
namespace {

using namespace test;
constexpr double pi = std::numbers::pi;

TopoDS_Edge Line(double x1, double y1, double x2, double y2, double z = 0) {
    return BRepBuilderAPI_MakeEdge(gp_Pnt(x1, y1, z), gp_Pnt(x2, y2, z));
}

TopoDS_Edge Circle(double x, double y, double radius, double z = 0) {
    return BRepBuilderAPI_MakeEdge(gp_Circ(gp_Ax2(gp_Pnt(x, y, z), gp::DZ()), radius));
}

std::vector<TopoDS_Edge> Rectangle(double x, double y, double width, double height) {
    return {Line(x, y, x + width, y), Line(x + width, y, x + width, y + height),
            Line(x + width, y + height, x, y + height), Line(x, y + height, x, y)};
}

TopoDS_Shape Drill(double x, double y, double bottom, double radius, double depth) {
    return BRepPrimAPI_MakeCylinder(gp_Ax2(gp_Pnt(x, y, bottom), gp::DZ()), radius, depth).Shape();
}

int Faces(const TopoDS_Shape& shape) {
    TopTools_IndexedMapOfShape faces;
    TopExp::MapShapes(shape, TopAbs_FACE, faces);
    return faces.Extent();
}

/// A box with corners of radius 18 whose angles are counted from `turn` (radians) on.
TopoDS_Shape RoundedBox(double bottom, double height, double turn) {
    BRepBuilderAPI_MakeWire outline;
    const std::array<gp_Pnt, 4> centers{gp_Pnt(180, 70, bottom), gp_Pnt(180, 130, bottom),
                                        gp_Pnt(120, 130, bottom), gp_Pnt(120, 70, bottom)};
    const gp_Dir start(std::cos(turn), std::sin(turn), 0);
    for (int corner = 0; corner < 4; ++corner) {
        const double from = (corner - 1) * pi / 2, to = corner * pi / 2;
        const gp_Pnt center = centers.at(corner), next = centers.at((corner + 1) % 4);
        const auto along = [](const gp_Pnt& point, double angle) {
            return point.Translated(gp_Vec(18 * std::cos(angle), 18 * std::sin(angle), 0));
        };
        const gp_Circ circle(gp_Ax2(center, gp::DZ(), start), 18);
        outline.Add(BRepBuilderAPI_MakeEdge(circle, along(center, from), along(center, to)).Edge());
        outline.Add(BRepBuilderAPI_MakeEdge(along(center, to), along(next, to)).Edge());
    }
    return BRepPrimAPI_MakePrism(BRepBuilderAPI_MakeFace(outline.Wire()).Face(), gp_Vec(0, 0, height))
        .Shape();
}

TEST(Boolean, DeepeningARoundedPocketEndsHoweverItsCornersAreTurned) {
    const TopoDS_Shape pocketed = Boolean(Board(300, 200, 20), RoundedBox(-1, 11, 0), BooleanKind::Subtract);
    const double area = (Volume(Board(300, 200, 20)) - Volume(pocketed)) / 10;
    for (const double deeper : {1.0, 2e-6}) {
        for (const double turn : {-2.5, -pi / 2, -1.0, 0.0, 0.3, pi / 2, pi}) {
            SCOPED_TRACE(turn);
            const TopoDS_Shape rest =
                Boolean(pocketed, RoundedBox(9, 1 + deeper, turn), BooleanKind::Subtract);
            EXPECT_TRUE(Valid(rest));
            EXPECT_NEAR(Volume(pocketed) - Volume(rest), area * deeper, 1e-6);
        }
    }
}

TEST(Boolean, DeepeningAHoleWithItsSeamElsewhereSucceeds) {
    const auto cylinder = [](double bottom, double height, const gp_Dir& seam) {
        return BRepPrimAPI_MakeCylinder(gp_Ax2(gp_Pnt(150, 80, bottom), gp::DZ(), seam), 20, height).Shape();
    };
    const TopoDS_Shape bored =
        Boolean(Board(300, 200, 20), cylinder(-1, 11, gp::DX()), BooleanKind::Subtract);
    for (const gp_Dir& seam : {gp::DX(), gp::DX().Reversed(), gp::DY(), gp::DY().Reversed()}) {
        const TopoDS_Shape rest = Boolean(bored, cylinder(9, 4, seam), BooleanKind::Subtract);
        EXPECT_TRUE(Valid(rest));
        EXPECT_NEAR(Volume(bored) - Volume(rest), pi * 400 * 3, 1e-6);
    }
}

TEST(Boolean, SubtractionThatRemovesNothingReturnsTheSameSolid) {
    const TopoDS_Shape board = DrilledBoard(600, 400, 18, 3);
    const double volume = Volume(board);
    // Away from it, on top of it, in its hole, above its hole.
    for (const TopoDS_Shape& tool : {Drill(1000, 0, 0, 5, 10), Drill(100, 100, 18, 5, 1000),
                                     Drill(37, 37, -50, 2.5, 1000), Drill(37, 37, -50, 2, 1000)}) {
        const TopoDS_Shape rest = Boolean(board, tool, BooleanKind::Subtract);
        EXPECT_TRUE(rest.IsSame(board));
        EXPECT_EQ(Volume(rest), volume);
    }
}

TEST(Boolean, OpenTopOfAHoleIsToldAtAnyPlace) {
    // A blind hole of 10 in a board of 18: a drill of its size above its floor cuts nothing, one that
    // starts below the floor or is wider does.
    TopoDS_Shape board = Board(600, 400, 18);
    board = Boolean(board, Drill(100, 100, 8, 5, 100), BooleanKind::Subtract);
    board = Boolean(board, Drill(100, 100, 14, 8, 100), BooleanKind::Subtract);
    for (const double angle : {0.0, 0.3, 1.1, 2.9}) {
        const gp_Trsf place = angle == 0 ? gp_Trsf() : OddPlace(angle);
        const TopoDS_Shape part = Transformed(board, place);
        const auto drilled = [&](double bottom, double radius) {
            return Boolean(part, Transformed(Drill(100, 100, bottom, radius, 1000), place),
                           BooleanKind::Subtract);
        };
        EXPECT_TRUE(drilled(8, 5).IsSame(part)) << angle;
        EXPECT_TRUE(drilled(14, 8).IsSame(part)) << angle;
        EXPECT_TRUE(drilled(12, 4).IsSame(part)) << angle;
        EXPECT_FALSE(drilled(7.99, 5).IsSame(part)) << angle;
        EXPECT_FALSE(drilled(8, 8).IsSame(part)) << angle;
        EXPECT_NEAR(Volume(drilled(0, 5)), Volume(part) - pi * 25 * 8, 1e-6) << angle;
    }
}

TEST(Boolean, SubtractionTakesTheCommonVolumeAway) {
    const TopoDS_Shape rest = Boolean(Board(600, 400, 18), Drill(100, 100, 8, 5, 100), BooleanKind::Subtract);
    EXPECT_NEAR(Volume(rest), 600.0 * 400 * 18 - pi * 25 * 10, 1e-6);
    EXPECT_EQ(rest.ShapeType(), TopAbs_SOLID);
    EXPECT_EQ(Faces(rest), 8);
    EXPECT_TRUE(Valid(rest));
}

TEST(Boolean, SubtractionThatPartsTheSolidLeavesTwo) {
    const TopoDS_Shape rest =
        Boolean(Board(600, 400, 18), Moved(Board(4, 500, 50), gp_Vec(300, -50, -10)), BooleanKind::Subtract);
    EXPECT_EQ(rest.ShapeType(), TopAbs_COMPOUND);
    EXPECT_NEAR(Volume(rest), 596.0 * 400 * 18, 1e-6);
}

TEST(Boolean, SubtractionOfEverythingLeavesNothing) {
    const TopoDS_Shape rest =
        Boolean(Board(10, 10, 10), Moved(Board(20, 20, 20), gp_Vec(-5, -5, -5)), BooleanKind::Subtract);
    EXPECT_TRUE(rest.IsNull());
    EXPECT_EQ(Volume(rest), 0);
}

TEST(Boolean, UnionMergesFacesThatContinueEachOther) {
    const TopoDS_Shape both =
        Boolean(Board(300, 400, 18), Moved(Board(300, 400, 18), gp_Vec(300, 0, 0)), BooleanKind::Union);
    EXPECT_EQ(both.ShapeType(), TopAbs_SOLID);
    EXPECT_EQ(Faces(both), 6);
    EXPECT_NEAR(Volume(both), 600.0 * 400 * 18, 1e-7);
    EXPECT_EQ(ExactBox(both).max.X(), 600);
}

TEST(Boolean, NeighbouringPocketsOfOneDepthHaveOneFloor) {
    TopoDS_Shape board = Board(600, 400, 18);
    for (int pocket = 0; pocket < 3; ++pocket) {
        const TopoDS_Shape tool = Moved(Board(40, 50, 50), gp_Vec(100 + 40 * pocket, 100, 10));
        board = Boolean(board, tool, BooleanKind::Subtract);
    }
    EXPECT_EQ(Faces(board), 11);
    EXPECT_NEAR(Volume(board), 600.0 * 400 * 18 - 120 * 50 * 8, 1e-7);
    EXPECT_TRUE(Valid(board));
}

TEST(Boolean, UnionOfSolidsApartHoldsBoth) {
    const TopoDS_Shape both =
        Boolean(Board(10, 10, 10), Moved(Board(10, 10, 10), gp_Vec(50, 0, 0)), BooleanKind::Union);
    EXPECT_NEAR(Volume(both), 2000, 1e-9);
    EXPECT_TRUE(IsSolid(both));
}

TEST(Boolean, IntersectionIsWhatBothShare) {
    const TopoDS_Shape tool = Moved(Board(100, 100, 100), gp_Vec(550, 350, 0));
    EXPECT_NEAR(Volume(Boolean(Board(600, 400, 18), tool, BooleanKind::Intersect)), 50.0 * 50 * 18, 1e-8);
    EXPECT_TRUE(Boolean(Board(1, 1, 1), tool, BooleanKind::Intersect).IsNull());
    EXPECT_TRUE(Boolean(Board(550, 400, 18), tool, BooleanKind::Intersect).IsNull());
}

TEST(Boolean, OperandsStayUntouched) {
    const TopoDS_Shape board = Board(600, 400, 18);
    const TopoDS_Shape tool = Drill(100, 100, 8, 5, 100);
    Boolean(board, tool, BooleanKind::Subtract);
    EXPECT_EQ(Faces(board), 6);
    EXPECT_EQ(Faces(tool), 3);
}

TEST(Boolean, RegionsOfOnePlaneJoinAndCut) {
    const TopoDS_Face wide = RegionsFromCurves(Rectangle(0, 0, 100, 50), gp::DZ()).at(0);
    const TopoDS_Face next = RegionsFromCurves(Rectangle(80, 0, 100, 50), gp::DZ()).at(0);
    const TopoDS_Face away = RegionsFromCurves(Rectangle(500, 0, 10, 10), gp::DZ()).at(0);
    const TopoDS_Shape joined = Boolean(wide, next, BooleanKind::Union);
    EXPECT_NEAR(Area(joined), 180 * 50, 1e-9);
    EXPECT_EQ(Faces(joined), 1);
    EXPECT_NEAR(Area(Boolean(wide, next, BooleanKind::Subtract)), 80 * 50, 1e-9);
    EXPECT_NEAR(Area(Boolean(wide, next, BooleanKind::Intersect)), 20 * 50, 1e-9);
    EXPECT_TRUE(Boolean(wide, away, BooleanKind::Subtract).IsSame(wide));
}

TEST(Boolean, RegionsThatLookOppositeWaysBecomeOne) {
    const TopoDS_Face wide = RegionsFromCurves(Rectangle(0, 0, 100, 50), gp::DZ()).at(0);
    const TopoDS_Face next = RegionsFromCurves(Rectangle(80, 0, 100, 50), gp::DZ().Reversed()).at(0);
    for (const auto& [shape, tool] : {std::pair(wide, next), std::pair(next, wide)}) {
        const TopoDS_Shape joined = Boolean(shape, tool, BooleanKind::Union);
        EXPECT_NEAR(Area(joined), 180 * 50, 1e-9);
        EXPECT_EQ(Faces(joined), 1);
    }
}

/// A tongue along one edge of a board whose faces are level but for what rotations leave.
TopoDS_Shape TiltedTongue() {
    const TopoDS_Shape tongue = Moved(Board(600, 10, 6), gp_Vec(0, 390, 6));
    const TopoDS_Shape part = Boolean(Board(600, 390, 18), tongue, BooleanKind::Union);
    return Rotated(Rotated(part, gp_Ax1(gp_Pnt(0, 0, 0), gp::DX()), 3e-12), gp_Ax1(gp_Pnt(0, 0, 0), gp::DY()),
                   -2e-12);
}

TEST(Boolean, SectionsOfAPartThatIsNotQuiteLevelBecomeOne) {
    constexpr double far = 100000;
    const TopoDS_Shape part = TiltedTongue();
    TopoDS_Shape united;
    for (const double height : {1e-9, 6.0, 9.0, 12.0, 18 - 1e-9}) {
        const auto section = SectionByPlane(part, gp_Pnt(-far, -far, height), gp_Pnt(far, -far, height),
                                            gp_Pnt(far, far, height));
        ASSERT_EQ(section.size(), 1U) << height;
        const TopoDS_Shape level = Moved(section.front(), gp_Vec(0, 0, 18 - height));
        united = united.IsNull() ? level : Boolean(united, level, BooleanKind::Union);
    }
    EXPECT_NEAR(Area(united), 600 * 400, 1e-5);
    EXPECT_EQ(Faces(united), 1);
    EXPECT_TRUE(Valid(united));
}

TEST(Boolean, WrongOperandsAreTold) {
    const TopoDS_Face region = RegionsFromCurves(Rectangle(0, 0, 10, 10)).at(0);
    EXPECT_THROW(Boolean(TopoDS_Shape(), Board(1, 1, 1), BooleanKind::Union), Failure);
    EXPECT_THROW(Boolean(Board(1, 1, 1), region, BooleanKind::Subtract), Failure);
    EXPECT_THROW(Boolean(region, Moved(region, gp_Vec(0, 0, 5)), BooleanKind::Union), Failure);
}

TEST(Extrude, RegionSweepsAlongItsNormal) {
    const TopoDS_Face region = RegionsFromCurves(Rectangle(0, 0, 100, 50), gp::DZ()).at(0);
    const TopoDS_Shape up = ExtrudeRegion(region, 1000);
    EXPECT_NEAR(Volume(up), 100 * 50 * 1000.0, 1e-6);
    EXPECT_EQ(ExactBox(up).max.Z(), 1000);
    const TopoDS_Shape down = ExtrudeRegion(region, -18);
    EXPECT_NEAR(Volume(down), 100 * 50 * 18, 1e-8);
    EXPECT_EQ(ExactBox(down).min.Z(), -18);
    const TopoDS_Face turned = TopoDS::Face(region.Reversed());
    EXPECT_EQ(ExactBox(ExtrudeRegion(turned, 18)).min.Z(), -18);
    EXPECT_GT(Volume(ExtrudeRegion(turned, 18)), 0);
}

TEST(Extrude, CircleBecomesACylinder) {
    const TopoDS_Edge circle = Circle(5, 6, 2.5);
    const TopoDS_Shape rod = ExtrudeRegion(RegionsFromCurves(std::span(&circle, 1), gp::DZ()).at(0), 40);
    EXPECT_NEAR(Volume(rod), pi * 6.25 * 40, 1e-10);
    bool round = false;
    for (TopExp_Explorer face(rod, TopAbs_FACE); face.More(); face.Next())
        round |= BRepAdaptor_Surface(TopoDS::Face(face.Current())).GetType() == GeomAbs_Cylinder;
    EXPECT_TRUE(round);
    EXPECT_TRUE(Valid(rod));
}

TEST(Extrude, HeightZeroIsTold) {
    const TopoDS_Face region = RegionsFromCurves(Rectangle(0, 0, 10, 10)).at(0);
    EXPECT_THROW(ExtrudeRegion(region, 0), Failure);
    EXPECT_THROW(ExtrudeRegion(TopoDS_Face(), 1), Failure);
}

TEST(Regions, EachClosedLoopIsARegion) {
    std::vector<TopoDS_Edge> edges = Rectangle(0, 0, 100, 50);
    edges.push_back(Circle(200, 0, 10));
    const auto regions = RegionsFromCurves(edges, gp_Dir(0, 0, -1));
    ASSERT_EQ(regions.size(), 2U);
    EXPECT_NEAR(Area(regions[0]), 5000, 1e-9);
    EXPECT_NEAR(Area(regions[1]), pi * 100, 1e-9);
    EXPECT_NEAR(NormalOf(regions[0]).Z(), -1, 1e-12);
}

TEST(Regions, EdgesInAnyOrderAndDirectionCloseALoop) {
    const std::vector<TopoDS_Edge> edges{Line(0, 0, 100, 0), Line(0, 50, 0, 0), Line(100, 50, 100, 0),
                                         Line(100, 50, 0, 50)};
    EXPECT_NEAR(Area(RegionsFromCurves(edges).at(0)), 5000, 1e-9);
}

TEST(Regions, OpenOrCrossingCurvesAreTold) {
    EXPECT_THROW(RegionsFromCurves(std::vector{Line(0, 0, 10, 0), Line(10, 0, 10, 10)}), Failure);
    EXPECT_THROW(RegionsFromCurves(std::vector{Line(0, 0, 10, 10), Line(10, 10, 10, 0), Line(10, 0, 0, 10),
                                               Line(0, 10, 0, 0)}),
                 Failure);
}

TEST(Section, PlaneCutsTheFaceWithItsHoles) {
    const TopoDS_Shape board = DrilledBoard(600, 400, 18, 3);
    const auto faces = SectionByPlane(board, gp_Pnt(0, 0, 9), gp_Pnt(1, 0, 9), gp_Pnt(0, 1, 9));
    ASSERT_EQ(faces.size(), 1U);
    EXPECT_NEAR(Area(faces[0]), 600.0 * 400 - 3 * pi * 6.25, 1e-7);
    EXPECT_NEAR(NormalOf(faces[0]).Z(), 1, 1e-12);
    const auto below = SectionByPlane(board, gp_Pnt(0, 0, 9), gp_Pnt(0, 1, 9), gp_Pnt(1, 0, 9));
    EXPECT_NEAR(NormalOf(below.at(0)).Z(), -1, 1e-12);
}

TEST(Section, PlaneInAFaceGivesThatFace) {
    const auto top =
        SectionByPlane(Board(600, 400, 18), gp_Pnt(0, 0, 18), gp_Pnt(1, 0, 18), gp_Pnt(0, 1, 18));
    ASSERT_EQ(top.size(), 1U);
    EXPECT_NEAR(Area(top[0]), 600.0 * 400, 1e-7);
}

TEST(Section, PlaneBesideTheSolidGivesNothing) {
    EXPECT_TRUE(
        SectionByPlane(Board(600, 400, 18), gp_Pnt(0, 0, 20), gp_Pnt(1, 0, 20), gp_Pnt(0, 1, 20)).empty());
}

TEST(Section, PointsOnALineAreTold) {
    EXPECT_THROW(SectionByPlane(Board(1, 1, 1), gp_Pnt(0, 0, 0), gp_Pnt(1, 1, 1), gp_Pnt(2, 2, 2)), Failure);
}

}  // namespace
}  // namespace brenvik::solids
