// Free edges and faces: bores that cross leave a spline where they meet, and imported parts bring surfaces
// that are nothing but splines. They are written exactly and come back as they were.
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
namespace {

gp_Ax2 At(double x, double y, double z, const gp_Dir& axis) { return {gp_Pnt(x, y, z), axis}; }

TopoDS_Shape Without(const TopoDS_Shape& part, const TopoDS_Shape& tool) {
    return BRepAlgoAPI_Cut(part, tool).Shape();
}

TopoDS_Shape Drilled(const TopoDS_Shape& part, const gp_Ax2& at, double radius, double depth) {
    return Without(part, BRepPrimAPI_MakeCylinder(at, radius, depth).Shape());
}

// The bore for the bolt of a cam fitting runs into the blind hole of its housing.
TopoDS_Shape CamFitting() {
    const TopoDS_Shape panel = BRepPrimAPI_MakeBox(600.0, 400.0, 18.0).Shape();
    return Drilled(Drilled(panel, At(34, 200, 5.5, gp_Dir(0, 0, 1)), 7.5, 20),
                   At(-1, 200, 9, gp_Dir(1, 0, 0)), 4, 35);
}

TopoDS_Shape Crossed(double radius, double offMiddle, const gp_Dir& direction = gp_Dir(1, 0, 0)) {
    const TopoDS_Shape box = BRepPrimAPI_MakeBox(100.0, 100.0, 100.0).Shape();
    return Drilled(Drilled(box, At(50, 50, -1, gp_Dir(0, 0, 1)), 20, 102),
                   At(-1, 50 + offMiddle, 50, direction), radius, 140);
}

// A countersink cut beside its axis ends in a branch of a hyperbola.
TopoDS_Shape CutCountersink() {
    const TopoDS_Shape box = BRepPrimAPI_MakeBox(100.0, 100.0, 100.0).Shape();
    const TopoDS_Shape sink = BRepPrimAPI_MakeCone(At(50, 50, 60, gp_Dir(0, 0, 1)), 0, 40, 40).Shape();
    return Without(Without(box, sink),
                   BRepPrimAPI_MakeBox(gp_Pnt(60, -1, 50), gp_Pnt(101, 101, 101)).Shape());
}

Handle(Geom_BSplineCurve) Wave() {
    TColgp_Array1OfPnt points(1, 5);
    points(1) = gp_Pnt(0, 0, 0);
    points(2) = gp_Pnt(10, 5, 0);
    points(3) = gp_Pnt(20, -3, 0);
    points(4) = gp_Pnt(30, 6, 0);
    points(5) = gp_Pnt(40, 0, 0);
    return GeomAPI_PointsToBSpline(points).Curve();
}

TopoDS_Face WaveFace() {
    const gp_Pnt corners[] = {gp_Pnt(40, 0, 0), gp_Pnt(40, -20, 0), gp_Pnt(0, -20, 0), gp_Pnt(0, 0, 0)};
    BRepBuilderAPI_MakeWire wire(BRepBuilderAPI_MakeEdge(Wave()).Edge());
    for (int i = 0; i < 3; ++i) wire.Add(BRepBuilderAPI_MakeEdge(corners[i], corners[i + 1]).Edge());
    return BRepBuilderAPI_MakeFace(wire.Wire()).Face();
}

TopoDS_Shape Moulding() { return BRepPrimAPI_MakePrism(WaveFace(), gp_Vec(0, 0, 30)).Shape(); }

TopoDS_Shape DrilledMoulding() { return Drilled(Moulding(), At(20, -50, 15, gp_Dir(0, 1, 0)), 6, 100); }

TopoDS_Shape Turned(double angle) {
    const gp_Ax1 axis(gp_Pnt(0, -40, 0), gp_Dir(1, 0, 0));
    return BRepPrimAPI_MakeRevol(WaveFace(), axis, angle).Shape();
}

TopoDS_Shape Vase() {
    BRepOffsetAPI_ThruSections loft(true, false);
    const std::pair<double, double> sections[] = {{0, 10}, {20, 6}, {40, 12}};
    for (const auto& [z, radius] : sections) {
        const gp_Circ circle(At(z / 10, 0, z, gp_Dir(0.1 * (z == 20), 0, 1)), radius);
        loft.AddWire(BRepBuilderAPI_MakeWire(BRepBuilderAPI_MakeEdge(circle).Edge()).Wire());
    }
    return loft.Shape();
}

TopoDS_Shape RoundedCrossing() {
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
double ExactVolume(const TopoDS_Shape& shape) {
    GProp_GProps properties;
    BRepGProp::VolumePropertiesGK(shape, properties, 1e-11);
    return properties.Mass();
}

double ExactArea(const TopoDS_Shape& shape) {
    GProp_GProps properties;
    BRepGProp::SurfaceProperties(shape, properties, 1e-9);
    return properties.Mass();
}

Bnd_Box Extent(const TopoDS_Shape& shape) {
    Bnd_Box box;
    BRepBndLib::AddOptimal(shape, box, false, false);
    return box;
}

std::map<std::string, int> FaceKinds(const TopoDS_Shape& shape) {
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

TopoDS_Shape ExpectSame(const TopoDS_Shape& shape, double share = 1e-9) {
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

struct FreeCase {
    const char* name;
    TopoDS_Shape (*make)();
    /// What the volume may differ by, as a share of it: fillets are only near to the faces they meet.
    double share = 1e-9;
};

void PrintTo(const FreeCase& tested, std::ostream* out) { *out << tested.name; }

class FreeForm : public ::testing::TestWithParam<FreeCase> {};

TEST_P(FreeForm, KeepsTheShape) { ExpectSame(GetParam().make(), GetParam().share); }

TEST_P(FreeForm, KeepsTheShapeWrittenTwice) {
    const TopoDS_Shape once = ExpectSame(GetParam().make(), GetParam().share);
    ASSERT_FALSE(once.IsNull());
    ExpectSame(once, GetParam().share);
}

TEST_P(FreeForm, KeepsTheShapeTurnedAtAnOddAngle) {
    gp_Trsf turn;
    turn.SetRotation(gp_Ax1(gp_Pnt(3, -7, 11), gp_Dir(0.3, -0.5, 0.81)), 1.234);
    ExpectSame(BRepBuilderAPI_Transform(GetParam().make(), turn).Shape(), GetParam().share);
}

TEST_P(FreeForm, KeepsTheShapeMirrored) {
    gp_Trsf mirror;
    mirror.SetMirror(gp_Ax2(gp_Pnt(5, 6, 7), gp_Dir(1, 0.2, 0.1)));
    ExpectSame(BRepBuilderAPI_Transform(GetParam().make(), mirror).Shape(), GetParam().share);
}

TEST_P(FreeForm, KeepsTheShapeMovedByALocation) {
    gp_Trsf move;
    move.SetRotation(gp_Ax1(gp_Pnt(0, 0, 0), gp_Dir(0, 0, 1)), 0.5);
    move.SetTranslationPart(gp_Vec(10, 20, 30));
    ExpectSame(GetParam().make().Moved(TopLoc_Location(move)), GetParam().share);
}

// Splices a transform record into a text whose records may run over several lines.
std::string PlacedFree(const TopoDS_Shape& shape, const std::string& transform) {
    std::vector<std::string> lines = WriteText(shape);
    const long records = std::atol(lines[0].substr(4).c_str());
    const std::string none = "$1 $-1 $-1 #";
    lines[3].replace(lines[3].find(none), none.size(), "$1 $-1 $" + std::to_string(records) + " #");
    lines[0] = "400 " + std::to_string(records + 1) + " 1 0";
    lines.insert(lines.end() - 1, "transform $-1 " + transform + " #");
    return Joined(lines);
}

TEST_P(FreeForm, KeepsTheVolumeUnderReflectionRotationAndScale) {
    const TopoDS_Shape shape = GetParam().make();
    const TopoDS_Shape placed =
        ReadOne(PlacedFree(shape, "0.6 0.8 0 0.8 -0.6 0 0 0 1 5 6 7 0.5 rotate reflect no_shear"));
    const double volume = ExactVolume(shape) / 8;
    EXPECT_NEAR(ExactVolume(placed), volume, GetParam().share * volume);
}

TEST_P(FreeForm, GivesAShapeThatCanBeCutAgain) {
    const TopoDS_Shape shape = GetParam().make();
    const TopoDS_Shape back = ReadOne(Joined(WriteText(shape)));
    const gp_Pnt low = Extent(shape).CornerMin();
    const gp_Pnt high = Extent(shape).CornerMax();
    const double x = low.X() + 0.317 * (high.X() - low.X());
    const TopoDS_Shape saw =
        BRepPrimAPI_MakeBox(gp_Pnt(x, low.Y() - 1, low.Z() - 1), gp_Pnt(x + 4, high.Y() + 1, high.Z() + 1))
            .Shape();
    const TopoDS_Shape cut = Without(back, saw);
    ExpectValid(cut);
    const double expected = ExactVolume(Without(shape, saw));
    EXPECT_NEAR(ExactVolume(cut), expected, 1e-6 * expected);
}

// The same text as a later version says it: history behind the attribute, edges with parameters, and splines
// that are kept in full.
std::string AsVersion700(const std::vector<std::string>& lines) {
    std::string text = "700 0 1 0\n7 Brenvik 9 ACIS 7.00 0 \n1 1e-006 1e-010\n";
    bool fresh = true;
    for (std::size_t i = 3; i < lines.size(); ++i) {
        std::string line = lines[i];
        const std::size_t name = line.find(" $-1 ");
        if (fresh && name != std::string::npos) line.insert(name + 4, " -1 $-1");
        for (const std::string& kind : {std::string("exactcur "), std::string("exactsur ")}) {
            if (const std::size_t at = line.find(kind); at != std::string::npos)
                line.insert(at + kind.size(), "full ");
        }
        fresh = line.ends_with("#");
        text += line + "\n";
    }
    return text;
}

TEST_P(FreeForm, IsReadFromALaterVersionToo) {
    const TopoDS_Shape shape = GetParam().make();
    const TopoDS_Shape back = ReadOne(AsVersion700(WriteText(shape)));
    const double volume = ExactVolume(shape);
    EXPECT_NEAR(ExactVolume(back), volume, GetParam().share * volume);
}

TEST_P(FreeForm, IsReadByAnIndependentReader) {
    if (std::system("/usr/bin/python3 -c 'import ezdxf.acis.api' 2>/dev/null") != 0) {
        GTEST_SKIP() << "no independent reader of ACIS text is installed";
    }
    const TopoDS_Shape shape = GetParam().make();
    const std::string path = ::testing::TempDir() + "brenvik_free_" + GetParam().name + ".sat";
    std::ofstream(path) << Joined(WriteText(shape));
    const std::string program =
        "/usr/bin/python3 -c \"import sys; from ezdxf.acis import api; b = api.load(open('" + path +
        "').read()); sys.exit(0 if sum(len(s.faces()) for l in b[0].lumps() for s in l.shells()) == " +
        std::to_string(Count(shape, TopAbs_FACE)) + " else 1)\"";
    EXPECT_EQ(std::system(program.c_str()), 0);
    std::remove(path.c_str());
}

INSTANTIATE_TEST_SUITE_P(
    Shapes, FreeForm,
    ::testing::Values(FreeCase{"CamFitting", CamFitting}, FreeCase{"Crossing", [] { return Crossed(12, 0); }},
                      FreeCase{"CrossingOfEqualBores", [] { return Crossed(20, 0); }},
                      FreeCase{"CrossingOffTheMiddle", [] { return Crossed(12, 13); }},
                      FreeCase{"SlantedCrossing", [] { return Crossed(8, 0, gp_Dir(2, 0.3, 0.6)); }},
                      FreeCase{"CutCountersink", CutCountersink}, FreeCase{"Moulding", Moulding},
                      FreeCase{"DrilledMoulding", DrilledMoulding},
                      FreeCase{"TurnedProfile", [] { return Turned(2 * std::numbers::pi); }},
                      FreeCase{"PartlyTurnedProfile", [] { return Turned(2); }}, FreeCase{"Vase", Vase},
                      FreeCase{"RoundedCrossing", RoundedCrossing, 1e-8}),
    [](const ::testing::TestParamInfo<FreeCase>& tested) { return std::string(tested.param.name); });

TEST(FreeFormVolume, IsThatOfTheBoresThatCross) {
    // What two bores square to each other have in common, by Simpson's rule over the smaller one.
    const double large = 20;
    const double small = 12;
    double common = 0;
    constexpr int steps = 20000;
    for (int i = 0; i <= steps; ++i) {
        const double angle = std::numbers::pi * i / steps;
        const double y = small * std::cos(angle);
        const double weight = i == 0 || i == steps ? 1 : (i % 2 == 1 ? 4 : 2);
        common += weight * 4 * std::sqrt(large * large - y * y) * std::pow(small * std::sin(angle), 2);
    }
    common *= std::numbers::pi / steps / 3;
    const double expected = 1e6 - std::numbers::pi * 100 * (large * large + small * small) + common;
    const TopoDS_Shape back = ReadOne(Joined(WriteText(Crossed(small, 0))));
    EXPECT_NEAR(ExactVolume(back), expected, 1e-9 * expected);
}

TopoDS_Face Sail(bool turned) {
    TColgp_Array2OfPnt points(1, 4, 1, 4);
    for (int i = 1; i <= 4; ++i) {
        for (int j = 1; j <= 4; ++j) points(i, j) = gp_Pnt(i, j, (i - 2) * (j - 3) * 0.3);
    }
    const TopoDS_Face face =
        BRepBuilderAPI_MakeFace(GeomAPI_PointsToBSplineSurface(points).Surface(), 1e-6).Face();
    return turned ? TopoDS::Face(face.Reversed()) : face;
}

TEST(FreeFormText, KeepsTheSideOfASheet) {
    for (const bool turned : {false, true}) {
        const TopoDS_Shape back = ReadOne(Joined(WriteText(Sail(turned))));
        ASSERT_EQ(back.ShapeType(), TopAbs_FACE);
        EXPECT_EQ(back.Orientation() == TopAbs_REVERSED, turned);
        EXPECT_NEAR(ExactArea(back), ExactArea(Sail(turned)), 1e-12);
    }
}

// Knots, poles and weights are stated row by row, the curve of each coedge names the surface by number.
TEST(FreeFormText, StatesASurfaceItsEdgesAndTheirCurvesOnIt) {
    TColgp_Array2OfPnt poles(1, 2, 1, 3);
    for (int i = 1; i <= 2; ++i) {
        for (int j = 1; j <= 3; ++j) poles(i, j) = gp_Pnt(8 * (i - 1), 4 * (j - 1), j == 2 ? 3 : 0);
    }
    TColStd_Array1OfReal ends(1, 2);
    ends(1) = 0;
    ends(2) = 1;
    TColStd_Array1OfInteger twice(1, 2);
    twice.Init(2);
    TColStd_Array1OfInteger thrice(1, 2);
    thrice.Init(3);
    const Handle(Geom_BSplineSurface) vault = new Geom_BSplineSurface(poles, ends, ends, twice, thrice, 1, 2);
    const std::vector<std::string> lines = WriteText(BRepBuilderAPI_MakeFace(vault, 1e-7).Face());
    const auto stretch = [&lines](const std::string& first, std::size_t count) {
        const auto at = std::find_if(lines.begin(), lines.end(),
                                     [&](const std::string& line) { return line.starts_with(first); });
        const auto left = static_cast<std::size_t>(lines.end() - at);
        return std::vector<std::string>(at, at + static_cast<long>(std::min(count, left)));
    };
    const std::vector<std::string> surface{
        "spline-surface $-1 forward { exactsur nubs 1 2 open open none none 2 2",
        "0 1 1 1",
        "0 2 1 2",
        "0 0 0",
        "8 0 0",
        "0 4 3",
        "8 4 3",
        "0 8 0",
        "8 8 0",
        "0",
        "0",
        "0",
        "0",
        "0",
        "0",
        "0",
        "F 1 F 0 F 1 F 0 } I I I I #"};
    EXPECT_EQ(stretch("spline-surface", surface.size()), surface);
    const std::vector<std::string> curve{"intcurve-curve $-1 forward { exactcur nubs 2 open 2",
                                         "0 2 1 2",
                                         "0 0 0",
                                         "0 4 3",
                                         "0 8 0",
                                         "0",
                                         "null_surface",
                                         "null_surface",
                                         "nullbs",
                                         "nullbs",
                                         "I I",
                                         "0",
                                         "0",
                                         "0",
                                         "F 1 F 0 } I I #"};
    const std::vector<std::string> written = stretch("intcurve-curve", curve.size());
    ASSERT_EQ(written.size(), curve.size());
    EXPECT_EQ(written.front(), curve.front());
    EXPECT_TRUE(std::equal(written.begin() + 5, written.end(), curve.begin() + 5));
    const std::vector<std::string> onSurface = stretch("pcurve", 6);
    ASSERT_EQ(onSurface.size(), 6u);
    EXPECT_EQ(onSurface[0], "pcurve $-1 0 forward { exppc nubs 1 open 2");
    EXPECT_EQ(onSurface[5], "spline forward { ref 0 } I I I I } 0 0 #");
    EXPECT_EQ(std::count_if(lines.begin(), lines.end(),
                            [](const std::string& line) { return line.starts_with("pcurve"); }),
              4);
}

TEST(FreeFormText, KeepsWithinTheLinesOfADrawing) {
    for (const std::string& line : WriteText(Crossed(12, 13))) EXPECT_LE(line.size(), 255u) << line;
}

std::string Swapped(std::string text, const std::string& what, const std::string& by) {
    std::size_t place = text.find(what);
    EXPECT_NE(place, std::string::npos) << what;
    for (; place != std::string::npos; place = text.find(what, place + by.size()))
        text.replace(place, what.size(), by);
    return text;
}

// Curves that are not exact in their own right carry the spline that stands in for them all the same.
TEST(FreeFormReading, TakesTheSplineThatAnyCurveCarries) {
    const std::string text = Joined(WriteText(Crossed(12, 0)));
    const double volume = ExactVolume(Crossed(12, 0));
    for (const char* kind :
         {"surfintcur", "parcur", "bldcur", "exact_int_cur 23100 full", "lawintcur full"}) {
        const TopoDS_Shape back = ReadOne(Swapped(text, "{ exactcur", std::string("{ ") + kind));
        EXPECT_NEAR(ExactVolume(back), volume, 1e-9 * volume) << kind;
    }
}

TEST(FreeFormReading, TakesTheSplineBehindWhatASurfaceIsMadeOf) {
    const std::string text = Joined(WriteText(Moulding()));
    const double volume = ExactVolume(Moulding());
    const std::string blend =
        "{ rbblnsur straight 0 0 0 1 0 0 I I intcurve forward { exactcur nubs 1 open 2 0 1 1 1 0 0 0 9 9 9 0 "
        "null_surface null_surface nullbs nullbs I I 0 0 0 F 1 F 0 } I I 3 3 ";
    // The curve within the braces has a number of its own, but the surface was opened before it.
    const TopoDS_Shape back = ReadOne(Swapped(text, "{ exactsur ", blend));
    EXPECT_NEAR(ExactVolume(back), volume, 1e-9 * volume);
}

TEST(FreeFormReading, FindsTheCurvesOnASurfaceThatTheTextLeavesOut) {
    std::string text = Joined(WriteText(DrilledMoulding()));
    std::string bare;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("coedge ")) line = line.substr(0, line.rfind(" $")) + " $-1 #";
        bare += line + "\n";
    }
    const double volume = ExactVolume(DrilledMoulding());
    EXPECT_NEAR(ExactVolume(ReadOne(bare)), volume, 1e-9 * volume);
}

TEST(FreeFormReading, PassesOverCurvesOnASurfaceThatMissTheirEdges) {
    const std::string text =
        Swapped(Joined(WriteText(Moulding())), "{ exppc nubs 1 open 2\n0 1 ", "{ exppc nubs 1 open 2\n-7 1 ");
    const double volume = ExactVolume(Moulding());
    EXPECT_NEAR(ExactVolume(ReadOne(text)), volume, 1e-9 * volume);
}

TEST(FreeFormReading, FollowsReferencesToBracesOfOtherRecords) {
    std::string text = Joined(WriteText(Moulding()));
    // The second of the curves says that it is the first, moved nowhere: the loops no longer meet.
    const std::size_t first = text.find("{ exactcur");
    const std::size_t second = text.find("{ exactcur", first + 1);
    const std::size_t end = text.find('}', second);
    text.replace(second, end - second + 1, "{ ref 1 }");
    const ReadResult result = ReadText(text);
    EXPECT_TRUE(result.bodies.empty());
    ASSERT_EQ(result.problems.size(), 1u);
    EXPECT_NE(result.problems[0].text.find("do not lie on its curve"), std::string::npos)
        << result.problems[0].text;
}

TEST(FreeFormReading, RunsACurveBackwardsWhereTheRecordSaysSo) {
    std::string text = Joined(WriteText(Moulding()));
    const std::size_t curve = text.find("intcurve-curve $-1 forward");
    ASSERT_NE(curve, std::string::npos);
    const long record = [&] {
        const std::string before = text.substr(0, curve);
        return static_cast<long>(std::count(before.begin(), before.end(), '#'));
    }();
    text.replace(curve, 26, "intcurve-curve $-1 reversed");
    const std::string edge = "$" + std::to_string(record) + " forward #";
    const std::size_t place = text.find(edge);
    ASSERT_NE(place, std::string::npos);
    text.replace(place, edge.size(), "$" + std::to_string(record) + " reversed #");
    const double volume = ExactVolume(Moulding());
    EXPECT_NEAR(ExactVolume(ReadOne(text)), volume, 1e-9 * volume);
}

struct DamagedSpline {
    const char* rule;
    const char* what;
    const char* by;
    const char* told;
};

TEST(FreeFormReading, TellsWhatIsWrongWithASpline) {
    const std::string text = Joined(WriteText(Moulding()));
    const DamagedSpline cases[] = {
        {"no spline of its own", "exactcur nubs 4 open 2", "helixcur 1 2 3", "has no spline of its own"},
        {"no approximation kept", "exactcur nubs", "surfintcur none", "has no spline of its own"},
        {"null spline", "exactcur nubs", "exactcur nullbs", "has no spline of its own"},
        {"degree", "exactcur nubs 4", "exactcur nubs 99", "degree of 99"},
        {"half a degree", "exactcur nubs 4", "exactcur nubs 2.5", "degree of 2.5"},
        {"knots", "exactcur nubs 4 open 2", "exactcur nubs 4 open 99999999", "number of knots"},
        {"falling knots", "0 4 1 4\n", "1 4 0 4\n", "knots do not rise"},
        {"repetitions", "0 4 1 4\n", "0 9 1 4\n", "repetitions of a knot"},
        {"too few poles", "exactcur nubs 4 open 2\n0 4 1 4", "exactcur nubs 25 open 2\n0 25 1 25",
         "fields left in the record"},
        {"surface without a spline", "exactsur nubs", "exactsur nullbs", "has no spline of its own"},
        {"surface knots", "open open none none 2 2", "open open none none 2 88888888", "number of knots"},
        {"reference to nothing", "{ exactcur nubs 4 open 2", "{ ref 77 }",
         "braces that the text does not have"},
        {"no braces", "{ exactcur", "exactcur", "opening brace"},
    };
    for (const DamagedSpline& damaged : cases) {
        std::string bad = text;
        const std::size_t place = bad.find(damaged.what);
        ASSERT_NE(place, std::string::npos) << damaged.rule;
        bad.replace(place, std::string(damaged.what).size(), damaged.by);
        const ReadResult result = ReadText(bad);
        EXPECT_TRUE(result.bodies.empty()) << damaged.rule;
        ASSERT_FALSE(result.problems.empty()) << damaged.rule;
        EXPECT_NE(result.problems[0].text.find(damaged.told), std::string::npos)
            << damaged.rule << ": " << result.problems[0].text;
    }
}

TEST(FreeFormReading, SurvivesDamagedBytesAndFields) {
    std::mt19937 random(4711);
    const std::string texts[] = {Joined(WriteText(Moulding())), Joined(WriteText(Vase())),
                                 Joined(WriteText(CamFitting()))};
    const std::string bytes = "$#- 0123456789.eEIFx@\n{}";
    const std::string words[] = {"{",  "}", "ref", "nubs",   "nurbs", "full",
                                 "-1", "0", "1e9", "1e-300", "$3",    "2"};
    const auto begin = std::chrono::steady_clock::now();
    for (int round = 0; round < 900; ++round) {
        std::string text = texts[static_cast<std::size_t>(round) % std::size(texts)];
        const int changes = 1 + static_cast<int>(random() % 4);
        for (int i = 0; i < changes; ++i) {
            const std::size_t place = random() % text.size();
            if (round % 2 == 0) {
                text[place] = bytes[random() % bytes.size()];
                continue;
            }
            const std::size_t from = text.find_first_of(" \n", place);
            if (from == std::string::npos) continue;
            const std::size_t to = std::min(text.find_first_of(" \n", from + 1), text.size());
            text.replace(from + 1, to - from - 1, words[random() % std::size(words)]);
        }
        for (const TopoDS_Shape& body : ReadText(text).bodies) {
            try {
                WriteText(body);
            } catch (const WriteFailure&) {
                // A body of damaged text may be one that cannot be written.
            }
        }
    }
    const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - begin;
    std::printf("900 damaged texts: %.1f s\n", spent.count());
}

TEST(FreeFormReading, IsFast) {
    const std::string text = Joined(WriteText(CamFitting()));
    double fastest = 1e9;
    for (int round = 0; round < 5; ++round) {
        const auto begin = std::chrono::steady_clock::now();
        ASSERT_EQ(ReadText(text).bodies.size(), 1u);
        const std::chrono::duration<double, std::milli> spent = std::chrono::steady_clock::now() - begin;
        fastest = std::min(fastest, spent.count());
    }
    std::printf("a panel with a cam fitting: %.2f ms\n", fastest);
}

}  // namespace
}  // namespace brenvik::acis::testing
