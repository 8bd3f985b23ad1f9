// Volumes and areas against the formulas of school geometry.
#include "drafting_host/solids/mass.h"

#include <gtest/gtest.h>
#include <BRepAlgoAPI_Common.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepBuilderAPI_NurbsConvert.hxx>
#include <BRep_Builder.hxx>
#include <GeomAPI_PointsToBSpline.hxx>
#include <Geom_BSplineCurve.hxx>
#include <TColgp_Array1OfPnt.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>

#include <cmath>
#include <numbers>

#include "base/failure.h"
#include "solids/parts.h"

namespace brenvik::solids {
namespace {

using namespace test;
constexpr double pi = std::numbers::pi;

struct VolumeCase {
    std::string name;
    TopoDS_Shape shape;
    double volume;
    double relative;

    friend void PrintTo(const VolumeCase& each, std::ostream* out) { *out << each.name; }
};

std::vector<VolumeCase> Volumes() {
    const gp_Ax2 lying(gp_Pnt(0, 0, 0), gp::DX());
    const gp_Ax2 across(gp_Pnt(50, -50, 0), gp::DY());
    const TopoDS_Shape crossed = BRepAlgoAPI_Common(BRepPrimAPI_MakeCylinder(lying, 10, 100).Shape(),
                                                    BRepPrimAPI_MakeCylinder(across, 10, 100).Shape())
                                     .Shape();
    return {
        {"board", Board(600, 400, 18), 600.0 * 400 * 18, 1e-15},
        {"drilled", DrilledBoard(600, 400, 18, 10), (600.0 * 400 - 10 * pi * 6.25) * 18, 1e-14},
        {"gusset", Prism({{0, 0}, {400, 0}, {0, 300}}, 18), 400 * 300 / 2.0 * 18, 1e-14},
        {"cylinder", BRepPrimAPI_MakeCylinder(12.5, 40).Shape(), pi * 12.5 * 12.5 * 40, 1e-14},
        {"cylinder sector", BRepPrimAPI_MakeCylinder(12.5, 40, 1.0).Shape(), 0.5 * 12.5 * 12.5 * 40, 1e-14},
        {"cone", BRepPrimAPI_MakeCone(30, 10, 70).Shape(), pi / 3 * 70 * (900 + 300 + 100), 1e-14},
        {"pointed cone", BRepPrimAPI_MakeCone(30, 0, 70).Shape(), pi / 3 * 70 * 900, 1e-14},
        {"sphere", BRepPrimAPI_MakeSphere(10).Shape(), 4.0 / 3 * pi * 1000, 1e-12},
        {"torus", BRepPrimAPI_MakeTorus(40, 10).Shape(), 2 * pi * pi * 40 * 100, 1e-12},
        // Two equal cylinders at right angles share 16 r³ / 3; their seam is an ellipse that the
        // modeller may only approximate.
        {"crossed cylinders", crossed, 16.0 / 3 * 1000, 1e-9},
    };
}

class KnownVolumes : public ::testing::TestWithParam<VolumeCase> {};

TEST_P(KnownVolumes, VolumeFollowsTheFormula) {
    EXPECT_NEAR(Volume(GetParam().shape) / GetParam().volume, 1, GetParam().relative);
}

TEST_P(KnownVolumes, VolumeStaysAtAnyPlace) {
    const double turned = Volume(Transformed(GetParam().shape, OddPlace()));
    EXPECT_NEAR(turned / GetParam().volume, 1, std::max(GetParam().relative, 2e-13));
}

TEST_P(KnownVolumes, MirrorKeepsVolumePositive) {
    const double mirrored = Volume(Mirrored(GetParam().shape, gp_Ax2(gp_Pnt(1, 2, 3), gp_Dir(1, 1, 0))));
    EXPECT_NEAR(mirrored / GetParam().volume, 1, std::max(GetParam().relative, 2e-13));
}

INSTANTIATE_TEST_SUITE_P(Solids, KnownVolumes, ::testing::ValuesIn(Volumes()), [](const auto& part) {
    std::string name = part.param.name;
    std::ranges::replace(name, ' ', '_');
    return name;
});

TEST(Mass, AreasFollowTheFormulas) {
    EXPECT_NEAR(Area(Board(600, 400, 18)), 2 * (600 * 400 + 600 * 18 + 400 * 18), 1e-8);
    EXPECT_NEAR(Area(BRepPrimAPI_MakeCylinder(10, 30).Shape()), 2 * pi * 100 + 2 * pi * 10 * 30, 1e-10);
    const double slant = std::hypot(20, 70);
    EXPECT_NEAR(Area(BRepPrimAPI_MakeCone(30, 10, 70).Shape()), pi * (900 + 100) + pi * 40 * slant, 1e-9);
    EXPECT_NEAR(Area(BRepPrimAPI_MakeSphere(10).Shape()), 4 * pi * 100, 1e-9);
}

TEST(Mass, CentreOfABoardIsItsMiddle) {
    const gp_Pnt middle = Centroid(Moved(Board(600, 400, 18), gp_Vec(1, 2, 3)));
    EXPECT_NEAR(middle.Distance(gp_Pnt(301, 202, 12)), 0, 1e-9);
    EXPECT_THROW(Centroid(TopoDS_Shape()), Failure);
}

TEST(Mass, OnlySolidsAreSolid) {
    const TopoDS_Shape board = Board(1, 2, 3);
    EXPECT_TRUE(IsSolid(board));
    EXPECT_FALSE(IsSolid(TopoDS_Shape()));
    EXPECT_FALSE(IsSolid(TopExp_Explorer(board, TopAbs_FACE).Current()));
    TopoDS_Compound both;
    BRep_Builder builder;
    builder.MakeCompound(both);
    builder.Add(both, board);
    EXPECT_TRUE(IsSolid(both));
    builder.Add(both, TopExp_Explorer(board, TopAbs_FACE).Current());
    EXPECT_FALSE(IsSolid(both));
}

TEST(Mass, SplinesHaveTheVolumeOfWhatTheyStandFor) {
    const auto volumeOf = [](const TopoDS_Shape& shape) {
        return Volume(BRepBuilderAPI_NurbsConvert(shape, true).Shape());
    };
    EXPECT_NEAR(volumeOf(BRepPrimAPI_MakeCylinder(20, 100).Shape()), pi * 40000, 0.1);
    EXPECT_NEAR(volumeOf(BRepPrimAPI_MakeCone(20, 10, 60).Shape()), pi * 14000, 0.1);
    EXPECT_NEAR(volumeOf(DrilledBoard(600, 400, 18, 3)), (600.0 * 400 - 3 * pi * 6.25) * 18, 0.1);
}

TEST(Mass, AnExtrudedProfileOfManySpansHasTheVolumeOfItsProfile) {
    TColgp_Array1OfPnt points(1, 25);
    for (int i = 1; i <= 25; ++i) points(i) = gp_Pnt(10 * (i - 1), 20 + 5 * std::sin(i), 0);
    const auto profile = GeomAPI_PointsToBSpline(points, 3, 3).Curve();
    const gp_Pnt from = points(25), to = points(1);
    BRepBuilderAPI_MakeWire wire(BRepBuilderAPI_MakeEdge(profile).Edge());
    wire.Add(BRepBuilderAPI_MakeEdge(from, gp_Pnt(from.X(), 0, 0)).Edge());
    wire.Add(BRepBuilderAPI_MakeEdge(gp_Pnt(from.X(), 0, 0), gp_Pnt(0, 0, 0)).Edge());
    wire.Add(BRepBuilderAPI_MakeEdge(gp_Pnt(0, 0, 0), to).Edge());
    const TopoDS_Face face = BRepBuilderAPI_MakeFace(wire.Wire()).Face();
    const TopoDS_Shape moulding = BRepPrimAPI_MakePrism(face, gp_Vec(0, 0, 900)).Shape();
    const double expected = Area(face) * 900;
    EXPECT_NEAR(Volume(moulding), expected, 1e-7 * expected);
    EXPECT_NEAR(Volume(BRepBuilderAPI_NurbsConvert(moulding, true).Shape()), expected, 1e-7 * expected);
}

TEST(Mass, NullShapeHasNoVolumeAndIsNotValid) {
    EXPECT_EQ(Volume(TopoDS_Shape()), 0);
    EXPECT_EQ(Area(TopoDS_Shape()), 0);
    EXPECT_FALSE(Valid(TopoDS_Shape()));
    EXPECT_TRUE(Valid(Board(1, 2, 3)));
}

}  // namespace
}  // namespace brenvik::solids
