// What people type out of habit: groups and windows in selections, faces for a coordinate system, undo.
#include "command_fixture.h"
#include "drafting_host/command/session/view_frame.h"
#include "drafting_host/document/geometry/vectors.h"

namespace brenvik {
namespace {

class Habits : public CommandTest {
  protected:
    void Group(const std::string& name, std::vector<AcadEntity*> members) {
        document.Groups().Add(name)->AppendItems(members);
    }
    void ExpectUcs(const Point3& origin, const Point3& x, const Point3& y) {
        ExpectExact(document.ActiveUCS()[0], origin);
        ExpectExact(document.ActiveUCS()[1], x);
        ExpectExact(document.ActiveUCS()[2], y);
    }
};

TEST_F(Habits, AGroupIsSelectedByItsNameInAnyCase) {
    HostSolid& one = BoxAt({0, 0, 0}, {1, 1, 1});
    HostSolid& other = BoxAt({5, 0, 0}, {6, 1, 1});
    BoxAt({9, 0, 0}, {10, 1, 1});
    Group("BASE 1", {&one, &other});
    Type("select g base 1 \r");
    ExpectIdle();
    EXPECT_EQ(PreviousHandles(), (std::vector{one.Handle(), other.Handle()}));
    Type("select G\r\"Base 1\"\r(handent \"" + one.Handle() + "\")\r\r");
    EXPECT_EQ(PreviousHandles().size(), 2u);
}

TEST_F(Habits, AnUnknownGroupOrNoneAtAllGoesOnSelecting) {
    HostSolid& one = BoxAt({0, 0, 0}, {1, 1, 1});
    Type("select g nothing g  all  ");
    ExpectIdle();
    EXPECT_TRUE(Told("The drawing has no group \"nothing\"."));
    EXPECT_EQ(PreviousHandles(), std::vector{one.Handle()});
}

TEST_F(Habits, MembersOfAGroupOnALockedLayerAreOutOfReachOfChanges) {
    HostSolid& free = BoxAt({0, 0, 0}, {1, 1, 1});
    HostSolid& held = BoxAt({5, 0, 0}, {6, 1, 1});
    NewLayer("Held").SetLock(false);
    held.SetLayer("Held");
    document.LayerTable().Find("Held")->SetLock(true);
    Group("A", {&free, &held});
    Type("erase g A  ");
    EXPECT_TRUE(free.Erased());
    EXPECT_FALSE(held.Erased());
    EXPECT_TRUE(Told("1 on a locked layer"));
}

TEST_F(Habits, ABoxDrawnToTheLeftCrossesAndOneToTheRightHolds) {
    HostSolid& within = BoxAt({1, 1, 0}, {2, 2, 1});
    HostSolid& met = BoxAt({4, 1, 0}, {9, 2, 1});
    Type("select box 0,0 5,5  ");
    EXPECT_EQ(PreviousHandles(), std::vector{within.Handle()});
    Type("select box 5,5 0,0  ");
    EXPECT_EQ(PreviousHandles(), (std::vector{within.Handle(), met.Handle()}));
}

TEST_F(Habits, AUserSystemIsLaidOntoAFace) {
    BoxAt({0, 0, 0}, {100, 50, 20});
    Type("ucs fa 50,1,20 ");
    Type(" ");
    ExpectIdle();
    ExpectUcs({0, 0, 20}, {1, 0, 0}, {0, 1, 0});
    Type("ucs w ucs n f 100,49,10 x  ");
    ExpectIdle();
    const Point3 z = vectors::Cross(document.ActiveUCS()[1], document.ActiveUCS()[2]);
    ExpectExact(z, {-1, 0, 0});
}

TEST_F(Habits, AWindowPicksNoFaceAndLeavesTheUserSystem) {
    BoxAt({0, 0, 0}, {100, 50, 20});
    Type("ucs o 3,4,5 ");
    for (const char* text : {"_ucs ", "fa ", "c ", "-1000000,-1000000 ", "1000000,1000000 ", " "}) Type(text);
    ExpectIdle();
    ExpectUcs({3, 4, 5}, {1, 0, 0}, {0, 1, 0});
    EXPECT_TRUE(Told("A window picks no face"));
    EXPECT_TRUE(Told("No face was selected."));
}

TEST_F(Habits, ARoundFaceCarriesNoUserSystem) {
    Type("cylinder 0,0,0 10 30 ucs f 10,0,15 nonsense  ");
    ExpectIdle();
    EXPECT_TRUE(Told("No flat face of a solid lies there."));
    ExpectUcs({0, 0, 0}, {1, 0, 0}, {0, 1, 0});
}

TEST_F(Habits, UndoTellsThatNothingIsTakenBack) {
    BoxAt({0, 0, 0}, {1, 1, 1});
    for (const char* text : {"u ", "undo 1 ", "undo back ", "undo  ", "redo ", "oops "}) {
        transcript.clear();
        Type(text);
        ExpectIdle();
        EXPECT_TRUE(Told("Nothing can be taken back here")) << text;
        EXPECT_FALSE(Told("Unknown command")) << text;
    }
    EXPECT_EQ(Entities().size(), 1u);
}

TEST_F(Habits, AnApostropheMayBeginAName) {
    Type("-layer n 'Oak \r");
    ExpectIdle();
    EXPECT_NE(document.LayerTable().Find("'Oak"), nullptr);
    HostSolid& solid = BoxAt({0, 0, 0}, {1, 1, 1});
    Group("'A", {&solid});
    Type("-group\re\r'A\r");
    ExpectIdle();
    EXPECT_EQ(document.Groups().Count(), 0);
    Type("move 'nonsense \x1b");
    EXPECT_TRUE(Told("\"'nonsense\" selects nothing"));
}

using Following = Habits;

TEST_F(Following, TheViewTurnsToThePlanOfTheUserSystem) {
    Type("ucsfollow 1 ucs x 90 ucs w ucs y 90 tilemode 0 mview fit mspace ucs w ");
    ExpectIdle();
    const HostViewport& viewport = *ViewportsOf(document).at(0);
    ExpectExact(viewport.Values().viewDirection, {0, 0, 1});
    Type("ucs x 90 ");
    ExpectExact(viewport.Values().viewDirection, {0, -1, 0});
    Type("ucs p ");
    ExpectExact(viewport.Values().viewDirection, {0, 0, 1});
    Type("mview lock on all  ucs y 90 ");
    ExpectExact(viewport.Values().viewDirection, {0, 0, 1});
    ExpectUcs({0, 0, 0}, {0, 0, -1}, {0, 1, 0});
    Type("mview lock off all  ucsfollow 0 ucs w -view front ucs x 90 ");
    ExpectExact(viewport.Values().viewDirection, {0, -1, 0});
}

class ViewsOfTheSheet : public Habits {
  protected:
    HostViewport& Entered() {
        Type("tilemode 0 mview 0,0 100,100 mspace ");
        return *ViewportsOf(document).at(0);
    }
};

TEST_F(ViewsOfTheSheet, ALockedViewIsNeitherTurnedNorCut) {
    HostViewport& viewport = Entered();
    Type("mview lock on all  ");
    Type("ucs x 90 -view right ");
    EXPECT_TRUE(Told("view-locked"));
    ExpectExact(viewport.Values().viewDirection, {0, 0, 1});
    Type("dview  cl f 3  ");
    EXPECT_EQ(viewport.Values().statusFlags & view_status::FrontClipping, 0);
    Type("\x1bmview lock off all  -view right ");
    ExpectExact(viewport.Values().viewDirection, {1, 0, 0});
}

TEST_F(ViewsOfTheSheet, TheTargetComesIntoTheMiddleOfTheView) {
    BoxAt({500, 500, 0}, {600, 700, 18});
    HostViewport& viewport = Entered();
    EXPECT_NE(viewport.Values().viewCenter[0], 0);
    Type("dview\r\rpo\r550,600,0\r550,600,10\r\r");
    EXPECT_EQ(viewport.Values().viewCenter[0], 0);
    EXPECT_EQ(viewport.Values().viewCenter[1], 0);
}

TEST_F(ViewsOfTheSheet, ZoomExtentsShowsTheWholeModelInTheViewport) {
    HostViewport& viewport = Entered();
    BoxAt({500, 500, 0}, {600, 700, 18});
    Type("zoom e ");
    EXPECT_NEAR(viewport.Values().viewCenter[0], 550, 1e-9);
    EXPECT_NEAR(viewport.Values().viewCenter[1], 600, 1e-9);
    EXPECT_GE(viewport.Values().viewHeight, 200);
}

TEST_F(ViewsOfTheSheet, CvportTellsAndEntersAViewport) {
    Type("cvport ");
    EXPECT_EQ(commandLine.Prompt(document), "Enter new value for CVPORT <2>:");
    Type("3 \x1btilemode 0 cvport ");
    EXPECT_TRUE(Told("model space has one viewport"));
    EXPECT_EQ(commandLine.Prompt(document), "Enter new value for CVPORT <1>:");
    Type(" mview 0,0 10,10 mview 20,0 30,10 cvport 2 ");
    ExpectIdle();
    EXPECT_EQ(document.CurrentViewport(), ViewportsOf(document).at(0));
    Type("cvport 3 ");
    EXPECT_EQ(document.CurrentViewport(), ViewportsOf(document).at(1));
    Type("cvport 1 ");
    EXPECT_EQ(document.CurrentViewport(), nullptr);
    Type("cvport 9 \x1b");
    EXPECT_TRUE(Told("no viewport of that number"));
}

TEST_F(ViewsOfTheSheet, TilemodeAtItsValueLeavesNoViewport) {
    HostViewport& viewport = Entered();
    Type("tilemode 0 ");
    EXPECT_EQ(document.CurrentViewport(), &viewport);
}

TEST_F(ViewsOfTheSheet, EscapeWhileViewportsAreChosenGoesBackIntoTheViewport) {
    NewLayer("A");
    HostViewport& viewport = Entered();
    Type("vplayer f A\rselect\r");
    EXPECT_EQ(document.CurrentViewport(), nullptr);
    Type("\x1b");
    EXPECT_EQ(document.CurrentViewport(), &viewport);
}

TEST_F(ViewsOfTheSheet, AViewportTurnedOffIsNotEnteredAgain) {
    Entered();
    Type("mview off all  ");
    ExpectIdle();
    EXPECT_EQ(document.CurrentViewport(), nullptr);
}

}  // namespace
}  // namespace brenvik
