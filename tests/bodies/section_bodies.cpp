// Sections and what becomes of them.
#include "section_bodies.h"

#include <BRepAlgoAPI_Cut.hxx>
#include <BRepAlgoAPI_Fuse.hxx>
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepBuilderAPI_MakeVertex.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepLib.hxx>
#include <BRepOffsetAPI_MakePipe.hxx>
#include <BRepOffsetAPI_MakePipeShell.hxx>
#include <BRepOffsetAPI_ThruSections.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRepPrimAPI_MakeRevol.hxx>
#include <GC_MakeArcOfCircle.hxx>
#include <Geom2d_Line.hxx>
#include <GeomAPI_Interpolate.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_CylindricalSurface.hxx>
#include <Geom_TrimmedCurve.hxx>
#include <TColgp_HArray1OfPnt.hxx>
#include <gp_Circ.hxx>
#include <gp_Elips.hxx>

#include <cmath>
#include <numbers>

namespace brenvik::acis::testing {

namespace {

constexpr double turn = 2 * std::numbers::pi;

Handle(Geom_BSplineCurve) Through(const std::vector<gp_Pnt>& points, bool closed) {
    const Handle(TColgp_HArray1OfPnt) all = new TColgp_HArray1OfPnt(1, static_cast<int>(points.size()));
    for (std::size_t i = 0; i < points.size(); ++i) all->SetValue(static_cast<int>(i) + 1, points[i]);
    GeomAPI_Interpolate spline(all, closed, 1e-7);
    spline.Perform();
    return spline.Curve();
}

TopoDS_Wire WireOf(const Handle(Geom_Curve) & curve) {
    return BRepBuilderAPI_MakeWire(BRepBuilderAPI_MakeEdge(curve).Edge()).Wire();
}

/// A closed outline about the axis at a height: a circle, a polygon, an ellipse or a free ring.
TopoDS_Wire Section(Dice& dice, int kind, double z, double radius) {
    const gp_Ax2 axes(gp_Pnt(dice.Between(-5, 5), dice.Between(-5, 5), z), Upward(dice, 0.1),
                      gp_Dir(1, 0, 0));
    if (kind == 0)
        return BRepBuilderAPI_MakeWire(BRepBuilderAPI_MakeEdge(gp_Circ(axes, radius)).Edge()).Wire();
    if (kind == 1)
        return BRepBuilderAPI_MakeWire(BRepBuilderAPI_MakeEdge(gp_Elips(axes, radius, 0.6 * radius)).Edge())
            .Wire();
    std::vector<gp_Pnt> points;
    const int count = kind == 2 ? 5 : 8;
    for (int i = 0; i < count; ++i) {
        const double angle = turn * i / count;
        const double reach = radius * dice.Between(0.85, 1.15);
        points.emplace_back(axes.Location().XYZ() + axes.XDirection().XYZ() * (reach * std::cos(angle)) +
                            axes.YDirection().XYZ() * (reach * std::sin(angle)));
    }
    if (kind == 3) return WireOf(Through(points, true));
    BRepBuilderAPI_MakePolygon polygon;
    for (const gp_Pnt& point : points) polygon.Add(point);
    polygon.Close();
    return polygon.Wire();
}

TopoDS_Wire Path(Dice& dice) {
    std::vector<gp_Pnt> points{gp_Pnt(0, 0, 0)};
    for (int i = 1; i < 5; ++i) points.emplace_back(dice.Between(-20, 20), dice.Between(-20, 20), 40. * i);
    return WireOf(Through(points, false));
}

TopoDS_Face FlatFace(const TopoDS_Wire& wire) { return BRepBuilderAPI_MakeFace(wire).Face(); }

TopoDS_Wire Helix(double radius, double pitch, double turns) {
    const Handle(Geom_CylindricalSurface) carrier =
        new Geom_CylindricalSurface(gp_Ax3(gp_Pnt(0, 0, 0), gp_Dir(0, 0, 1)), radius);
    const gp_Pnt2d end(turn * turns, pitch * turns);
    const double length = std::hypot(end.X(), end.Y());
    const Handle(Geom2d_Line) line = new Geom2d_Line(gp_Pnt2d(0, 0), gp_Dir2d(end.X(), end.Y()));
    const TopoDS_Edge edge = BRepBuilderAPI_MakeEdge(line, carrier, 0., length).Edge();
    BRepLib::BuildCurve3d(edge);
    return BRepBuilderAPI_MakeWire(edge).Wire();
}

/// A profile beside the Z axis in the plane of X and Z: from its foot up over free edges to its head.
TopoDS_Face Profile(Dice& dice, double inner) {
    const double height = dice.Between(20, 90);
    const double reach = inner + dice.Between(10, 40);
    std::vector<gp_Pnt> points{gp_Pnt(reach, 0, 0)};
    for (int i = 1; i < 5; ++i) points.emplace_back(reach * dice.Between(0.8, 1.3), 0, height * i / 5);
    points.emplace_back(reach, 0, height);
    BRepBuilderAPI_MakeWire wire(BRepBuilderAPI_MakeEdge(gp_Pnt(inner, 0, 0), points.front()).Edge());
    if (dice.Coin()) {
        wire.Add(BRepBuilderAPI_MakeEdge(Through(points, false)).Edge());
    } else {
        for (std::size_t i = 1; i < points.size(); ++i)
            wire.Add(BRepBuilderAPI_MakeEdge(points[i - 1], points[i]).Edge());
    }
    wire.Add(BRepBuilderAPI_MakeEdge(points.back(), gp_Pnt(inner, 0, height)).Edge());
    wire.Add(BRepBuilderAPI_MakeEdge(gp_Pnt(inner, 0, height), gp_Pnt(inner, 0, 0)).Edge());
    return FlatFace(wire.Wire());
}

}  // namespace

gp_Dir Somewhere(Dice& dice) { return {dice.Between(-1, 1), dice.Between(-1, 1), dice.Between(0.2, 1.5)}; }

gp_Dir Upward(Dice& dice, double lean) { return {dice.Between(-lean, lean), dice.Between(-lean, lean), 1}; }

TopoDS_Shape Without(const TopoDS_Shape& part, const TopoDS_Shape& tool) {
    return BRepAlgoAPI_Cut(part, tool).Shape();
}

TopoDS_Shape Loft(Dice& dice) {
    BRepOffsetAPI_ThruSections loft(true, dice.Coin());
    const int kind = dice.Whole(0, 3);
    const int sections = dice.Whole(2, 4);
    for (int i = 0; i < sections; ++i) {
        if (i == sections - 1 && dice.Whole(0, 3) == 0)
            loft.AddVertex(BRepBuilderAPI_MakeVertex(gp_Pnt(0, 0, 30. * i)).Vertex());
        else
            loft.AddWire(Section(dice, kind, 30. * i, dice.Between(10, 30)));
    }
    return loft.Shape();
}

TopoDS_Shape MixedLoft(Dice& dice) {
    BRepOffsetAPI_ThruSections loft(true, false);
    for (int i = 0; i < 3; ++i) loft.AddWire(Section(dice, dice.Whole(0, 3), 25. * i, dice.Between(12, 25)));
    return loft.Shape();
}

TopoDS_Shape Sweep(Dice& dice) {
    const TopoDS_Wire section = Section(dice, dice.Whole(0, 3), 0, dice.Between(3, 8));
    return BRepOffsetAPI_MakePipe(Path(dice), FlatFace(section)).Shape();
}

TopoDS_Shape SweptShell(Dice& dice) {
    BRepOffsetAPI_MakePipeShell pipe(Path(dice));
    pipe.SetMode(dice.Coin());
    pipe.Add(Section(dice, dice.Whole(0, 3), 0, dice.Between(3, 8)));
    pipe.Build();
    if (!pipe.IsDone() || !pipe.MakeSolid()) return {};
    return pipe.Shape();
}

TopoDS_Shape BentBar(Dice& dice) {
    const double reach = dice.Between(20, 60);
    const TopoDS_Edge one = BRepBuilderAPI_MakeEdge(gp_Pnt(0, 0, 0), gp_Pnt(0, 0, 50)).Edge();
    const gp_Circ bend(gp_Ax2(gp_Pnt(reach, 0, 50), gp_Dir(0, 1, 0), gp_Dir(-1, 0, 0)), reach);
    const TopoDS_Edge two = BRepBuilderAPI_MakeEdge(bend, 0, turn / 4).Edge();
    const TopoDS_Edge three =
        BRepBuilderAPI_MakeEdge(gp_Pnt(reach, 0, 50 + reach), gp_Pnt(reach + 70, 0, 50 + reach)).Edge();
    const TopoDS_Wire path = BRepBuilderAPI_MakeWire(one, two, three).Wire();
    return BRepOffsetAPI_MakePipe(path, FlatFace(Section(dice, dice.Whole(0, 3), 0, dice.Between(3, 9))))
        .Shape();
}

TopoDS_Shape Thread(Dice& dice) {
    const double radius = dice.Between(4, 20);
    const double pitch = dice.Between(1.5, 4);
    const TopoDS_Wire spine = Helix(radius, pitch, dice.Between(0.8, 4.3));
    const double depth = 0.35 * pitch;
    BRepBuilderAPI_MakePolygon profile(gp_Pnt(radius - depth, 0, -depth), gp_Pnt(radius - depth, 0, depth),
                                       gp_Pnt(radius + depth, 0, dice.Coin() ? 0 : 0.2 * depth));
    profile.Close();
    BRepOffsetAPI_MakePipeShell pipe(spine);
    pipe.SetMode(gp_Dir(0, 0, 1));
    pipe.Add(profile.Wire());
    pipe.Build();
    if (!pipe.IsDone() || !pipe.MakeSolid()) return {};
    if (dice.Coin()) return pipe.Shape();
    const TopoDS_Shape core =
        BRepPrimAPI_MakeCylinder(gp_Ax2(gp_Pnt(0, 0, -5), gp_Dir(0, 0, 1)), radius, 10 + 5 * pitch).Shape();
    return dice.Coin() ? Without(core, pipe.Shape()) : BRepAlgoAPI_Fuse(core, pipe.Shape()).Shape();
}

TopoDS_Shape TurnedLeg(Dice& dice) {
    const double inner = dice.Coin() ? 0 : dice.Between(3, 12);
    const gp_Ax1 axis(gp_Pnt(0, 0, 0), gp_Dir(0, 0, 1));
    const TopoDS_Face profile = Profile(dice, inner);
    return BRepPrimAPI_MakeRevol(profile, axis, dice.Coin() ? turn : dice.Between(0.4, 6)).Shape();
}

/// Turned arcs: their tori may cross themselves, as a lemon or an apple does.
TopoDS_Shape TurnedArc(Dice& dice) {
    const double height = dice.Between(20, 60);
    const double inner = dice.Coin() ? 0 : dice.Between(2, 6);
    const double bulge = inner + dice.Between(0.15, 1.3) * height;
    const gp_Pnt low(inner, 0, 0);
    const gp_Pnt high(inner, 0, height);
    const Handle(Geom_TrimmedCurve) arc =
        GC_MakeArcOfCircle(low, gp_Pnt(bulge, 0, height * dice.Between(0.4, 0.6)), high).Value();
    BRepBuilderAPI_MakeWire wire(BRepBuilderAPI_MakeEdge(arc).Edge(),
                                 BRepBuilderAPI_MakeEdge(high, low).Edge());
    const gp_Ax1 axis(gp_Pnt(0, 0, 0), gp_Dir(0, 0, 1));
    return BRepPrimAPI_MakeRevol(FlatFace(wire.Wire()), axis, dice.Coin() ? turn : dice.Between(0.4, 6))
        .Shape();
}

TopoDS_Shape TurnedEllipse(Dice& dice) {
    const gp_Elips ellipse(gp_Ax2(gp_Pnt(30, 0, 0), gp_Dir(0, 1, 0), gp_Dir(1, 0, dice.Between(0, 1))),
                           dice.Between(10, 20), dice.Between(3, 9));
    const TopoDS_Face face =
        FlatFace(BRepBuilderAPI_MakeWire(BRepBuilderAPI_MakeEdge(ellipse).Edge()).Wire());
    return BRepPrimAPI_MakeRevol(face, gp_Ax1(gp_Pnt(0, 0, 0), gp_Dir(0, 0, 1)),
                                 dice.Coin() ? turn : dice.Between(0.4, 6))
        .Shape();
}

TopoDS_Shape Moulding(Dice& dice) {
    const TopoDS_Face profile = Profile(dice, 3);
    return BRepPrimAPI_MakePrism(profile,
                                 gp_Vec(dice.Between(-20, 20), dice.Between(30, 300), dice.Coin() ? 0 : 8))
        .Shape();
}

TopoDS_Shape RoundExtrusion(Dice& dice) {
    const TopoDS_Face face = FlatFace(Section(dice, dice.Coin() ? 1 : 3, 0, dice.Between(10, 40)));
    return BRepPrimAPI_MakePrism(face, gp_Vec(dice.Between(-9, 9), dice.Between(-9, 9), dice.Between(5, 50)))
        .Shape();
}

TopoDS_Shape DrilledMoulding(Dice& dice) {
    const TopoDS_Shape part = Moulding(dice);
    const gp_Ax2 at(gp_Pnt(15, dice.Between(10, 20), -10), Somewhere(dice));
    return Without(part, BRepPrimAPI_MakeCylinder(at, dice.Between(1, 4), 200).Shape());
}

}  // namespace brenvik::acis::testing
