// Section views: the view, the clipping and the layers that the commands leave in the drawing.
#include <cmath>

#include "cnc/cnc_fixture.h"
#include "cnc/scripted_prompts.h"
#include "drafting_host/command/session/view_frame.h"
#include "tools/drawing_tools.h"

namespace brenvik {
namespace {

class SectionsTest : public CncTest {
  protected:
    SectionsTest() { host.SetPrompts(&prompts); }
    ~SectionsTest() override { host.SetPrompts(nullptr); }

    /// Two viewports side by side; the second is entered.
    void OpenSheet() { document.SendCommand("tilemode 0 mview 0,0 100,100 mview 120,0 220,100 mspace "); }
    std::vector<HostViewport*> Viewports() { return ViewportsOf(document); }
    Acad3DSolid& Box() {
        Acad3DSolid& solid = *document.ModelSpace().AddBox({10, 20, 30}, 2, 4, 6);
        mAutoCAD::SetPartData(&solid, "PartName", "Side");
        return solid;
    }
    void Answer(const std::string& kind, const std::string& looking, const Point3& at) {
        prompts.keywords = {kind, looking};
        prompts.points = {at};
    }
    static void ExpectPoint(const Point3& is, const Point3& wanted) {
        EXPECT_NEAR(is.x, wanted.x, 1e-12);
        EXPECT_NEAR(is.y, wanted.y, 1e-12);
        EXPECT_NEAR(is.z, wanted.z, 1e-12);
    }
    bool Frozen(const HostViewport& viewport, std::string_view layer) {
        auto& own = dynamic_cast<HostLayer&>(*document.Layers().Item(layer));
        const std::vector<HandleValue>& frozen = viewport.Values().frozenLayers;
        return std::find(frozen.begin(), frozen.end(), own.OwnHandle()) != frozen.end();
    }

    ScriptedPrompts prompts;
};

struct Look {
    std::string kind, looking;
    Point3 target, direction;
};

TEST_F(SectionsTest, EachWayOfLookingSetsTargetCameraAndFrontPlane) {
    OpenSheet();
    Box();
    const std::vector<Look> looks{
        {"v", "left", {10.125, 20, 30}, {0.125, 0, 0}},
        {"V", "Right", {9.875, 20, 30}, {-0.125, 0, 0}},
        {"VERTICAL", "front", {10, 20.125, 30}, {0, 0.125, 0}},
        {"vertical", "b", {10, 19.875, 30}, {0, -0.125, 0}},
        {"plan", "down", {10, 20, 30.125}, {0, 0, 0.875}},
        {"P", "UP", {10, 20, 29.875}, {0, 0, -0.875}},
    };
    for (const Look& look : looks) {
        SCOPED_TRACE(look.kind + " " + look.looking);
        ChooseAllSolids();
        Answer(look.kind, look.looking, {10, 20, 30});
        commands::BVSection1(host);
        const ViewportData& view = Viewports().at(1)->Values();
        ExpectPoint(view.viewTarget, look.target);
        ExpectPoint(view.viewDirection, look.direction);
        EXPECT_NE(view.statusFlags & view_status::FrontClipping, 0);
        EXPECT_EQ(view.frontClip, 0);
    }
    EXPECT_EQ(prompts.asked[0], "Please specify Vertical or Plan section (a space terminates input): ");
    EXPECT_EQ(prompts.asked[1],
              "Please specify looking Left, Right, Front or Back (a space terminates input): ");
    EXPECT_EQ(prompts.asked[2], "Enter point of vertical section: ");
    EXPECT_EQ(prompts.asked[prompts.asked.size() - 2],
              "Please specify looking Down or Up (a space terminates input): ");
    EXPECT_EQ(prompts.asked.back(), "Enter point of plan section: ");
}

TEST_F(SectionsTest, AnAnswerOutsideTheKeywordsChangesNothing) {
    OpenSheet();
    Box();
    const ViewportData before = Viewports().at(1)->Values();
    for (const std::vector<std::string>& answers :
         {std::vector<std::string>{"x"}, {"v", "up"}, {"p", "left"}, {"v"}, {}}) {
        prompts.keywords.assign(answers.begin(), answers.end());
        prompts.points = {{1, 2, 3}};
        commands::BVSection1(host);
        commands::BVSection2(host);
    }
    EXPECT_EQ(Viewports().at(1)->Values(), before);
    EXPECT_FALSE(LayerExists(document, "bv-section1"));
    EXPECT_TRUE(Messages().empty());
}

TEST_F(SectionsTest, TheSecondFormHoldsSolidsOnALayerThatOnlyItsViewportShows) {
    OpenSheet();
    Acad3DSolid& solid = Box();
    Choose({&solid});
    Answer("v", "left", {10, 20, 30});
    commands::BVSection2(host);
    EXPECT_EQ(solid.Layer(), "bv-section1");
    EXPECT_EQ(mAutoCAD::GetPartData(solid.Handle(), "PARTNAME"), "Side");
    EXPECT_TRUE(Frozen(*Viewports().at(0), "bv-section1"));
    EXPECT_FALSE(Frozen(*Viewports().at(1), "bv-section1"));
    EXPECT_FALSE(document.MSpace());
    EXPECT_EQ(document.ActiveSpace(), ActiveSpaceKind::PaperSpace);
}

TEST_F(SectionsTest, EverySectionHasALayerOfItsOwn) {
    AddLayer(document, "BV-SECTION1");
    OpenSheet();
    Acad3DSolid& solid = Box();
    Choose({&solid});
    Answer("p", "down", {10, 20, 30});
    commands::BVSection2(host);
    EXPECT_EQ(solid.Layer(), "bv-section2");
}

TEST_F(SectionsTest, AnEmptySelectionGivesAViewWithoutSolids) {
    OpenSheet();
    Acad3DSolid& solid = Box();
    Choose({});
    Answer("v", "right", {10, 20, 30});
    commands::BVSection2(host);
    EXPECT_EQ(solid.Layer(), "0");
    EXPECT_TRUE(LayerExists(document, "bv-section1"));
}

TEST_F(SectionsTest, SectionLayersAreFrozenAndThawedTogether) {
    AddLayer(document, "bv-section1");
    AddLayer(document, "bv-section2");
    AddLayer(document, "Other");
    commands::BVFreezeSections(host);
    EXPECT_TRUE(document.Layers().Item("bv-section1")->Freeze());
    EXPECT_TRUE(document.Layers().Item("bv-section2")->Freeze());
    EXPECT_FALSE(document.Layers().Item("Other")->Freeze());
    commands::BVUNFreezeSections(host);
    EXPECT_FALSE(document.Layers().Item("bv-section1")->Freeze());
    EXPECT_FALSE(document.Layers().Item("bv-section2")->Freeze());
}

TEST_F(SectionsTest, WithoutSectionLayersFreezingChangesNothing) {
    AddLayer(document, "Other");
    commands::BVFreezeSections(host);
    EXPECT_FALSE(document.Layers().Item("Other")->Freeze());
    EXPECT_FALSE(document.Layers().Item("0")->Freeze());
}

TEST_F(SectionsTest, AViewIsMadeBetweenTwoCornersWithoutClippingAndWithHiddenLinePlotting) {
    OpenSheet();
    Box();
    prompts.points = {{300, 10, 0}, {260, 40, 0}};
    commands::BVMakeView(host);
    ASSERT_EQ(Viewports().size(), 3U);
    const ViewportData& view = Viewports().at(2)->Values();
    ExpectPoint(view.center, {280, 25, 0});
    EXPECT_EQ(view.width, 40);
    EXPECT_EQ(view.height, 30);
    EXPECT_EQ(view.statusFlags & view_status::FrontClipping, 0);
    for (const HostViewport* viewport : Viewports())
        EXPECT_NE(viewport->Values().statusFlags & view_status::HidePlot, 0);
    EXPECT_EQ(prompts.asked, (std::vector<std::string>{"Enter first point of viewport: ",
                                                       "Enter second point of viewport: "}));
}

TEST_F(SectionsTest, TheStatesOfASectionLastThroughSavingAndOpening) {
    OpenSheet();
    Acad3DSolid& solid = Box();
    Choose({&solid});
    Answer("v", "left", {10, 20, 30});
    commands::BVSection2(host);
    const std::string path = "c:\\BV-DWG\\sections.dxf";
    files.MakeFolder("c:\\BV-DWG");
    document.SaveAs(path, SaveAsKind::Dxf2000);
    HostDocument& again = host.OpenDrawing(files.Resolve(path));
    const std::vector<HostViewport*> viewports = ViewportsOf(again);
    ASSERT_EQ(viewports.size(), 2U);
    ExpectPoint(viewports[1]->Values().viewTarget, {10.125, 20, 30});
    ExpectPoint(viewports[1]->Values().viewDirection, {0.125, 0, 0});
    EXPECT_EQ(viewports[0]->Values().frozenLayers.size(), 1U);
    EXPECT_TRUE(viewports[1]->Values().frozenLayers.empty());
    EXPECT_NE(viewports[1]->Values().statusFlags & view_status::FrontClipping, 0);
}

}  // namespace
}  // namespace brenvik
