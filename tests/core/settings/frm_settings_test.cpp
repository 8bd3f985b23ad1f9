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
            EXPECT_EQ(failure.number(), failure_number::typeMismatch);
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
    EXPECT_EQ(Box("chkWCS").Text(), "Use WCS bounding box for measuring.");
    EXPECT_EQ(Box("Check5").Text(), "Force all horziontal boring to second side.");
    EXPECT_EQ(Box("Check12").Text(),
              "Turn off Auto-Save of current drawing before all feature recognition. (Faster)");
    EXPECT_EQ(Box("Option1").Text(), "Parts are Imperial and do not scale on export.   ");
    EXPECT_EQ(Box("Option2").Text(), "Parts are Metric and do not scale on export.       ");
    EXPECT_EQ(Box("Option3").Text(), "Parts are Imperial and scale to Metric on export.");
    EXPECT_EQ(Box("Option4").Text(), "Parts are Metric and scale to Imperial on export.");
    EXPECT_EQ(Any("lblText1").Text(),
              "Circles bigger then this number will be cut as through routes and pockets.");
    const std::string advice = Any("lblAdvice").Text();
    EXPECT_TRUE(
        advice.starts_with("Automatic updating will occur after the execution of these commands: Union, "));
    EXPECT_NE(advice.find("The ORIE letters of \"L\", \"W\" and \"T\" will be rearranged"),
              std::string::npos);
    EXPECT_TRUE(advice.ends_with("due to a timing issue with ACAD and different PC platforms."));
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

TEST_F(SettingsDialog, ApplyWritesAllValuesAndCloses) {
    form.Load();
    Box("chkWCS").Press();
    Box("Check7").Press();
    Box("Option4").Press();
    Any("Text1").SetText("38");
    Any("Text2").SetText("");
    Any("Text3").SetText("many");
    Any("cmdApply").Press();
    EXPECT_FALSE(form.Loaded());
    EXPECT_EQ(system.settings.Get("WCSMeasure"), "1");
    EXPECT_EQ(system.settings.Get("DeleteOT"), "1");
    EXPECT_EQ(system.settings.Get("NoMeasure"), "0");
    EXPECT_EQ(system.settings.Get("ExportScaleSetting"), "4");
    EXPECT_EQ(system.settings.Get("CircleSize"), "38");
    EXPECT_EQ(system.settings.Get("BiesseWorksSpoil"), "");
    EXPECT_EQ(system.settings.Get("CNCMultiplier"), "many");
    EXPECT_EQ(NumberSetting("BiesseWorksSpoil"), 0);
    // 16 switches, 5 texts and the scale.
    EXPECT_EQ(system.settings.writes.size(), 22u);
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
