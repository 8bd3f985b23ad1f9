// The order of the recognisers, and what ends the work on a part between them.
#include "cnc/cnc_fixture.h"
#include "cnc/part/run_state.h"
#include "cnc/run/recognising.h"
#include "cnc/targets/target_table.h"

namespace brenvik {
namespace {

class Recognising : public CncTest {
  protected:
    Recognising() {
        for (const std::string_view layer :
             {layers::MaxCircleHold, layers::CircleHold, layers::HorzCircleHold, layers::MyHorzCircleHold})
            AddLayer(document, layer);
        DrawKeptEdges(600, 400);
    }
    RunState Start(Target target = Target::C2C) {
        RunState run = RunOn(document, target);
        run.part.PartThickness = 19;
        run.part.PartVolume = wood.Solid().Volume();
        run.part.MaterialName = "OAK";
        return run;
    }
    void Circle(std::string_view layer, const Point3& center, const Point3& normal) {
        AcadCircle& circle = *document.ModelSpace().AddCircle(center, 4);
        circle.SetNormal(normal);
        circle.SetLayer(layer);
    }
    void EdgeBore(Target target) {
        Circle(TraitsOf(target).horizontalWorkLayer, {100, 0, 9}, {0, -1, 0});
        Circle(TraitsOf(target).horizontalWorkLayer, {100, 30, 9}, {0, -1, 0});
    }
    void ThroughHole() {
        wood.Drill({300, 50, 19}, app::Axis::Z, -19, 8);
        Circle(layers::MaxCircleHold, {300, 50, 19}, {0, 0, 1});
        Circle(layers::CircleHold, {300, 50, 0}, {0, 0, 1});
    }

    app::Workpiece wood = Board(600, 400, 19);
};

TEST_F(Recognising, BoresAndHolesOfAPartAreMade) {
    EdgeBore(Target::C2C);
    ThroughHole();
    RunState run = Start();
    EXPECT_EQ(Recognise(run), PassOutcome::GoOn);
    EXPECT_EQ(OnLayers(DrawnIn(document), "HF_T").size(), 1U);
    EXPECT_EQ(OnLayers(DrawnIn(document), "VD_").size(), 1U);
    EXPECT_EQ(run.part.MaterialKeyText, "19 OAK");
    EXPECT_FALSE(run.part.NeedSecondSide);
    EXPECT_TRUE(LayerExists(document, layers::RoutingLayer1));
    EXPECT_TRUE(LayerExists(document, layers::RoutingLayer2));
}

TEST_F(Recognising, AnUnknownMaterialSkipsThePartWithItsMessage) {
    RunState run = Start();
    run.part.MaterialName = "ELM";
    EXPECT_EQ(Recognise(run), PassOutcome::SkipPart);
    ASSERT_EQ(Messages().size(), 1U);
    EXPECT_EQ(
        Messages()[0],
        "You do not have the material 19 ELM in the material database, so this part export will be skipped.");
}

TEST_F(Recognising, NoPartIsCutWithTheBitsOfAnEarlierPartsMaterial) {
    RunState run = Start();
    ASSERT_EQ(Recognise(run), PassOutcome::GoOn);
    ASSERT_TRUE(run.part.Material.Found());
    run.part.MaterialName = "ELM";
    EXPECT_EQ(Recognise(run), PassOutcome::SkipPart);
    EXPECT_FALSE(run.part.Material.Found());
}

TEST_F(Recognising, BoresThatAreForcedToTheSecondSideWaitForIt) {
    Set("HorzBoreOn2", "1");
    EdgeBore(Target::C2C);
    RunState run = Start();
    EXPECT_EQ(Recognise(run), PassOutcome::GoOn);
    EXPECT_TRUE(OnLayers(DrawnIn(document), "HF_T").empty());
    EXPECT_TRUE(run.part.NeedSecondSide);
    EXPECT_FALSE(run.part.ThroughRouteSeen);
    run.part.SecondSidePass = true;
    EXPECT_EQ(Recognise(run), PassOutcome::GoOn);
    EXPECT_EQ(OnLayers(DrawnIn(document), "HF_T").size(), 1U);
}

TEST_F(Recognising, ASecondPassForBoresAloneEndsWhereThereAreNone) {
    Set("HorzBoreOn2", "1");
    RunState run = Start();
    run.part.SecondSidePass = true;
    EXPECT_EQ(Recognise(run), PassOutcome::SkipPart);
    EXPECT_TRUE(Messages().empty());
    run.part.ThroughRouteSeen = true;
    EXPECT_EQ(Recognise(run), PassOutcome::GoOn);
}

TEST_F(Recognising, ASecondPassWithBoresGoesOnForEveryTarget) {
    Set("HorzBoreOn2", "1");
    for (const Target target : AllTargets) {
        for (AcadEntity* entity : All<AcadEntity>(document))
            if (entity->ObjectName() != "AcDb3dSolid" && entity->ObjectName() != "AcDbLine") entity->Delete();
        EdgeBore(target);
        RunState run = Start(target);
        run.part.SecondSidePass = true;
        EXPECT_EQ(Recognise(run), PassOutcome::GoOn) << TraitsOf(target).name;
        EXPECT_EQ(run.part.edgeBores, 1);
    }
}

TEST_F(Recognising, AHoleThatCannotBeDrilledSkipsThePart) {
    Circle(layers::MaxCircleHold, {300, 50, 25}, {0, 0, 1});
    Circle(layers::CircleHold, {300, 50, 20}, {0, 0, 1});
    RunState run = Start();
    EXPECT_EQ(Recognise(run), PassOutcome::SkipPart);
    EXPECT_EQ(Messages(), std::vector<std::string>{"error"});
}

}  // namespace
}  // namespace brenvik
