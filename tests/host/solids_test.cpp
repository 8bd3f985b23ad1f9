// Solids, regions and their measuring through the host.
#include "host_fixture.h"

namespace brenvik {
namespace {

constexpr double pi = std::numbers::pi;

class Solids : public HostTest {
  protected:
    Acad3DSolid* Board() { return Model().AddBox({300, 200, 9}, 600, 400, 18); }
    struct Measure {
        double d1 = -1, d2 = -1, d3 = -1;
        int status = -1;
    };
    Measure MeasureOf(std::int32_t id) {
        Measure m;
        application.CreateMeasurer()->MeasureSolid(id, m.d1, m.d2, m.d3, m.status);
        return m;
    }
    AcadRegion* SquareRegion(double x, double y, double size) {
        AcadLWPolyline* outline = Model().AddLightWeightPolyline(
            std::vector<double>{x, y, x + size, y, x + size, y + size, x, y + size});
        outline->SetClosed(true);
        AcadEntity* curve = outline;
        AcadRegion* region = Model().AddRegion(std::span(&curve, 1)).front();
        outline->Delete();
        return region;
    }
};

TEST_F(Solids, ABoardHasTheTypedInNumbers) {
    Acad3DSolid* board = Board();
    ExpectBox(board->GetBoundingBox(), {0, 0, 0}, {600, 400, 18}, 0);
    EXPECT_EQ(board->Volume(), 600.0 * 400 * 18);
    ExpectNear(board->Centroid(), {300, 200, 9}, 1e-9);
    EXPECT_EQ(board->ObjectName(), "AcDb3dSolid");
}

TEST_F(Solids, AQuarterTurnLeavesNoRest) {
    Acad3DSolid* board = Board();
    board->Rotate3D({0, 0, 0}, {1, 0, 0}, pi / 2);
    ExpectBox(board->GetBoundingBox(), {0, -18, 0}, {600, 0, 400}, 0);
    board->Rotate({0, 0, 0}, -pi / 2);
    ExpectBox(board->GetBoundingBox(), {-18, -600, 0}, {0, 0, 400}, 0);
}

TEST_F(Solids, MovesScalesAndMirrors) {
    Acad3DSolid* board = Board();
    board->Move({0, 0, 0}, {0.5, -1, 2});
    ExpectBox(board->GetBoundingBox(), {0.5, -1, 2}, {600.5, 399, 20}, 0);
    board->ScaleEntity({0.5, -1, 2}, 2);
    EXPECT_NEAR(board->Volume(), 8 * 600.0 * 400 * 18, 1e-3);
    auto* mirrored = dynamic_cast<Acad3DSolid*>(board->Mirror({0, 0, 0}, {0, 1, 0}));
    ASSERT_NE(mirrored, nullptr);
    EXPECT_NEAR(mirrored->Volume(), board->Volume(), 1e-3);
    ExpectBox(mirrored->GetBoundingBox(), {-1200.5, -1, 2}, {-0.5, 799, 38}, 1e-9);
}

TEST_F(Solids, MeasuringGivesTheBoardAtAnyAngle) {
    Acad3DSolid* board = Board();
    Measure square = MeasureOf(board->ObjectID());
    EXPECT_GT(square.status, 0);
    EXPECT_EQ(square.d1, 600);
    EXPECT_EQ(square.d2, 400);
    EXPECT_EQ(square.d3, 18);
    board->Rotate3D({1, 2, 3}, {4, 1, 7}, 0.77);
    const Measure turned = MeasureOf(board->ObjectID());
    EXPECT_NEAR(turned.d1, 600, 1e-8);
    EXPECT_NEAR(turned.d2, 400, 1e-8);
    EXPECT_NEAR(turned.d3, 18, 1e-8);
}

TEST_F(Solids, WhatIsNoSolidMeasuresNothing) {
    for (const std::int32_t id : {Model().AddLine({0, 0, 0}, {1, 0, 0})->ObjectID(), 0, -5, 123456789}) {
        const Measure m = MeasureOf(id);
        EXPECT_LE(m.status, 0);
        EXPECT_EQ(m.d1, 0);
        EXPECT_EQ(m.d2, 0);
        EXPECT_EQ(m.d3, 0);
    }
}

TEST_F(Solids, ObjectIdsAreUniqueAmongDocumentsAndEndWithTheObject) {
    Acad3DSolid* board = Board();
    HostDocument& other = application.NewDocument();
    Acad3DSolid* second = other.ModelSpace().AddBox({0, 0, 0}, 1, 2, 3);
    EXPECT_NE(board->ObjectID(), second->ObjectID());
    EXPECT_EQ(MeasureOf(second->ObjectID()).d3, 3);
    const std::int32_t id = second->ObjectID(), first = board->ObjectID();
    other.Close(false);
    EXPECT_LE(MeasureOf(id).status, 0);
    board->Delete();
    EXPECT_LE(MeasureOf(first).status, 0);
    EXPECT_EQ(application.FindByObjectId(first), nullptr);
}

TEST_F(Solids, ASubtractionUsesTheToolUp) {
    Acad3DSolid* board = Board();
    Acad3DSolid* drill = Model().AddCylinder({100, 100, 9}, 5, 30);
    const std::string handle = drill->Handle();
    board->Boolean(BooleanKind::Subtraction, *drill);
    EXPECT_NEAR(board->Volume(), 600.0 * 400 * 18 - pi * 25 * 18, 1e-6);
    EXPECT_EQ(document.HandleToObject(handle), nullptr);
    EXPECT_EQ(Model().Count(), 1);
}

TEST_F(Solids, ASubtractionThatRemovesNothingKeepsTheLastBit) {
    Acad3DSolid* board = Board();
    board->Rotate3D({1, 2, 3}, {4, 1, 7}, 0.77);
    const double volume = board->Volume();
    const TopoDS_Shape shape = dynamic_cast<HostSolid&>(*board).Shape();
    board->Boolean(BooleanKind::Subtraction, *Model().AddBox({5000, 0, 0}, 1, 1, 1));
    EXPECT_EQ(board->Volume(), volume);
    EXPECT_TRUE(dynamic_cast<HostSolid&>(*board).Shape().IsEqual(shape));
}

TEST_F(Solids, UnionAndIntersection) {
    Acad3DSolid* one = Model().AddBox({0, 0, 0}, 2, 2, 2);
    one->Boolean(BooleanKind::Union, *Model().AddBox({1, 0, 0}, 2, 2, 2));
    EXPECT_NEAR(one->Volume(), 12, 1e-9);
    one->Boolean(BooleanKind::Intersection, *Model().AddBox({0, 0, 0}, 2, 2, 1));
    EXPECT_NEAR(one->Volume(), 4, 1e-9);
}

TEST_F(Solids, NothingLeftErasesTheSolid) {
    Acad3DSolid* one = Model().AddBox({0, 0, 0}, 2, 2, 2);
    one->Boolean(BooleanKind::Subtraction, *Model().AddBox({0, 0, 0}, 4, 4, 4));
    EXPECT_EQ(FailureOf([&] { one->Volume(); }).number(), host_failure_number::WasErased);
    EXPECT_EQ(Model().Count(), 0);
}

TEST_F(Solids, BooleansWithItselfAndOnLockedLayersAreRefused) {
    Acad3DSolid* one = Board();
    EXPECT_THROW(one->Boolean(BooleanKind::Subtraction, *one), Failure);
    HostLayer& locked = NewLayer("Locked");
    Acad3DSolid* other = Board();
    other->SetLayer("Locked");
    locked.SetLock(true);
    EXPECT_THROW(one->Boolean(BooleanKind::Subtraction, *other), Failure);
    EXPECT_EQ(Model().Count(), 2);
}

TEST_F(Solids, ASectionIsARegionAndFailsWhereThePlaneMisses) {
    Acad3DSolid* board = Board();
    board->Boolean(BooleanKind::Subtraction, *Model().AddCylinder({100, 100, 9}, 5, 30));
    AcadRegion* section = board->SectionSolid({0, 0, 9}, {1, 0, 9}, {0, 1, 9});
    ASSERT_NE(section, nullptr);
    EXPECT_EQ(section->ObjectName(), "AcDbRegion");
    EXPECT_NEAR(section->Area(), 600 * 400 - pi * 25, 1e-8);
    ExpectNear(section->Normal(), {0, 0, 1});
    EXPECT_THROW(board->SectionSolid({0, 0, 90}, {1, 0, 90}, {0, 1, 90}), Failure);
    EXPECT_THROW(board->SectionSolid({0, 0, 9}, {1, 0, 9}, {2, 0, 9}), Failure);
}

TEST_F(Solids, ARegionExplodesIntoItsBoundaryWithItsNormal) {
    Acad3DSolid* board = Board();
    board->Boolean(BooleanKind::Subtraction, *Model().AddCylinder({100, 100, 9}, 5, 30));
    AcadRegion* section = board->SectionSolid({0, 0, 9}, {1, 0, 9}, {0, 1, 9});
    const std::vector<AcadEntity*> curves = section->Explode();
    ASSERT_EQ(curves.size(), 5U);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(curves[static_cast<std::size_t>(i)]->ObjectName(), "AcDbLine");
    auto* circle = dynamic_cast<AcadCircle*>(curves[4]);
    ASSERT_NE(circle, nullptr);
    EXPECT_EQ(circle->Radius(), 5);
    ExpectNear(circle->Center(), {100, 100, 9});
    ExpectNear(circle->Normal(), {0, 0, 1});
}

TEST_F(Solids, ASectionThroughANotchedPartIsOneRegionOfTwoFaces) {
    Acad3DSolid* board = Board();
    board->Boolean(BooleanKind::Subtraction, *Model().AddBox({300, 200, 18}, 100, 1000, 10));
    AcadRegion* section = board->SectionSolid({0, 0, 15}, {1, 0, 15}, {0, 1, 15});
    EXPECT_NEAR(section->Area(), 2 * 250 * 400, 1e-8);
    EXPECT_EQ(section->Explode().size(), 2U);
}

TEST_F(Solids, RegionsOfClosedCurves) {
    const std::vector<AcadEntity*> curves{
        Model().AddLine({0, 0, 0}, {10, 0, 0}), Model().AddLine({10, 10, 0}, {10, 0, 0}),
        Model().AddLine({10, 10, 0}, {0, 10, 0}), Model().AddLine({0, 10, 0}, {0, 0, 0}),
        Model().AddCircle({50, 50, 0}, 2)};
    const std::vector<AcadRegion*> regions = Model().AddRegion(curves);
    ASSERT_EQ(regions.size(), 2U);
    EXPECT_NEAR(regions[0]->Area(), 100, 1e-9);
    EXPECT_NEAR(regions[1]->Area(), pi * 4, 1e-9);
    EXPECT_EQ(Model().Count(), 7);
}

TEST_F(Solids, NoRegionOfOpenCurvesOrOtherThings) {
    const std::vector<AcadEntity*> open{Model().AddLine({0, 0, 0}, {10, 0, 0}),
                                        Model().AddLine({10, 0, 0}, {10, 10, 0})};
    const std::vector<AcadEntity*> solid{Board()};
    EXPECT_THROW(Model().AddRegion(open), Failure);
    EXPECT_THROW(Model().AddRegion(solid), Failure);
    EXPECT_THROW(Model().AddRegion({}), Failure);
    EXPECT_EQ(Model().Count(), 3);
}

TEST_F(Solids, ExtrusionFollowsTheNormalAndKeepsTheRegion) {
    AcadRegion* region = SquareRegion(0, 0, 10);
    EXPECT_EQ(region->Normal().z, 1);
    Acad3DSolid* up = Model().AddExtrudedSolid(*region, 18, 0);
    Acad3DSolid* down = Model().AddExtrudedSolid(*region, -18, 0);
    ExpectBox(up->GetBoundingBox(), {0, 0, 0}, {10, 10, 18}, 0);
    ExpectBox(down->GetBoundingBox(), {0, 0, -18}, {10, 10, 0}, 0);
    EXPECT_NEAR(up->Volume(), 1800, 1e-9);
    EXPECT_NEAR(region->Area(), 100, 1e-9);
    EXPECT_THROW(Model().AddExtrudedSolid(*region, 0, 0), Failure);
    EXPECT_THROW(Model().AddExtrudedSolid(*region, 18, 0.1), Failure);
}

TEST_F(Solids, RegionBooleansWorkInOnePlaneOnly) {
    AcadRegion* one = SquareRegion(0, 0, 10);
    AcadRegion* other = SquareRegion(5, 0, 10);
    one->Boolean(BooleanKind::Union, *other);
    EXPECT_NEAR(one->Area(), 150, 1e-9);
    EXPECT_EQ(Model().Count(), 1);
    AcadRegion* far = SquareRegion(0, 0, 10);
    far->Move({0, 0, 0}, {0, 0, 5});
    EXPECT_THROW(one->Boolean(BooleanKind::Union, *far), Failure);
    AcadRegion* upright = SquareRegion(0, 0, 10);
    upright->Rotate3D({0, 0, 0}, {1, 0, 0}, pi / 2);
    EXPECT_THROW(one->Boolean(BooleanKind::Union, *upright), Failure);
    EXPECT_EQ(Model().Count(), 3);
}

}  // namespace
}  // namespace brenvik
