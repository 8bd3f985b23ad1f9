// Solids with free edges and faces, and the comparison of what came back with what was written.
#pragma once

#include "acis_testing.h"

#include <gtest/gtest.h>
#include <BRepAlgoAPI_Cut.hxx>
#include <BRepBndLib.hxx>
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <BRepFilletAPI_MakeFillet.hxx>
#include <BRepGProp.hxx>
#include <BRepOffsetAPI_ThruSections.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRepPrimAPI_MakeRevol.hxx>
#include <BRepTools.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <GProp_GProps.hxx>
#include <GeomAPI_PointsToBSpline.hxx>
#include <GeomAPI_PointsToBSplineSurface.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_BSplineSurface.hxx>
#include <TColgp_Array1OfPnt.hxx>
#include <TColgp_Array2OfPnt.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <gp_Circ.hxx>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <map>
#include <numbers>
#include <random>
#include <sstream>

namespace brenvik::acis::testing {

inline gp_Ax2 At(double x, double y, double z, const gp_Dir& axis) { return {gp_Pnt(x, y, z), axis}; }

inline TopoDS_Shape Without(const TopoDS_Shape& part, const TopoDS_Shape& tool) {
    return BRepAlgoAPI_Cut(part, tool).Shape();
}

inline TopoDS_Shape Drilled(const TopoDS_Shape& part, const gp_Ax2& at, double radius, double depth) {
    return Without(part, BRepPrimAPI_MakeCylinder(at, radius, depth).Shape());
}

// The bore for the bolt of a cam fitting runs into the blind hole of its housing.
inline TopoDS_Shape CamFitting() {
    const TopoDS_Shape panel = BRepPrimAPI_MakeBox(600.0, 400.0, 18.0).Shape();
    return Drilled(Drilled(panel, At(34, 200, 5.5, gp_Dir(0, 0, 1)), 7.5, 20),
                   At(-1, 200, 9, gp_Dir(1, 0, 0)), 4, 35);
}

inline TopoDS_Shape Crossed(double radius, double offMiddle, const gp_Dir& direction = gp_Dir(1, 0, 0)) {
    const TopoDS_Shape box = BRepPrimAPI_MakeBox(100.0, 100.0, 100.0).Shape();
    return Drilled(Drilled(box, At(50, 50, -1, gp_Dir(0, 0, 1)), 20, 102),
                   At(-1, 50 + offMiddle, 50, direction), radius, 140);
}

// A countersink cut beside its axis ends in a branch of a hyperbola.
inline TopoDS_Shape CutCountersink() {
    const TopoDS_Shape box = BRepPrimAPI_MakeBox(100.0, 100.0, 100.0).Shape();
    const TopoDS_Shape sink = BRepPrimAPI_MakeCone(At(50, 50, 60, gp_Dir(0, 0, 1)), 0, 40, 40).Shape();
    return Without(Without(box, sink),
                   BRepPrimAPI_MakeBox(gp_Pnt(60, -1, 50), gp_Pnt(101, 101, 101)).Shape());
}

inline Handle(Geom_BSplineCurve) Wave() {
    TColgp_Array1OfPnt points(1, 5);
    points(1) = gp_Pnt(0, 0, 0);
    points(2) = gp_Pnt(10, 5, 0);
    points(3) = gp_Pnt(20, -3, 0);
    points(4) = gp_Pnt(30, 6, 0);
    points(5) = gp_Pnt(40, 0, 0);
    return GeomAPI_PointsToBSpline(points).Curve();
}

inline TopoDS_Face WaveFace() {
    const gp_Pnt corners[] = {gp_Pnt(40, 0, 0), gp_Pnt(40, -20, 0), gp_Pnt(0, -20, 0), gp_Pnt(0, 0, 0)};
    BRepBuilderAPI_MakeWire wire(BRepBuilderAPI_MakeEdge(Wave()).Edge());
    for (int i = 0; i < 3; ++i) wire.Add(BRepBuilderAPI_MakeEdge(corners[i], corners[i + 1]).Edge());
    return BRepBuilderAPI_MakeFace(wire.Wire()).Face();
}

inline TopoDS_Shape Moulding() { return BRepPrimAPI_MakePrism(WaveFace(), gp_Vec(0, 0, 30)).Shape(); }

inline TopoDS_Shape DrilledMoulding() {
    return Drilled(Moulding(), At(20, -50, 15, gp_Dir(0, 1, 0)), 6, 100);
}

inline TopoDS_Shape Turned(double angle) {
    const gp_Ax1 axis(gp_Pnt(0, -40, 0), gp_Dir(1, 0, 0));
    return BRepPrimAPI_MakeRevol(WaveFace(), axis, angle).Shape();
}

inline TopoDS_Shape Vase() {
    BRepOffsetAPI_ThruSections loft(true, false);
    const std::pair<double, double> sections[] = {{0, 10}, {20, 6}, {40, 12}};
    for (const auto& [z, radius] : sections) {
        const gp_Circ circle(At(z / 10, 0, z, gp_Dir(0.1 * (z == 20), 0, 1)), radius);
        loft.AddWire(BRepBuilderAPI_MakeWire(BRepBuilderAPI_MakeEdge(circle).Edge()).Wire());
    }
    return loft.Shape();
}

inline TopoDS_Shape RoundedCrossing() {
    const TopoDS_Shape part = Crossed(12, 0);
    BRepFilletAPI_MakeFillet fillet(part);
    TopTools_IndexedMapOfShape edges;
    TopExp::MapShapes(part, TopAbs_EDGE, edges);
    for (int i = 1; i <= edges.Extent(); ++i) {
        double first = 0;
        double last = 0;
        const Handle(Geom_Curve) curve = BRep_Tool::Curve(TopoDS::Edge(edges(i)), first, last);
        if (!curve.IsNull() && curve->IsKind(STANDARD_TYPE(Geom_BSplineCurve)))
            fillet.Add(2, TopoDS::Edge(edges(i)));
    }
    return fillet.Shape();
}

// The modeller's plain integration takes so few points along a spline that it is off in the seventh place.
inline double ExactVolume(const TopoDS_Shape& shape) {
    GProp_GProps properties;
    BRepGProp::VolumePropertiesGK(shape, properties, 1e-11);
    return properties.Mass();
}

inline double ExactArea(const TopoDS_Shape& shape) {
    GProp_GProps properties;
    BRepGProp::SurfaceProperties(shape, properties, 1e-9);
    return properties.Mass();
}

inline Bnd_Box Extent(const TopoDS_Shape& shape) {
    Bnd_Box box;
    BRepBndLib::AddOptimal(shape, box, false, false);
    return box;
}

inline std::map<std::string, int> FaceKinds(const TopoDS_Shape& shape) {
    std::map<std::string, int> kinds;
    for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next()) {
        const Handle(Geom_Surface) surface = BRep_Tool::Surface(TopoDS::Face(face.Current()));
        const std::string kind = surface->DynamicType()->Name();
        const bool analytic = kind == "Geom_Plane" || kind == "Geom_CylindricalSurface" ||
                              kind == "Geom_ConicalSurface" || kind == "Geom_ToroidalSurface";
        ++kinds[analytic ? kind : "free"];
    }
    return kinds;
}

inline TopoDS_Shape ExpectSame(const TopoDS_Shape& shape, double share = 1e-9) {
    const TopoDS_Shape back = ReadOne(Joined(WriteText(shape)));
    if (back.IsNull()) return back;
    const double volume = ExactVolume(shape);
    EXPECT_NEAR(ExactVolume(back), volume, share * volume);
    EXPECT_EQ(FaceKinds(back), FaceKinds(shape));
    EXPECT_EQ(Count(back, TopAbs_SOLID), Count(shape, TopAbs_SOLID));
    const Bnd_Box before = Extent(shape);
    const Bnd_Box after = Extent(back);
    EXPECT_LT(before.CornerMin().Distance(after.CornerMin()), 1e-6);
    EXPECT_LT(before.CornerMax().Distance(after.CornerMax()), 1e-6);
    return back;
}

inline TopoDS_Face Sail(bool turned) {
    TColgp_Array2OfPnt points(1, 4, 1, 4);
    for (int i = 1; i <= 4; ++i)
        for (int j = 1; j <= 4; ++j) points(i, j) = gp_Pnt(i, j, (i - 2) * (j - 3) * 0.3);
    const TopoDS_Face face =
        BRepBuilderAPI_MakeFace(GeomAPI_PointsToBSplineSurface(points).Surface(), 1e-6).Face();
    return turned ? TopoDS::Face(face.Reversed()) : face;
}

}  // namespace brenvik::acis::testing
