// The settings dialog: what it shows of the store, and what it writes back.
#include "settings/frm_settings.h"

#include <gtest/gtest.h>

#include "core/fakes/fake_platform.h"
#include "settings/settings_store.h"

namespace brenvik {
namespace {

class SettingsDialog : public testing::Test {
  protected:
    SettingsDialog() {
        CreateInitialSettings(MeasureUnits::Metric, "C:\\Brenvik\\");
        system.settings.writes.clear();
    }
    CheckControl& Box(const char* name) { return form.Get<CheckControl>(name); }
    Control& Any(const char* name) { return form.Get<Control>(name); }

    fakes::LoadedSystem system;
    frmSettings form;
};

TEST_F(SettingsDialog, ShowsEverySwitchByItsValue) {
    const std::pair<const char*, const char*> controls[] = {{"WCSMeasure", "chkWCS"},
                                                            {"NoMeasure", "chkNoMeasure"},
                                                            {"MeasureNonSolids", "chkMeasureNonSolids"},
                                                            {"SettingsEvent", "chkRunEvent"},
                                                            {"PocketConversion", "Check1"},
                                                            {"BiesseWorksNest", "Check2"},
                                                            {"ConvertMaterialName", "Check3"},
                                                            {"MyWindowState", "Check4"},
                                                            {"HorzBoreOn2", "Check5"},
                                                            {"2SideUCS", "Check6"},
                                                            {"DeleteOT", "Check7"},
                                                            {"ToungeProcessing", "Check8"},
                                                            {"DontDoTwoSided", "Check9"},
                                                            {"SpecialMaterial", "Check10"},
                                                            {"CNCApplyClose", "Check11"},
                                                            {"CNCSave", "Check12"}};
    for (const auto& [setting, control] : controls) {
        for (const auto& [text, value] : {std::pair{"1", 1}, {"0", 0}, {"2", 0}, {"1.0", 1}}) {
            system.settings.Set(setting, text);
            frmSettings fresh;
            fresh.Load();
            EXPECT_EQ(fresh.Get<CheckControl>(control).Value(), value) << setting << '=' << text;
        }
        system.settings.Set(setting, "0");
    }
}

TEST_F(SettingsDialog, StaysClosedWhenASwitchHoldsNoNumber) {
    for (const char* text : {"", "yes"}) {
        system.settings.Set("DeleteOT", text);
        try {
            form.Load();
            FAIL() << text;
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.number(), failure_number::TypeMismatch);
        }
        EXPECT_FALSE(form.Loaded());
    }
}

TEST_F(SettingsDialog, HasTheseTexts) {
    form.Load();
    EXPECT_EQ(Any("lblHeading").Text(), "Brenvik Settings");
    EXPECT_EQ(Any("cmdApply").Text(), "Apply/Close");
    EXPECT_EQ(Any("cmdCancel").Text(), "Cancel");
    EXPECT_EQ(Any("cmdResetLayout").Text(), "Reset Grid Layout");
    const std::pair<const char*, const char*> captions[] = {
        {"chkWCS", "Use WCS bounding box for measuring."},
        {"chkNoMeasure", "Turn Off All Measuring"},
        {"chkMeasureNonSolids", "Measure Non-Solids with WCS bounding box."},
        {"Check1", "Convert pockets to routes when the pockets footprint encompasses a through route."},
        {"Check2", "Delete outside toolpath on first side."},
        {"Check3", "Convert metric material name to fractional imperial material name."},
        {"Check4",
         "Minimize the AutoCAD window during feature recognition. This will process the parts about 1/3 "
         "faster."},
        {"Check5", "Force all horziontal boring to second side."},
        {"Check6", "Move UCS to back left corner on second side."},
        {"Check7", "Delete outside toolpath on second side."},
        {"Check8", "Take extra time and add lead in and out to tongues."},
        {"Check9", "Do not detect or do 2-sided processing (Faster)"},
        {"Check10", "Process parts for different materials on opposite sides."},
        {"Check11", "Turn off Auto-Apply/Close before all feature recognition. (Faster)"},
        {"Check12", "Turn off Auto-Save of current drawing before all feature recognition. (Faster)"},
        {"lblText1", "Circles bigger then this number will be cut as through routes and pockets."},
        {"lblText2", "Amount to extend through routes into spoil board."},
        {"lblText3", "Multiply CNC export quantities by this number."},
        {"lblText4", "Amount to extend through drilling into spoil board."},
        {"lblText5",
         "Parts with a smaller surface area then this amount will given a 100 priority. BiesseWorks only."},
        {"Option1", "Parts are Imperial and do not scale on export.   "},
        {"Option2", "Parts are Metric and do not scale on export.       "},
        {"Option3", "Parts are Imperial and scale to Metric on export."},
        {"Option4", "Parts are Metric and scale to Imperial on export."},
    };
    for (const auto& [control, caption] : captions) EXPECT_EQ(Any(control).Text(), caption) << control;
    EXPECT_EQ(
        Any("lblAdvice").Text(),
        "Automatic updating will occur after the execution of these commands: Union, Slice, Intersect "
        "and Solidedit. The previous selection set will be reselected, automatically measured and the "
        "current measurements will be compared to the previous measurements of each solid. The ORIE "
        "letters of \"L\", \"W\" and \"T\" will be rearranged as necessary. You cannot see this process, but "
        "it takes time. The larger the previous selection set, the longer it will take. You should have "
        "this on most of the time. If you use BrenvikModeling to stretch your solids and this is not "
        "updating your ORIE letters for all you parts, then turn if off and type 33 when done stretching "
        "solids to update the ORIE letters. This is necessary due to a timing issue with ACAD and "
        "different PC platforms.");
}

TEST_F(SettingsDialog, CaptionOfAutomaticUpdatingFollowsItsState) {
    system.settings.Set("SettingsEvent", "0");
    form.Load();
    EXPECT_EQ(Box("chkRunEvent").Text(), "Check to turn on automatic updating of ORIE data");
    Box("chkRunEvent").Press();
    EXPECT_EQ(Box("chkRunEvent").Text(), "Uncheck to turn off automatic updating of ORIE data");
    Box("chkRunEvent").Press();
    EXPECT_EQ(Box("chkRunEvent").Text(), "Check to turn on automatic updating of ORIE data");
    form.Unload();
    system.settings.Set("SettingsEvent", "1");
    form.Load();
    EXPECT_EQ(Box("chkRunEvent").Text(), "Uncheck to turn off automatic updating of ORIE data");
}

TEST_F(SettingsDialog, SelectsTheOptionOfTheScale) {
    for (int scale = 1; scale <= 4; ++scale) {
        system.settings.Set("ExportScaleSetting", std::to_string(scale));
        form.Load();
        for (int option = 1; option <= 4; ++option)
            EXPECT_EQ(form.Get<CheckControl>("Option" + std::to_string(option)).Value(), option == scale);
        form.Unload();
    }
}

TEST_F(SettingsDialog, SelectsNoOptionForAnotherScaleAndKeepsIt) {
    system.settings.Set("ExportScaleSetting", "7");
    form.Load();
    for (const char* option : {"Option1", "Option2", "Option3", "Option4"}) EXPECT_EQ(Box(option).Value(), 0);
    Any("cmdApply").Press();
    EXPECT_EQ(system.settings.Get("ExportScaleSetting"), "7");
}

TEST_F(SettingsDialog, ShowsOneFrameForEachTab) {
    form.Load();
    EXPECT_TRUE(Any("fraMeasuring").visible);
    EXPECT_FALSE(Any("FraCNC").visible);
    form.Get<TabStripControl>("TabStrip1").SetSelectedTab(1);
    EXPECT_FALSE(Any("fraMeasuring").visible);
    EXPECT_TRUE(Any("FraCNC").visible);
}

TEST_F(SettingsDialog, ApplyWritesWhatWasChangedAndCloses) {
    form.Load();
    Box("chkWCS").Press();
    Box("Check7").Press();
    Box("Option4").Press();
    Any("Text1").SetText("38");
    Any("Text2").SetText("");
    Any("Text3").SetText("many");
    Any("Text4").SetText("2.5");
    Any("Text5").SetText("99");
    Any("cmdApply").Press();
    EXPECT_FALSE(form.Loaded());
    EXPECT_EQ(system.settings.Get("WCSMeasure"), "1");
    EXPECT_EQ(system.settings.Get("DeleteOT"), "1");
    EXPECT_EQ(system.settings.Get("NoMeasure"), "0");
    EXPECT_EQ(system.settings.Get("ExportScaleSetting"), "4");
    EXPECT_EQ(system.settings.Get("CircleSize"), "38");
    EXPECT_EQ(system.settings.Get("BiesseWorksSpoil"), "");
    EXPECT_EQ(system.settings.Get("CNCMultiplier"), "many");
    EXPECT_EQ(system.settings.Get("DrillSpoilAmount"), "2.5");
    EXPECT_EQ(system.settings.Get("BWPriority"), "99");
    EXPECT_EQ(NumberSetting(setting::BiesseWorksSpoil), 0);
    // 2 switches, 5 texts and the scale.
    EXPECT_EQ(system.settings.writes.size(), 8u);
    EXPECT_TRUE(system.dialogs.messages.empty());
}

TEST_F(SettingsDialog, ApplyLeavesWhatNobodyTouchedAsItIsWritten) {
    for (const auto& [name, text] :
         {std::pair{"ExportScaleSetting", "02"}, {"WCSMeasure", "01"}, {"NoMeasure", "2"}})
        system.settings.Set(name, text);
    form.Load();
    Any("Text1").SetText("36");
    Any("cmdApply").Press();
    EXPECT_EQ(system.settings.writes, std::vector<std::string>{"CircleSize=36"});
    EXPECT_EQ(system.settings.Get("ExportScaleSetting"), "02");
}

TEST_F(SettingsDialog, ApplyKeepsWhatAnotherProgramHasSetMeanwhile) {
    form.Load();
    Any("Text1").SetText("36");
    system.settings.Set("BWPriority", "5555");
    system.settings.Set("ExportScaleSetting", "3");
    system.settings.Set("DeleteOT", "1");
    Any("cmdApply").Press();
    EXPECT_EQ(system.settings.Get("CircleSize"), "36");
    EXPECT_EQ(system.settings.Get("BWPriority"), "5555");
    EXPECT_EQ(system.settings.Get("ExportScaleSetting"), "3");
    EXPECT_EQ(system.settings.Get("DeleteOT"), "1");
    EXPECT_TRUE(system.dialogs.messages.empty());
}

TEST_F(SettingsDialog, ApplyTellsOfAValueThatBothHaveChanged) {
    form.Load();
    Any("Text1").SetText("36");
    Any("Text2").SetText("7");
    system.settings.Set("CircleSize", "40");
    system.settings.Set("BiesseWorksSpoil", "7");
    Any("cmdApply").Press();
    EXPECT_EQ(system.settings.Get("CircleSize"), "36");
    ASSERT_EQ(system.dialogs.messages.size(), 1u);
    EXPECT_EQ(
        system.dialogs.messages[0].text,
        "Settings that you have changed have been changed elsewhere since this dialog was opened. Yours "
        "were taken:\r\nCircleSize was \"40\" there, and is \"36\" now");
    EXPECT_FALSE(form.Loaded());
}

TEST_F(SettingsDialog, CancelWritesNothing) {
    form.Load();
    Box("chkWCS").Press();
    Any("Text1").SetText("38");
    Any("cmdCancel").Press();
    EXPECT_FALSE(form.Loaded());
    EXPECT_TRUE(system.settings.writes.empty());
}

TEST_F(SettingsDialog, ResetDeletesTheGridLayoutAlone) {
    for (const char* name : {"DialogWidth", "DialogHeight", "DialogLeft", "DialogTop", "QUANTITY_WIDTH",
                             "LWT_WIDTH", "LAYERNAME_WIDTH"})
        system.settings.Set(name, "100");
    system.settings.Set("MDBPath", "D:\\x.mdb");
    form.Load();
    Any("cmdResetLayout").Press();
    for (const char* name : {"DialogWidth", "DialogHeight", "DialogLeft", "DialogTop", "QUANTITY_WIDTH",
                             "LWT_WIDTH", "LAYERNAME_WIDTH"})
        EXPECT_EQ(system.settings.Get(name), "(absent)") << name;
    EXPECT_EQ(system.settings.Get("MDBPath"), "D:\\x.mdb");
    EXPECT_TRUE(form.Loaded());
}

}  // namespace
}  // namespace brenvik
