// The text that is written: what it holds line by line, what is refused, and that strangers read it.
#include "acis_testing.h"

#include <gtest/gtest.h>
#include <BOPAlgo_Builder.hxx>
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRepPrimAPI_MakeRevol.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRep_Builder.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Face.hxx>
#include <gp_Circ.hxx>
#include <gp_Pln.hxx>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <numbers>

namespace brenvik::acis::testing {
namespace {

TopoDS_Face Triangle() {
    BRepBuilderAPI_MakePolygon corners(gp_Pnt(0, 0, 0), gp_Pnt(4, 0, 0), gp_Pnt(0, 3, 0), true);
    return BRepBuilderAPI_MakeFace(corners.Wire(), true).Face();
}

TopoDS_Face FaceOfKind(const TopoDS_Shape& shape, int index) {
    TopExp_Explorer faces(shape, TopAbs_FACE);
    for (; index > 0; --index) faces.Next();
    return TopoDS::Face(faces.Current());
}

TEST(WriteText, StatesARegionRecordByRecord) {
    const std::vector<std::string> expected{"400 21 1 0",
                                            "7 Brenvik 9 ACIS 4.00 0 ",
                                            "1 9.9999999999999995e-007 1e-010",
                                            "body $-1 $1 $-1 $-1 #",
                                            "lump $-1 $-1 $2 $0 #",
                                            "shell $-1 $-1 $-1 $3 $-1 $1 #",
                                            "face $-1 $-1 $4 $2 $-1 $5 forward double out #",
                                            "loop $-1 $-1 $6 $3 #",
                                            "plane-surface $-1 1.5 1 0 0 0 1 1 0 0 forward_v I I I I #",
                                            "coedge $-1 $7 $8 $-1 $9 forward $4 $-1 #",
                                            "coedge $-1 $8 $6 $-1 $15 forward $4 $-1 #",
                                            "coedge $-1 $6 $7 $-1 $19 forward $4 $-1 #",
                                            "edge $-1 $10 $12 $6 $14 forward #",
                                            "vertex $-1 $9 $11 #",
                                            "point $-1 0 0 0 #",
                                            "vertex $-1 $9 $13 #",
                                            "point $-1 4 0 0 #",
                                            "straight-curve $-1 0 0 0 1 0 0 I I #",
                                            "edge $-1 $12 $16 $7 $18 forward #",
                                            "vertex $-1 $15 $17 #",
                                            "point $-1 0 3 0 #",
                                            "straight-curve $-1 4 0 0 -0.8 0.6 0 I I #",
                                            "edge $-1 $16 $10 $8 $20 forward #",
                                            "straight-curve $-1 0 3 0 0 -1 0 I I #",
                                            "End-of-ACIS-data"};
    EXPECT_EQ(WriteText(Triangle()), expected);
}

TEST(WriteText, KeepsARegionsSide) {
    const TopoDS_Shape back = ExpectRoundTrip(Triangle().Reversed());
    ASSERT_EQ(back.ShapeType(), TopAbs_FACE);
    EXPECT_EQ(back.Orientation(), TopAbs_REVERSED);
}

TEST(WriteText, WritesARegionWithAnOpening) {
    BRepBuilderAPI_MakeFace face(Triangle());
    const gp_Circ circle(gp_Ax2(gp_Pnt(1, 1, 0), gp_Dir(0, 0, -1)), 0.5);
    face.Add(BRepBuilderAPI_MakeWire(BRepBuilderAPI_MakeEdge(circle).Edge()).Wire());
    const TopoDS_Shape back = ExpectRoundTrip(face.Face());
    EXPECT_NEAR(Area(back), 6 - std::numbers::pi / 4, 1e-12);
}

TEST(WriteText, MakesALumpOfEverySeparateSheet) {
    BRep_Builder builder;
    TopoDS_Compound sheets;
    builder.MakeCompound(sheets);
    builder.Add(sheets, Triangle());
    builder.Add(sheets,
                BRepBuilderAPI_MakeFace(gp_Pln(gp_Pnt(0, 0, 9), gp_Dir(0, 0, 1)), 10, 20, 10, 20).Face());
    const TopoDS_Shape back = ExpectRoundTrip(sheets);
    EXPECT_EQ(back.ShapeType(), TopAbs_COMPOUND);
}

TEST(WriteText, KeepsTouchingSolidsApart) {
    const TopoDS_Shape left = BRepPrimAPI_MakeBox(gp_Pnt(0, 0, 0), gp_Pnt(10, 10, 10)).Shape();
    const TopoDS_Shape right = BRepPrimAPI_MakeBox(gp_Pnt(10, 0, 0), gp_Pnt(30, 10, 10)).Shape();
    BOPAlgo_Builder gluing;
    gluing.AddArgument(left);
    gluing.AddArgument(right);
    gluing.Perform();
    ASSERT_EQ(Count(gluing.Shape(), TopAbs_FACE), 11) << "the solids share a face";
    const TopoDS_Shape back = ReadOne(Joined(WriteText(gluing.Shape())));
    EXPECT_EQ(Count(back, TopAbs_EDGE), 24);
    EXPECT_EQ(Count(back, TopAbs_SOLID), 2);
    EXPECT_EQ(Count(back, TopAbs_FACE), 12);
    EXPECT_NEAR(Volume(back), 3000, 1e-9);
}

TEST(WriteText, WritesTheRoundFaceOfAnExplodedSolidAsASheet) {
    const TopoDS_Shape rod =
        BRepPrimAPI_MakeCylinder(gp_Ax2(gp_Pnt(1, 2, 3), gp_Dir(1, 0, 0)), 5, 20).Shape();
    const TopoDS_Shape side = ExpectRoundTrip(FaceOfKind(rod, 0));
    EXPECT_EQ(side.ShapeType(), TopAbs_FACE);
    EXPECT_NEAR(Area(side), 200 * std::numbers::pi, 1e-9);
}

TEST(WriteText, WritesAnApexAsAnEdgeWithoutCurve) {
    int apexes = 0;
    for (const std::string& line : WriteText(BRepPrimAPI_MakeCone(10, 0, 30).Shape()))
        if (line.rfind("edge ", 0) == 0 && line.find(" $-1 forward #") != std::string::npos) ++apexes;
    EXPECT_EQ(apexes, 1);
}

TEST(WriteText, TakesSurfacesOutOfTheirDisguise) {
    // An arc moved along a line and a slanted line turned about an axis.
    const TopoDS_Edge arc = BRepBuilderAPI_MakeEdge(gp_Circ(gp_Ax2(), 10), 0.2, 1.4).Edge();
    const TopoDS_Shape shell = BRepPrimAPI_MakePrism(arc, gp_Vec(0, 0, 7)).Shape();
    EXPECT_NEAR(Area(ExpectRoundTrip(shell)), 84, 1e-9);
    const TopoDS_Edge slant = BRepBuilderAPI_MakeEdge(gp_Pnt(10, 0, 0), gp_Pnt(4, 0, 8)).Edge();
    const gp_Ax1 axis(gp_Pnt(0, 0, 0), gp_Dir(0, 0, 1));
    EXPECT_NEAR(Area(ExpectRoundTrip(BRepPrimAPI_MakeRevol(slant, axis).Shape())), std::numbers::pi * 14 * 10,
                1e-9);
    EXPECT_NEAR(Area(ExpectRoundTrip(BRepPrimAPI_MakeRevol(slant, axis, 1.0).Shape())), 7 * 10, 1e-9);
}

TEST(WriteText, RefusesAShapeWithoutFaces) {
    EXPECT_THROW(WriteText(TopoDS_Shape()), WriteFailure);
    EXPECT_THROW(WriteBodies({}), WriteFailure);
    EXPECT_THROW(WriteText(BRepBuilderAPI_MakeEdge(gp_Pnt(0, 0, 0), gp_Pnt(1, 0, 0)).Shape()), WriteFailure);
}

TEST(WriteText, KeepsTypedInNumbersToTheLastBit) {
    const TopoDS_Shape box =
        BRepPrimAPI_MakeBox(gp_Pnt(0.1, 0.2, 0.3), gp_Pnt(1234.5678, 18.9, 1.0 / 3)).Shape();
    const std::vector<gp_Pnt> before = Corners(box);
    const std::vector<gp_Pnt> after = Corners(ReadOne(Joined(WriteText(box))));
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < after.size(); ++i) {
        EXPECT_EQ(after[i].X(), before[i].X());
        EXPECT_EQ(after[i].Y(), before[i].Y());
        EXPECT_EQ(after[i].Z(), before[i].Z());
    }
}

TEST(WriteText, IsReadByAnIndependentReader) {
    if (std::system("/usr/bin/python3 -c 'import ezdxf.acis.api' 2>/dev/null") != 0)
        GTEST_SKIP() << "no independent reader of ACIS text is installed";
    const TopoDS_Shape shapes[] = {
        BRepPrimAPI_MakeBox(10.0, 20.0, 30.0).Shape(), BRepPrimAPI_MakeCylinder(5.0, 20.0).Shape(),
        BRepPrimAPI_MakeCone(10, 0, 30).Shape(), BRepPrimAPI_MakeSphere(5.0).Shape(), Triangle()};
    const int faces[] = {6, 3, 2, 1, 1};
    for (std::size_t i = 0; i < std::size(shapes); ++i) {
        const std::string path = ::testing::TempDir() + "brenvik_acis_" + std::to_string(i) + ".sat";
        std::ofstream(path) << Joined(WriteText(shapes[i]));
        const std::string program =
            "/usr/bin/python3 -c \"import sys; from ezdxf.acis import api; "
            "b = api.load(open('" +
            path +
            "').read()); "
            "sys.exit(0 if len(b) == 1 and sum(len(s.faces()) for l in b[0].lumps() for s in l.shells()) "
            "== " +
            std::to_string(faces[i]) + " else 1)\"";
        EXPECT_EQ(std::system(program.c_str()), 0) << "shape " << i;
        std::remove(path.c_str());
    }
}

}  // namespace
}  // namespace brenvik::acis::testing
