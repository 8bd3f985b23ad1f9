// TILEMODE, MVIEW, MSPACE, PSPACE, DVIEW and VPLAYER: the sheet, its viewports, and what each shows.
#include "command_fixture.h"
#include "drafting_host/command/session/view_frame.h"

namespace brenvik {
namespace {

class Viewports : public CommandTest {
  protected:
    std::vector<HostViewport*> All() { return ViewportsOf(document); }
    void OpenSheet() { Type("tilemode 0 "); }
    /// A sheet with one viewport, entered.
    HostViewport& Entered() {
        Type("tilemode 0 mview fit mspace ");
        return *All().at(0);
    }
};

TEST_F(Viewports, TilemodeSwitchesTheSpace) {
    Type("tilemode ");
    Type("0 ");
    EXPECT_EQ(document.ActiveSpace(), ActiveSpaceKind::PaperSpace);
    EXPECT_EQ(document.ActiveLayout(), "Layout1");
    Type("tilemode ");
    Type("1 ");
    EXPECT_EQ(document.ActiveSpace(), ActiveSpaceKind::ModelSpace);
    EXPECT_EQ(document.ActiveLayout(), "Model");
}

TEST_F(Viewports, FitFillsTheSheetAndShowsTheModel) {
    BoxAt({100, 200, 0}, {500, 300, 18});
    OpenSheet();
    Type("mview ");
    Type("fit ");
    ExpectIdle();
    ASSERT_EQ(All().size(), 1u);
    const ViewportData& values = All()[0]->Values();
    ExpectExact(values.center, {210, 148.5, 0});
    EXPECT_EQ(values.width, 420);
    EXPECT_EQ(values.height, 297);
    EXPECT_NEAR(values.viewCenter[0], 300, 1e-9);
    EXPECT_NEAR(values.viewCenter[1], 250, 1e-9);
    EXPECT_GE(values.viewHeight * 420 / 297, 400);
    EXPECT_FALSE(document.MSpace());
    EXPECT_EQ(document.ActivePViewport(), All()[0]);
}

TEST_F(Viewports, AreDrawnByTwoCorners) {
    OpenSheet();
    Type("mview 10,20 110,80 ");
    ASSERT_EQ(All().size(), 1u);
    ExpectExact(All()[0]->Center(), {60, 50, 0});
    EXPECT_EQ(All()[0]->Width(), 100);
    EXPECT_EQ(All()[0]->Height(), 60);
    Type("mview 10,20 10,80 ");
    EXPECT_EQ(All().size(), 1u);
    EXPECT_TRUE(Told("A viewport needs a width and a height."));
}

TEST_F(Viewports, CornersAreMeasuredOnTheSheetWhateverTheUserSystem) {
    Type("ucs o 1000,0,50 tilemode 0 mview 0,0 10,10 ");
    ExpectExact(All().at(0)->Center(), {5, 5, 0});
}

TEST_F(Viewports, NeedPaperSpace) {
    for (const char* text : {"mview ", "mspace ", "pspace ", "vplayer "}) {
        Type(text);
        ExpectIdle();
    }
    EXPECT_TRUE(Told("MVIEW works in paper space alone"));
    EXPECT_TRUE(Told("VPLAYER works in paper space alone"));
    EXPECT_TRUE(All().empty());
}

TEST_F(Viewports, AreEnteredAndLeft) {
    OpenSheet();
    Type("mspace ");
    EXPECT_FALSE(document.MSpace());
    EXPECT_TRUE(Told("There are no active viewports of model space."));
    Type("mview fit mspace ");
    EXPECT_TRUE(document.MSpace());
    EXPECT_EQ(document.ActiveSpace(), ActiveSpaceKind::PaperSpace);
    Type("pspace ");
    EXPECT_FALSE(document.MSpace());
    EXPECT_EQ(document.ActiveSpace(), ActiveSpaceKind::PaperSpace);
}

TEST_F(Viewports, TheNewestIsTheOneEntered) {
    OpenSheet();
    Type("mview 0,0 10,10 mview 20,0 30,10 mspace ");
    EXPECT_EQ(document.ActivePViewport(), All().at(1));
    Type("pspace mview off l  mspace ");
    EXPECT_EQ(document.ActivePViewport(), All().at(0));
    EXPECT_TRUE(document.MSpace());
}

TEST_F(Viewports, AllMeansTheModelInsideAndTheSheetOutside) {
    BoxAt({0, 0, 0}, {1, 1, 1});
    Entered();
    Type("pspace erase all  ");
    EXPECT_TRUE(All().empty());
    EXPECT_EQ(document.Model().Count(), 1);
    Type("mview fit mspace erase all  ");
    EXPECT_EQ(All().size(), 1u);
    EXPECT_EQ(document.Model().Count(), 0);
}

TEST_F(Viewports, AnErasedOneIsLeft) {
    HostViewport& viewport = Entered();
    viewport.Delete();
    EXPECT_FALSE(document.MSpace());
    EXPECT_EQ(document.ActivePViewport(), nullptr);
    EXPECT_EQ(&document.CurrentSpace(), &document.Paper());
}

TEST_F(Viewports, TheObjectModelLeavesAndEntersThem) {
    Entered();
    document.SetMSpace(false);
    Type("erase\rall\r\r");
    EXPECT_TRUE(All().empty());
    EXPECT_THROW(document.SetMSpace(true), Failure);
    document.SetActiveSpace(ActiveSpaceKind::ModelSpace);
    EXPECT_EQ(document.ActiveSpace(), ActiveSpaceKind::ModelSpace);
}

TEST_F(Viewports, HaveViewsOfTheirOwn) {
    Type("ucsortho 0 -v front ");
    HostViewport& viewport = Entered();
    Type("-view ");
    Type("right ");
    ExpectExact(viewport.Values().viewDirection, {1, 0, 0});
    Type("-v top hi ");
    ExpectExact(viewport.Values().viewDirection, {0, 0, 1});
    Type("tilemode 1 ucs v ");
    ExpectExact(document.ActiveUCS()[2], {0, 0, 1});
}

TEST_F(Viewports, HideplotIsSetForTheChosen) {
    OpenSheet();
    Type("mview 0,0 10,10 mview 20,0 30,10 mspace ");
    for (const char* text : {"mview ", "hideplot ", "on ", "all ", " "}) Type(text);
    ExpectIdle();
    for (const HostViewport* viewport : All())
        EXPECT_NE(viewport->Values().statusFlags & view_status::HidePlot, 0);
    EXPECT_TRUE(document.MSpace());
    Type("mview h off l  ");
    EXPECT_EQ(All().at(1)->Values().statusFlags & view_status::HidePlot, 0);
}

TEST_F(Viewports, EscapeInMviewGoesBackIntoTheViewport) {
    Entered();
    Type("mview ");
    EXPECT_FALSE(document.MSpace());
    Type("\x1b");
    EXPECT_TRUE(document.MSpace());
}

using SectionViews = Viewports;

TEST_F(SectionViews, DviewLooksFromPointToPointAndCutsInFront) {
    HostSolid& solid = BoxAt({0, 0, 0}, {10, 10, 10});
    HostViewport& viewport = Entered();
    HostEntity* const chosen[] = {&solid};
    document.SetPreviousSelection(chosen);
    Type("dview\rp\r\rpo\r5.125,2,3\r5.25,2,3\rcl\rf\r0\r\r");
    ExpectIdle();
    const ViewportData& view = viewport.Values();
    ExpectExact(view.viewTarget, {5.125, 2, 3});
    ExpectExact(view.viewDirection, {0.125, 0, 0});
    EXPECT_EQ(view.frontClip, 0);
    EXPECT_EQ(view.statusFlags & (view_status::FrontClipping | view_status::FrontClipAwayFromEye),
              view_status::FrontClipping | view_status::FrontClipAwayFromEye);
    Type("dview\r\rcl\roff\r\r");
    ExpectIdle();
    EXPECT_EQ(viewport.Values().statusFlags & view_status::FrontClipping, 0);
}

TEST_F(SectionViews, DviewCutsBehindAndTakesBack) {
    HostViewport& viewport = Entered();
    Type("dview  cl b -2.5  ");
    EXPECT_EQ(viewport.Values().backClip, -2.5);
    EXPECT_NE(viewport.Values().statusFlags & view_status::BackClipping, 0);
    Type("dview  cl f  tw 90 u  ");
    ExpectIdle();
    EXPECT_EQ(viewport.Values().twist, 0);
    EXPECT_EQ(viewport.Values().statusFlags & view_status::FrontClipping, 0);
    Type("pspace dview ");
    EXPECT_TRUE(Told("DVIEW works in model space and its viewports, not on the sheet."));
    ExpectIdle();
}

TEST_F(SectionViews, LayersAreFrozenInOneViewport) {
    NewLayer("bv-section1");
    OpenSheet();
    Type("mview 0,0 10,10 mview 20,0 30,10 mspace ");
    Type("vplayer f bv-section1\rcurrent\r\r");
    ExpectIdle();
    const HandleValue layer = document.LayerTable().Find("bv-section1")->Values().handle;
    EXPECT_TRUE(All().at(0)->Values().frozenLayers.empty());
    EXPECT_EQ(All().at(1)->Values().frozenLayers, std::vector{layer});
    EXPECT_FALSE(document.LayerTable().Find("bv-section1")->Freeze());
    Type("vplayer t bv-section1\rcurrent\r\r");
    EXPECT_TRUE(All().at(1)->Values().frozenLayers.empty());
    Type("vplayer f bv-* a t nothing s all  \r");
    ExpectIdle();
    EXPECT_TRUE(Told("No layer matches \"nothing\"."));
    EXPECT_EQ(All().at(0)->Values().frozenLayers, std::vector{layer});
}

TEST_F(SectionViews, AViewportIsChosenByItsHandle) {
    NewLayer("A");
    OpenSheet();
    Type("mview 0,0 10,10 mview 20,0 30,10 mspace ");
    Type("vplayer f A\rselect\r(handent \"" + All().at(0)->Handle() + "\")\r\r\r");
    ExpectIdle();
    EXPECT_EQ(All().at(0)->Values().frozenLayers.size(), 1u);
    EXPECT_TRUE(All().at(1)->Values().frozenLayers.empty());
    EXPECT_TRUE(document.MSpace());
}

TEST_F(SectionViews, WithoutAViewportEnteredNothingIsFrozen) {
    NewLayer("A");
    OpenSheet();
    Type("mview fit vplayer f A\rcurrent\r\r");
    ExpectIdle();
    EXPECT_TRUE(All().at(0)->Values().frozenLayers.empty());
    EXPECT_TRUE(Told("No viewport is entered"));
}

}  // namespace
}  // namespace brenvik
