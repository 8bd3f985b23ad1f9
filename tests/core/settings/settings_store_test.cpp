// Reading settings by their rules, and what an installation begins with.
#include "settings/settings_store.h"

#include <gtest/gtest.h>

#include "base/numbers.h"
#include "core/fakes/fake_platform.h"
#include "settings/settings_keys.h"
#include "support/failure_of.h"

namespace brenvik {
namespace {

class Settings : public testing::Test {
  protected:
    fakes::LoadedSystem system;
};

TEST_F(Settings, StandUnderTheSystemsKey) {
    SaveSettingText(setting::CircleSize, "35");
    EXPECT_EQ(system.settings.values["SOFTWARE\\Orvane, Inc.\\Brenvik04\\CircleSize"], "35");
    SaveSubkeyText(CsvSaveSubkey, setting::CSV_REDUCE, "1");
    EXPECT_EQ(system.settings.values["SOFTWARE\\Orvane, Inc.\\Brenvik04\\CSV_SAVE\\CSV_REDUCE"], "1");
    EXPECT_EQ(GetSubkeyText(CsvSaveSubkey, setting::CSV_REDUCE), "1");
    EXPECT_EQ(GetSettingText(setting::CSV_REDUCE), "");
    EXPECT_EQ(EnumerateSubkey(CsvSaveSubkey).size(), 1u);
    DeleteSubkeyText(CsvSaveSubkey, setting::CSV_REDUCE);
    EXPECT_EQ(GetSubkeyText(CsvSaveSubkey, setting::CSV_REDUCE), "");
}

TEST_F(Settings, ReadAsBlankWhenAbsent) {
    EXPECT_EQ(GetSettingText(setting::MDBPath), "");
    EXPECT_EQ(NumberSetting(setting::CircleSize), 0);
    EXPECT_FALSE(SwitchIsOn(setting::DeleteOT));
}

TEST_F(Settings, SwitchIsOnAtExactlyOne) {
    const std::pair<const char*, bool> cases[] = {{"1", true}, {"0", false},  {"2", false},
                                                  {"", false}, {"-1", false}, {"on", false}};
    for (const auto& [text, on] : cases) {
        system.settings.Set("DeleteOT", text);
        EXPECT_EQ(SwitchIsOn(setting::DeleteOT), on) << text;
    }
}

TEST_F(Settings, NumberIsTheOneAtTheHeadOfTheText) {
    system.settings.Set("CircleSize", "35 mm");
    EXPECT_EQ(NumberSetting(setting::CircleSize), 35);
    system.settings.Set("CircleSize", "large");
    EXPECT_EQ(NumberSetting(setting::CircleSize), 0);
}

TEST_F(Settings, StrictNumberFailsForBlankAndText) {
    system.settings.Set("NoMeasure", "1.5");
    EXPECT_EQ(StrictNumberSetting(setting::NoMeasure), 1.5);
    EXPECT_EQ(StrictIntegerSetting(setting::NoMeasure), 2);
    for (const char* text : {"", " ", "off", "1 x"}) {
        system.settings.Set("NoMeasure", text);
        EXPECT_EQ(FailureOf([] { StrictNumberSetting(setting::NoMeasure); }).number(),
                  failure_number::TypeMismatch)
            << text;
        EXPECT_EQ(FailureOf([] { StrictIntegerSetting(setting::NoMeasure); }).number(),
                  failure_number::TypeMismatch)
            << text;
    }
    system.settings.Set("NoMeasure", "3000000000");
    EXPECT_EQ(FailureOf([] { StrictIntegerSetting(setting::NoMeasure); }).number(), failure_number::Overflow);
}

TEST_F(Settings, TableNamesEveryValueOnce) {
    for (const SettingEntry& entry : SettingTable()) {
        int same = 0;
        for (const SettingEntry& other : SettingTable())
            if (other.name == entry.name) ++same;
        EXPECT_EQ(same, 1) << entry.name;
        EXPECT_EQ(FindSetting(entry.name), &entry);
        // What an installation begins with has to pass the rule by which it is read.
        if (!entry.createdAtInstall) continue;
        for (const std::string_view initial : {entry.metric, entry.imperial}) {
            const bool isSwitch = entry.kind == SettingKind::Switch;
            const bool isNumber = entry.kind == SettingKind::Number || entry.kind == SettingKind::Choice;
            EXPECT_TRUE(!isSwitch || initial == "0" || initial == "1") << entry.name;
            EXPECT_TRUE(!isNumber || IsNumeric(initial)) << entry.name;
        }
    }
    EXPECT_EQ(FindSetting("toungeprocessing")->control, "Check8");
    EXPECT_EQ(FindSetting("ToolProcessing"), nullptr);
}

class InitialSettings : public testing::Test {
  protected:
    InitialSettings() { system.settings.values.clear(); }
    fakes::LoadedSystem system;
};

TEST_F(InitialSettings, SuitAMetricShop) {
    CreateInitialSettings(MeasureUnits::Metric, "C:\\Brenvik\\");
    EXPECT_EQ(system.settings.Get("ExportScaleSetting"), "2");
    // The cup of a 35 mm hinge is drilled, not routed.
    EXPECT_GE(NumberSetting(setting::CircleSize), 35);
    EXPECT_EQ(system.settings.Get("SettingsEvent"), "1");
    EXPECT_EQ(system.settings.Get("MeasureNonSolids"), "0");
    EXPECT_EQ(system.settings.Get("NoMeasure"), "0");
    EXPECT_EQ(system.settings.Get("DialogLeft"), "0");
    EXPECT_EQ(system.settings.Get("CNCMultiplier"), "1");
    EXPECT_EQ(system.settings.Get("ApplicationPath"), "C:\\Brenvik\\");
    EXPECT_EQ(system.settings.Get("MDBPath"), "");
    EXPECT_EQ(system.settings.Get("EXPORT_TYPE"), "(absent)");
    EXPECT_EQ(system.settings.Get("QUANTITY_WIDTH"), "(absent)");
    EXPECT_EQ(system.settings.Get("CSV_SAVE\\CSV_REDUCE"), "0");
}

TEST_F(InitialSettings, SuitAnImperialShop) {
    CreateInitialSettings(MeasureUnits::Imperial, "C:\\Brenvik\\");
    EXPECT_EQ(system.settings.Get("ExportScaleSetting"), "1");
    EXPECT_GE(NumberSetting(setting::CircleSize), 35 / 25.4);
    EXPECT_LT(NumberSetting(setting::CircleSize), 2);
}

TEST_F(InitialSettings, HoldEverySwitch) {
    CreateInitialSettings(MeasureUnits::Metric, "");
    for (const SettingEntry& entry : SettingTable())
        EXPECT_TRUE(entry.kind != SettingKind::Switch || !entry.subkey.empty() ||
                    system.settings.Get(entry.name) != "(absent)")
            << entry.name;
}

TEST_F(InitialSettings, KeepWhatTheShopHasChosen) {
    system.settings.Set("CircleSize", "20");
    CreateInitialSettings(MeasureUnits::Metric, "");
    EXPECT_EQ(system.settings.Get("CircleSize"), "20");
    CreateInitialSettings(MeasureUnits::Imperial, "");
    EXPECT_EQ(system.settings.Get("ExportScaleSetting"), "2");
    CreateInitialSettings(MeasureUnits::Imperial, "", true);
    EXPECT_EQ(system.settings.Get("ExportScaleSetting"), "1");
    EXPECT_NE(system.settings.Get("CircleSize"), "20");
}

}  // namespace
}  // namespace brenvik
