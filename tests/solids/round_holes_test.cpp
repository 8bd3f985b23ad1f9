// Holes taken out and put back: the outcome has to be the modeller's own.
#include "drafting_host/solids/round_holes.h"

#include <gtest/gtest.h>
#include <BRepAdaptor_Curve.hxx>
#include <BRepAlgoAPI_Common.hxx>
#include <BRepAlgoAPI_Fuse.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <gp_Circ.hxx>
#include <gp_Pln.hxx>
#include <numbers>

#include "drafting_host/solids/mass.h"
#include "drafting_host/solids/merging.h"
#include "drafting_host/solids/operations.h"
#include "drafting_host/solids/regions.h"
#include "solids/parts.h"

namespace brenvik::solids {
namespace {

using namespace test;
constexpr double pi = std::numbers::pi;

TopoDS_Shape Drill(const gp_Pnt& from, const gp_Dir& along, double radius, double depth) {
    return BRepPrimAPI_MakeCylinder(gp_Ax2(from, along), radius, depth).Shape();
}

/// A board with a blind hole from above, one from below, a through hole, one with a shoulder, a hole in an
/// edge, and a groove with a hole in its floor.
TopoDS_Shape MixedBoard() {
    TopoDS_Shape board = Board(600, 400, 18);
    for (const TopoDS_Shape& tool :
         {Moved(Board(620, 20, 10), gp_Vec(-10, 300, 12)), Drill({100, 100, 6}, gp::DZ(), 5, 20),
          Drill({200, 100, -1}, gp::DZ(), 4, 10), Drill({300, 100, -1}, gp::DZ(), 3, 20),
          Drill({400, 100, -1}, gp::DZ(), 3, 20), Drill({400, 100, 12}, gp::DZ(), 6, 20),
          Drill({-1, 200, 9}, gp::DX(), 4, 30), Drill({100, 310, 5}, gp::DZ(), 4, 20)})
        board = Boolean(board, tool, BooleanKind::Subtract);
    return board;
}

TopoDS_Face LevelFace(double z) {
    return BRepBuilderAPI_MakeFace(gp_Pln({0, 0, z}, gp::DZ()), -1000, 1000, -1000, 1000);
}

double AreaOf(const std::vector<TopoDS_Face>& faces) {
    double area = 0;
    for (const TopoDS_Face& face : faces) area += Area(face);
    return area;
}

int Edges(const TopoDS_Shape& shape) {
    TopTools_IndexedMapOfShape edges;
    TopExp::MapShapes(shape, TopAbs_EDGE, edges);
    return edges.Extent();
}

TEST(RoundHoles, PlainOnesAreFilled) {
    const TopoDS_Shape board = MixedBoard();
    const PluggedSolid plugged = PlugRoundHoles(board, [](const RoundHole&) { return true; });
    EXPECT_TRUE(BRepCheck_Analyzer(plugged.shape).IsValid());
    // The shoulder's two walls are no plain hole; its lower one is.
    ASSERT_EQ(plugged.holes.size(), 6U);
    double filled = 0;
    for (const RoundHole& hole : plugged.holes)
        filled += pi * hole.radius * hole.radius * hole.from.Distance(hole.to);
    EXPECT_NEAR(Volume(plugged.shape), Volume(board) + filled, 1e-6);
}

TEST(RoundHoles, OnlyTheWantedOnesAreFilled) {
    const TopoDS_Shape board = DrilledBoard(600, 400, 18, 12);
    const PluggedSolid plugged =
        PlugRoundHoles(board, [](const RoundHole& hole) { return hole.from.X() > 50; });
    EXPECT_EQ(plugged.holes.size(), 2U);
    const PluggedSolid same = PlugRoundHoles(board, [](const RoundHole&) { return false; });
    EXPECT_TRUE(same.shape.IsEqual(board));
    for (const RoundHole& hole : plugged.holes) EXPECT_TRUE(hole.openFrom && hole.openTo);
}

TEST(RoundHoles, PegsAndSeveralBodiesAreLeftAlone) {
    const TopoDS_Shape peg =
        Boolean(Board(600, 400, 18), Drill({100, 100, 10}, gp::DZ(), 5, 20), BooleanKind::Union);
    EXPECT_TRUE(PlugRoundHoles(peg, [](const RoundHole&) { return true; }).holes.empty());
    EXPECT_TRUE(PlugRoundHoles(TwoPieces(), [](const RoundHole&) { return true; }).holes.empty());
}

TEST(Section, OfADrilledBoardIsTheModellersAtAnyHeight) {
    const TopoDS_Shape board = MixedBoard();
    for (const double z : {0.0, 1e-3, 3.0, 5.0, 5.5, 6.0, 8.0, 9.0, 10.0, 12.0, 13.0, 15.0, 18.0}) {
        const auto faces = SectionByPlane(board, {0, 0, z}, {1, 0, z}, {1, 1, z});
        BRepAlgoAPI_Common common(board, LevelFace(z));
        const TopoDS_Shape expected = BordersMerged(common.Shape());
        EXPECT_NEAR(AreaOf(faces), Area(expected), 1e-6) << z;
        int edges = 0;
        for (const TopoDS_Face& face : faces) {
            EXPECT_TRUE(BRepCheck_Analyzer(face).IsValid()) << z;
            EXPECT_GT(NormalOf(face).Z(), 0) << z;
            edges += Edges(face);
        }
        // The modeller may leave the border of a floor that lies in the plane.
        EXPECT_LE(edges, Edges(expected)) << z;
        EXPECT_GE(edges, Edges(expected) - 1) << z;
    }
}

TEST(Section, AcrossTheHolesIsTheModellersToo) {
    const TopoDS_Shape board = DrilledBoard(600, 400, 18, 30);
    const auto faces = SectionByPlane(board, {37, 0, 0}, {37, 1, 0}, {37, 1, 1});
    EXPECT_NEAR(AreaOf(faces), 18 * (400 - 10 * 5.0), 1e-6);
    EXPECT_EQ(faces.size(), 11U);
    const auto beside = SectionByPlane(board, {50, 0, 0}, {50, 1, 0}, {50, 1, 1});
    EXPECT_NEAR(AreaOf(beside), 18 * 400.0, 1e-9);
}

TopoDS_Face Sheet(double x, double y, double width, double height,
                  const std::vector<RoundOpening>& openings) {
    const TopoDS_Face face =
        BRepBuilderAPI_MakeFace(gp_Pln({0, 0, 18}, gp::DZ()), x, x + width, y, y + height);
    return TopoDS::Face(WithOpenings(face, openings));
}

TEST(Union, OfRegionsWithRoundOpeningsIsTheModellers) {
    struct Case {
        const char* what;
        TopoDS_Face one, other;
    };
    const TopoDS_Face plain = Sheet(0, 0, 300, 200, {{{50, 50, 18}, 5}, {{250, 150, 18}, 10}});
    const Case cases[] = {
        {"the same openings", plain, plain},
        {"shared and covered", plain, Sheet(-10, -10, 200, 250, {{{50, 50, 18}, 5}, {{100, 50, 18}, 5}})},
        {"out of reach", plain, Sheet(-50, 0, 80, 80, {})},
        {"across the border", plain, Sheet(-50, 0, 100, 80, {})},
        {"touched by the border", plain, Sheet(-50, 0, 95, 80, {})},
        {"overlapping", plain, Sheet(0, 0, 300, 200, {{{52, 50, 18}, 5}})},
        {"one within the other", plain, Sheet(0, 0, 300, 200, {{{50, 50, 18}, 3}})},
        {"a disc within it", plain, TopoDS::Face(WithOpenings(Sheet(240, 140, 20, 20, {}), {}))},
        {"apart", plain, Sheet(1000, 0, 100, 100, {{{1050, 50, 18}, 5}})},
    };
    for (const Case& c : cases) {
        const TopoDS_Shape joined = Boolean(c.one, c.other, BooleanKind::Union);
        const TopoDS_Shape expected = BordersMerged(BRepAlgoAPI_Fuse(c.one, c.other).Shape());
        EXPECT_NEAR(Area(joined), Area(expected), 1e-6) << c.what;
        EXPECT_EQ(Edges(joined), Edges(expected)) << c.what;
        EXPECT_TRUE(BRepCheck_Analyzer(joined).IsValid()) << c.what;
    }
}

TEST(Union, KeepsAnIslandInARoundOpening) {
    const TopoDS_Shape rings =
        Boolean(Sheet(0, 0, 300, 200, {{{100, 100, 18}, 40}}), Sheet(90, 90, 20, 20, {}), BooleanKind::Union);
    const TopoDS_Shape all = Boolean(rings, Sheet(290, 0, 50, 50, {}), BooleanKind::Union);
    EXPECT_NEAR(Area(all), 300 * 200 - pi * 1600 + 400 + 40 * 50, 1e-6);
}

}  // namespace
}  // namespace brenvik::solids
