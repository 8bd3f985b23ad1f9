// What the grid form keeps between its openings.
#include "grid/grid_settings.h"

#include <gtest/gtest.h>

#include "core/fakes/fake_platform.h"
#include "grid/frm_main.h"
#include "parts/part_table.h"

namespace brenvik {
namespace {

class GridSettings : public testing::Test {
  protected:
    GridSettings() {
        TheSession().InstallFolder = "C:\\Brenvik\\";
        // The headers that the load of the form puts in place of the column names.
        for (const PartColumn& part : PartColumns()) Grid().Column(part.gridColumn).header = part.header;
    }
    GridControl& Grid() { return GridFormInstance().fpSpread1; }
    fakes::LoadedSystem system;
};

TEST_F(GridSettings, AreReadIntoTheSession) {
    const std::pair<const char*, const char*> values[] = {{"ApplicationPath", "C:\\Brenvik\\"},
                                                          {"ApplicationVersion", "4.9"},
                                                          {"DialogWidth", "1"},
                                                          {"DialogHeight", "2"},
                                                          {"DialogLeft", "3"},
                                                          {"DialogTop", "4"},
                                                          {"SettingsEvent", "1"},
                                                          {"MeasureNonSolids", "0"},
                                                          {"NoMeasure", "2"}};
    for (const auto& [name, text] : values) system.settings.Set(name, text);
    LoadGridSettings();
    const Session& session = TheSession();
    EXPECT_EQ(session.ApplicationPath, "C:\\Brenvik\\");
    EXPECT_EQ(session.ApplicationVersion, "4.9");
    EXPECT_EQ(session.DialogWidth, "1");
    EXPECT_EQ(session.DialogHeight, "2");
    EXPECT_EQ(session.DialogLeft, "3");
    EXPECT_EQ(session.DialogTop, "4");
    EXPECT_EQ(session.MDBPath, "C:\\Brenvik\\_db\\bv04.mdb");
    EXPECT_TRUE(session.SettingsEvent);
    EXPECT_FALSE(session.MeasureNonSolids);
    // Here a switch counts as on unless it is 0.
    EXPECT_TRUE(session.NoMeasure);
}

TEST_F(GridSettings, TakeASwitchForOnUnlessItIsZero) {
    const std::pair<const char*, bool> cases[] = {{"1", true}, {"0", false},  {"2", true},  {"-1", true},
                                                  {"", false}, {"on", false}, {"0.5", true}};
    for (const auto& [text, on] : cases) {
        for (const char* name : {"SettingsEvent", "MeasureNonSolids", "NoMeasure"})
            system.settings.Set(name, text);
        LoadGridSettings();
        EXPECT_EQ(TheSession().SettingsEvent, on) << text;
        EXPECT_EQ(TheSession().MeasureNonSolids, on) << text;
        EXPECT_EQ(TheSession().NoMeasure, on) << text;
    }
}

TEST_F(GridSettings, SetTheStoredColumnWidths) {
    system.settings.Set("QUANTITY_WIDTH", "12.5");
    system.settings.Set("LWT_WIDTH", "8");
    system.settings.Set("X_WIDTH", "9");
    system.settings.Set("LAYERNAME_WIDTH", "11");
    system.settings.Set("PN_WIDTH", "wide");
    const double designPn = Grid().Column(16).width;
    LoadGridSettings();
    EXPECT_EQ(Grid().Column(2).width, 12.5);
    EXPECT_EQ(Grid().Column(9).width, 8);
    EXPECT_EQ(Grid().Column(10).width, 9);
    EXPECT_EQ(Grid().Column(23).width, 11);
    EXPECT_EQ(Grid().Column(16).width, designPn);
    const auto& widths = TheSession().ColumnCaptions;
    ASSERT_EQ(widths.size(), 19u);
    EXPECT_EQ(widths[0], "12.5");
    EXPECT_EQ(widths[1], "");
    EXPECT_EQ(widths[4], "8");
    EXPECT_EQ(widths[11], "wide");
}

TEST_F(GridSettings, StopAtAColumnWithoutAHeader) {
    system.settings.Set("PARTNAME_WIDTH", "33");
    system.settings.Set("MATERIAL_WIDTH", "44");
    const double design = Grid().Column(5).width;
    Grid().Column(4).header = "";
    LoadGridSettings();
    EXPECT_EQ(Grid().Column(3).width, 33);
    EXPECT_EQ(Grid().Column(5).width, design);
}

TEST_F(GridSettings, AreWrittenBack) {
    frmMain& form = GridFormInstance();
    TheSession().MDBPath = "D:\\work.mdb";
    form.width = 12345.5;
    form.height = 6789;
    form.left = 10;
    form.top = 20;
    Grid().Column(3).width = 33.25;
    SaveGridSettings();
    EXPECT_EQ(system.settings.Get("MDBPath"), "D:\\work.mdb");
    EXPECT_EQ(system.settings.Get("DialogWidth"), "12345.5");
    EXPECT_EQ(system.settings.Get("DialogHeight"), "6789");
    EXPECT_EQ(system.settings.Get("DialogLeft"), "10");
    EXPECT_EQ(system.settings.Get("DialogTop"), "20");
    EXPECT_EQ(system.settings.Get("PARTNAME_WIDTH"), "33.25");
    // Five values, and a width for each key.
    EXPECT_EQ(system.settings.writes.size(), 5u + 19u);
}

TEST_F(GridSettings, LeaveWhatAnotherProgramHasSetMeanwhile) {
    for (const auto& [name, text] : {std::pair{"PARTNAME_WIDTH", "30"},
                                     {"MATERIAL_WIDTH", "20"},
                                     {"PN_WIDTH", "10.50"},
                                     {"DialogWidth", "9000"}})
        system.settings.Set(name, text);
    LoadGridSettings();
    GridFormInstance().width = 9000;
    NoteGridSettingsShown();
    Grid().Column(3).width = 33;
    system.settings.Set("MATERIAL_WIDTH", "25");
    system.settings.Set("DialogWidth", "9500");
    system.settings.Set("MDBPath", "D:\\work.mdb");
    system.settings.DeleteSetting(SettingsRoot::LocalMachine, SettingsKeyPath, "PN_WIDTH");
    SaveGridSettings();
    EXPECT_EQ(system.settings.Get("PARTNAME_WIDTH"), "33");
    EXPECT_EQ(system.settings.Get("MATERIAL_WIDTH"), "25");
    EXPECT_EQ(system.settings.Get("DialogWidth"), "9500");
    EXPECT_EQ(system.settings.Get("MDBPath"), "D:\\work.mdb");
    EXPECT_EQ(system.settings.Get("PN_WIDTH"), "(absent)") << "the layout was reset";
}

}  // namespace
}  // namespace brenvik
