// Level sections by formula: which sides stand at a height.
#include "drafting_host/solids/level_sections.h"

#include <gtest/gtest.h>
#include <BRepAlgoAPI_Cut.hxx>
#include <BRepAlgoAPI_Fuse.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_Sewing.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRepPrimAPI_MakeTorus.hxx>
#include <Geom_CylindricalSurface.hxx>

#include <cmath>
#include <gp_Ax1.hxx>
#include <gp_Trsf.hxx>
#include <numbers>

namespace brenvik::solids {
namespace {

TopoDS_Shape Board() { return BRepPrimAPI_MakeBox(600, 400, 18).Shape(); }

TopoDS_Shape Without(const TopoDS_Shape& shape, const TopoDS_Shape& tool) {
    return BRepAlgoAPI_Cut(shape, tool).Shape();
}

TopoDS_Shape Upright(double x, double y, double from, double to, double radius) {
    return BRepPrimAPI_MakeCylinder(gp_Ax2(gp_Pnt(x, y, from), gp_Dir(0, 0, 1)), radius, to - from).Shape();
}

/// How long all sides are together: straight ones, and round ones by their arc.
double Length(const std::vector<SectionSide>& sides) {
    double length = 0;
    for (const SectionSide& side : sides) {
        const double chord = std::hypot(side.to.x - side.from.x, side.to.y - side.from.y);
        const double angle = 4 * std::atan(std::abs(side.bulge));
        length += side.bulge == 0 ? chord : chord / (2 * std::sin(angle / 2)) * angle;
    }
    return length;
}

constexpr double turn = 2 * std::numbers::pi;

TEST(LevelSections, ABoardHasItsFourSidesAtEachHeight) {
    const LevelSections sections(Board());
    EXPECT_EQ(sections.Levels(), (std::vector<double>{0, 18}));
    EXPECT_TRUE(sections.Slopes().empty());
    EXPECT_EQ(sections.At(9).size(), 4U);
    EXPECT_NEAR(Length(sections.At(9)), 2000, 1e-9);
}

TEST(LevelSections, AHoleIsAFullCircleWhereItIs) {
    const LevelSections sections(Without(Board(), Upright(100, 100, 6, 30, 17.5)));
    EXPECT_NEAR(Length(sections.At(3)), 2000, 1e-9);
    EXPECT_NEAR(Length(sections.At(12)), 2000 + turn * 17.5, 1e-9);
}

TEST(LevelSections, AHoleThatLeavesTheBoardIsTheArcWithinIt) {
    const LevelSections sections(Without(Board(), Upright(0, 200, -1, 30, 20)));
    EXPECT_NEAR(Length(sections.At(9)), 2000 - 40 + turn * 20 / 2, 1e-9);
    const LevelSections quarter(Without(Board(), Upright(0, 0, -1, 30, 20)));
    EXPECT_NEAR(Length(quarter.At(9)), 2000 - 40 + turn * 20 / 4, 1e-9);
}

TEST(LevelSections, AnEdgeBoreIsAsWideAsItsChordAtTheHeight) {
    const TopoDS_Shape bore =
        BRepPrimAPI_MakeCylinder(gp_Ax2(gp_Pnt(-5, 200, 9), gp_Dir(1, 0, 0)), 4, 35).Shape();
    const LevelSections sections(Without(Board(), bore));
    ASSERT_EQ(sections.Lying().size(), 1U);
    EXPECT_NEAR(sections.Lying()[0].radius, 4, 1e-12);
    EXPECT_TRUE(sections.Lying()[0].hollow);
    // Two sides of 30 more; the mouth that is missing in the edge is there again at the floor.
    for (const double rise : {-3.9, -2.0, 0.001, 1.5, 3.9})
        EXPECT_NEAR(Length(sections.At(9 + rise)), 2000 + 60, 1e-6) << rise;
    EXPECT_NEAR(Length(sections.At(2)), 2000, 1e-9);
}

TEST(LevelSections, ConesAndBallsAreCirclesAndRingsAreTwo) {
    const gp_Ax2 at(gp_Pnt(300, 200, 0), gp_Dir(0, 0, 1));
    EXPECT_NEAR(Length(LevelSections(BRepPrimAPI_MakeCone(at, 20, 10, 10).Shape()).At(5)), turn * 15, 1e-9);
    EXPECT_NEAR(Length(LevelSections(BRepPrimAPI_MakeSphere(at, 20).Shape()).At(12)), turn * 16, 1e-9);
    EXPECT_NEAR(Length(LevelSections(BRepPrimAPI_MakeTorus(at, 50, 10).Shape()).At(6)), turn * (58 + 42),
                0.1);
}

TEST(LevelSections, ASolidTurnedAnyWayHasASectionOfTheSameLength) {
    TopoDS_Shape part = Without(Board(), Upright(100, 100, 6, 30, 17.5));
    part = Without(part, Upright(110, 100, -1, 30, 4));
    part = Without(part, BRepPrimAPI_MakeBox(gp_Pnt(200, -1, 9), 20, 402, 20).Shape());
    const double length = Length(LevelSections(part).At(12));
    for (int quarter = 0; quarter < 8; ++quarter) {
        gp_Trsf move;
        move.SetRotation(gp_Ax1(gp_Pnt(3, 4, 0), gp_Dir(0, 0, 1)),
                         quarter * 0.7853981633974483 + 0.1 * (quarter % 2));
        const TopoDS_Shape turned = BRepBuilderAPI_Transform(part, move, true).Shape();
        EXPECT_NEAR(Length(LevelSections(turned).At(12)), length, 1e-6) << quarter;
    }
}

TEST(LevelSections, AMirroredSolidHasItToo) {
    const TopoDS_Shape part =
        Without(Without(Board(), Upright(0, 200, 6, 30, 17.5)), Upright(110, 100, -1, 30, 4));
    gp_Trsf mirror;
    mirror.SetMirror(gp_Ax2(gp_Pnt(50, 0, 0), gp_Dir(1, 0, 0)));
    const TopoDS_Shape mirrored = BRepBuilderAPI_Transform(part, mirror, true).Shape();
    EXPECT_NEAR(Length(LevelSections(mirrored).At(12)), Length(LevelSections(part).At(12)), 1e-9);
}

TEST(LevelSections, TwoHalvesOfAWallOnOneSurfaceMakeAFullCircle) {
    const Handle(Geom_CylindricalSurface) wall = new Geom_CylindricalSurface(gp_Ax3(), 10);
    BRepBuilderAPI_Sewing sewing;
    for (const double from : {0.0, std::numbers::pi})
        sewing.Add(BRepBuilderAPI_MakeFace(wall, from, from + std::numbers::pi, 0, 18, 1e-7).Face());
    sewing.Perform();
    EXPECT_NEAR(Length(LevelSections(sewing.SewedShape()).At(9)), turn * 10, 1e-9);
}

TEST(LevelSections, RoundedEdgesAreSlopesThatEndWhereTheyDo) {
    const TopoDS_Shape cylinder =
        BRepPrimAPI_MakeCylinder(gp_Ax2(gp_Pnt(0, 9, 9), gp_Dir(1, 0, 0)), 9, 600).Shape();
    const TopoDS_Shape bar = BRepPrimAPI_MakeBox(gp_Pnt(0, 9, 0), 600, 100, 18).Shape();
    const LevelSections sections(BRepAlgoAPI_Fuse(bar, cylinder).Shape());
    ASSERT_FALSE(sections.Slopes().empty());
    EXPECT_NEAR(Length(sections.At(9.001)), 2 * (600 + 109), 1e-3);
    EXPECT_NEAR(Length(sections.At(16.2)), 2 * (600 + 100 + std::sqrt(81 - 7.2 * 7.2)), 1e-6);
}

}  // namespace
}  // namespace brenvik::solids
