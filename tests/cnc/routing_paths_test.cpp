// Contours that stop inside a part become named paths; what can't be one is told or left to the other side.
#include "cnc/outline_fixture.h"
#include "cnc/part/part_material.h"
#include "cnc/routes/routing.h"
#include "settings/frm_choice.h"

namespace brenvik {
namespace {

class RoutingPaths : public OutlineTest {
  protected:
    /// The edges of a level contour, each a line or an arc on the layer of broken down faces.
    void Floor(const std::vector<Corner>& shape, double z, bool closed = true) {
        std::vector<double> flat;
        for (const Corner& corner : shape) flat.insert(flat.end(), {corner.x, corner.y});
        AcadLWPolyline* polyline = Model().AddLightWeightPolyline(flat);
        polyline->SetClosed(closed);
        for (std::size_t i = 0; i < shape.size(); ++i)
            polyline->SetBulge(static_cast<int>(i), shape[i].bulge);
        polyline->SetElevation(z);
        AddLayer(document, layers::BrenvikExplode);
        for (AcadEntity* piece : polyline->Explode()) piece->SetLayer(layers::BrenvikExplode);
        polyline->Delete();
    }
    /// A recess from the top, and the edges of its floor.
    void Recess(Acad3DSolid& part, const std::vector<Corner>& shape, double floor) {
        Take(part, Body(shape, floor, part.GetBoundingBox().max.z));
        Floor(shape, floor);
    }
    void Circle(double x, double y, double z, double diameter) {
        AddLayer(document, layers::RouteCirclePv);
        Model().AddCircle({x, y, z}, diameter / 2)->SetLayer(layers::RouteCirclePv);
    }
    /// The part's faces and their edges, as the host's command leaves them.
    void BreakDown(Acad3DSolid& part) {
        AddLayer(document, layers::BrenvikExplode);
        part.Copy()->SetLayer(layers::BrenvikExplode);
        LockAllLayers(document);
        UnlockLayer(document, layers::BrenvikExplode);
        document.SendCommand("Explode all  ");
        document.SendCommand("Explode all  ");
        UnlockAllLayers(document);
    }
    RunState Routed(Acad3DSolid& solid, Target target = Target::C2C) {
        RunState run = State(solid, target);
        came = RecogniseRoutes(run);
        return run;
    }
    RunState State(Acad3DSolid& solid, Target target = Target::C2C) {
        RunState run = RunOn(document, target);
        const Box3 box = solid.GetBoundingBox();
        run.part.PartThickness = box.max.z;
        run.part.PartVolume = solid.Volume();
        run.part.MaterialName = "OAK";
        for (const std::string_view layer :
             {layers::CircleHold, layers::RoutingLayer1, layers::RoutingLayer2, layers::RouteCirclePv})
            AddLayer(document, layer);
        EXPECT_TRUE(TakeMaterial(run));
        return run;
    }
    Acad3DSolid& Part() { return Body(Rectangle(0, 0, 600, 400), 0, 18); }
    /// All polylines and circles but those of the part itself, by layer.
    std::vector<std::string> Names() {
        std::vector<std::string> names;
        for (const Drawn& drawn : DrawnIn(document))
            if (drawn.kind == "AcDbPolyline" || drawn.kind == "AcDbCircle") names.push_back(drawn.layer);
        return names;
    }
    Drawn Only(std::string_view prefix) {
        const std::vector<Drawn> found = On(prefix);
        EXPECT_EQ(found.size(), 1U) << prefix;
        return found.empty() ? Drawn{} : found.front();
    }

    PassOutcome came = PassOutcome::GoOn;  ///< Of the last routing.
};

TEST_F(RoutingPaths, AStoppedDadoIsOneRouteOnTheTopPlane) {
    Acad3DSolid& part = Part();
    Recess(part, Rectangle(0, 100, 300, 119), 9);
    const RunState run = Routed(part);
    EXPECT_EQ(came, PassOutcome::GoOn);
    EXPECT_FALSE(run.part.NeedSecondSide);
    const Drawn path = Only("RT_Z9_T1_D12_S18000_F300_R_C0_1");
    EXPECT_TRUE(path.closed);
    EXPECT_EQ(path.thickness, -9);
    ASSERT_EQ(path.points.size(), 4U);
    for (const Point3& point : path.points) EXPECT_EQ(point.z, 18);
    EXPECT_GT(Turning(path), 0);
    // 12 divided by 1.75.
    EXPECT_NEAR(std::ranges::min(path.points, {}, &Point3::x).x, -6.85715, 1e-9);
    EXPECT_TRUE(On(layers::RoutingLayer1).empty());
    EXPECT_TRUE(On(layers::RoutingLayer2).empty());
}

TEST_F(RoutingPaths, TheMaterialsDirectionIsThePathsDirection) {
    WriteMaterials({"18"}, {12, 6, 3}, "C");
    Acad3DSolid& part = Part();
    Recess(part, Rectangle(100, 100, 300, 119), 9);
    const RunState run = Routed(part);
    EXPECT_EQ(run.part.RouteDirection, "Clockwise");
    EXPECT_LT(Turning(Only("RT_Z9_T1_D12_S18000_F300_R_C1_1")), 0);
}

TEST_F(RoutingPaths, AWideRecessIsAPocket) {
    Acad3DSolid& part = Part();
    Recess(part, Rectangle(100, 100, 300, 200), 12);
    Routed(part);
    EXPECT_EQ(Only("PKC_").layer, "PKC_Z6_T1_D12_S18000_F300_R_C0_1");
}

TEST_F(RoutingPaths, ARoundedPocketIsOneClosedPolylineWithItsArcs) {
    Acad3DSolid& part = Part();
    Recess(part, RoundedRectangle(100, 100, 300, 200, 10), 12);
    // Its rounded corners bring the floor's arcs once more.
    const std::vector<AcadArc*> arcs = AllOn<AcadArc>(document, layers::BrenvikExplode);
    ASSERT_EQ(arcs.size(), 4U);
    for (AcadArc* arc : arcs) arc->Copy();
    const RunState run = Routed(part);
    EXPECT_FALSE(run.part.NeedSecondSide);
    ASSERT_EQ(Names().size(), 1U);
    const Drawn path = Only("RT_Z6_T1_D12_");
    ASSERT_EQ(path.points.size(), 8U);
    int arcsFound = 0;
    for (const double bulge : path.bulges) {
        if (bulge == 0) continue;
        EXPECT_NEAR(bulge, Quarter, 1e-12);
        ++arcsFound;
    }
    EXPECT_EQ(arcsFound, 4);
}

TEST_F(RoutingPaths, APocketInAPocketHasThePathOfTheStepToo) {
    Acad3DSolid& part = Part();
    Recess(part, Rectangle(100, 100, 300, 200), 12);
    Recess(part, Rectangle(150, 120, 250, 180), 6);
    Floor(Rectangle(150, 120, 250, 180), 12);
    const RunState run = Routed(part);
    EXPECT_EQ(run.part.RouteCount, 3);
    EXPECT_EQ(Names(), (std::vector<std::string>{"PKC_Z6_T1_D12_S18000_F300_R_C0_1",
                                                 "PKC_Z12_T1_D12_S18000_F300_R_C0_2",
                                                 "PKC_Z6_T1_D12_S18000_F300_R_C0_3"}));
}

TEST_F(RoutingPaths, TheCounterRisesPathByPath) {
    Acad3DSolid& part = Part();
    for (int i = 0; i < 5; ++i) Recess(part, Rectangle(100 * i + 50, 100, 100 * i + 65, 300), 9);
    EXPECT_EQ(Routed(part).part.RouteCount, 5);
    std::set<std::string> names;
    for (const std::string& name : Names()) names.insert(name);
    EXPECT_EQ(names.size(), 5U);
    EXPECT_TRUE(names.contains("RT_Z9_T1_D12_S18000_F300_R_C0_5"));
}

TEST_F(RoutingPaths, LShapedPocketsAndRebatesAreFollowed) {
    Acad3DSolid& part = Part();
    Recess(part, {{0, 0}, {600, 0}, {600, 15}, {15, 15}, {15, 400}, {0, 400}}, 9);
    Routed(part);
    const Drawn path = Only("RT_Z9_");
    ASSERT_EQ(path.points.size(), 6U);
    EXPECT_NEAR(std::ranges::max(path.points, {}, &Point3::x).x, 606.857, 1e-3);
    EXPECT_NEAR(std::ranges::min(path.points, {}, &Point3::y).y, -6.857, 1e-3);
}

TEST_F(RoutingPaths, WithoutEdgesBetweenTheFacesNothingIsJoined) {
    Acad3DSolid& part = Part();
    Floor(Rectangle(0, 0, 600, 400), 18);
    Floor(Rectangle(0, 0, 600, 400), 0.000004);
    const RunState run = Routed(part);
    EXPECT_EQ(came, PassOutcome::GoOn);
    EXPECT_EQ(run.part.RouteCount, 0);
    EXPECT_EQ(AllOn<AcadLine>(document, layers::BrenvikExplode).size(), 8U);
    for (const std::string& line : transcript) EXPECT_EQ(line.find("pedit"), std::string::npos) << line;
}

TEST_F(RoutingPaths, AllLayersAreThawedAgainAfterTheJoin) {
    Acad3DSolid& part = Part();
    Recess(part, Rectangle(100, 100, 300, 119), 9);
    AddLayer(document, "Hidden").SetFreeze(true);
    const AcadLayer* active = document.ActiveLayer();
    Routed(part);
    EXPECT_EQ(document.ActiveLayer(), active);
    for (int i = 0; i < document.Layers().Count(); ++i) {
        const AcadLayer& layer = *document.Layers().Item(i);
        EXPECT_EQ(layer.Freeze(), layer.Name() == "Hidden") << layer.Name();
    }
}

TEST_F(RoutingPaths, ARecessFromBelowIsLeftToTheOtherSide) {
    Acad3DSolid& part = Part();
    Take(part, Body(Rectangle(100, 100, 300, 119), 0, 9));
    Floor(Rectangle(100, 100, 300, 119), 9);
    const RunState run = Routed(part);
    EXPECT_TRUE(run.part.NeedSecondSide);
    EXPECT_TRUE(run.part.ThroughRouteSeen);
    EXPECT_EQ(came, PassOutcome::GoOn);
    EXPECT_TRUE(Names().empty());
    EXPECT_TRUE(run.part.unexplained.empty());
}

TEST_F(RoutingPaths, TheSecondPassSetsNoFlagsAndTellsWhatNeitherSideCuts) {
    Acad3DSolid& part = Part();
    // A slot in the front edge: a floor and a ceiling, with material above both.
    Take(part, Body(Rectangle(100, 0, 300, 50), 6, 9));
    Floor(Rectangle(100, 0, 300, 50), 6);
    RunState run = State(part);
    run.part.SecondSidePass = true;
    run.part.NeedSecondSide = true;
    RecogniseRoutes(run);
    EXPECT_FALSE(run.part.ThroughRouteSeen);
    ASSERT_EQ(run.part.unexplained.size(), 1U);
    EXPECT_EQ(run.part.unexplained[0], "contour from 100,350 to 300,400, 6 below the top: no operation");
}

TEST_F(RoutingPaths, WhatTheFirstPassHasCutIsNotToldOnTheSecond) {
    Acad3DSolid& part = Part();
    Recess(part, Rectangle(100, 100, 300, 119), 12);
    RunState run = Routed(part);
    ASSERT_EQ(run.part.RouteCount, 1);
    for (AcadLWPolyline* path : All<AcadLWPolyline>(document)) path->Delete();
    part.Delete();
    // Turned over about X: the recess opens below now.
    Acad3DSolid& turned = Part();
    Take(turned, Body(Rectangle(100, 281, 300, 300), 0, 6));
    Floor(Rectangle(100, 281, 300, 300), 6);
    run.part.SecondSidePass = true;
    RecogniseRoutes(run);
    EXPECT_TRUE(run.part.unexplained.empty());
    EXPECT_TRUE(Names().empty());
}

TEST_F(RoutingPaths, AnOpenChainGoesToTheOtherSideAndThePartGoesOn) {
    Acad3DSolid& part = Part();
    Floor({{100, 100}, {300, 100}, {300, 119}}, 9, false);
    Recess(part, Rectangle(100, 200, 300, 219), 9);
    const RunState run = Routed(part);
    EXPECT_EQ(came, PassOutcome::GoOn);
    EXPECT_TRUE(run.part.NeedSecondSide);
    EXPECT_TRUE(run.part.ThroughRouteSeen);
    EXPECT_EQ(Names().size(), 1U);
}

TEST_F(RoutingPaths, APieceThatRunsAlongAContourRaisesNoOtherSide) {
    Acad3DSolid& part = Part();
    Recess(part, RoundedRectangle(100, 100, 300, 200, 10), 12);
    // The lower half of the first corner's arc once more, as a face that shares only a part of it brings it.
    AcadArc* half = Model().AddArc({290, 110, 12}, 10, -std::numbers::pi / 2, -std::numbers::pi / 4);
    half->SetLayer(layers::BrenvikExplode);
    const RunState run = Routed(part);
    EXPECT_FALSE(run.part.NeedSecondSide);
    EXPECT_EQ(Names().size(), 1U);
}

TEST_F(RoutingPaths, UprightAndSlantedEdgesAreNotGathered) {
    Acad3DSolid& part = Part();
    AddLayer(document, layers::BrenvikExplode);
    Model().AddLine({100, 100, 6}, {100, 100, 12})->SetLayer(layers::BrenvikExplode);
    Model().AddLine({100, 100, 6}, {120, 100, 12})->SetLayer(layers::BrenvikExplode);
    AcadArc* upright = Model().AddArc({100, 100, 9}, 4, 0, 2);
    upright->Rotate3D({100, 100, 9}, {101, 100, 9}, std::numbers::pi / 2);
    upright->SetLayer(layers::BrenvikExplode);
    const RunState run = Routed(part);
    EXPECT_FALSE(run.part.NeedSecondSide);
    EXPECT_EQ(AllOn<AcadEntity>(document, layers::BrenvikExplode).size(), 3U);
}

TEST_F(RoutingPaths, ABrokenDownPartGivesOnePathForEachFloor) {
    Acad3DSolid& part = Part();
    Take(part, Body(RoundedRectangle(100, 100, 300, 200, 10), 12, 18));
    Take(part, Body(Rectangle(400, -1, 419, 401), 9, 19));
    Take(part, Body(Rectangle(150, 120, 250, 180), 6, 12));
    BreakDown(part);
    const RunState run = Routed(part);
    EXPECT_FALSE(run.part.NeedSecondSide);
    EXPECT_EQ(run.part.RouteCount, 4);
    EXPECT_EQ(On("RT_Z9_").size(), 1U);
    EXPECT_EQ(On("PKC_Z12_").size(), 1U);
    // The inner edge of the step, and the rounded pocket with the bit of its corners.
    EXPECT_EQ(On("PKC_Z6_").size(), 1U);
    EXPECT_EQ(On("RT_Z6_").size(), 1U);
}

TEST_F(RoutingPaths, ABoreThatMeetsABlindHoleNeedsNoHandWork) {
    // A cam fitting: the edge of bore and hole is no plane curve.
    Acad3DSolid& part = Part();
    Take(part, *Model().AddCylinder({34, 100, 11.5}, 7.5, 13));
    Acad3DSolid& bore = *Model().AddCylinder({0, 0, 17}, 4, 34);
    bore.Rotate3D({0, 0, 0}, {0, 1, 0}, std::numbers::pi / 2);
    bore.Move({0, 0, 0}, {0, 100, 9});
    Take(part, bore);
    BreakDown(part);
    ASSERT_TRUE(std::ranges::any_of(DrawnIn(document),
                                    [](const Drawn& drawn) { return drawn.kind == "AcDbSpline"; }));
    const RunState run = Routed(part);
    EXPECT_EQ(came, PassOutcome::GoOn);
    EXPECT_FALSE(run.part.NeedSecondSide);
    EXPECT_TRUE(Messages().empty());
}

TEST_F(RoutingPaths, WithoutAFittingBitTheUserChooses) {
    Acad3DSolid& part = Part();
    Recess(part, Rectangle(100, 100, 300, 102), 9);
    dialogs.onModal = [](Form& form) {
        form.Get<CheckControl>("Option6").SetValue(1);
        form.Get<Control>("cmdAccept").onClick();
    };
    const RunState run = Routed(part);
    EXPECT_EQ(came, PassOutcome::GoOn);
    EXPECT_EQ(Only("PKC_").layer, "PKC_Z9_T3_D3_S18000_F300_R_C0_1");
    ASSERT_EQ(Messages().size(), 1U);
    EXPECT_EQ(Messages()[0],
              "You do not have a small enough router bit for your material 18 OAK with route path who's "
              "shortest line is 2 long, so you need to make a choice.");
    EXPECT_EQ(dialogs.shownForms, std::vector<std::string>{"frmChoicetherm"});
}

TEST_F(RoutingPaths, LeavingTheChoiceGivesThePartUp) {
    Acad3DSolid& part = Part();
    Recess(part, Rectangle(100, 100, 300, 102), 9);
    dialogs.onModal = [](Form& form) { form.Get<Control>("cmdExit").onClick(); };
    Routed(part, Target::WOP4);
    EXPECT_EQ(came, PassOutcome::SkipPart);
    EXPECT_EQ(dialogs.shownForms, std::vector<std::string>{"frmChoice"});
}

TEST_F(RoutingPaths, EmptySlotsAreNeverChosen) {
    Acad3DSolid& part = Part();
    Recess(part, Rectangle(100, 100, 300, 119), 9);
    std::string text = files.ReadFile(MaterialsPath());
    for (std::size_t at = text.find("tool1=1"); at != std::string::npos; at = text.find("tool1=1", at + 1))
        text.replace(at, 7, "tool1=0");
    files.WriteFile(MaterialsPath(), text);
    Routed(part);
    EXPECT_EQ(Only("PKC_").layer, "PKC_Z9_T2_D6_S18000_F300_R_C0_1");
}

TEST_F(RoutingPaths, ACircleThatStopsInsideIsPocketed) {
    Acad3DSolid& part = Part();
    Acad3DSolid* hole = Model().AddCylinder({200, 200, 15}, 30, 6);
    Take(part, *hole);
    Circle(200, 200, 12, 60);
    const RunState run = Routed(part);
    EXPECT_EQ(run.part.RouteCount, 1);
    const Drawn circle = Only("PKS_");
    // The smallest bit that is smaller than the circle.
    EXPECT_EQ(circle.layer, "PKS_Z6_T3_D3_S18000_F300_R_C0_1");
    EXPECT_EQ(circle.points[0], (Point3{200, 200, 18}));
    EXPECT_EQ(circle.thickness, -6);
}

TEST_F(RoutingPaths, ACircleNarrowerThanEveryBitGivesThePartUp) {
    Acad3DSolid& part = Part();
    Take(part, *Model().AddCylinder({200, 200, 15}, 1, 6));
    Circle(200, 200, 12, 2);
    Routed(part);
    EXPECT_EQ(came, PassOutcome::SkipPart);
    ASSERT_EQ(Messages().size(), 1U);
    EXPECT_TRUE(
        Messages()[0].starts_with("You do not have a router bit small enough to pocket this circular "
                                  "non-through route path with a diameter of 2."));
}

TEST_F(RoutingPaths, ACircleThroughThePartIsCutLikeAThroughRoute) {
    Set("BiesseWorksSpoil", "0.2");
    Acad3DSolid& part = Part();
    Take(part, *Model().AddCylinder({200, 200, 9}, 30, 18));
    Circle(200, 200, 0, 60);
    Routed(part);
    const Drawn circle = Only("RT_");
    EXPECT_EQ(circle.layer, "RT_Z18p2_T1_D12_S18000_F300_R_C0_1");
    EXPECT_EQ(circle.points[0], (Point3{200, 200, 18}));
    EXPECT_EQ(circle.thickness, -18.2);
}

TEST_F(RoutingPaths, ARingAroundAnIslandIsCutFromNeitherSide) {
    Acad3DSolid& part = Part();
    Acad3DSolid& ring = *Model().AddCylinder({200, 200, 15}, 30, 6);
    Take(ring, *Model().AddCylinder({200, 200, 15}, 20, 6));
    Take(part, ring);
    Circle(200, 200, 12, 60);
    Circle(200, 200, 12, 40);
    RunState run = Routed(part);
    EXPECT_TRUE(run.part.NeedSecondSide);
    EXPECT_TRUE(Names().empty());
    Circle(200, 200, 12, 60);
    run.part.SecondSidePass = true;
    RecogniseRoutes(run);
    ASSERT_EQ(run.part.unexplained.size(), 1U);
}

TEST_F(RoutingPaths, EachTargetNamesThemInItsLanguage) {
    const std::vector<std::pair<Target, std::string>> names{
        {Target::C2C, "RT_Z9_T1_D12_S18000_F300_R_C0_1"},
        {Target::ATP, "RT_Z9_T1_D12_S18000_F300"},
        {Target::Enroute, "RT_Z_T1_D12_S18000_F300"},
        {Target::RCIM, "RT_Z_T1_D12_S18000_F300_C0"},
        {Target::THERM, "dado 12 9"},
        {Target::ASP, "ROTOR9"},
        {Target::ROV, "19"},
        {Target::WOP4, "FK9T1N"},
        {Target::WOP5, "V_Trim_9T1"},
        {Target::BW, "TCHB1W0TCD$1$S18000F300TC2D900"},
    };
    Acad3DSolid& part = Part();
    for (const auto& [target, name] : names) {
        Recess(part, Rectangle(100, 100, 300, 119), 9);
        Routed(part, target);
        EXPECT_EQ(Names(), std::vector<std::string>{name});
        for (AcadLWPolyline* path : All<AcadLWPolyline>(document)) path->Delete();
    }
}

}  // namespace
}  // namespace brenvik
