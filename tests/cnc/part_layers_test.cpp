// The layer on which a part lies in its drawing has no say in what is cut.
#include "cnc/recognition_fixture.h"
#include "cnc/run/runs.h"
#include "session/library/cnc_commands.h"

namespace brenvik {
namespace {

class PartLayers : public WholePartTest {
  protected:
    MadePart PartOn(std::string_view layer) {
        MadePart part = Made();
        part.Board(600, 400, 18);
        part.Hole(100, 100, 5, 12);
        part.Pocket(Rectangle(200, 150, 300, 250), 12);
        part.Window(Rectangle(400, 100, 500, 300));
        part.Drill({0, 200, 9}, {1, 0, 0}, 30, 8);
        PutDown(part);
        AddLayer(document, layer);
        part.Solid().SetLayer(layer);
        return part;
    }
    void ExpectMade(MadePart& part, Target target) {
        dialogs.messages.clear();
        RunAll(target);
        ExpectQuiet();
        Acad3DSolid& solid = part.Solid();
        EXPECT_EQ(solid.Layer(), mLayer);
        // The checker lays the part flat as it finds it.
        const bool visible = solid.Visible();
        solid.SetLayer("Parts");
        solid.SetVisible(true);
        EXPECT_EQ(Faults(solid, 0, {0, {"H"}}), std::vector<std::string>{});
        solid.SetLayer(mLayer);
        solid.SetVisible(visible);
    }
    std::string mLayer = "Doors";
};

TEST_F(PartLayers, FrozenOffOrLockedThePartIsMadeAndItsDrawingStaysAsItWas) {
    for (const Target target : {Target::C2C, Target::Enroute}) {
        MadePart part = PartOn(mLayer);
        AcadLayer& layer = *document.Layers().Item(mLayer);
        layer.SetFreeze(true);
        ExpectMade(part, target);
        EXPECT_TRUE(layer.Freeze());
        layer.SetFreeze(false);
        layer.SetLayerOn(false);
        ExpectMade(part, target);
        EXPECT_FALSE(layer.LayerOn());
        layer.SetLayerOn(true);
        part.Solid().Delete();
    }
}

TEST_F(PartLayers, AFrozenPartInInchesIsScaled) {
    Set("ExportScaleSetting", "3");
    MadePart part = Made();
    part.Board(600, 400, 18);
    part.Hole(100, 100, 5, 12);
    PutDown(part, {"InchesToMillimetres", 3}, 1);
    AddLayer(document, mLayer).SetFreeze(true);
    part.Solid().SetLayer(mLayer);
    ExpectMade(part, Target::C2C);
}

TEST_F(PartLayers, EveryStepFindsAllLayersUnlocked) {
    Set("HorzBoreOn2", "1");
    PartOn(mLayer);
    document.Layers().Item(mLayer)->SetLock(true);
    std::vector<std::string> locked;
    int steps = 0;
    PassWork work = StepsOfParts();
    for (auto& step : work.pass)
        // The first step works on the drawing as it came.
        if (&step != &work.pass.front())
            step = [&, inner = step](RunState& run) {
                ++steps;
                AcadLayers& layers = run.part.drawing->Layers();
                for (int i = 0; i < layers.Count(); ++i)
                    if (layers.Item(i)->Lock()) locked.push_back(layers.Item(i)->Name());
                return inner(run);
            };
    ChooseAllSolids();
    RunParts(host, Target::C2C, RunForm::A, work, GridBeforeRuns());
    EXPECT_EQ(steps, 10);
    EXPECT_EQ(locked, std::vector<std::string>{});
}

TEST_F(PartLayers, AHiddenPartIsMade) {
    MadePart part = PartOn(mLayer);
    part.Solid().SetVisible(false);
    ExpectMade(part, Target::C2C);
    EXPECT_FALSE(part.Solid().Visible());
}

TEST_F(PartLayers, ThatOfAWorkLayerIsAsGoodAsAnother) {
    for (const std::string_view layer :
         {"Region", "regioncopycopy", "RegionCopy", "BrenvikExplode", "NEXTBIGGESTREGION", "circleHold",
          "Border", "RoutingLayer1", "SolidHold", "PV-22", "DELETE"}) {
        SCOPED_TRACE(layer);
        mLayer = layer;
        MadePart part = PartOn(layer);
        ExpectMade(part, layer == "Region" ? Target::ATP : Target::C2C);
        part.Solid().Delete();
    }
}

}  // namespace
}  // namespace brenvik
