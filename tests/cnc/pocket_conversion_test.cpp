// Pockets that a through route meets, on the first pass and on the second.
#include "cnc/outline/pockets.h"
#include "cnc/outline/through_circles.h"
#include "cnc/outline_fixture.h"

namespace brenvik {
namespace {

class PocketTest : public OutlineTest {
  protected:
    AcadLWPolyline* Path(const std::vector<Corner>& shape, const std::string& layer) {
        std::vector<double> flat;
        for (const Corner& corner : shape) flat.insert(flat.end(), {corner.x, corner.y});
        AcadLWPolyline* path = Model().AddLightWeightPolyline(flat);
        path->SetClosed(true);
        AddLayer(document, layer);
        path->SetLayer(layer);
        return path;
    }
    AcadCircle* Circle(const Point3& center, double diameter, const std::string& layer) {
        AcadCircle* circle = Model().AddCircle(center, diameter / 2);
        AddLayer(document, layer);
        circle->SetLayer(layer);
        return circle;
    }
};

TEST_F(PocketTest, APocketThatEnclosesAThroughRouteBecomesARoute) {
    Set("PocketConversion", "1");
    Path(Rectangle(100, 100, 300, 300), "PKC_Zp5_T1_Dp25_S18000_F300_R_C0_2");
    Circle({400, 400, 18}, 80, "PKS_Z5_T1_D12_S18000_F300_R_C0_3");
    Path(Rectangle(150, 150, 250, 250), "RT_Z18p3_T1_D12_S18000_F300_R_C0_4");
    Path(Rectangle(390, 390, 410, 410), "RT_Z18p3_T1_D12_S18000_F300_R_C0_5");
    RunState run = RunOn(document);
    ConvertPockets(run);
    EXPECT_EQ(On("RT_Zp5_T1_Dp25_S18000_F300_R_C0_2").size(), 1U);
    EXPECT_EQ(On("RT_Z5_T1_D12_S18000_F300_R_C0_3").size(), 1U);
    EXPECT_TRUE(On("PK").empty());
    EXPECT_EQ(run.part.LastAddedLayer, "RT_Z5_T1_D12_S18000_F300_R_C0_3");
}

TEST_F(PocketTest, WithTheConversionOffTheNameStays) {
    Set("PocketConversion", "0");
    Path(Rectangle(100, 100, 300, 300), "PKC_Z5_T1");
    Path(Rectangle(150, 150, 250, 250), "RT_Z18p3_T1");
    RunState run = RunOn(document);
    ConvertPockets(run);
    EXPECT_EQ(On("PKC_Z5_T1").size(), 1U);
}

TEST_F(PocketTest, ARouteThatTouchesThePocketsEdgeIsNotEnclosed) {
    Set("PocketConversion", "1");
    Path(Rectangle(100, 100, 300, 300), "PKC_Z5_T1");
    Path(Rectangle(100, 150, 250, 250), "RT_Z18p3_T1");
    Path(Rectangle(50, 50, 350, 350), "RT_Z18p3_T2");
    RunState run = RunOn(document);
    ConvertPockets(run);
    EXPECT_EQ(On("PKC_Z5_T1").size(), 1U);
}

TEST_F(PocketTest, ThroughCirclesConvertPocketsToo) {
    Set("PocketConversion", "1");
    Path(Rectangle(100, 100, 300, 300), "PKC_Z5_T1");
    Circle({200, 200, 18}, 50, "RT_Z18p3_T1");
    RunState run = RunOn(document);
    ConvertPockets(run);
    EXPECT_TRUE(On("PKC").empty());
    EXPECT_EQ(On("RT_Z5_T1").size(), 1U);
}

TEST_F(PocketTest, ARouteThatStopsInsideLeavesThePocketToBeCleared) {
    Set("PocketConversion", "1");
    Path(Rectangle(100, 100, 300, 300), "PKC_Z5_T1");
    AcadLWPolyline* route = Path(Rectangle(150, 150, 250, 250), "RT_Z9_T1");
    RunState run = RunOn(document);
    run.part.PartThickness = 18;
    route->SetThickness(-9);
    ConvertPockets(run);
    EXPECT_EQ(On("PKC_Z5_T1").size(), 1U);
    route->SetThickness(-18.3);
    ConvertPockets(run);
    EXPECT_TRUE(On("PKC").empty());
}

TEST_F(PocketTest, APocketInsideAPocketIsConvertedWithIt) {
    Set("PocketConversion", "1");
    Path(Rectangle(0, 0, 400, 400), "PKC_Z3_T1");
    Path(Rectangle(100, 100, 300, 300), "PKC_Z5_T1");
    Path(Rectangle(150, 150, 250, 250), "RT_Z18p3_T1");
    RunState run = RunOn(document);
    ConvertPockets(run);
    EXPECT_TRUE(On("PKC").empty());
    EXPECT_EQ(On("RT_").size(), 3U);
}

TEST_F(PocketTest, PocketsThatARouteCutsThroughAnywayGo) {
    Circle({400, 400, 18}, 80, "PKS_Z5_T1");
    Circle({400, 400, 18}, 70, "PKS_Z5_T2");
    Circle({400, 400, 18}, 80, "RT_Z18p3_T1");
    Path(Rectangle(100, 100, 300, 300), "PKC_Z5_T1");
    Path(Rectangle(100, 100, 300, 310), "PKC_Z5_T2");
    Path(Rectangle(100, 100, 300, 300), "RT_Z18p3_T1");
    RunState run = RunOn(document);
    DropPocketsCutThrough(run);
    EXPECT_TRUE(On("PKS_Z5_T1").empty());
    EXPECT_TRUE(On("PKC_Z5_T1").empty());
    EXPECT_EQ(On("PKS_Z5_T2").size(), 1U);
    EXPECT_EQ(On("PKC_Z5_T2").size(), 1U);
    EXPECT_EQ(On("RT_").size(), 2U);
}

TEST_F(PocketTest, OnASecondPassHolesAndCirclesAsDeepAsThePartGo) {
    const auto make = [&] {
        Circle({100, 100, 18}, 8, "VD_Z18_D8")->SetThickness(-18);
        Circle({100, 200, 18}, 8, "VD_Z10_D8")->SetThickness(-10);
        Circle({100, 300, 18}, 80, "RT_Z18p3_T1")->SetThickness(-18.3);
        Circle({200, 300, 18}, 80, "PKS_Z18_T1")->SetThickness(-18);
    };
    make();
    RunState run = RunOn(document);
    run.part.PartThickness = 18;
    DropCirclesCutThrough(run);
    EXPECT_EQ(All<AcadCircle>(document).size(), 4U) << "the first pass keeps them all";
    run.part.SecondSidePass = true;
    DropCirclesCutThrough(run);
    EXPECT_TRUE(On("VD_Z18").empty());
    EXPECT_TRUE(On("RT_").empty());
    EXPECT_EQ(On("VD_Z10").size(), 1U);
    EXPECT_EQ(On("PKS_").size(), 1U);
}

}  // namespace
}  // namespace brenvik
