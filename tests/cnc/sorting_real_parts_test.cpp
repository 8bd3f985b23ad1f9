// Parts laid flat, projected and broken down on the real host: what stands on which layer at the end.
#include "cnc/alignment_fixture.h"
#include "cnc/sorting/profile.h"

namespace brenvik {
namespace {

class RealPartTest : public AlignmentTest {
  protected:
    /// Laid flat and sorted, as the first pass of a run does it.
    PassOutcome SortPart(Acad3DSolid& solid, const Pose& pose = {}) {
        const PassOutcome laid = AlignAt(solid, pose);
        return laid == PassOutcome::GoOn ? SortEdges(run) : laid;
    }
    std::vector<const AcadCircle*> CirclesOn(std::string_view layer) {
        std::vector<const AcadCircle*> found;
        for (const AcadCircle* circle : AllOn<AcadCircle>(*run.part.drawing, layer)) found.push_back(circle);
        return found;
    }
    std::size_t Count(std::string_view layer) { return CirclesOn(layer).size(); }
    void ExpectRim(std::string_view layer, double diameter, double z) {
        const auto hits = std::ranges::count_if(CirclesOn(layer), [&](const AcadCircle* circle) {
            return std::abs(circle->Diameter() - diameter) < 1e-7 && std::abs(circle->Center().z - z) < 1e-7;
        });
        EXPECT_EQ(hits, 1) << layer << ": " << diameter << " at " << z;
    }
    std::vector<std::size_t> LinesInside() {
        std::vector<std::size_t> heights;
        for (const AcadLine* line : AllOn<AcadLine>(*run.part.drawing, layers::BrenvikExplode)) {
            const double z = line->StartPoint().z;
            if (z > 1e-6 && z < run.part.PartThickness - 1e-6)
                heights.push_back(static_cast<std::size_t>(z + 0.5));
        }
        return heights;
    }
};

TEST_F(RealPartTest, SizesAndMaterialAreTaken) {
    app::Workpiece board = Board(600, 400, 18);
    ASSERT_EQ(SortPart(board.Solid()), PassOutcome::GoOn);
    EXPECT_EQ(run.part.PartThickness, 18);
    EXPECT_EQ(run.part.PartBottomZ, 0);
    EXPECT_NEAR(run.part.PartVolume, 600.0 * 400 * 18, 1e-6);
    EXPECT_EQ(run.part.MaterialName, "OAK");
}

TEST_F(RealPartTest, TheThicknessIsRoundedToAThirtySecondAsWell) {
    app::Workpiece board = Board(600, 400, 18.9);
    ASSERT_EQ(SortPart(board.Solid()), PassOutcome::GoOn);
    EXPECT_EQ(run.part.PartThickness, 18.9);
    EXPECT_EQ(run.part.QuarterThickness, 18.90625);
}

TEST_F(RealPartTest, APartWithoutMaterialHasAnUnknownOne) {
    app::Workpiece board = Board(600, 400, 18);
    GivePartData(board.Solid(), "Panel", "LWT", "");
    ASSERT_EQ(SortPart(board.Solid()), PassOutcome::GoOn);
    EXPECT_EQ(run.part.MaterialName, "UnknownMaterial");
}

TEST_F(RealPartTest, OnlyTheSolidAndCurvesAreLeft) {
    app::Workpiece board = Board(600, 400, 18);
    board.Drill({100, 100, 18}, app::Axis::Z, -10, 8);
    ASSERT_EQ(SortPart(board.Solid()), PassOutcome::GoOn);
    run.part.drawing->ModelSpace().ForEach([](AcadEntity& entity) {
        const std::string kind(entity.ObjectName());
        EXPECT_TRUE(kind == "AcDb3dSolid" || kind == "AcDbLine" || kind == "AcDbArc" || kind == "AcDbCircle")
            << kind << " on " << entity.Layer();
    });
    EXPECT_EQ(LastSolid(*run.part.drawing).Layer(), layers::SolidHold);
}

TEST_F(RealPartTest, HolesAndBoresAreSortedAtAnyAngle) {
    for (const Pose& pose : poses) {
        app::Workpiece board = Board(600, 400, 18);
        board.Drill({100, 100, 18}, app::Axis::Z, -10, 8);   // blind
        board.Drill({200, 100, 18}, app::Axis::Z, -18, 8);   // through
        board.Drill({300, 100, 0}, app::Axis::Z, 6, 5);      // from below
        board.Drill({100, 300, 18}, app::Axis::Z, -18, 60);  // a wide one through
        board.Drill({300, 300, 18}, app::Axis::Z, -8, 50);   // a wide one that stops
        board.Drill({0, 200, 9}, app::Axis::X, 30, 8);       // in an edge
        ASSERT_EQ(SortPart(board.Solid(), pose), PassOutcome::GoOn);
        EXPECT_EQ(Count(layers::MaxCircleHold), 2U);
        ExpectRim(layers::CircleHold, 8, 8);
        ExpectRim(layers::CircleHold, 8, 0);
        ExpectRim(layers::CircleHold, 5, 6);
        ExpectRim(layers::CircleHold, 5, 0);
        EXPECT_EQ(Count(layers::CircleHold), 4U);
        ExpectRim(layers::ThroughRouteCirclePv, 60, 0);
        EXPECT_EQ(Count(layers::ThroughRouteCirclePv), 1U);
        ExpectRim(layers::RouteCirclePv, 50, 10);
        EXPECT_EQ(Count(layers::RouteCirclePv), 1U);
        EXPECT_GE(Count(layers::HorzCircleHold), 2U);
        EXPECT_FALSE(run.part.NeedSecondSide);
        EXPECT_TRUE(run.part.unexplained.empty());
        run.part.drawing->Close(false);
        board.Solid().Delete();
    }
}

TEST_F(RealPartTest, AWideBoreFromBelowNeedsTheOtherSide) {
    app::Workpiece board = Board(600, 400, 18);
    board.Drill({100, 100, 18}, app::Axis::Z, -3, 8);
    board.Cut({300, -1, 14}, {320, 401, 30});
    board.Drill({500, 200, 0}, app::Axis::Z, 2, 50);
    ASSERT_EQ(SortPart(board.Solid()), PassOutcome::GoOn);
    // The face with less cut out of it lies down.
    EXPECT_TRUE(run.part.NeedSecondSide);
    EXPECT_TRUE(run.part.ThroughRouteSeen);
    EXPECT_EQ(Count(layers::RouteCirclePv), 0U);
}

TEST_F(RealPartTest, TheFloorOfAStoppedPocketIsLeftInsideThePart) {
    app::Workpiece board = Board(600, 400, 18);
    board.Cut({100, 100, 10}, {200, 180, 30});
    ASSERT_EQ(SortPart(board.Solid()), PassOutcome::GoOn);
    EXPECT_EQ(LinesInside(), (std::vector<std::size_t>{10, 10, 10, 10}));
}

TEST_F(RealPartTest, ASlantedHoleIsTold) {
    app::Workpiece board = Board(600, 400, 18);
    Acad3DSolid& drill = *document.ModelSpace().AddCylinder({0, 0, 0}, 4, 100);
    drill.Rotate3D({0, 0, 0}, {0, 1, 0}, 0.5);
    drill.Move({0, 0, 0}, {300, 200, 9});
    board.Solid().Boolean(BooleanKind::Subtraction, drill);
    ASSERT_EQ(SortPart(board.Solid()), PassOutcome::GoOn);
    ASSERT_EQ(run.part.unexplained.size(), 1U);
    EXPECT_EQ(run.part.unexplained[0].substr(0, 17), "slanted hole of 8");
}

TEST_F(RealPartTest, ASlantedHoleThatStopsIsToldOnce) {
    app::Workpiece board = Board(600, 400, 18);
    Acad3DSolid& drill = *document.ModelSpace().AddCylinder({0, 0, 50}, 4, 100);
    drill.Rotate3D({0, 0, 0}, {0, 1, 0}, 0.5);
    drill.Move({0, 0, 0}, {300, 200, 9});
    board.Solid().Boolean(BooleanKind::Subtraction, drill);
    ASSERT_EQ(SortPart(board.Solid()), PassOutcome::GoOn);
    EXPECT_EQ(run.part.unexplained.size(), 1U);
}

TEST_F(RealPartTest, ARoundedPocketLeavesItsFourArcsInsideThePart) {
    app::Workpiece board = Board(600, 400, 18);
    AddLayer(document, "Parts");
    AcadLWPolyline& contour = *document.ModelSpace().AddLightWeightPolyline(
        std::vector<double>{120, 100, 280, 100, 300, 120, 300, 180, 280, 200, 120, 200, 100, 180, 100, 120});
    contour.SetClosed(true);
    const double quarter = std::tan(std::numbers::pi / 8);
    for (const int vertex : {1, 3, 5, 7}) contour.SetBulge(vertex, quarter);
    AcadEntity* curve = &contour;
    AcadRegion& region = *document.ModelSpace().AddRegion(std::span(&curve, 1)).front();
    Acad3DSolid& tool = *document.ModelSpace().AddExtrudedSolid(region, region.Normal().z * 30, 0);
    tool.Move({0, 0, 0}, {0, 0, 10});
    board.Solid().Boolean(BooleanKind::Subtraction, tool);
    contour.Delete();
    region.Delete();
    ASSERT_EQ(SortPart(board.Solid()), PassOutcome::GoOn);
    EXPECT_EQ(LinesInside(), (std::vector<std::size_t>{10, 10, 10, 10}));
    std::size_t arcs = 0;
    for (const AcadArc* arc : AllOn<AcadArc>(*run.part.drawing, layers::BrenvikExplode))
        arcs += std::abs(arc->StartPoint().z - 10) < 1e-9 && std::abs(arc->Normal().z) == 1 ? 1 : 0;
    EXPECT_GE(arcs, 4U);
}

}  // namespace
}  // namespace brenvik
