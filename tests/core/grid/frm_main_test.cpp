// The main dialog: how it comes up, where it stands, what its keys do, and how it goes.
#include "grid/frm_main.h"

#include <gtest/gtest.h>

#include "core/fakes/fake_platform.h"
#include "grid/column_relation.h"
#include "parts/part_table.h"
#include "session/library/grid_actions.h"

namespace brenvik {
namespace {

class MainForm : public testing::Test {
  protected:
    MainForm() {
        TheSession().InstallFolder = "C:\\Brenvik\\";
        TheSession().AcadApp = &system.app;
        TheSession().AcadDoc = &system.Document();
        system.settings.Set("ApplicationVersion", "4.9");
    }
    frmMain& Form() { return GridFormInstance(); }
    GridControl& Grid() { return Form().fpSpread1; }

    fakes::LoadedSystem system;
};

TEST_F(MainForm, HasTheColumnsOfThePartTableInOrder) {
    ASSERT_EQ(Grid().MaxCols(), 26);
    for (const PartColumn& part : PartColumns()) {
        EXPECT_EQ(Grid().Column(part.gridColumn).fieldName, part.column);
        // The design's headers are the names of the table.
        EXPECT_EQ(Grid().Column(part.gridColumn).header, part.column);
    }
}

TEST_F(MainForm, ShowsItsHeadersAfterLoading) {
    Form().Load();
    const char* const headers[] = {
        "bv_ID",      "Qty",   "Part Name", "Sub Assembly", "Material", "Length", "Width",
        "Thickness",  "ORIE",  "Value 1",   "Value 2",      "Value 3",  "Notes",  "User Data1",
        "User Data2", "PN",    "Price",     "EB1",          "EB2",      "EB3",    "EB4",
        "Face",       "Layer", "OldValue1", "OldValue2",    "OldValue3"};
    for (int column = 1; column <= 26; ++column) EXPECT_EQ(Grid().CellText(column, 0), headers[column - 1]);
    EXPECT_EQ(Grid().ActiveRow(), 0);
    EXPECT_TRUE(Grid().reDraw);
}

TEST_F(MainForm, HidesAndLocksWhatIsInformationOnly) {
    for (int column = 1; column <= 26; ++column) {
        const std::string field = Grid().Column(column).fieldName;
        const bool old = field == "bv_id" || field.starts_with("bv_oldValue");
        EXPECT_EQ(Grid().Column(column).hidden, old) << field;
        const bool rawExtent = field == "bv_x" || field == "bv_y" || field == "bv_z";
        EXPECT_EQ(Grid().Column(column).locked, old || rawExtent || field == "bv_layer") << field;
    }
}

TEST_F(MainForm, LoadsInThisOrder) {
    system.AddSolid("A", 18, 600, 400);
    TheSession().ExportTarget = 5;
    Form().Load();
    EXPECT_EQ(TheSession().ExportTarget, 0);
    ASSERT_EQ(system.files.acts.size(), 1u);
    EXPECT_EQ(system.files.acts[0], "copy C:\\Brenvik\\_db\\bv-back04.mdb to C:\\Brenvik\\_db\\bv04.mdb");
    EXPECT_EQ(Form().sbMain.panels[0], "Brenvik 4.9 by Orvane, Inc.");
    EXPECT_EQ(Form().caption, "Brenvik - version 4.9");
    EXPECT_EQ(Form().Adodc1.connectionString,
              "Provider=Microsoft.Jet.OLEDB.4.0;User ID=admin;Data Source=C:\\Brenvik\\_db\\bv04.mdb;"
              "Mode=Share Deny None");
    EXPECT_EQ(Grid().MaxRows(), 1);
    EXPECT_EQ(TheSession().CaptionList.size(), 20u);
    EXPECT_EQ(TheSession().ColumnRelation[22].caption, "Value3");
    EXPECT_FALSE(Form().Loading);
}

TEST_F(MainForm, IsLoadedWithoutBeingShownByItsLoadOperation) {
    system.AddSolid("A", 18, 600, 400);
    Form().Form_Load();
    EXPECT_TRUE(Form().Loaded());
    EXPECT_TRUE(system.dialogs.shownForms.empty());
    Form().Form_Load();
    // The second load scans again, on a database that was made anew.
    EXPECT_EQ(system.files.acts.size(), 3u);
    EXPECT_EQ(Grid().MaxRows(), 1);
    EXPECT_TRUE(system.dialogs.messages.empty());
}

TEST_F(MainForm, LoadedOnceMoreLeavesTheOldDatabaseAlone) {
    system.AddSolid("A", 18, 600, 400);
    Form().Load();
    system.Document().previousSelection.clear();
    int openAtRemoval = -1;
    system.files.onRemove = [&] { openAtRemoval = system.database.openConnections; };
    Form().Form_Load();
    EXPECT_EQ(openAtRemoval, 0) << "a file that is open can't be removed everywhere";
    EXPECT_EQ(Grid().MaxRows(), 0) << "the rows went with the file";
}

TEST_F(MainForm, KeepsItsLoadingFlagUpWhileItScans) {
    system.settings.Set("MeasureNonSolids", "");
    EXPECT_THROW(Form().Load(), Failure);
    EXPECT_FALSE(Form().Loaded());
    EXPECT_TRUE(Form().Loading) << "the scan's failure came ahead of its lowering";
    system.settings.Set("MeasureNonSolids", "0");
    Form().Load();
    EXPECT_FALSE(Form().Loading);
}

TEST_F(MainForm, RefreshesTheInstallFoldersDatabaseWhateverThePathSays) {
    system.settings.Set("MDBPath", "D:\\work.mdb");
    system.database.CreateBlankPartDatabase("D:\\work.mdb");
    system.AddSolid("A", 18, 600, 400);
    Form().Load();
    EXPECT_EQ(system.database.databases.at("d:\\work.mdb").size(), 1u);
    EXPECT_TRUE(system.database.databases.at("c:\\brenvik\\_db\\bv04.mdb").empty());
}

struct PlaceCase {
    const char *rule, *left, *top, *width, *height;
    double expectedLeft, expectedTop, expectedWidth, expectedHeight;

    friend void PrintTo(const PlaceCase& each, std::ostream* out) { *out << each.rule; }
};

class Placing : public MainForm, public testing::WithParamInterface<PlaceCase> {};

TEST_P(Placing, FollowsTheSavedValues) {
    const PlaceCase& place = GetParam();
    system.settings.Set("DialogLeft", place.left);
    system.settings.Set("DialogTop", place.top);
    system.settings.Set("DialogWidth", place.width);
    system.settings.Set("DialogHeight", place.height);
    Form().Load();
    EXPECT_EQ(Form().left, place.expectedLeft);
    EXPECT_EQ(Form().top, place.expectedTop);
    EXPECT_EQ(Form().width, place.expectedWidth);
    EXPECT_EQ(Form().height, place.expectedHeight);
}

// The screen is 20000 by 15000 and the form's design 12000 by 8000.
const PlaceCase Places[] = {
    {"CentredWhenNothingIsSaved", "", "", "", "", 4000, 3500, 12000, 8000},
    {"CentredWhenThePlaceIsZero", "0", "0", "0", "0", 4000, 3500, 12000, 8000},
    {"PutWhereItWas", "120", "340", "10000", "7000", 120, 340, 10000, 7000},
    {"CentredWhenOnlyOneSideIsSaved", "120", "0", "0", "7000", 4000, 3500, 12000, 8000},
    {"AVerySmallSizeIsAccepted", "1", "2", "10", "20", 1, 2, 10, 20},
    {"CentredByTheDesignAndSizedThen", "0", "0", "10000", "7000", 4000, 3500, 10000, 7000},
    {"WhatIsNoNumberIsNotSaved", "left", "5", "wide", "7000", 4000, 3500, 12000, 8000},
    {"LeftOfTheScreen", "-300", "5", "", "", -300, 5, 12000, 8000},
};

INSTANTIATE_TEST_SUITE_P(Form, Placing, testing::ValuesIn(Places),
                         [](const auto& place) { return std::string(place.param.rule); });

TEST_F(MainForm, GridFollowsALargeForm) {
    Form().Load();
    Form().width = 9275;
    Form().height = 6185;
    Form().OnResize();
    EXPECT_EQ(Form().gridWidth, 9275);
    EXPECT_EQ(Form().gridHeight, 6185 - Form().gridTop - 50);
}

TEST_F(MainForm, GridFollowsASavedSizeFromTheStart) {
    system.settings.Set("DialogWidth", "15000");
    system.settings.Set("DialogHeight", "9000");
    Form().Load();
    EXPECT_EQ(Form().gridWidth, 15000);
    EXPECT_EQ(Form().gridHeight, 9000 - Form().gridTop - 50);
}

TEST_F(MainForm, GridKeepsItsSizeOnASmallOrMinimisedForm) {
    Form().Load();
    const double width = Form().gridWidth, height = Form().gridHeight;
    Form().width = 9274;
    Form().height = 6184;
    Form().OnResize();
    EXPECT_EQ(Form().gridWidth, width);
    EXPECT_EQ(Form().gridHeight, height);
    Form().width = 15000;
    Form().minimized = true;
    Form().OnResize();
    EXPECT_EQ(Form().gridWidth, width);
}

TEST_F(MainForm, GridFollowsEachSideByItself) {
    Form().Load();
    const double height = Form().gridHeight;
    Form().width = 20000;
    Form().height = 100;
    Form().OnResize();
    EXPECT_EQ(Form().gridWidth, 20000);
    EXPECT_EQ(Form().gridHeight, height);
}

TEST_F(MainForm, RefusesToCloseWhileRowsAreWritten) {
    Form().Load();
    TheSession().ApplyBusy = true;
    EXPECT_FALSE(Form().RequestClose());
    Form().tbMain.PressKey("CANCEL_CLOSE");
    EXPECT_TRUE(Form().Loaded());
    TheSession().ApplyBusy = false;
    EXPECT_TRUE(Form().RequestClose());
}

TEST_F(MainForm, SavesItsSettingsWhenItUnloads) {
    Form().Load();
    Form().left = 77;
    Grid().Column(3).width = 31;
    Form().Get<Control>("mnuExit").Press();
    EXPECT_FALSE(Form().Loaded());
    EXPECT_EQ(system.settings.Get("DialogLeft"), "77");
    EXPECT_EQ(system.settings.Get("PARTNAME_WIDTH"), "31");
    Form().Load();
    EXPECT_EQ(Form().left, 77);
    EXPECT_EQ(Grid().Column(3).width, 31);
}

TEST_F(MainForm, LeavesNoListBehindWhenItUnloads) {
    system.AddSolid("A", 18, 600, 400);
    Form().Load();
    Form().Unload();
    EXPECT_EQ(Grid().MaxRows(), 0);
    EXPECT_EQ(Form().Adodc1.Records(), nullptr);
}

TEST_F(MainForm, BeginsAsDesignedAtEachLoad) {
    Form().Load();
    Form().Get<CheckControl>("chkPart").SetValue(1);
    Grid().Column(3).hidden = true;
    Grid().SetBlockLocked(9, 1, 5, true);
    Form().Unload();
    Form().Load();
    EXPECT_EQ(Form().Get<CheckControl>("chkPart").Value(), 0);
    EXPECT_FALSE(Grid().Column(3).hidden);
    EXPECT_FALSE(Grid().CellLocked(9, 1));
}

TEST_F(MainForm, HasItsMenuAndToolbar) {
    const std::pair<const char*, const char*> entries[] = {{"mnuExport", "E&xport"},
                                                           {"mnuQcopy", "&Quick Copy"},
                                                           {"mnuApplyDrawing", "A&pply to Drawing"},
                                                           {"mnuApplyClose", "Apply/&Close"},
                                                           {"mnuExit", "E&xit"},
                                                           {"mnuHelp", "&View Help"},
                                                           {"mnuAbout", "&About Brenvik"}};
    for (const auto& [name, caption] : entries) EXPECT_EQ(Form().Get<Control>(name).Text(), caption);
    EXPECT_NE(Form().Find("mnb1"), nullptr);
    std::string keys;
    for (const auto& key : Form().tbMain.keys) keys += key.key + " ";
    EXPECT_EQ(keys, "SORT FILTER QCOPY EXPORT PRINT APPLY_DRAWING APPLY_CLOSE CANCEL_CLOSE HELP ");
}

TEST_F(MainForm, HasAnActionForEachKeyAndEntry) {
    for (const auto& key : Form().tbMain.keys) {
        int found = 0;
        for (const GridAction& action : GridActions())
            if (action.key == key.key) ++found;
        EXPECT_EQ(found, 1) << key.key;
    }
    for (const GridAction& action : GridActions()) {
        if (action.menuEntry.empty()) continue;
        EXPECT_NE(Form().Find(action.menuEntry), nullptr) << action.menuEntry;
    }
}

TEST_F(MainForm, HasWorkBehindEachAction) {
    for (const GridAction& action : GridActions()) EXPECT_NE(action.run, nullptr) << action.name;
}

TEST_F(MainForm, TellsItsVersionInTheAboutBox) {
    Form().Get<Control>("mnuAbout").Press();
    ASSERT_EQ(system.dialogs.messages.size(), 1u);
    EXPECT_EQ(system.dialogs.messages[0].title, "About Brenvik");
    EXPECT_TRUE(system.dialogs.messages[0].text.starts_with("Brenvik 4.9 by Orvane, Inc.\r\nVersion "));
}

TEST_F(MainForm, HasItsTickBoxes) {
    ASSERT_EQ(ColumnTickBoxes().size(), 14u);
    for (const ColumnTickBox& box : ColumnTickBoxes()) {
        EXPECT_EQ(Form().Get<CheckControl>(box.name).Text(), box.caption);
        EXPECT_NE(FindPartColumnByHeader(box.header), nullptr) << box.header;
    }
    EXPECT_EQ(Form().Get<CheckControl>("chkBlank").Text(), "Blank Cells Only");
    EXPECT_EQ(Form().Get<CheckControl>("CheckGroup").Text(), "Grouping");
    EXPECT_EQ(Form().Get<Control>("btnAutoPN").Text(), "Auto PN");
    EXPECT_EQ(Form().Get<Control>("Command1").Text(), "Command1");
}

TEST_F(MainForm, ShowsTheFailureOfAnEditThatCannotBeSaved) {
    system.AddSolid("A", 18, 600, 400);
    Form().Load();
    EXPECT_TRUE(Grid().UserEdit(6, 1, "long"));
    EXPECT_EQ(system.Messages(), std::vector<std::string>{"13\r\nBrenvik\r\nType mismatch"});
    EXPECT_EQ(Grid().CellText(6, 1), "0");
}

TEST_F(MainForm, WritesTheUsersEditToTheTable) {
    system.AddSolid("A", 18, 600, 400);
    Form().Load();
    EXPECT_TRUE(Grid().UserEdit(3, 1, "Side"));
    EXPECT_EQ(system.database.Text(system.WorkPath, 0, "bv_partname"), "Side");
}

}  // namespace
}  // namespace brenvik
