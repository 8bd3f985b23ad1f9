// What each setting can be.
#include "settings/setting_values.h"

#include <gtest/gtest.h>

#include "settings/settings_keys.h"

namespace brenvik {
namespace {

struct Case {
    const char *name, *value, *expected;
};

TEST(SettingValues, FitTheirKindAndLimits) {
    const Case cases[] = {
        {"WCSMeasure", "0", ""},
        {"WCSMeasure", "1", ""},
        {"WCSMeasure", "2", "0 or 1"},
        {"wcsmeasure", "yes", "0 or 1"},
        {"NoMeasure", "", "0 or 1"},
        {"NoMeasure", " 1", "0 or 1"},
        {"CSV_REDUCE", "on", "0 or 1"},
        {"ExportScaleSetting", "1", ""},
        {"ExportScaleSetting", "4", ""},
        {"ExportScaleSetting", "0", "a whole number from 1 to 4"},
        {"ExportScaleSetting", "5", "a whole number from 1 to 4"},
        {"ExportScaleSetting", "1.5", "a whole number from 1 to 4"},
        {"ExportScaleSetting", "", "a whole number from 1 to 4"},
        {"CircleSize", "35", ""},
        {"CircleSize", "", "a number, 0 or more"},
        {"CircleSize", "1.378", ""},
        {"CircleSize", "-1", "a number, 0 or more"},
        {"CircleSize", "35 mm", "a number, 0 or more"},
        {"CircleSize", "1e999", "a number, 0 or more"},
        {"CircleSize", "nan", "a number, 0 or more"},
        {"CircleSize", "35,5", "a number, 0 or more"},
        {"BiesseWorksSpoil", "-0.2", ""},
        {"BiesseWorksSpoil", "some", "a number from -100 to 100"},
        {"BiesseWorksSpoil", "", "a number from -100 to 100"},
        {"CNCMultiplier", "", "a whole number from 1 to 1000000"},
        {"BWPriority", "", "a number, 0 or more"},
        {"skipandcontinuevalue", "", ""},
        {"DialogWidth", "", ""},
        {"DrillSpoilAmount", "", "a number from -100 to 100"},
        {"CNCMultiplier", "0", "a whole number from 1 to 1000000"},
        {"CNCMultiplier", "1", ""},
        {"BiesseWorksSpoil", "9999999999", "a number from -100 to 100"},
        {"DrillSpoilAmount", "-100.5", "a number from -100 to 100"},
        {"CNCMultiplier", "2", ""},
        {"CNCMultiplier", "1.5", "a whole number from 1 to 1000000"},
        {"CNCMultiplier", "-1", "a whole number from 1 to 1000000"},
        {"CNCMultiplier", "3000000000", "a whole number from 1 to 1000000"},
        {"skipandcontinuevalue", "7", "a whole number from 0 to 6"},
        {"EXPORT_TYPE", "13", ""},
        {"EXPORT_TYPE", "14", "a whole number from 0 to 13"},
        {"EXPORT_TYPE", "", ""},
        {"CVS_COL_COUNT", "3000000000", "a whole number from 0 to 2147483647"},
        {"HomeUnits", "metric", ""},
        {"HomeUnits", "Imperial", ""},
        {"HomeUnits", "mm", "metric or imperial"},
        {"HomeUnits", "", "metric or imperial"},
        {"DialogLeft", "-1500", ""},
        {"QUANTITY_WIDTH", "12.5", ""},
        {"QUANTITY_WIDTH", "", ""},
        {"QUANTITY_WIDTH", "wide", "a number, 0 or more"},
        {"MDBPath", "", ""},
        {"MDBPath", "C:\\jobs\\list.mdb", ""},
        {"MDBPath", "a\nb", "a path without control characters"},
        {"ApplicationVersion", "whatever", ""},
        {"ACCESS_KEY3", "ein Maß", ""},
        {"SomebodyElses", "any", ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(SettingValueFault(c.name, c.value), c.expected) << c.name << "=" << c.value;
}

TEST(SettingValues, OfAnInstallationFit) {
    for (const SettingEntry& entry : SettingTable()) {
        if (!entry.createdAtInstall) continue;
        EXPECT_EQ(SettingValueFault(entry.name, entry.metric), "") << entry.name;
        EXPECT_EQ(SettingValueFault(entry.name, entry.imperial), "") << entry.name;
    }
}

TEST(SettingValues, ThatTheDialogWritesForItsBoxesAndButtonsFit) {
    for (const SettingEntry& entry : SettingTable()) {
        if (entry.control.empty()) continue;
        if (entry.kind == SettingKind::Switch) {
            EXPECT_EQ(SettingValueFault(entry.name, "0"), "");
            EXPECT_EQ(SettingValueFault(entry.name, "1"), "");
        }
        if (entry.kind != SettingKind::Choice) continue;
        for (std::size_t place = 1; place <= ExportScaleCaptions().size(); ++place)
            EXPECT_EQ(SettingValueFault(entry.name, std::to_string(place)), "");
    }
}

TEST(SettingNames, AreThoseOfTheTableOfWidthsAndOfNumberedFamilies) {
    for (const char* name : {"circlesize", "MDBPath", "LWT_WIDTH", "CVS_COL_KEY0", "access_to12"})
        EXPECT_TRUE(SubkeyOfSetting(name).has_value()) << name;
    for (const char* name : {"", "NoSuchName", "CVS_COL_KEYx", "CircleSize1", "_WIDTH", "LENGTH_WIDTH"})
        EXPECT_FALSE(SubkeyOfSetting(name).has_value()) << name;
}

}  // namespace
}  // namespace brenvik
