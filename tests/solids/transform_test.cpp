// Transformations keep typed-in numbers and leave no locations.
#include "drafting_host/solids/transform.h"

#include <gtest/gtest.h>
#include <BRepAdaptor_Surface.hxx>
#include <BRep_Tool.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>

#include <cmath>
#include <numbers>

#include "base/failure.h"
#include "drafting_host/solids/exact_box.h"
#include "drafting_host/solids/mass.h"
#include "drafting_host/solids/rebuild.h"
#include "solids/parts.h"

namespace brenvik::solids {
namespace {

using namespace test;

int Count(const TopoDS_Shape& shape, TopAbs_ShapeEnum kind) {
    TopTools_IndexedMapOfShape found;
    TopExp::MapShapes(shape, kind, found);
    return found.Extent();
}

TEST(Transform, QuarterTurnMovesCornersExactly) {
    for (int quarters = -4; quarters <= 8; ++quarters) {
        const TopoDS_Shape turned = Rotated(Board(600.1, 400.2, 18.3), gp_Ax1(gp_Pnt(0, 0, 0), gp::DZ()),
                                            quarters * std::numbers::pi / 2);
        for (TopExp_Explorer vertex(turned, TopAbs_VERTEX); vertex.More(); vertex.Next()) {
            const gp_Pnt point = BRep_Tool::Pnt(TopoDS::Vertex(vertex.Current()));
            for (const double value : {point.X(), point.Y()}) {
                const double size = std::abs(value);
                EXPECT_TRUE(size == 0 || size == 600.1 || size == 400.2) << value;
            }
        }
    }
}

TEST(Transform, QuarterTurnLeavesCleanSurfaces) {
    const TopoDS_Shape turned =
        Rotated(BRepPrimAPI_MakeCylinder(gp_Ax2(gp_Pnt(10, 20, 0), gp::DZ()), 2.5, 30).Shape(),
                gp_Ax1(gp_Pnt(0, 0, 0), gp::DX()), std::numbers::pi / 2);
    for (TopExp_Explorer face(turned, TopAbs_FACE); face.More(); face.Next()) {
        const BRepAdaptor_Surface surface(TopoDS::Face(face.Current()));
        if (surface.GetType() != GeomAbs_Cylinder) continue;
        EXPECT_EQ(surface.Cylinder().Axis().Direction().X(), 0);
        EXPECT_EQ(surface.Cylinder().Axis().Direction().Z(), 0);
        EXPECT_EQ(surface.Cylinder().Location().Y(), 0);
        EXPECT_EQ(surface.Cylinder().Location().Z(), 20);
    }
}

TEST(Transform, ResultHasNoLocationsAndIsValid) {
    const TopoDS_Shape located = DrilledBoard(600, 400, 18, 3).Located(TopLoc_Location(OddPlace()));
    ASSERT_TRUE(HasLocations(located));
    const TopoDS_Shape placed = Placed(located);
    EXPECT_FALSE(HasLocations(placed));
    EXPECT_TRUE(Valid(placed));
    EXPECT_NEAR(Volume(placed), Volume(located), 1e-6);
    for (const TopoDS_Shape& result :
         {Moved(located, gp_Vec(1, 2, 3)), Rotated(located, gp_Ax1(gp_Pnt(), gp::DZ()), 0.3),
          Scaled(located, gp_Pnt(1, 1, 1), 2.5), Mirrored(located, gp_Ax2(gp_Pnt(), gp::DY()))}) {
        EXPECT_FALSE(HasLocations(result));
        EXPECT_TRUE(Valid(result));
    }
}

TEST(Transform, SharedEdgesAndVerticesStayShared) {
    for (const TopoDS_Shape& part :
         {Board(600, 400, 18), DrilledBoard(600, 400, 18, 4), BRepPrimAPI_MakeTorus(40, 10).Shape(),
          BRepPrimAPI_MakeSphere(10).Shape(), BRepPrimAPI_MakeCone(30, 0, 70).Shape()}) {
        const TopoDS_Shape moved = Transformed(part.Located(TopLoc_Location(OddPlace())), OddPlace(0.2));
        for (const TopAbs_ShapeEnum kind : {TopAbs_FACE, TopAbs_EDGE, TopAbs_VERTEX})
            EXPECT_EQ(Count(moved, kind), Count(part, kind));
        EXPECT_TRUE(Valid(moved));
        EXPECT_NEAR(Volume(moved) / Volume(part), 1, 1e-12);
    }
}

TEST(Transform, SourceStaysUntouched) {
    const TopoDS_Shape board = Board(600, 400, 18);
    Moved(board, gp_Vec(100, 0, 0));
    Mirrored(board, gp_Ax2(gp_Pnt(), gp::DX()));
    EXPECT_EQ(ExactBox(board).min.X(), 0);
    EXPECT_EQ(ExactBox(board).max.X(), 600);
}

TEST(Transform, FourQuarterTurnsGiveThePartBack) {
    TopoDS_Shape part = DrilledBoard(600.1, 400.2, 18.3, 3);
    const double volume = Volume(part);
    for (int turn = 0; turn < 4; ++turn)
        part = Rotated(part, gp_Ax1(gp_Pnt(7, 9, 11), gp::DY()), std::numbers::pi / 2);
    const Box box = ExactBox(part);
    EXPECT_NEAR(box.min.X(), 0, 1e-12);
    EXPECT_NEAR(box.max.X(), 600.1, 1e-12);
    EXPECT_NEAR(Volume(part) / volume, 1, 1e-14);
}

TEST(Transform, ScaleMultipliesVolumeByItsCube) {
    const TopoDS_Shape part = DrilledBoard(600, 400, 18, 3);
    const TopoDS_Shape inches = Scaled(part, gp_Pnt(0, 0, 0), 0.5);
    EXPECT_NEAR(Volume(inches) / Volume(part), 0.125, 1e-13);
    EXPECT_EQ(ExactBox(inches).max.X(), 300);
}

TEST(Transform, MirrorExchangesSides) {
    const TopoDS_Shape mirrored =
        Mirrored(Moved(Board(600, 400, 18), gp_Vec(100, 0, 0)), gp_Ax2(gp_Pnt(), gp::DX()));
    EXPECT_EQ(ExactBox(mirrored).min.X(), -700);
    EXPECT_EQ(ExactBox(mirrored).max.X(), -100);
    EXPECT_GT(Volume(mirrored), 0);
}

TEST(Transform, NullShapeStaysNull) { EXPECT_TRUE(Moved(TopoDS_Shape(), gp_Vec(1, 0, 0)).IsNull()); }

}  // namespace
}  // namespace brenvik::solids
