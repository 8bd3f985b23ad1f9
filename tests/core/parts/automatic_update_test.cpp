// The automatic update: when it runs, what it leaves on the solids, and what it keeps to itself.
#include "core/grid/grid_fixture.h"

namespace brenvik {
namespace {

class AutomaticUpdate : public GridTest {
  protected:
    AutomaticUpdate() { system.settings.Set("SettingsEvent", "1"); }
    fakes::FakeEntity& Solid(std::size_t place) { return *system.Document().entities.at(place); }
    cBrenvik brenvik;
};

struct SwitchCase {
    const char *method, *setting;
    bool updates;
};

TEST_F(AutomaticUpdate, FollowsItsSwitch) {
    const SwitchCase cases[] = {
        {"EventBrenvik", "1", true}, {"EventBrenvik", "0", false}, {"EventBrenvik", "2", false},
        {"UpdateNow2", "1", true},   {"UpdateNow2", "0", false},   {"UpdateNow2", "-1", false},
        {"UpdateNow", "0", true},    {"UpdateNow", "", true},      {"UpdateNow", "1", true}};
    fakes::FakeEntity& solid = AddApplied("A", "LWT", 18, 600, 400);
    for (const SwitchCase& update : cases) {
        solid.writes.clear();
        system.files.acts.clear();
        system.settings.Set("SettingsEvent", update.setting);
        EXPECT_TRUE(brenvik.Call(update.method, system.app));
        EXPECT_EQ(!solid.writes.empty(), update.updates) << update.method << " " << update.setting;
        EXPECT_EQ(!system.files.acts.empty(), update.updates) << update.method << " " << update.setting;
    }
    EXPECT_TRUE(system.Messages().empty());
}

TEST_F(AutomaticUpdate, ShowsThatItsSwitchIsNoNumber) {
    AddApplied("A", "LWT", 18, 600, 400);
    system.settings.Set("SettingsEvent", "");
    brenvik.EventBrenvik(system.app);
    EXPECT_EQ(system.Messages(), Texts{"13\r\nBrenvik\r\nType mismatch"});
    EXPECT_TRUE(Solid(0).writes.empty());
}

TEST_F(AutomaticUpdate, MovesTheLettersOfAStretchedPanelAndKeepsItsExtents) {
    fakes::FakeEntity& solid = AddApplied("A", "LWT", 18, 600, 400);
    system.measuring.results[solid.ObjectID()] = {18, 600, 800, 1};
    brenvik.EventBrenvik(system.app);
    EXPECT_EQ(solid.data["ORIE"], "WLT");
    EXPECT_EQ(solid.data["OLDVALUE3"], "800");
    EXPECT_FALSE(Main().Loaded());
    EXPECT_TRUE(system.dialogs.shownForms.empty());
    EXPECT_EQ(system.database.Text(system.WorkPath, 0, "bv_lwt"), "WLT");
    EXPECT_TRUE(system.Messages().empty());
}

TEST_F(AutomaticUpdate, KeepsQuantitiesAndMakesABlankOneOne) {
    AddApplied("A", "LWT", 18, 600, 400).data["QUANTITY"] = "4";
    AddApplied("B", "LWT", 18, 600, 400).data["QUANTITY"] = "";
    brenvik.UpdateNow(system.app);
    EXPECT_EQ(Solid(0).data["QUANTITY"], "4");
    EXPECT_EQ(Solid(1).data["QUANTITY"], "1");
}

TEST_F(AutomaticUpdate, WalksAnEmptyGridWhenNothingIsSelected) {
    AddApplied("A", "LWT", 18, 600, 400);
    system.Document().previousSelection.clear();
    brenvik.UpdateNow(system.app);
    EXPECT_TRUE(Solid(0).writes.empty());
    EXPECT_FALSE(Main().Loaded());
    EXPECT_FALSE(TheSession().ApplyBusy);
    EXPECT_TRUE(system.Messages().empty());
}

TEST_F(AutomaticUpdate, WritesNoRowsOfAnEarlierListWhenNothingIsSelected) {
    AddApplied("A", "LWT", 18, 600, 400);
    Main().Load();
    system.Document().previousSelection.clear();
    brenvik.UpdateNow(system.app);
    EXPECT_TRUE(Solid(0).writes.empty());
}

TEST_F(AutomaticUpdate, LetsPendingEventsRunOnceWhereItIsAskedForByHand) {
    brenvik.EventBrenvik(system.app);
    EXPECT_EQ(system.dialogs.eventsRun, 0);
    brenvik.UpdateNow(system.app);
    EXPECT_EQ(system.dialogs.eventsRun, 1);
    brenvik.UpdateNow2(system.app);
    EXPECT_EQ(system.dialogs.eventsRun, 2);
}

TEST_F(AutomaticUpdate, TakesApplicationAndDocumentAfresh) {
    AddApplied("A", "LWT", 18, 600, 400);
    fakes::FakeApplication other;
    brenvik.UpdateNow(other);
    EXPECT_EQ(TheSession().AcadDoc, other.active);
    EXPECT_TRUE(Solid(0).writes.empty());
}

TEST_F(AutomaticUpdate, DoesNothingWithoutADocument) {
    AddApplied("A", "LWT", 18, 600, 400);
    system.app.active = nullptr;
    brenvik.UpdateNow(system.app);
    EXPECT_EQ(TheSession().AcadDoc, nullptr);
    EXPECT_TRUE(system.Messages().empty());
}

TEST_F(AutomaticUpdate, KeepsItsOwnFailuresToItself) {
    AddApplied("A", "LWT", 18, 600, 400);
    AddApplied("B", "LWT", 18, 600, 400);
    Solid(0).failOnWrite = Failure(-2145386468, "FakeHost", "Object is on a locked layer");
    brenvik.EventBrenvik(system.app);
    EXPECT_FALSE(Solid(1).writes.empty());
    system.files.contents.erase(system.BlankPath);
    brenvik.EventBrenvik(system.app);
    EXPECT_TRUE(system.Messages().empty());
    EXPECT_FALSE(Main().Loaded());
}

TEST_F(AutomaticUpdate, ShowsTheBoxesOfTheScan) {
    AddApplied("A", "LWT", 18, 600, 400);
    Solid(0).failOnLayer = Failure(7, "FakeHost", "No layer");
    brenvik.EventBrenvik(system.app);
    EXPECT_EQ(system.Messages(), Texts{"7\r\nFakeHost\r\nNo layer"});
}

TEST_F(AutomaticUpdate, OfAListThatWasGroupedIsRefusedAndLeavesTheFormUnloaded) {
    AddApplied("A", "LWT", 18, 600, 400);
    TheSession().GroupFields = "bv_partname";
    brenvik.EventBrenvik(system.app);
    EXPECT_EQ(system.Messages(), Texts{"You cannot apply changes to the Drawing while GROUPING is active."});
    EXPECT_TRUE(Solid(0).writes.empty());
    EXPECT_FALSE(Main().Loaded());
}

}  // namespace
}  // namespace brenvik
