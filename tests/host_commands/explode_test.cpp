// EXPLODE: what solids, regions, bodies, polylines and block references fall apart into.
#include <BRepAlgoAPI_Cut.hxx>
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Wire.hxx>
#include <gp_Circ.hxx>
#include <map>

#include "command_fixture.h"
#include "drafting_host/solids/mass.h"

namespace brenvik {
namespace {

class Exploding : public CommandTest {
  protected:
    std::map<std::string, int> Kinds() {
        std::map<std::string, int> kinds;
        for (const HostEntity* entity : Entities()) ++kinds[std::string(entity->ObjectName())];
        return kinds;
    }

    template <class Kind>
    std::vector<Kind*> All() {
        std::vector<Kind*> found;
        for (HostEntity* entity : Entities())
            if (auto* one = dynamic_cast<Kind*>(entity)) found.push_back(one);
        return found;
    }

    /// A panel 300 x 200 x 18 with a bore of radius 10 at (100, 80), to the given depth from the top.
    HostSolid& BoredPanel(double depth) {
        HostSolid& panel = BoxAt({0, 0, 0}, {300, 200, 18});
        HostSolid& bore = dynamic_cast<HostSolid&>(*Model().AddCylinder({100, 80, 18}, 10, 2 * depth));
        panel.Boolean(BooleanKind::Subtraction, bore);
        return panel;
    }
};

TEST_F(Exploding, ABoxGivesSixRegionsWithNormalsOutOfTheMaterial) {
    BoxAt({0, 0, 0}, {10, 20, 30});
    Type("Explode all  ");
    ExpectIdle();
    ASSERT_EQ(Entities().size(), 6u);
    for (HostRegion* region : All<HostRegion>()) {
        const Box3 box = region->GetBoundingBox();
        const Point3 normal = region->Normal();
        const double from[3] = {box.min.x, box.min.y, box.min.z}, to[3] = {box.max.x, box.max.y, box.max.z};
        const double component[3] = {normal.x, normal.y, normal.z};
        for (int axis = 0; axis < 3; ++axis) {
            const double wanted = from[axis] != to[axis] ? 0 : from[axis] == 0 ? -1 : 1;
            EXPECT_EQ(component[axis], wanted);
            EXPECT_FALSE(component[axis] == 0 && std::signbit(component[axis]));
        }
    }
    EXPECT_EQ(All<HostRegion>().size(), 6u);
}

TEST_F(Exploding, ResultsTakeLayerAndColourButNoData) {
    HostSolid& solid = BoxAt({0, 0, 0}, {10, 20, 30});
    NewLayer("Cases");
    solid.SetLayer("Cases");
    solid.SetColor(3);
    SetText(solid, "PartName", "Side");
    Type("x all  ");
    for (const HostEntity* piece : Entities()) {
        EXPECT_EQ(piece->Layer(), "Cases");
        EXPECT_EQ(piece->Color(), 3);
        EXPECT_EQ(TextOf(*piece, "PartName"), "");
    }
    EXPECT_EQ(Entities().size(), 6u);
}

TEST_F(Exploding, TakesItsAnswersFromSeveralCalls) {
    BoxAt({0, 0, 0}, {10, 20, 30});
    Type("explode");
    Type("\rall");
    EXPECT_EQ(Entities().size(), 1u);
    Type("\r\r");
    EXPECT_EQ(Entities().size(), 6u);
    ExpectIdle();
}

TEST_F(Exploding, ARegionGivesItsLinesWithItsNormalAndExactEnds) {
    const Box3 box = BoxAt({0.1, 0.2, 0.3}, {10.7, 20.9, 30.11}).GetBoundingBox();
    Type("explode all  explode\rall\r\r");
    EXPECT_EQ(Kinds(), (std::map<std::string, int>{{"AcDbLine", 24}}));
    std::map<double, int> upright;
    for (HostLine* line : All<HostLine>()) {
        for (const Point3& p : {line->StartPoint(), line->EndPoint()}) {
            EXPECT_TRUE(p.x == box.min.x || p.x == box.max.x) << p.x;
            EXPECT_TRUE(p.y == box.min.y || p.y == box.max.y) << p.y;
            EXPECT_TRUE(p.z == box.min.z || p.z == box.max.z) << p.z;
        }
        ++upright[line->Normal().z];
    }
    EXPECT_EQ(upright, (std::map<double, int>{{-1, 4}, {0, 16}, {1, 4}}));
}

TEST_F(Exploding, AThroughBoreGivesABodyAndRimsAsCircles) {
    BoredPanel(18);
    Type("explode all  ");
    EXPECT_EQ(Kinds(), (std::map<std::string, int>{{"AcDbRegion", 6}, {"AcDbBody", 1}}));
    Type("explode all  ");
    EXPECT_EQ(Kinds(), (std::map<std::string, int>{{"AcDbLine", 24}, {"AcDbCircle", 4}}));
    std::map<std::pair<double, double>, int> rims;
    for (HostCircle* circle : All<HostCircle>()) {
        EXPECT_EQ(circle->Radius(), 10);
        EXPECT_EQ(circle->Center().x, 100);
        EXPECT_EQ(circle->Center().y, 80);
        EXPECT_EQ(circle->Normal().x, 0);
        EXPECT_EQ(circle->Normal().y, 0);
        ++rims[{circle->Center().z, circle->Normal().z}];
    }
    // The faces look out of the material, the wall's rims look up.
    EXPECT_EQ(rims, (std::map<std::pair<double, double>, int>{{{0, -1}, 1}, {{0, 1}, 1}, {{18, 1}, 2}}));
}

TEST_F(Exploding, ABlindBoreHasItsFloorAsARegion) {
    BoredPanel(12);
    Type("explode all  ");
    EXPECT_EQ(Kinds(), (std::map<std::string, int>{{"AcDbRegion", 7}, {"AcDbBody", 1}}));
    int floors = 0;
    for (HostRegion* region : All<HostRegion>()) {
        if (region->GetBoundingBox().min.z != 6) continue;
        ++floors;
        EXPECT_EQ(region->Normal().z, 1);
        EXPECT_NEAR(region->Area(), std::numbers::pi * 100, 1e-9);
    }
    EXPECT_EQ(floors, 1);
}

TEST_F(Exploding, RimsOfTwoHalfCirclesComeAsOneCircle) {
    // A bore as other programs write it: two half walls.
    const gp_Circ circle(gp_Ax2(gp_Pnt(100, 80, 0), gp_Dir(0, 0, 1)), 10);
    const TopoDS_Wire rim = BRepBuilderAPI_MakeWire(
        BRepBuilderAPI_MakeEdge(circle, 0, std::numbers::pi).Edge(),
        BRepBuilderAPI_MakeEdge(circle, std::numbers::pi, 2 * std::numbers::pi).Edge());
    BRepPrimAPI_MakePrism bore(BRepBuilderAPI_MakeFace(rim).Face(), gp_Vec(0, 0, 18));
    HostSolid& panel = BoxAt({0, 0, 0}, {300, 200, 18});
    BRepAlgoAPI_Cut cut(panel.Shape(), bore.Shape());
    const TopoDS_Shape bored = TopExp_Explorer(cut.Shape(), TopAbs_SOLID).Current();
    panel.SetShape(bored);
    Type("explode all  ");
    EXPECT_EQ(Kinds(), (std::map<std::string, int>{{"AcDbRegion", 6}, {"AcDbBody", 1}}));
    Type("explode all  ");
    EXPECT_EQ(Kinds(), (std::map<std::string, int>{{"AcDbLine", 24}, {"AcDbCircle", 4}}));
    for (HostCircle* one : All<HostCircle>()) {
        EXPECT_EQ(one->Radius(), 10);
        EXPECT_EQ(one->Center().x, 100);
    }
}

TEST_F(Exploding, ARegionOfTwoHalfCirclesIsOneCircle) {
    const gp_Circ circle(gp_Ax2(gp_Pnt(1, 2, 3), gp_Dir(0, 0, 1)), 5);
    const TopoDS_Wire rim = BRepBuilderAPI_MakeWire(
        BRepBuilderAPI_MakeEdge(circle, 0, std::numbers::pi).Edge(),
        BRepBuilderAPI_MakeEdge(circle, std::numbers::pi, 2 * std::numbers::pi).Edge());
    document.CurrentSpace().AddRegionShape(BRepBuilderAPI_MakeFace(rim).Face());
    Type("explode all  ");
    EXPECT_EQ(Kinds(), (std::map<std::string, int>{{"AcDbCircle", 1}}));
    ExpectExact(All<HostCircle>().front()->Center(), {1, 2, 3});
}

TEST_F(Exploding, StraightEdgesOfABodyHaveALevelNormalAcross) {
    // The rounded upright corner of a panel.
    Type("cylinder 0,0,0 10 18 box 0,0,0 20,20,18 intersect all  explode all  ");
    EXPECT_EQ(Kinds(), (std::map<std::string, int>{{"AcDbRegion", 4}, {"AcDbBody", 1}}));
    for (HostRegion* region : All<HostRegion>()) region->Delete();
    Type("explode all  ");
    EXPECT_EQ(Kinds(), (std::map<std::string, int>{{"AcDbLine", 2}, {"AcDbArc", 2}}));
    for (HostLine* line : All<HostLine>()) ExpectExact(line->Normal(), {1, 0, 0});
    for (HostArc* arc : All<HostArc>()) {
        ExpectExact(arc->Normal(), {0, 0, 1});
        EXPECT_EQ(arc->Radius(), 10);
        ExpectExact(arc->StartPoint(), {10, 0, arc->Center().z});
        ExpectExact(arc->EndPoint(), {0, 10, arc->Center().z});
    }
}

TEST_F(Exploding, ABodyWithoutBordersStaysAndIsTold) {
    Type("cylinder 0,0,0 10 18 ");
    document.CurrentSpace().AddBody(Solid(0).Shape());
    Solid(0).Delete();
    Type("explode all  ");
    EXPECT_EQ(Kinds(), (std::map<std::string, int>{{"AcDbCircle", 2}}));
    Type("explode all  ");
    EXPECT_TRUE(Told("2 could not be exploded."));
    EXPECT_EQ(Entities().size(), 2u);
}

TEST_F(Exploding, CurvesStayAsTheyAre) {
    Model().AddLine({0, 0, 0}, {1, 0, 0});
    Model().AddCircle({0, 0, 0}, 1);
    Model().AddArc({0, 0, 0}, 1, 0, 1);
    const std::vector<HostEntity*> before = Entities();
    Type("explode all  ");
    EXPECT_EQ(Entities(), before);
    EXPECT_TRUE(Told("3 could not be exploded."));
}

TEST_F(Exploding, PolylinesAndBlockReferencesGiveWhatTheyHold) {
    Model().AddLightWeightPolyline(std::vector<double>{0, 0, 10, 0, 10, 10});
    BlockData record;
    record.name = "Pair";
    HostBlock& block = document.AddBlock(record);
    block.AddLine({0, 0, 0}, {0, 0, 5});
    block.AddCircle({0, 0, 0}, 2);
    document.CurrentSpace().InsertBlock({100, 0, 0}, "Pair");
    Type("explode all  ");
    EXPECT_EQ(Kinds(), (std::map<std::string, int>{{"AcDbLine", 3}, {"AcDbCircle", 1}}));
    ExpectExact(All<HostCircle>().front()->Center(), {100, 0, 0});
}

TEST_F(Exploding, AllLeavesLockedLayersAlone) {
    NewLayer("Keep");
    HostSolid& kept = BoxAt({0, 0, 0}, {1, 1, 1});
    kept.SetLayer("Keep");
    document.LayerTable().Find("Keep")->SetLock(true);
    BoxAt({5, 0, 0}, {6, 1, 1});
    Type("Explode all  ");
    EXPECT_EQ(Kinds(), (std::map<std::string, int>{{"AcDb3dSolid", 1}, {"AcDbRegion", 6}}));
    EXPECT_TRUE(Told("2 found, 1 in all; 1 on a locked layer."));
}

TEST_F(Exploding, PiecesFollowTheOrderOfTheirSources) {
    BoxAt({0, 0, 0}, {1, 1, 1});
    BoxAt({5, 0, 0}, {6, 1, 1});
    Type("explode all  ");
    ASSERT_EQ(Entities().size(), 12u);
    for (std::size_t i = 0; i < 12; ++i) EXPECT_EQ(Entities()[i]->GetBoundingBox().min.x >= 5, i >= 6);
}

TEST_F(Exploding, ThePiecesOfATurnedPartKeepItsPlace) {
    BoredPanel(12);
    Type("rotate3d all  z 0,0,0 90 explode all  explode all  ");
    for (HostCircle* circle : All<HostCircle>()) {
        EXPECT_EQ(circle->Center().x, -80);
        EXPECT_EQ(circle->Center().y, 100);
        EXPECT_EQ(circle->Radius(), 10);
        EXPECT_EQ(std::abs(circle->Normal().z), 1);
    }
    for (HostLine* line : All<HostLine>()) {
        const Point3 n = line->Normal();
        EXPECT_EQ(std::abs(n.x) + std::abs(n.y) + std::abs(n.z), 1);
        EXPECT_TRUE(line->StartPoint().x == 0 || line->StartPoint().x == -200);
    }
}

}  // namespace
}  // namespace brenvik
