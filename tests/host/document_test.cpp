// Documents of the host: list, spaces, coordinate systems, prompts, blocks.
#include "host_fixture.h"

namespace brenvik {
namespace {

constexpr double pi = std::numbers::pi;

using Document = HostTest;

TEST_F(Document, TheListAndTheActiveOne) {
    EXPECT_EQ(application.Documents().Count(), 1);
    EXPECT_EQ(application.ActiveDocument(), &document);
    HostDocument& second = application.NewDocument();
    HostDocument& third = application.NewDocument();
    EXPECT_EQ(application.ActiveDocument(), &third);
    application.Activate(document);
    EXPECT_EQ(application.ActiveDocument(), &document);
    document.Close(false);
    EXPECT_EQ(application.ActiveDocument(), &third);
    third.Close(false);
    EXPECT_EQ(application.ActiveDocument(), &second);
    second.Close(false);
    EXPECT_EQ(application.Documents().Count(), 0);
    EXPECT_THROW(application.ActiveDocument(), Failure);
    EXPECT_THROW(application.Documents().Item(0), Failure);
}

TEST_F(Document, AClosedDrawingAnswersWithAFailure) {
    AcadDocument& old = document;
    old.Close(false);
    EXPECT_EQ(FailureOf([&] { old.ModelSpace(); }).number(), host_failure_number::WasErased);
    EXPECT_EQ(FailureOf([&] { old.Close(false); }).number(), host_failure_number::WasErased);
    EXPECT_EQ(FailureOf([&] { old.HandleToObject("1"); }).number(), host_failure_number::WasErased);
    EXPECT_EQ(FailureOf([&] { old.SelectionSets(); }).number(), host_failure_number::WasErased);
}

TEST_F(Document, WindowStateIsKept) {
    application.SetWindowState(WindowStateKind::Minimized);
    EXPECT_EQ(application.WindowState(), WindowStateKind::Minimized);
}

TEST_F(Document, AnUnnamedDrawingHasBlankNamesAndCantBeSaved) {
    EXPECT_EQ(document.Name(), "");
    EXPECT_EQ(document.FullName(), "");
    EXPECT_THROW(document.Save(), Failure);
    EXPECT_EQ(&document.Application(), &application);
}

TEST_F(Document, SpacesAndViewports) {
    EXPECT_EQ(document.ActiveSpace(), ActiveSpaceKind::ModelSpace);
    EXPECT_EQ(document.ActiveLayout(), "Model");
    EXPECT_THROW(document.SetMSpace(true), Failure);
    EXPECT_THROW(Model().AddPViewport({0, 0, 0}, 1, 1), Failure);
    document.SetActiveSpace(ActiveSpaceKind::PaperSpace);
    EXPECT_EQ(document.ActiveLayout(), "Layout1");
    EXPECT_EQ(document.ActivePViewport(), nullptr);
    EXPECT_THROW(document.SetMSpace(true), Failure);
    AcadPViewport* viewport = document.PaperSpace().AddPViewport({5, 5, 0}, 10, 8);
    EXPECT_EQ(viewport->Width(), 10);
    EXPECT_EQ(viewport->Height(), 8);
    viewport->Display(true);
    document.SetMSpace(true);
    EXPECT_TRUE(document.MSpace());
    EXPECT_EQ(document.ActivePViewport(), viewport);
    EXPECT_EQ(&document.CurrentSpace(), &document.Model());
    document.SetActiveSpace(ActiveSpaceKind::ModelSpace);
    EXPECT_FALSE(document.MSpace());
}

TEST_F(Document, TheUserCoordinateSystemStartsAsTheWorld) {
    const std::array<Point3, 3> ucs = document.ActiveUCS();
    ExpectExact(ucs[0], {0, 0, 0});
    ExpectExact(ucs[1], {1, 0, 0});
    ExpectExact(ucs[2], {0, 1, 0});
}

TEST_F(Document, CoordinatesTranslateBothWays) {
    document.SetActiveUcs({10, 20, 30}, {0, 2, 0}, {0, 0, 5});
    AcadUtility& utility = document.Utility();
    const auto toWorld = [&](const Point3& p) {
        return utility.TranslateCoordinates(p, CoordinateSystem::UserCoordinates, CoordinateSystem::World);
    };
    const auto toUser = [&](const Point3& p) {
        return utility.TranslateCoordinates(p, CoordinateSystem::World, CoordinateSystem::UserCoordinates);
    };
    ExpectExact(toWorld({1, 2, 3}), {13, 21, 32});
    ExpectExact(toUser({13, 21, 32}), {1, 2, 3});
    EXPECT_THROW(document.SetActiveUcs({0, 0, 0}, {1, 0, 0}, {2, 0, 0}), Failure);
    EXPECT_THROW(document.SetActiveUcs({0, 0, 0}, {0, 0, 0}, {0, 1, 0}), Failure);
    ExpectExact(document.ActiveUCS()[0], {10, 20, 30});
    document.SetActiveUcs({0, 0, 0}, {1, 0, 0}, {0.3, 1, 0});
    ExpectExact(document.ActiveUCS()[2], {0, 1, 0});
}

TEST_F(Document, PromptsWithoutAnybodyToAnswerAreCancelled) {
    AcadUtility& utility = document.Utility();
    EXPECT_EQ(FailureOf([&] { utility.GetPoint("Pick a from point: "); }).number(),
              host_failure_number::Cancelled);
    EXPECT_EQ(FailureOf([&] { utility.GetReal("Height: "); }).number(), host_failure_number::Cancelled);
    EXPECT_EQ(FailureOf([&] { utility.GetString(true, "Name: "); }).number(), host_failure_number::Cancelled);
    EXPECT_EQ(FailureOf([&] { utility.GetKeyword("Yes/No: "); }).number(), host_failure_number::Cancelled);
    EXPECT_NO_THROW(utility.Prompt("Done."));
}

class Answers final : public PromptPort {
  public:
    std::optional<Point3> GetPoint(std::string_view prompt) override {
        asked = prompt;
        return Point3{1, 2, 3};
    }
    std::optional<double> GetReal(std::string_view) override { return std::nullopt; }
    std::optional<std::string> GetString(bool, std::string_view) override { return "Base cabinet"; }
    std::optional<std::string> GetKeyword(std::string_view) override { return "Yes"; }
    std::optional<std::vector<AcadEntity*>> SelectOnScreen(AcadDocument& drawing) override {
        return std::vector<AcadEntity*>{drawing.ModelSpace().Item(0)};
    }
    void Prompt(std::string_view text) override { told = text; }

    std::string asked, told;
};

TEST_F(Document, PromptsAreAnsweredByWhoIsAttached) {
    Answers answers;
    application.SetPrompts(&answers);
    AcadUtility& utility = document.Utility();
    ExpectExact(utility.GetPoint("Pick a from point: "), {1, 2, 3});
    EXPECT_EQ(answers.asked, "Pick a from point: ");
    EXPECT_THROW(utility.GetReal("Height: "), Failure);
    EXPECT_EQ(utility.GetString(true, "Name: "), "Base cabinet");
    EXPECT_EQ(utility.GetString(false, "Name: "), "Base");
    EXPECT_EQ(utility.GetKeyword("Yes/No: "), "Yes");
    utility.Prompt("Done.");
    EXPECT_EQ(answers.told, "Done.");
    Model().AddLine({0, 0, 0}, {1, 0, 0});
    AcadSelectionSet* set = document.SelectionSets().Add("s");
    set->SelectOnScreen();
    EXPECT_EQ(set->Count(), 1);
    application.SetPrompts(nullptr);
}

class Blocks : public HostTest {
  protected:
    HostBlock& NewBlock(const std::string& name) {
        BlockData record;
        record.name = name;
        record.base = {1, 0, 0};
        return document.AddBlock(record);
    }
};

TEST_F(Blocks, TheSpacesStandFirst) {
    NewBlock("Hinge");
    EXPECT_EQ(document.Blocks().Count(), 3);
    EXPECT_EQ(document.Blocks().Item(0)->Name(), "*Model_Space");
    EXPECT_EQ(document.Blocks().Item(1)->Name(), "*Paper_Space");
    EXPECT_EQ(document.Blocks().Item("hinge")->Name(), "Hinge");
    EXPECT_THROW(document.Blocks().Item("Knob"), Failure);
    EXPECT_THROW(NewBlock("HINGE"), Failure);
}

TEST_F(Blocks, AReferenceHasTheBoxOfWhatItShowsAndExplodesIntoIt) {
    HostBlock& block = NewBlock("Hinge");
    block.AddLine({1, 0, 0}, {3, 0, 0});
    block.AddArc({1, 0, 0}, 1, 0, pi / 2);
    HostBlockReference& reference = document.Model().InsertBlock({10, 10, 0}, "hinge", 2, pi / 2);
    EXPECT_EQ(reference.Name(), "Hinge");
    ExpectExact(reference.InsertionPoint(), {10, 10, 0});
    ExpectBox(reference.GetBoundingBox(), {8, 10, 0}, {10, 14, 0}, 1e-12);
    const std::vector<AcadEntity*> pieces = reference.Explode();
    ASSERT_EQ(pieces.size(), 2U);
    ExpectNear(dynamic_cast<AcadLine&>(*pieces[0]).EndPoint(), {10, 14, 0});
    EXPECT_EQ(dynamic_cast<AcadArc&>(*pieces[1]).Radius(), 2);
    EXPECT_EQ(Model().Count(), 3);
}

TEST_F(Blocks, AnUnevenScaleMakesEllipsesOfCircles) {
    HostBlock& block = NewBlock("Oval");
    block.AddCircle({1, 0, 0}, 1);
    InsertData data;
    data.block = "Oval";
    data.scale = {2, 1, 1};
    HostEntity& reference = document.Model().Add(data);
    ExpectBox(reference.GetBoundingBox(), {-2, -1, 0}, {2, 1, 0}, 1e-12);
    const auto pieces = dynamic_cast<AcadBlockReference&>(reference).Explode();
    EXPECT_EQ(pieces.front()->ObjectName(), "AcDbEllipse");
    block.AddBox({0, 0, 0}, 1, 1, 1);
    EXPECT_THROW(dynamic_cast<AcadBlockReference&>(reference).Explode(), Failure);
}

TEST_F(Blocks, ABlockCantHoldItself) {
    HostBlock& inner = NewBlock("Inner");
    HostBlock& outer = NewBlock("Outer");
    outer.InsertBlock({0, 0, 0}, "Inner");
    EXPECT_THROW(inner.InsertBlock({0, 0, 0}, "Inner"), Failure);
    EXPECT_THROW(inner.InsertBlock({0, 0, 0}, "Outer"), Failure);
    EXPECT_THROW(outer.InsertBlock({0, 0, 0}, "*Model_Space"), Failure);
    EXPECT_THROW(outer.InsertBlock({0, 0, 0}, "Nowhere"), Failure);
}

TEST_F(Blocks, CirclesAndTowersOfBlocksEnd) {
    HostBlock& circle = NewBlock("Circle");
    InsertData self;
    self.block = "Circle";
    circle.Add(self);
    circle.Add(self);
    HostEntity& reference = document.Model().Add(self);
    EXPECT_THROW(reference.GetBoundingBox(), Failure);
    EXPECT_EQ(dynamic_cast<AcadBlockReference&>(reference).Explode().size(), 2U);
}

TEST_F(Blocks, MirroredReferencesShowMirroredContent) {
    HostBlock& block = NewBlock("Hook");
    block.AddArc({1, 0, 0}, 1, 0, pi / 2);
    HostBlockReference& reference = document.Model().InsertBlock({10, 0, 0}, "Hook");
    AcadEntity* mirrored = reference.Mirror({0, 0, 0}, {0, 1, 0});
    ExpectBox(mirrored->GetBoundingBox(), {-11, 0, 0}, {-10, 1, 0}, 1e-12);
}

TEST_F(Blocks, PurgeTakesUnusedDefinitionsAndThoseThatOnlyTheyUsed) {
    NewBlock("Inner").AddLine({0, 0, 0}, {1, 0, 0});
    NewBlock("Outer").InsertBlock({0, 0, 0}, "Inner");
    NewBlock("Kept").AddLine({0, 0, 0}, {1, 0, 0});
    document.Model().InsertBlock({0, 0, 0}, "Kept");
    document.PurgeAll();
    EXPECT_EQ(document.Blocks().Count(), 3);
    EXPECT_NO_THROW(document.Blocks().Item("Kept"));
}

}  // namespace
}  // namespace brenvik
