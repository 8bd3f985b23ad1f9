// A board's sizes are its own, however it stands.
#include "drafting_host/solids/measure.h"

#include <gtest/gtest.h>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepFilletAPI_MakeFillet.hxx>
#include <BRepOffsetAPI_ThruSections.hxx>
#include <BRep_Builder.hxx>
#include <GC_MakeArcOfCircle.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <gp_Elips.hxx>

#include <cmath>
#include <numbers>
#include <string>

#include "solids/parts.h"

namespace brenvik::solids {
namespace {

using namespace test;

struct PartCase {
    std::string name;
    TopoDS_Shape shape;
    std::array<double, 3> square;  // along X, Y, Z as drawn
    std::array<double, 3> turned;  // sorted, at an odd angle

    friend void PrintTo(const PartCase& each, std::ostream* out) { *out << each.name; }
};

TopoDS_Shape ArchedPanel() {
    // 600 wide, straight to 400, then an arc that rises to 500.
    const gp_Pnt a(0, 0, 0), b(600, 0, 0), c(600, 400, 0), top(300, 500, 0), d(0, 400, 0);
    BRepBuilderAPI_MakeWire wire;
    wire.Add(BRepBuilderAPI_MakeEdge(a, b));
    wire.Add(BRepBuilderAPI_MakeEdge(b, c));
    wire.Add(BRepBuilderAPI_MakeEdge(GC_MakeArcOfCircle(c, top, d).Value()));
    wire.Add(BRepBuilderAPI_MakeEdge(d, a));
    return BRepPrimAPI_MakePrism(BRepBuilderAPI_MakeFace(wire.Wire()).Face(), gp_Vec(0, 0, 19)).Shape();
}

TopoDS_Shape TurnedLeg(bool flatEnds) {
    // A spindle of 700: straight foot of 20, a bulge by an arc, radius 30 at most.
    const double end = flatEnds ? 20 : 0;
    BRepBuilderAPI_MakeWire profile;
    const gp_Pnt low(end, 0, 0), high(end, 0, 700);
    profile.Add(BRepBuilderAPI_MakeEdge(GC_MakeArcOfCircle(low, gp_Pnt(30, 0, 350), high).Value()));
    if (flatEnds) {
        profile.Add(BRepBuilderAPI_MakeEdge(high, gp_Pnt(0, 0, 700)));
        profile.Add(BRepBuilderAPI_MakeEdge(gp_Pnt(0, 0, 700), gp_Pnt(0, 0, 0)));
        profile.Add(BRepBuilderAPI_MakeEdge(gp_Pnt(0, 0, 0), low));
    } else {
        profile.Add(BRepBuilderAPI_MakeEdge(high, low));
    }
    return BRepPrimAPI_MakeRevol(BRepBuilderAPI_MakeFace(profile.Wire()).Face(), gp::OZ()).Shape();
}

TopoDS_Shape TaperedLeg() {
    BRepOffsetAPI_ThruSections loft(true, true);
    for (const auto& [half, height] : {std::pair(15.0, 0.0), std::pair(30.0, 700.0)}) {
        BRepBuilderAPI_MakePolygon square;
        for (const auto& [x, y] : {std::pair(-1, -1), std::pair(1, -1), std::pair(1, 1), std::pair(-1, 1)})
            square.Add(gp_Pnt(x * half, y * half, height));
        square.Close();
        loft.AddWire(square.Wire());
    }
    return loft.Shape();
}

TopoDS_Shape Bevelled() {
    // Both long edges ripped at 45 degrees, lying on its wide face.
    const TopoDS_Shape section = Prism({{0, 0}, {118, 0}, {100, 18}, {18, 18}}, 600);
    return Rotated(Rotated(section, gp_Ax1(gp_Pnt(), gp::DX()), std::numbers::pi / 2),
                   gp_Ax1(gp_Pnt(), gp::DZ()), std::numbers::pi / 2);
}

TopoDS_Shape RoundedBoard() {
    const TopoDS_Shape board = Board(600, 400, 18);
    BRepFilletAPI_MakeFillet rounding(board);
    for (TopExp_Explorer edge(board, TopAbs_EDGE); edge.More(); edge.Next())
        rounding.Add(3, TopoDS::Edge(edge.Current()));
    return rounding.Shape();
}

TopoDS_Shape NotchedBoard() {
    TopoDS_Shape board = Board(600, 150, 18);
    for (int notch = 0; notch < 5; ++notch) {
        const TopoDS_Shape cut = Moved(Board(40, 30, 40), gp_Vec(60 + notch * 110, 120, -10));
        board = BRepAlgoAPI_Cut(board, cut).Shape();
        board = BRepAlgoAPI_Cut(board, Moved(cut, gp_Vec(0, -120, 0))).Shape();
    }
    return board;
}

std::vector<PartCase> Parts() {
    const double gussetHeight = 300.0 * 400.0 / 500.0;
    return {
        {"board", Board(600, 400, 18), {600, 400, 18}, {600, 400, 18}},
        {"cube", Board(100, 100, 100), {100, 100, 100}, {100, 100, 100}},
        {"square panel", Board(400, 400, 18), {400, 400, 18}, {400, 400, 18}},
        {"drilled board", DrilledBoard(600, 400, 18, 20), {600, 400, 18}, {600, 400, 18}},
        {"mitred rail", Prism({{0, 0}, {600, 0}, {540, 60}, {60, 60}}, 20), {600, 60, 20}, {600, 60, 20}},
        {"arched panel", ArchedPanel(), {600, 500, 19}, {600, 500, 19}},
        {"notched board", NotchedBoard(), {600, 150, 18}, {600, 150, 18}},
        {"rounded board", RoundedBoard(), {600, 400, 18}, {600, 400, 18}},
        {"bevelled board", Bevelled(), {600, 118, 18}, {600, 118, 18}},
        {"gusset", Prism({{0, 0}, {400, 0}, {0, 300}}, 18), {400, 300, 18}, {500, gussetHeight, 18}},
        {"two lumps", TwoPieces(), {600, 200, 18}, {600, 200, 18}},
        {"disc", BRepPrimAPI_MakeCylinder(200, 25).Shape(), {400, 400, 25}, {400, 400, 25}},
        {"dowel", BRepPrimAPI_MakeCylinder(4, 30).Shape(), {8, 8, 30}, {30, 8, 8}},
        {"cone", BRepPrimAPI_MakeCone(30, 10, 700).Shape(), {60, 60, 700}, {700, 60, 60}},
        {"pointed cone", BRepPrimAPI_MakeCone(30, 0, 70).Shape(), {60, 60, 70}, {70, 60, 60}},
        {"ball", BRepPrimAPI_MakeSphere(25).Shape(), {50, 50, 50}, {50, 50, 50}},
        {"half ball",
         BRepPrimAPI_MakeSphere(25, 0, std::numbers::pi / 2).Shape(),
         {50, 50, 25},
         {50, 50, 25}},
        {"ring", BRepPrimAPI_MakeTorus(40, 10).Shape(), {100, 100, 20}, {100, 100, 20}},
        {"turned leg", TurnedLeg(true), {60, 60, 700}, {700, 60, 60}},
        {"pointed leg", TurnedLeg(false), {60, 60, 700}, {700, 60, 60}},
    };
}

void ExpectSizes(const std::array<double, 3>& found, const std::array<double, 3>& wanted, double margin) {
    for (std::size_t side = 0; side < 3; ++side)
        EXPECT_NEAR(found[side], wanted[side], margin) << "side " << side;
}

std::array<double, 3> AsArray(const Extents& extents) { return {extents.d1, extents.d2, extents.d3}; }

class MeasuredParts : public ::testing::TestWithParam<PartCase> {};

TEST_P(MeasuredParts, SquarePartGivesExtentsAlongTheAxes) {
    const Extents extents = MeasureShape(GetParam().shape);
    EXPECT_EQ(extents.status, measure_status::Square);
    ExpectSizes(AsArray(extents), GetParam().square, 1e-10);
}

TEST_P(MeasuredParts, QuarterTurnsExchangeTheExtentsExactly) {
    const auto [x, y, z] = AsArray(MeasureShape(GetParam().shape));
    const gp_Ax1 upright(gp_Pnt(10, 20, 30), gp::DZ());
    const Extents about = MeasureShape(Rotated(GetParam().shape, upright, std::numbers::pi / 2));
    EXPECT_EQ(about.status, measure_status::Square);
    ExpectSizes(AsArray(about), {y, x, z}, 1e-10);
    const Extents tilted =
        MeasureShape(Rotated(GetParam().shape, gp_Ax1(gp_Pnt(), gp::DX()), std::numbers::pi / 2));
    EXPECT_EQ(tilted.status, measure_status::Square);
    ExpectSizes(AsArray(tilted), {x, z, y}, 1e-10);
}

TEST_P(MeasuredParts, PartAtAnyAngleGivesItsTrueSizes) {
    for (const double angle : {0.1, 0.7, 1.9, 4.0}) {
        const Extents extents = MeasureShape(Transformed(GetParam().shape, OddPlace(angle)));
        EXPECT_GT(extents.status, 0);
        ExpectSizes(Sorted(extents), GetParam().turned, 1e-9);
    }
}

TEST_P(MeasuredParts, MirroredPartKeepsItsSizes) {
    const TopoDS_Shape mirrored = Mirrored(GetParam().shape, gp_Ax2(gp_Pnt(5, 5, 5), gp::DX()));
    ExpectSizes(AsArray(MeasureShape(mirrored)), GetParam().square, 1e-10);
}

TEST_P(MeasuredParts, LocationOfThePartDoesNotMatter) {
    const TopoDS_Shape located = GetParam().shape.Located(TopLoc_Location(OddPlace()));
    ExpectSizes(Sorted(MeasureShape(located)), GetParam().turned, 1e-9);
}

INSTANTIATE_TEST_SUITE_P(Parts, MeasuredParts, ::testing::ValuesIn(Parts()), [](const auto& part) {
    std::string name = part.param.name;
    std::ranges::replace(name, ' ', '_');
    return name;
});

TEST(Measure, TypedInNumbersComeBackToTheLastBit) {
    const Extents extents = MeasureShape(Board(596.3, 381.7, 18.9));
    EXPECT_EQ(extents.d1, 596.3);
    EXPECT_EQ(extents.d2, 381.7);
    EXPECT_EQ(extents.d3, 18.9);
}

TEST(Measure, BoardTurnedInPlanGivesLengthWidthThickness) {
    const TopoDS_Shape board = Rotated(Board(600, 400, 18), gp_Ax1(gp_Pnt(), gp::DZ()), 0.5);
    const Extents extents = MeasureShape(board);
    EXPECT_EQ(extents.status, measure_status::OwnFrame);
    EXPECT_NEAR(extents.d1, 600, 1e-10);
    EXPECT_NEAR(extents.d2, 400, 1e-10);
    EXPECT_NEAR(extents.d3, 18, 1e-10);
}

TEST(Measure, MitredRailOnTheDiagonalIsNotSquare) {
    // Its mitres lie along X and Y, yet the board does not.
    const TopoDS_Shape rail = Prism({{0, 0}, {600, 0}, {540, 60}, {60, 60}}, 20);
    const Extents extents = MeasureShape(Rotated(rail, gp_Ax1(gp_Pnt(), gp::DZ()), std::numbers::pi / 4));
    EXPECT_EQ(extents.status, measure_status::OwnFrame);
    EXPECT_NEAR(extents.d1, 600, 1e-9);
    EXPECT_NEAR(extents.d2, 60, 1e-9);
}

TEST(Measure, GussetWithClippedCornersIsSquare) {
    const TopoDS_Shape gusset = Prism({{20, 0}, {400, 0}, {400, 20}, {20, 300}, {0, 300}, {0, 20}}, 18);
    const Extents extents = MeasureShape(gusset);
    EXPECT_EQ(extents.status, measure_status::Square);
    ExpectSizes(AsArray(extents), {400, 300, 18}, 1e-10);
}

TEST(Measure, TriangularGlueBlockOnTheAxesIsSquare) {
    const Extents extents = MeasureShape(Prism({{0, 0}, {50, 0}, {0, 50}}, 600));
    EXPECT_EQ(extents.status, measure_status::Square);
    ExpectSizes(AsArray(extents), {50, 50, 600}, 1e-10);
}

TEST(Measure, UprightLegTaperedOnFourSidesIsSquare) {
    const Extents extents = MeasureShape(TaperedLeg());
    EXPECT_EQ(extents.status, measure_status::Square);
    ExpectSizes(AsArray(extents), {60, 60, 700}, 1e-10);
}

/// A dish of 20 x 4.85, round all over, with one small facet ground into its rim at 45 degrees.
TopoDS_Shape DishWithFacet() {
    BRepBuilderAPI_MakeWire profile;
    const gp_Pnt foot(0, 0, 0), rim(10, 0, 4), head(9, 0, 4.5), well(0, 0, 1);
    profile.Add(BRepBuilderAPI_MakeEdge(GC_MakeArcOfCircle(foot, gp_Pnt(7, 0, 1), rim).Value()));
    profile.Add(BRepBuilderAPI_MakeEdge(GC_MakeArcOfCircle(rim, gp_Pnt(9.7, 0, 4.4), head).Value()));
    profile.Add(BRepBuilderAPI_MakeEdge(GC_MakeArcOfCircle(head, gp_Pnt(6.5, 0, 2), well).Value()));
    profile.Add(BRepBuilderAPI_MakeEdge(well, foot));
    const TopoDS_Shape dish =
        BRepPrimAPI_MakeRevol(BRepBuilderAPI_MakeFace(profile.Wire()).Face(), gp::OZ()).Shape();
    const gp_Ax2 facet(gp_Pnt(6.2, 0, -0.6), gp_Dir(1, 0, -1));
    const TopoDS_Shape grinder =
        BRepPrimAPI_MakeBox(gp_Ax2(facet.Location().Translated(gp_Vec(facet.XDirection()) * -20 -
                                                               gp_Vec(facet.YDirection()) * 20),
                                   facet.Direction(), facet.XDirection()),
                            40, 40, 40)
            .Shape();
    return BRepAlgoAPI_Cut(dish, grinder).Shape();
}

TEST(Measure, ARoundDishIsNotTippedOverByItsOnlyFacet) {
    const TopoDS_Shape dish = DishWithFacet();
    const auto sizes = Sorted(MeasureShape(dish));
    EXPECT_NEAR(sizes[0], 20, 1e-6);
    EXPECT_NEAR(sizes[1], 20, 1e-6);
    EXPECT_NEAR(sizes[2], 4.85, 0.01);
}

TEST(Measure, EllipticTopTakesTheSmallestRectangle) {
    const gp_Elips outline(gp_Ax2(gp_Pnt(0, 0, 0), gp::DZ(), gp_Dir(1, 1, 0)), 500, 300);
    const TopoDS_Face face =
        BRepBuilderAPI_MakeFace(BRepBuilderAPI_MakeWire(BRepBuilderAPI_MakeEdge(outline)).Wire());
    const TopoDS_Shape top = BRepPrimAPI_MakePrism(face, gp_Vec(0, 0, 25)).Shape();
    ExpectSizes(Sorted(MeasureShape(top)), {1000, 600, 25}, 1e-9);
    ExpectSizes(Sorted(MeasureShape(Transformed(top, OddPlace()))), {1000, 600, 25}, 1e-9);
}

TEST(Measure, OutcomeDoesNotDependOnThePlace) {
    const TopoDS_Shape board = Transformed(DrilledBoard(600, 400, 18, 5), OddPlace());
    const Extents here = MeasureShape(board);
    const Extents there = MeasureShape(Moved(board, gp_Vec(10000, -20000, 500)));
    ExpectSizes(AsArray(there), AsArray(here), 1e-9);
}

TEST(Measure, NothingToMeasureGivesStatusZero) {
    EXPECT_EQ(MeasureShape(TopoDS_Shape()).status, measure_status::Nothing);
    TopoDS_Compound empty;
    BRep_Builder().MakeCompound(empty);
    EXPECT_EQ(MeasureShape(empty).status, measure_status::Nothing);
    EXPECT_EQ(MeasureShape(BRepBuilderAPI_MakeEdge(gp_Pnt(0, 0, 0), gp_Pnt(1, 0, 0)).Shape()).status,
              measure_status::Nothing);
}

TEST(Measure, CoordinatesThatAreNoNumbersGiveANegativeStatus) {
    TopoDS_Shape board = Board(10, 10, 10);
    TopoDS_Shape broken = Moved(board, gp_Vec(std::nan(""), 0, 0));
    EXPECT_LE(MeasureShape(broken).status, 0);
}

}  // namespace
}  // namespace brenvik::solids
