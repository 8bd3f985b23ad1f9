// Selection sets, the previous selection, and groups.
#include "host_fixture.h"

namespace brenvik {
namespace {

class Selection : public HostTest {
  protected:
    AcadSelectionSet& Set(const std::string& name = "prev") { return *document.SelectionSets().Add(name); }
    void MakePrevious(const std::vector<AcadEntity*>& entities) {
        std::vector<HostEntity*> own;
        for (AcadEntity* entity : entities) own.push_back(&HostEntityOf(entity));
        document.SetPreviousSelection(own);
    }

    AcadLine* line = Model().AddLine({0, 0, 0}, {1, 0, 0});
    AcadCircle* circle = Model().AddCircle({5, 5, 0}, 1);
    AcadArc* arc = Model().AddArc({10, 10, 0}, 1, 0, 1);
};

TEST_F(Selection, ItemFailsForUnknownAndAddForKnownNames) {
    EXPECT_EQ(FailureOf([&] { document.SelectionSets().Item("prev"); }).number(),
              host_failure_number::KeyNotFound);
    Set("prev");
    EXPECT_EQ(FailureOf([&] { Set("PREV"); }).number(), host_failure_number::DuplicateKey);
    EXPECT_EQ(document.SelectionSets().Item("Prev")->Name(), "prev");
    EXPECT_THROW(Set(" "), Failure);
}

TEST_F(Selection, ASetLeftBehindCanBeDeletedAndAddedAnew) {
    AcadSelectionSet& old = Set();
    old.Select(SelectMode::All);
    document.SelectionSets().Item("prev")->Delete();
    EXPECT_EQ(document.SelectionSets().Count(), 0);
    EXPECT_EQ(FailureOf([&] { old.Count(); }).number(), host_failure_number::WasErased);
    EXPECT_EQ(Set().Count(), 0);
    EXPECT_EQ(Model().Count(), 3);
}

TEST_F(Selection, PreviousTakesWhatWasSelectedInItsOrder) {
    MakePrevious({arc, line});
    AcadSelectionSet& set = Set();
    set.Select(SelectMode::Previous);
    ASSERT_EQ(set.Count(), 2);
    EXPECT_EQ(set.Item(0), static_cast<AcadEntity*>(arc));
    EXPECT_EQ(set.Item(1), static_cast<AcadEntity*>(line));
    EXPECT_THROW(set.Item(2), Failure);
}

TEST_F(Selection, AnEmptyPreviousSelectionAddsNothing) {
    AcadSelectionSet& set = Set();
    set.Select(SelectMode::Previous);
    EXPECT_EQ(set.Count(), 0);
}

TEST_F(Selection, AllTakesLockedAndFrozenLayersAndPaperSpaceInDrawingOrder) {
    HostLayer& locked = NewLayer("Locked");
    HostLayer& frozen = NewLayer("Frozen");
    line->SetLayer("Locked");
    circle->SetLayer("Frozen");
    locked.SetLock(true);
    frozen.SetFreeze(true);
    AcadLine* onPaper = document.PaperSpace().AddLine({0, 0, 0}, {1, 0, 0});
    AcadSelectionSet& set = Set();
    set.Select(SelectMode::All);
    ASSERT_EQ(set.Count(), 4);
    EXPECT_EQ(set.Item(0), static_cast<AcadEntity*>(line));
    EXPECT_EQ(set.Item(1), static_cast<AcadEntity*>(circle));
    EXPECT_EQ(set.Item(3), static_cast<AcadEntity*>(onPaper));
}

TEST_F(Selection, LastTakesTheNewestThatIsVisible) {
    arc->SetVisible(false);
    AcadSelectionSet& set = Set();
    set.Select(SelectMode::Last);
    ASSERT_EQ(set.Count(), 1);
    EXPECT_EQ(set.Item(0), static_cast<AcadEntity*>(circle));
}

TEST_F(Selection, ErasedMembersDropOutOfSetsAndOfThePreviousSelection) {
    MakePrevious({line, circle});
    AcadSelectionSet& set = Set();
    set.Select(SelectMode::All);
    line->Delete();
    EXPECT_EQ(set.Count(), 2);
    EXPECT_EQ(set.Item(0), static_cast<AcadEntity*>(circle));
    EXPECT_EQ(document.PreviousSelection().size(), 1U);
}

TEST_F(Selection, ItemsAreHeldOnce) {
    AcadSelectionSet& set = Set();
    const std::vector<AcadEntity*> items{line, circle, line};
    set.AddItems(items);
    set.AddItems(items);
    EXPECT_EQ(set.Count(), 2);
    set.RemoveItems(std::vector<AcadEntity*>{line, arc});
    ASSERT_EQ(set.Count(), 1);
    set.Clear();
    EXPECT_EQ(set.Count(), 0);
    set.AddItems(std::vector<AcadEntity*>{line});
    EXPECT_EQ(set.Count(), 1);
}

TEST_F(Selection, ErasedForeignAndMissingItemsAreRefusedAndNoneIsAdded) {
    HostDocument& other = application.NewDocument();
    AcadLine* foreign = other.ModelSpace().AddLine({0, 0, 0}, {1, 0, 0});
    AcadSelectionSet& set = Set();
    circle->Delete();
    EXPECT_THROW(set.AddItems(std::vector<AcadEntity*>{line, foreign}), Failure);
    EXPECT_THROW(set.AddItems(std::vector<AcadEntity*>{line, circle}), Failure);
    EXPECT_THROW(set.AddItems(std::vector<AcadEntity*>{line, nullptr}), Failure);
    EXPECT_EQ(set.Count(), 0);
}

TEST_F(Selection, EraseLeavesMembersOnLockedLayers) {
    HostLayer& locked = NewLayer("Locked");
    line->SetLayer("Locked");
    locked.SetLock(true);
    AcadSelectionSet& set = Set();
    set.Select(SelectMode::All);
    set.Erase();
    EXPECT_EQ(Model().Count(), 1);
    EXPECT_EQ(set.Count(), 1);
}

TEST_F(Selection, PointAndPolygonTakeWhatIsShownThere) {
    AcadSelectionSet& set = Set();
    set.SelectAtPoint({5, 5, 100});
    ASSERT_EQ(set.Count(), 1);
    EXPECT_EQ(set.Item(0), static_cast<AcadEntity*>(circle));
    set.Clear();
    set.SelectByPolygon(std::vector<Point3>{{-1, -1, 0}, {7, -1, 0}, {7, 7, 0}, {-1, 7, 0}});
    EXPECT_EQ(set.Count(), 2);
    set.Clear();
    circle->SetVisible(false);
    set.SelectAtPoint({5, 5, 0});
    EXPECT_EQ(set.Count(), 0);
    EXPECT_THROW(set.SelectByPolygon(std::vector<Point3>{{0, 0, 0}, {1, 1, 0}}), Failure);
}

TEST_F(Selection, OnScreenWithoutAnybodyToPointIsCancelled) {
    EXPECT_EQ(FailureOf([&] { Set().SelectOnScreen(); }).number(), host_failure_number::Cancelled);
}

TEST_F(Selection, GroupsKeepOrderAndGiveTheExistingOneBack) {
    AcadGroup* group = document.Groups().Add("BASE");
    group->AppendItems(std::vector<AcadEntity*>{circle, line});
    EXPECT_EQ(document.Groups().Add("base"), group);
    ASSERT_EQ(group->Count(), 2);
    EXPECT_EQ(group->Item(0), static_cast<AcadEntity*>(circle));
    circle->Delete();
    EXPECT_EQ(group->Count(), 1);
    EXPECT_EQ(document.Groups().Count(), 1);
    EXPECT_EQ(document.Groups().Item(0)->Name(), "BASE");
    group->Delete();
    EXPECT_EQ(document.Groups().Count(), 0);
    EXPECT_EQ(Model().Count(), 2);
    EXPECT_THROW(document.Groups().Item("BASE"), Failure);
}

TEST_F(Selection, AGroupNeedsANameThatTablesTake) {
    EXPECT_THROW(document.Groups().Add(""), Failure);
    EXPECT_THROW(document.Groups().Add("A/B"), Failure);
    EXPECT_NO_THROW(document.Groups().Add("Lower cabinet 1"));
}

}  // namespace
}  // namespace brenvik
