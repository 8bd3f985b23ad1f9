// Free edges and faces: bores that cross leave a spline where they meet, and imported parts bring surfaces
// that are nothing but splines. They are written exactly and come back as they were.
#include "free_shapes.h"

namespace brenvik::acis::testing {
namespace {

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
    if (std::system("/usr/bin/python3 -c 'import ezdxf.acis.api' 2>/dev/null") != 0)
        GTEST_SKIP() << "no independent reader of ACIS text is installed";
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
    for (int i = 1; i <= 2; ++i)
        for (int j = 1; j <= 3; ++j) poles(i, j) = gp_Pnt(8 * (i - 1), 4 * (j - 1), j == 2 ? 3 : 0);
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

}  // namespace
}  // namespace brenvik::acis::testing
