// Parts that the tests of solids are made of, drawn as a joiner would: boards, gussets, legs.
#pragma once

#include <BRepAlgoAPI_Cut.hxx>
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRepPrimAPI_MakeRevol.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRepPrimAPI_MakeTorus.hxx>
#include <BRep_Builder.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Shape.hxx>
#include <algorithm>
#include <array>
#include <gp_Ax1.hxx>
#include <gp_Ax2.hxx>
#include <gp_Pnt.hxx>
#include <gp_Trsf.hxx>
#include <utility>
#include <vector>

#include "drafting_host/solids/measure.h"
#include "drafting_host/solids/transform.h"

namespace brenvik::solids::test {

inline TopoDS_Shape Board(double x, double y, double z) { return BRepPrimAPI_MakeBox(x, y, z).Solid(); }

/// A panel of the given outline in the XY plane, `thickness` upward.
inline TopoDS_Shape Prism(const std::vector<std::pair<double, double>>& outline, double thickness) {
    BRepBuilderAPI_MakePolygon polygon;
    for (const auto& [x, y] : outline) polygon.Add(gp_Pnt(x, y, 0));
    polygon.Close();
    return BRepPrimAPI_MakePrism(BRepBuilderAPI_MakeFace(polygon.Wire()).Face(), gp_Vec(0, 0, thickness))
        .Shape();
}

/// A board with through holes of diameter 5 in rows of 32 mm.
inline TopoDS_Shape DrilledBoard(double x, double y, double z, int holes) {
    TopoDS_Shape board = Board(x, y, z);
    for (int hole = 0; hole < holes; ++hole) {
        const gp_Pnt foot(37 + 32.0 * (hole / 10), 37 + 32.0 * (hole % 10), -1);
        const TopoDS_Shape drill = BRepPrimAPI_MakeCylinder(gp_Ax2(foot, gp::DZ()), 2.5, z + 2).Shape();
        board = BRepAlgoAPI_Cut(board, drill).Shape();
    }
    return board;
}

/// Two boards that are one part.
inline TopoDS_Shape TwoPieces() {
    TopoDS_Compound both;
    BRep_Builder builder;
    builder.MakeCompound(both);
    builder.Add(both, Board(600, 100, 18));
    builder.Add(both, Moved(Board(600, 50, 18), gp_Vec(0, 150, 0)));
    return both;
}

/// The turn about `axis` by `angle` radians, right-handed.
inline gp_Trsf Turn(const gp_Ax1& axis, double angle) {
    gp_Trsf turn;
    turn.SetRotation(axis, angle);
    return Cleaned(turn);
}

inline TopoDS_Shape Rotated(const TopoDS_Shape& shape, const gp_Ax1& axis, double angle) {
    return Transformed(shape, Turn(axis, angle));
}

inline TopoDS_Shape Scaled(const TopoDS_Shape& shape, const gp_Pnt& center, double factor) {
    gp_Trsf scale;
    scale.SetScale(center, factor);
    return Transformed(shape, scale);
}

/// The shape mirrored at the plane through the origin of `plane`, square to its main direction.
inline TopoDS_Shape Mirrored(const TopoDS_Shape& shape, const gp_Ax2& plane) {
    gp_Trsf mirror;
    mirror.SetMirror(plane);
    return Transformed(shape, mirror);
}

/// A turn and a move that leave nothing along an axis.
inline gp_Trsf OddPlace(double turn = 0.7, gp_Vec shift = gp_Vec(1234.5, -77.7, 310.1)) {
    gp_Trsf move;
    move.SetTranslation(shift);
    return move * Turn(gp_Ax1(gp_Pnt(3, 4, 5), gp_Dir(1, 2, 3)), turn) *
           Turn(gp_Ax1(gp_Pnt(0, 0, 0), gp_Dir(0, 0, 1)), 0.3);
}

inline std::array<double, 3> Sorted(const Extents& extents) {
    std::array<double, 3> sizes{extents.d1, extents.d2, extents.d3};
    std::ranges::sort(sizes, std::greater<>());
    return sizes;
}

}  // namespace brenvik::solids::test
