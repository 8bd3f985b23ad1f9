// The public class: its methods, how they begin, and the road of Show.
#include "session/library/brenvik_class.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <string_view>

#include "base/letter_case.h"
#include "base/text.h"
#include "cnc/run/run_set_up.h"
#include "cnc/targets/target_table.h"
#include "core/fakes/fake_platform.h"
#include "grid/frm_main.h"
#include "session/library/commands.h"
#include "session/library/target_drivers.h"

namespace brenvik {
namespace {

class PublicClass : public testing::Test {
  protected:
    fakes::LoadedSystem system;
    cBrenvik brenvik;
};

TEST_F(PublicClass, HasItsMethodsInOrder) {
    const std::vector<std::string> expected = Split(
        "Show,ShowSettings,EventBrenvik,ShowSelectedOnly,ShowAllEntities,HideSelectedEntities,"
        "ShowSelectedEntities,"
        "UpdateNow,UpdateNow2,BVExportDWG,BVC2C,BVExplode,BVMove,BVCopy,BVGroup,BVMaterial,BVSection1,"
        "BVSection2,"
        "BVMakeView,BVATP,BVFreezeSections,BVUNFreezeSections,BVAdjustments,BVRover1,BVCNI,BVASP,BVWOP4,"
        "BVWOP5,"
        "BVTHERM,BVBW,BVEnroute,BVDWG2,BVABC,BVRCIM",
        ',');
    ASSERT_EQ(CommandTable().size(), 34u);
    for (std::size_t place = 0; place < expected.size(); ++place) {
        EXPECT_EQ(CommandTable()[place].method, expected[place]);
        EXPECT_EQ(CommandTable()[place].command, static_cast<Command>(place));
        EXPECT_FALSE(CommandTable()[place].description.empty());
    }
}

TEST_F(PublicClass, HasAHostCommandForEachMethodAndNoneTwice) {
    std::map<std::string, std::string_view> methodOf;
    for (const CommandEntry& entry : CommandTable()) {
        EXPECT_FALSE(entry.hostCommands.empty()) << entry.method;
        for (const std::string& name : Split(entry.hostCommands, ','))
            EXPECT_TRUE(methodOf.try_emplace(FoldUpper(name), entry.method).second) << name;
    }
    EXPECT_EQ(methodOf["BVMAT"], "BVMaterial");
    EXPECT_EQ(methodOf["BSET"], "ShowSettings");
    EXPECT_EQ(methodOf["33"], "UpdateNow");
}

TEST_F(PublicClass, TakesNoApplicationForTheSettingsAlone) {
    for (const CommandEntry& entry : CommandTable())
        EXPECT_EQ(entry.start == CommandStart::Plain, entry.method == "ShowSettings") << entry.method;
}

TEST_F(PublicClass, HasWorkForEachMethodByTheWayItStarts) {
    for (const CommandEntry& entry : CommandTable()) {
        const bool plain = entry.start == CommandStart::Plain;
        EXPECT_EQ(entry.plainWork != nullptr, plain) << entry.method;
        EXPECT_EQ(entry.work != nullptr, !plain) << entry.method;
    }
}

TEST_F(PublicClass, IsCalledByNameWithoutRegardToCase) {
    system.app.active->previousSelection.clear();
    EXPECT_TRUE(brenvik.Call("SHOW", system.app));
    EXPECT_EQ(system.dialogs.shownForms, std::vector<std::string>{"frmMain"});
    EXPECT_FALSE(brenvik.Call("ShowEverything", system.app));
    EXPECT_TRUE(system.dialogs.messages.empty());
}

TEST_F(PublicClass, TakesApplicationAndDocumentAfreshAtEachCall) {
    brenvik.Show(system.app);
    EXPECT_EQ(TheSession().AcadApp, &system.app);
    EXPECT_EQ(TheSession().AcadDoc, &system.Document());
    fakes::FakeApplication other;
    other.OpenDocument();
    brenvik.Show(other);
    EXPECT_EQ(TheSession().AcadApp, &other);
    EXPECT_EQ(TheSession().AcadDoc, other.active);
}

TEST_F(PublicClass, ShowsAFailureAndLetsNoneOut) {
    system.app.active = nullptr;
    brenvik.Show(system.app);
    EXPECT_EQ(system.Messages(), std::vector<std::string>{"-2145320900\r\nFakeHost\r\nNo document is open"});
    EXPECT_TRUE(system.dialogs.shownForms.empty());
}

TEST_F(PublicClass, ShowsAFailedLoadOfTheGridAndRunsNoDriver) {
    system.settings.Set("NoMeasure", "");
    TheSession().ExportTarget = 5;
    brenvik.Show(system.app);
    EXPECT_EQ(system.Messages(), std::vector<std::string>{"13\r\nBrenvik\r\nType mismatch"});
    EXPECT_FALSE(GridFormInstance().Loaded());
}

TEST_F(PublicClass, EndsTheInstallFolderWithOneBackslash) {
    brenvik.Show(system.app);
    EXPECT_EQ(TheSession().InstallFolder, "C:\\Brenvik\\");
    system.files.installFolder = "C:\\Brenvik\\";
    brenvik.Show(system.app);
    EXPECT_EQ(TheSession().InstallFolder, "C:\\Brenvik\\");
}

class ShowRoad : public PublicClass {};

TEST_F(ShowRoad, ScansInsideTheModalCall) {
    system.AddSolid("A", 18, 600, 400);
    int rows = 0;
    system.dialogs.onModal = [&](Form& form) { rows = form.Get<GridControl>("fpSpread1").MaxRows(); };
    brenvik.Show(system.app);
    EXPECT_EQ(rows, 1);
}

TEST_F(ShowRoad, WithNoSelectionOpensTheBlankTableWithTheHourglass) {
    MousePointer pointer = MousePointer::Normal;
    int rows = -1;
    system.dialogs.onModal = [&](Form& form) {
        pointer = form.mousePointer;
        rows = form.Get<GridControl>("fpSpread1").MaxRows();
    };
    brenvik.Show(system.app);
    EXPECT_EQ(pointer, MousePointer::Hourglass);
    EXPECT_EQ(rows, 0);
    EXPECT_TRUE(system.dialogs.messages.empty());
}

TEST_F(ShowRoad, ClosedWithCancelRunsNoDriver) {
    TheSession().ExportTarget = 4;
    system.dialogs.onModal = [&](Form& form) { form.Get<ToolbarControl>("tbMain").PressKey("CANCEL_CLOSE"); };
    brenvik.Show(system.app);
    EXPECT_EQ(TheSession().ExportTarget, 0);
    EXPECT_TRUE(system.dialogs.messages.empty());
}

TEST_F(ShowRoad, RunsExactlyTheChosenDriver) {
    const std::vector<std::pair<std::string, std::string>> targets = {
        {"C2C", "BVC2C"}, {"ATP", "BVATP"},         {"ROV", "BVRover1"}, {"CNI", "BVCNI"},
        {"ASP", "BVASP"}, {"WOP4", "BVWOP4"},       {"WOP5", "BVWOP5"},  {"THERM", "BVTHERM"},
        {"BW", "BVBW"},   {"Enroute", "BVEnroute"}, {"ABC", "BVABC"},    {"RCIM", "BVRCIM"}};
    ASSERT_EQ(TargetDrivers().size(), targets.size());
    for (int number = 1; number <= 12; ++number) {
        const auto& [target, method] = targets[static_cast<std::size_t>(number - 1)];
        const TargetDriver& driver = TargetDrivers()[static_cast<std::size_t>(number - 1)];
        EXPECT_EQ(driver.exportTarget, number);
        EXPECT_EQ(TraitsOf(driver.target).name, target);
        EXPECT_EQ(driver.method, method);
        EXPECT_NE(FindCommand(method), nullptr);
        system.dialogs.messages.clear();
        system.dialogs.onModal = [number](Form&) { TheSession().ExportTarget = number; };
        brenvik.Show(system.app);
        // The run gets as far as the command line, which the fake drawing has not.
        ASSERT_EQ(system.Messages().size(), 2u) << target;
        EXPECT_EQ(system.Messages()[0], RunWarning);
        EXPECT_EQ(system.Messages()[1], "445\r\nFakeHost\r\nSendCommand");
    }
}

TEST_F(ShowRoad, RunsNoDriverForOtherNumbers) {
    for (const int number : {-1, 13}) {
        system.dialogs.onModal = [number](Form&) { TheSession().ExportTarget = number; };
        brenvik.Show(system.app);
    }
    EXPECT_TRUE(system.dialogs.messages.empty());
}

TEST_F(ShowRoad, StartsFromAFreshDatabaseEachTime) {
    system.AddSolid("A", 18, 600, 400);
    brenvik.Show(system.app);
    EXPECT_EQ(system.database.databases.at("c:\\brenvik\\_db\\bv04.mdb").size(), 1u);
    system.Document().previousSelection.clear();
    brenvik.Show(system.app);
    EXPECT_TRUE(system.database.databases.at("c:\\brenvik\\_db\\bv04.mdb").empty());
}

TEST_F(ShowRoad, LoadsAFormAnewThatWasLoadedUnseen) {
    brenvik.Show(system.app);
    GridFormInstance().Form_Load();
    system.AddSolid("A", 18, 600, 400);
    int rows = 0;
    system.dialogs.onModal = [&](Form& form) { rows = form.Get<GridControl>("fpSpread1").MaxRows(); };
    brenvik.Show(system.app);
    EXPECT_EQ(rows, 1);
}

TEST_F(ShowRoad, OpensTheSettingsAsAModalDialog) {
    for (const SettingEntry& entry : SettingTable())
        if (entry.kind == SettingKind::Switch && !entry.control.empty()) system.settings.Set(entry.name, "0");
    brenvik.ShowSettings();
    EXPECT_EQ(system.dialogs.shownForms, std::vector<std::string>{"frmSettings"});
    EXPECT_TRUE(system.dialogs.messages.empty());
    EXPECT_EQ(TheSession().AcadApp, nullptr);
    EXPECT_EQ(TheSession().InstallFolder, "C:\\Brenvik\\");
}

}  // namespace
}  // namespace brenvik
