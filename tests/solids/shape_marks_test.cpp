// Solids are told apart by shape and hand, and by nothing else.
#include "drafting_host/solids/shape_marks.h"

#include <gtest/gtest.h>
#include <BRepBuilderAPI_Transform.hxx>

#include "solids/parts.h"

namespace brenvik::solids {
namespace {

using namespace test;

TopoDS_Shape Turned(const TopoDS_Shape& shape, const gp_Dir& axis, double angle) {
    gp_Trsf turn, move;
    turn.SetRotation(gp_Ax1(gp_Pnt(10, 20, 30), axis), angle);
    move.SetTranslation(gp_Vec(1234, -77, 5));
    return BRepBuilderAPI_Transform(shape, move * turn, Standard_True).Shape();
}

TopoDS_Shape Mirrored(const TopoDS_Shape& shape) {
    gp_Trsf mirror;
    mirror.SetMirror(gp_Ax2(gp_Pnt(0, 0, 0), gp_Dir(1, 0, 0)));
    return BRepBuilderAPI_Transform(shape, mirror, Standard_True).Shape();
}

/// A board with a blind hole near one corner, and, if wanted, one near the opposite corner.
TopoDS_Shape BlindDrilled(double x, double y, bool opposite = false) {
    const auto bore = [](const TopoDS_Shape& board, double atX, double atY) {
        const gp_Ax2 place(gp_Pnt(atX, atY, 8), gp_Dir(0, 0, 1));
        return BRepAlgoAPI_Cut(board, BRepPrimAPI_MakeCylinder(place, 4, 20).Shape()).Shape();
    };
    const TopoDS_Shape board = bore(Board(600, 400, 18), x, y);
    return opposite ? bore(board, 600 - x, 400 - y) : board;
}

bool Equal(const TopoDS_Shape& a, const TopoDS_Shape& b) { return MayBeEqual(MarksOf(a), MarksOf(b)); }

TEST(MarksOfSolids, DontDependOnPlaceAndTurn) {
    for (const TopoDS_Shape& part : {BlindDrilled(37, 50), BlindDrilled(37, 50, true), Board(2400, 600, 3),
                                     DrilledBoard(600, 400, 18, 10)}) {
        EXPECT_TRUE(Equal(part, Turned(part, gp_Dir(0, 0, 1), 1.0)));
        EXPECT_TRUE(Equal(part, Turned(part, gp_Dir(1, 2, 3), 2.5)));
    }
}

TEST(MarksOfSolids, TellAPartFromItsMirrorImage) {
    for (const TopoDS_Shape& part : {BlindDrilled(37, 50), BlindDrilled(37, 50, true)}) {
        EXPECT_FALSE(Equal(part, Mirrored(part)));
        EXPECT_FALSE(Equal(part, Turned(Mirrored(part), gp_Dir(3, 1, 2), 0.7)));
        EXPECT_TRUE(Equal(part, Mirrored(Mirrored(part))));
    }
}

TEST(MarksOfSolids, OfAPartThatIsItsOwnMirrorImageAreEqual) {
    for (const TopoDS_Shape& part :
         {Board(600, 400, 18), BlindDrilled(300, 50), DrilledBoard(600, 400, 18, 10)})
        EXPECT_TRUE(Equal(part, Turned(Mirrored(part), gp_Dir(1, 1, 4), 0.3)));
}

TEST(MarksOfSolids, TellAHoleThatStandsElsewhere) {
    EXPECT_FALSE(Equal(BlindDrilled(37, 50), BlindDrilled(37.5, 50)));
    EXPECT_FALSE(Equal(BlindDrilled(37, 50), Board(600, 400, 18)));
    EXPECT_FALSE(Equal(Board(600, 400, 18), Board(600, 400, 18.01)));
}

}  // namespace
}  // namespace brenvik::solids
