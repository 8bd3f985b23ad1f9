// The drawing tools by what they leave in the drawing.
#include "tools/drawing_tools.h"

#include "cnc/cnc_fixture.h"
#include "cnc/scripted_prompts.h"
#include "parts/part_trouble.h"

namespace brenvik {
namespace {

class DrawingToolsTest : public CncTest {
  protected:
    DrawingToolsTest() { host.SetPrompts(&prompts); }
    ~DrawingToolsTest() override { host.SetPrompts(nullptr); }

    Acad3DSolid& BoxAt(const Point3& center, const std::string& subAssembly = "Base") {
        Acad3DSolid& solid = *document.ModelSpace().AddBox(center, 2, 4, 6);
        mAutoCAD::SetPartData(&solid, "SubAssembly", subAssembly);
        return solid;
    }
    static Point3 MiddleOf(const AcadEntity& entity) {
        const Box3 box = entity.GetBoundingBox();
        return {(box.min.x + box.max.x) / 2, (box.min.y + box.max.y) / 2, (box.min.z + box.max.z) / 2};
    }
    static void ExpectMiddle(const AcadEntity& entity, const Point3& wanted) {
        const Point3 middle = MiddleOf(entity);
        EXPECT_NEAR(middle.x, wanted.x, 1e-9);
        EXPECT_NEAR(middle.y, wanted.y, 1e-9);
        EXPECT_NEAR(middle.z, wanted.z, 1e-9);
    }
    bool Typed(std::string_view part) const {
        for (const std::string& line : transcript)
            if (line.find(part) != std::string::npos) return true;
        return false;
    }
    std::vector<std::string> GroupNames() {
        std::vector<std::string> names;
        for (int i = 0; i < document.Groups().Count(); ++i)
            names.push_back(document.Groups().Item(i)->Name());
        return names;
    }
    int MembersOf(std::string_view group) { return document.Groups().Item(group)->Count(); }

    ScriptedPrompts prompts;
};

TEST_F(DrawingToolsTest, PartsSpreadAboutTheWorldOriginWhateverPointIsPicked) {
    Acad3DSolid& solid = BoxAt({10, 20, 30});
    Acad3DSolid& centred = BoxAt({0, 0, 0});
    AcadLine* line = document.ModelSpace().AddLine({1, 1, 1}, {5, 5, 5});
    for (const Point3& picked : {Point3{0, 0, 0}, Point3{500, -3, 7}}) {
        Choose({&solid, &centred, line});
        prompts.points = {picked};
        prompts.reals = {2};
        const Point3 before = MiddleOf(solid);
        commands::BVExplode(host);
        ExpectMiddle(solid, {2 * before.x, 2 * before.y, 2 * before.z});
        ExpectMiddle(centred, {0, 0, 0});
        EXPECT_EQ(line->StartPoint(), (Point3{1, 1, 1}));
    }
    EXPECT_EQ(prompts.asked[0], "Pick a point for the center reference: ");
    EXPECT_EQ(prompts.asked[1], "Enter a numeric scale amount (a space terminates input): ");
}

TEST_F(DrawingToolsTest, AFactorOfOneMovesNothingAndASmallerOneDrawsTogether) {
    Acad3DSolid& solid = BoxAt({10, 20, 30});
    Choose({&solid});
    prompts.points = {{0, 0, 0}};
    prompts.reals = {1};
    commands::BVExplode(host);
    ExpectMiddle(solid, {10, 20, 30});
    Choose({&solid});
    prompts.points = {{0, 0, 0}};
    prompts.reals = {0.5};
    commands::BVExplode(host);
    ExpectMiddle(solid, {5, 10, 15});
}

TEST_F(DrawingToolsTest, ACancelledPromptSpreadsNothing) {
    Acad3DSolid& solid = BoxAt({10, 20, 30});
    Choose({&solid});
    prompts.points = {{0, 0, 0}};
    commands::BVExplode(host);
    ExpectMiddle(solid, {10, 20, 30});
    EXPECT_TRUE(Messages().empty());
}

TEST_F(DrawingToolsTest, AMoveIsFlatInThePlaneOfTheView) {
    Acad3DSolid& solid = BoxAt({10, 20, 30});
    Choose({&solid});
    prompts.points = {{0, 0, 0}, {100, 50, 700}};
    commands::BVMove(host);
    ExpectMiddle(solid, {110, 70, 30});
    EXPECT_EQ(prompts.asked, (std::vector<std::string>{"Pick a from point: ", "Pick a to point: "}));
}

TEST_F(DrawingToolsTest, InAnIsometricViewPartsMoveParallelToTheScreen) {
    document.SendCommand("-view swiso ");
    Acad3DSolid& solid = BoxAt({0, 0, 0});
    Choose({&solid});
    prompts.points = {{0, 0, 0}, {90, 30, 60}};
    const std::array<Point3, 3> before = document.ActiveUCS();
    commands::BVMove(host);
    // Seen from the south-west and above, the line of sight runs along (1, 1, -1): the move is what is left
    // of the way from point to point without its part along that line.
    const double depth = (90.0 + 30 - 60) / 3;
    ExpectMiddle(solid, {90 - depth, 30 - depth, 60 + depth});
    EXPECT_EQ(document.ActiveUCS(), before);
}

TEST_F(DrawingToolsTest, CopiesCarryAllPartDataAndOriginalsStay) {
    Acad3DSolid& solid = BoxAt({10, 20, 30}, "Wall");
    Choose({&solid});
    prompts.points = {{0, 0, 0}, {100, 0, 5}};
    commands::BVCopy(host);
    const std::vector<Acad3DSolid*> solids = All<Acad3DSolid>(document);
    ASSERT_EQ(solids.size(), 2U);
    ExpectMiddle(*solids[0], {10, 20, 30});
    ExpectMiddle(*solids[1], {110, 20, 30});
    EXPECT_NE(solids[0]->Handle(), solids[1]->Handle());
    EXPECT_EQ(mAutoCAD::GetPartData(solids[1]->Handle(), "SUBASSEMBLY"), "Wall");
}

TEST_F(DrawingToolsTest, PartsOnLockedLayersAreNeitherMovedNorCopiedAndTold) {
    AddLayer(document, "Held");
    Acad3DSolid& held = BoxAt({0, 0, 0});
    Acad3DSolid& free = BoxAt({50, 0, 0});
    held.SetLayer("Held");
    document.Layers().Item("Held")->SetLock(true);
    for (const auto command : {commands::BVMove, commands::BVCopy}) {
        Choose({&held, &free});
        prompts.points = {{0, 0, 0}, {100, 0, 0}};
        command(host);
        const std::vector<PartTrouble> troubles = TakePartTroubles();
        ASSERT_EQ(troubles.size(), 1U);
        EXPECT_EQ(troubles[0].handle, held.Handle());
        EXPECT_TRUE(troubles[0].text.starts_with("it is left as it was: ")) << troubles[0].text;
        EXPECT_FALSE(troubles[0].isRemark);
    }
    const std::vector<Acad3DSolid*> solids = All<Acad3DSolid>(document);
    ASSERT_EQ(solids.size(), 3U);
    ExpectMiddle(*solids[0], {0, 0, 0});
    ExpectMiddle(*solids[1], {150, 0, 0});
    ExpectMiddle(*solids[2], {250, 0, 0});
}

TEST_F(DrawingToolsTest, InAViewportOfTheSheetItsOwnViewCounts) {
    document.SendCommand("tilemode 0 mview fit mspace ucsortho 0 -view front ");
    Acad3DSolid& solid = BoxAt({10, 20, 30});
    Choose({&solid});
    prompts.points = {{0, 0, 0}, {100, 50, 7}};
    const std::array<Point3, 3> before = document.ActiveUCS();
    commands::BVMove(host);
    ExpectMiddle(solid, {110, 20, 37});
    EXPECT_EQ(document.ActiveUCS(), before);
}

TEST_F(DrawingToolsTest, GroupsWhoseNamesDifferInCaseAloneAreOne) {
    Acad3DSolid& old = BoxAt({0, 0, 0}, "Base");
    Acad3DSolid& fresh = BoxAt({10, 0, 0}, "bASE");
    AcadEntity* member = &old;
    document.Groups().Add("Base")->AppendItems(std::span(&member, 1));
    Choose({&fresh});
    commands::BVGroup(host);
    EXPECT_EQ(GroupNames(), std::vector<std::string>{"BASE"});
    EXPECT_EQ(MembersOf("Base"), 1);
}

TEST_F(DrawingToolsTest, ASubAssemblyThatBeginsWithAnApostropheIsRebuiltToo) {
    Acad3DSolid& solid = BoxAt({0, 0, 0}, "'A 1");
    for (int run = 0; run < 2; ++run) {
        Choose({&solid});
        commands::BVGroup(host);
        EXPECT_EQ(GroupNames(), std::vector<std::string>{"'A 1"});
    }
}

TEST_F(DrawingToolsTest, ShowingAllLeavesLayersFrozen) {
    AddLayer(document, "Cold");
    Acad3DSolid& solid = BoxAt({0, 0, 0});
    solid.SetLayer("Cold");
    solid.SetVisible(false);
    document.Layers().Item("Cold")->SetFreeze(true);
    commands::ShowAllEntities(host);
    EXPECT_TRUE(solid.Visible());
    EXPECT_TRUE(document.Layers().Item("Cold")->Freeze());
    EXPECT_TRUE(Messages().empty());
}

TEST_F(DrawingToolsTest, ACancelledMoveLeavesPartsAndTheUserSystem) {
    Acad3DSolid& solid = BoxAt({10, 20, 30});
    Choose({&solid});
    prompts.points = {{0, 0, 0}};
    const std::array<Point3, 3> before = document.ActiveUCS();
    commands::BVMove(host);
    ExpectMiddle(solid, {10, 20, 30});
    EXPECT_EQ(document.ActiveUCS(), before);
}

TEST_F(DrawingToolsTest, GroupsAreRebuiltBySubAssembly) {
    Acad3DSolid& first = BoxAt({0, 0, 0}, "Base");
    Acad3DSolid& second = BoxAt({10, 0, 0}, "BASE");
    Acad3DSolid& third = BoxAt({20, 0, 0}, "Upper Cab 1");
    AcadEntity* old = &third;
    document.Groups().Add("OLD 1")->AppendItems(std::span(&old, 1));
    Choose({&first, &second, &third});
    commands::BVGroup(host);
    EXPECT_EQ(GroupNames(), (std::vector<std::string>{"BASE", "UPPER CAB 1"}));
    EXPECT_EQ(MembersOf("BASE"), 2);
    EXPECT_EQ(MembersOf("UPPER CAB 1"), 1);
    Choose({&third});
    commands::BVGroup(host);
    EXPECT_EQ(GroupNames(), std::vector<std::string>{"UPPER CAB 1"});
}

TEST_F(DrawingToolsTest, ANameThatTheHostRefusesLeavesItsPartWithoutAGroup) {
    Acad3DSolid& blank = BoxAt({0, 0, 0}, "");
    Acad3DSolid& refused = BoxAt({10, 0, 0}, "left/right");
    Acad3DSolid& good = BoxAt({20, 0, 0}, "Base");
    Choose({&blank, &refused, &good});
    commands::BVGroup(host);
    EXPECT_EQ(GroupNames(), std::vector<std::string>{"BASE"});
    EXPECT_TRUE(Messages().empty());
}

TEST_F(DrawingToolsTest, AnEntityOnALockedLayerChangesItsVisibilityAndTheLockStays) {
    AddLayer(document, "Fronts");
    Acad3DSolid& solid = BoxAt({0, 0, 0});
    solid.SetLayer("Fronts");
    LockLayer(document, "Fronts");
    Choose({&solid});
    commands::HideSelectedEntities(host);
    EXPECT_FALSE(solid.Visible());
    EXPECT_TRUE(document.Layers().Item("Fronts")->Lock());
    commands::ShowAllEntities(host);
    EXPECT_TRUE(solid.Visible());
    EXPECT_TRUE(document.Layers().Item("Fronts")->Lock());
}

TEST_F(DrawingToolsTest, KindsThatAreNotPartsOfADrawingOfPartsStayAsTheyAre) {
    document.SendCommand("point 1,2,3 ");
    Acad3DSolid& solid = BoxAt({0, 0, 0});
    AcadBlock& model = document.ModelSpace();
    AcadEntity* other = nullptr;
    model.ForEach([&other](AcadEntity& entity) {
        if (entity.ObjectName() == "AcDbPoint") other = &entity;
    });
    Choose({&solid});
    commands::ShowSelectedOnly(host);
    EXPECT_TRUE(solid.Visible());
    if (other != nullptr) {
        EXPECT_TRUE(other->Visible());
    }
}

TEST_F(DrawingToolsTest, OnlyTheSelectedEntitiesStayVisible) {
    Acad3DSolid& kept = BoxAt({0, 0, 0});
    Acad3DSolid& other = BoxAt({10, 0, 0});
    AcadLine* line = document.ModelSpace().AddLine({1, 1, 1}, {5, 5, 5});
    kept.SetVisible(false);
    Choose({&kept});
    commands::ShowSelectedOnly(host);
    EXPECT_TRUE(kept.Visible());
    EXPECT_FALSE(other.Visible());
    EXPECT_FALSE(line->Visible());
}

TEST_F(DrawingToolsTest, NothingSelectedHidesNothing) {
    Acad3DSolid& solid = BoxAt({0, 0, 0});
    Choose({});
    commands::HideSelectedEntities(host);
    EXPECT_TRUE(solid.Visible());
}

}  // namespace
}  // namespace brenvik
