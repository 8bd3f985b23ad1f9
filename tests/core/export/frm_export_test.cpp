// The export dialog: how it comes up, what each control does, what it keeps, and what its button refuses.
#include "export/frm_export.h"

#include <gtest/gtest.h>

#include "core/export/export_fixture.h"
#include "export/export_troubles.h"

namespace brenvik {
namespace {

class ExportDialog : public ExportTest {
  protected:
    Texts VisibleFrames() {
        Texts names;
        for (const auto& control : Form().Controls())
            if (control->Kind() == ControlKind::Frame && control->visible) names.push_back(control->Name());
        return names;
    }
    void SelectCaptions(const Texts& captions) {
        for (const std::string& caption : captions) Choose(Form().cboCSVCaptionFrom, caption);
    }
    void SetProfiles(const std::string& content) {
        files.contents["C:\\Brenvik\\BrenvikProfiles.txt"] = content;
    }
};

const Texts offeredColumns{"Qty",  "Part Name", "Sub Assembly", "Material",   "Length", "Width", "Thickness",
                           "ORIE", "Notes",     "User Data1",   "User Data2", "PN",     "Price", "EB1",
                           "EB2",  "EB3",       "EB4",          "Face",       "Layer"};
const Texts offeredFields{"bv_qty",       "bv_partname",  "bv_subassembly", "bv_material", "bv_length",
                          "bv_width",     "bv_thickness", "bv_lwt",         "bv_notes",    "bv_userdata1",
                          "bv_userdata2", "bv_pn",        "bv_price",       "bv_eb1",      "bv_eb2",
                          "bv_eb3",       "bv_eb4",       "bv_face",        "bv_layer"};

Texts With(Texts items, const Texts& more) {
    items.insert(items.end(), more.begin(), more.end());
    return items;
}

TEST_F(ExportDialog, OffersItsTypesInOrder) {
    Open();
    EXPECT_EQ(Form().caption, "Brenvik Export Tool");
    EXPECT_EQ(Form().cboExportType.Items(),
              (Texts{"Export to CSV", "Export to Access Database", "Export to C2C", "Export to ATP",
                     "Export to ROV", "Export to CNI", "Export to ASP", "Export to WOP4", "Export to WOP5",
                     "Export to THERM", "Export to BW", "Export to ENR", "Export to ABC", "Export to RCIM"}));
    EXPECT_EQ(Form().cboExportType.ListIndex(), 0);
    EXPECT_EQ(Form().cboAccessTable.Items(), Texts{"(new)"});
    EXPECT_EQ(Form().txtNewTable.Text(), "BrenvikExport");
}

TEST_F(ExportDialog, OffersTheColumnsThatAreNoIdentityAndNoExtents) {
    Open();
    const Texts joined{"Thickness-Material (Imperial)", "Thickness-Material (Metric)"};
    const Texts joinedFields(2, "bv_thickness|bv_material");
    EXPECT_EQ(Form().cboCSVCaptionFrom.Items(), With(With({"(Blank)"}, offeredColumns), joined));
    EXPECT_EQ(Form().cboAccessFrom.Items(), With(offeredColumns, joined));
    EXPECT_EQ(Form().cboDBNames.Items(), With(offeredFields, joinedFields));
    EXPECT_EQ(Form().cboFromDBVals.Items(), With(offeredFields, joinedFields));
    EXPECT_FALSE(Form().cboDBNames.visible);
    EXPECT_FALSE(Any("cboCSVCaptionFromback").visible);
}

TEST_F(ExportDialog, ShowsTheFrameOfItsType) {
    Open();
    for (int type = 0; type < 14; ++type) {
        Form().cboExportType.SetListIndex(type);
        EXPECT_EQ(VisibleFrames(), Texts{type == 1 ? "fraExportAccess" : "fraExportCSV"}) << type;
        EXPECT_EQ(Form().CncMode, type < 2 ? 0 : 1) << type;
    }
}

TEST_F(ExportDialog, LoadsTheProfilesOfItsType) {
    SetProfiles("[List]\ncolumns=QTY\n[Saw]\ncolumns=PN\n");
    files.contents["C:\\Brenvik\\CNCProfile.txt"] = "[CNC]\ncolumns=ID,QTY\n";
    Open();
    EXPECT_EQ(Form().cboProfileName.Items(), (Texts{"List", "Saw"}));
    Form().cboExportType.SetListIndex(5);
    EXPECT_EQ(Form().cboProfileName.Items(), Texts{"CNC"});
    Form().cboExportType.SetListIndex(0);
    EXPECT_EQ(Form().cboProfileName.Items(), (Texts{"List", "Saw"}));
}

TEST_F(ExportDialog, ComesUpWithoutProfilesWhenTheirFileIsMissing) {
    Open();
    EXPECT_TRUE(Form().cboProfileName.Items().empty());
    EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(ExportDialog, ComesUpWithoutProfilesThatCantBeRead) {
    SetProfiles(std::string("\xFF\xFE\0[\0L\0", 7) + std::string(100000, 'x') + "\ncolumns=QTY\n[cut of");
    Open();
    EXPECT_TRUE(Form().cboProfileName.Items().empty());
    SetProfiles("[List]\ncolumns=QTY\n");
    files.failOnRead = PermissionDenied("BrenvikProfiles.txt");
    Form().LoadProfiles();
    EXPECT_TRUE(Form().cboProfileName.Items().empty());
    EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(ExportDialog, ListsTheColumnsOfTheChosenProfile) {
    SetProfiles("[List]\ncolumns=QTY,Colour,,Part Name\n[Empty]\n");
    Open();
    Form().lstExportColumns.AddItem("before");
    Choose(Form().cboProfileName, "List");
    EXPECT_EQ(Form().lstExportColumns.Items(), (Texts{"QTY", "Colour", "", "Part Name"}));
    Choose(Form().cboProfileName, "Empty");
    EXPECT_TRUE(Form().lstExportColumns.Items().empty());
}

TEST_F(ExportDialog, LetsColumnsBeChosenForACustomProfileOnly) {
    Open();
    for (const int custom : {0, 1, 0}) {
        Form().chkChooseCSV.SetValue(custom);
        for (const char* control : {"btnInsert", "btnRemove", "cboCSVCaptionFrom"})
            EXPECT_EQ(Any(control).enabled, custom == 1) << control;
    }
}

TEST_F(ExportDialog, InsertsBlankColumnsManyTimesAndOthersOnce) {
    Open();
    Form().chkChooseCSV.SetValue(1);
    Form().lstExportColumns.AddItem("part NAME");
    SelectCaptions({"(Blank)", "Part Name", "Length"});
    Press("btnInsert");
    Press("btnInsert");
    EXPECT_EQ(Form().lstExportColumns.Items(), (Texts{"part NAME", "(Blank)", "Length", "(Blank)"}));
}

TEST_F(ExportDialog, RemovesAColumnAndSelectsTheNext) {
    Open();
    Form().chkChooseCSV.SetValue(1);
    ListControl& list = Form().lstExportColumns;
    for (const char* item : {"a", "b", "c"}) list.AddItem(item);
    Press("btnRemove");
    EXPECT_EQ(list.ListCount(), 3);
    list.SetListIndex(1);
    Press("btnRemove");
    EXPECT_EQ(list.Items(), (Texts{"a", "c"}));
    EXPECT_EQ(list.ListIndex(), 1);
    Press("btnRemove");
    EXPECT_EQ(list.Items(), Texts{"a"});
    EXPECT_EQ(list.ListIndex(), -1);
}

TEST_F(ExportDialog, MovesAColumnPastItsNeighbour) {
    Open();
    ListControl& list = Form().lstExportColumns;
    for (const char* item : {"a", "b", "c"}) list.AddItem(item);
    Press("cmdMoveUp");
    list.SetListIndex(2);
    Press("cmdMoveDown");
    EXPECT_EQ(list.Items(), (Texts{"a", "b", "c"}));
    Press("cmdMoveUp");
    EXPECT_EQ(list.Items(), (Texts{"a", "c", "b"}));
    EXPECT_EQ(list.ListIndex(), 1);
    Press("cmdMoveUp");
    Press("cmdMoveUp");
    EXPECT_EQ(list.Items(), (Texts{"c", "a", "b"}));
    Press("cmdMoveDown");
    EXPECT_EQ(list.Items(), (Texts{"a", "c", "b"}));
}

TEST_F(ExportDialog, MapsColumnsToTheirFields) {
    Open();
    SelectCaptions({"(Blank)", "Length", "Thickness-Material (Metric)"});
    Press("cmdAddFrom");
    ASSERT_EQ(Form().lvCVSMapping.rows.size(), 3U);
    EXPECT_EQ(Form().lvCVSMapping.rows[0].key, "");
    EXPECT_EQ(Form().lvCVSMapping.rows[1].text, "Length");
    EXPECT_EQ(Form().lvCVSMapping.rows[1].key, "bv_length");
    EXPECT_EQ(Form().lvCVSMapping.rows[2].key, "bv_thickness|bv_material");
    Press("cmdRemoveFrom");
    Form().lvCVSMapping.selectedRow = 1;
    Press("cmdRemoveFrom");
    ASSERT_EQ(Form().lvCVSMapping.rows.size(), 2U);
    EXPECT_EQ(Form().lvCVSMapping.rows[1].key, "bv_thickness|bv_material");
}

TEST_F(ExportDialog, ShowsTheAdjustmentFile) {
    Open();
    EXPECT_EQ(Form().Text1.Text(), "C:\\Brenvik\\No Adjustments.txt");
    EXPECT_EQ(Form().ExportAdjPath, "C:\\Brenvik\\No Adjustments.txt");
    EXPECT_EQ(Setting("CSV_SAVE\\CVS_ADJ_PATH"), "C:\\Brenvik\\No Adjustments.txt");
}

TEST_F(ExportDialog, SaysThatTheDeliveredAdjustmentsAreMissing) {
    files.contents.clear();
    Open();
    ASSERT_FALSE(dialogs.messages.empty());
    EXPECT_TRUE(dialogs.messages[0].text.ends_with("or reinstall Brenvik."));
    EXPECT_TRUE(Form().Loaded());
}

TEST_F(ExportDialog, ChoosesAnotherAdjustmentFile) {
    Open();
    Press("cmdADJBrowse");
    EXPECT_EQ(Form().Text1.Text(), "C:\\Brenvik\\No Adjustments.txt");
    dialogs.chosenFile = "D:\\mine.txt";
    Press("cmdADJBrowse");
    EXPECT_EQ(Form().Text1.Text(), "D:\\mine.txt");
    EXPECT_EQ(Setting("CSV_SAVE\\CVS_ADJ_PATH"), "D:\\mine.txt");
    const FileRequest& request = dialogs.fileRequests[0];
    EXPECT_EQ(request.title, "Choose Adjustment File");
    EXPECT_EQ(request.filter, "BrenvikAdjustments Text File (*.txt)|*.txt");
    EXPECT_EQ(request.defaultExtension, "txt");
    EXPECT_EQ(request.fileName, "C:\\Brenvik\\No Adjustments.txt");
    EXPECT_FALSE(request.saving);
}

TEST_F(ExportDialog, TakesTheFileThatTheEditorLeavesBehind) {
    Open();
    dialogs.onModal = [this](brenvik::Form& editor) {
        EXPECT_EQ(editor.Name(), "frmAdjustments");
        settings.Set("CSV_SAVE\\CVS_ADJ_PATH", "D:\\edited.txt");
    };
    Press("Command1");
    EXPECT_EQ(Form().Text1.Text(), "D:\\edited.txt");
}

TEST_F(ExportDialog, ChoosesTheFileToSaveTo) {
    Open();
    Press("cmdCSVBrowse");
    EXPECT_EQ(Form().txtSaveCSVFile.Text(), "");
    dialogs.chosenFile = "D:\\list.csv";
    Press("cmdCSVBrowse");
    EXPECT_EQ(Form().txtSaveCSVFile.Text(), "D:\\list.csv");
    const FileRequest& request = dialogs.fileRequests[0];
    EXPECT_EQ(request.title, "Export Data");
    EXPECT_EQ(request.filter, "Comma Separated Values (*.csv)|*.csv|All Files (*.*)|*.*");
    EXPECT_EQ(request.defaultExtension, "csv");
    EXPECT_EQ(request.fileName, "BrenvikExport.csv");
    EXPECT_TRUE(request.saving);
}

TEST_F(ExportDialog, KeepsNothingUnlessItIsToldTo) {
    Open();
    Form().cboExportType.SetListIndex(0);
    Form().txtSaveCSVFile.SetText("C:\\out.csv");
    settings.writes.clear();
    Press("cmdGo");
    for (const std::string& write : settings.writes) EXPECT_TRUE(write.starts_with("CVS_ADJ_PATH=")) << write;
}

TEST_F(ExportDialog, KeepsAllItsChoices) {
    Open();
    Form().chkSave.SetValue(1);
    Form().chkReduce.SetValue(1);
    Form().txtSaveCSVFile.SetText("C:\\out.csv");
    Form().txtExportAccess.SetText("C:\\shop.mdb");
    Form().cboAccessTable.SetText("Parts");
    Form().lvCVSMapping.rows = {{"Length", "bv_length", "", {}}};
    Form().lvAccessMap.rows = {{"Qty", "bv_qty", "bv_qty,3", {"Number"}},
                               {"Notes", "bv_notes", "bv_notes,202", {"N"}}};
    settings.writes.clear();
    Form().cboExportType.SetListIndex(1);
    Form().cboAccessTable.SetText("(new)");
    Form().cboAccessTable.SetText("Parts");
    Form().lvAccessMap.rows.resize(2);
    target.onOpen = [](const std::string&) { throw Failure(1, "x", "no"); };
    Press("cmdGo");
    EXPECT_EQ(
        settings.writes,
        (Texts{"EXPORT_TYPE=1", "SAVE_SWITCH=1", "CVS_EXPORT_PATH=C:\\out.csv", "CVS_MAPPING_SWITCH=0",
               "CSV_REDUCE=1", "CVS_COL_COUNT=1", "CVS_COL_KEY0=bv_length", "CVS_COL_VALUE0=Length",
               "ACCESS_EXPORT_PATH=C:\\shop.mdb", "ACCESS_TABLE_NAME=Parts", "ACCESS_MAP_COUNT=2",
               "ACCESS_KEY0=bv_qty", "ACCESS_VALUE0=Qty", "ACCESS_TAG0=bv_qty,3", "ACCESS_TO0=Number",
               "ACCESS_KEY1=bv_notes", "ACCESS_VALUE1=Notes", "ACCESS_TAG1=bv_notes,202", "ACCESS_TO1=N"}));
    EXPECT_EQ(Setting("EXPORT_TYPE"), "1");
    EXPECT_EQ(Setting("CSV_SAVE\\CVS_EXPORT_PATH"), "C:\\out.csv");
    EXPECT_EQ(Setting("ACCESS_SAVE\\ACCESS_TO1"), "N");
}

TEST_F(ExportDialog, KeepsNoChoiceOverOneThatAnotherProgramHasSaved) {
    Open();
    Form().chkSave.SetValue(1);
    Form().txtSaveCSVFile.SetText("C:\\out.csv");
    Form().txtExportAccess.SetText("C:\\shop.mdb");
    Form().lvCVSMapping.rows = {{"Length", "bv_length", "", {}}};
    for (const auto& [name, text] :
         std::map<std::string, std::string>{{"CSV_SAVE\\CSV_REDUCE", "1"},
                                            {"CSV_SAVE\\CVS_EXPORT_PATH", "C:\\other.csv"},
                                            {"ACCESS_SAVE\\ACCESS_MAP_COUNT", "1"},
                                            {"ACCESS_SAVE\\ACCESS_KEY0", "bv_qty"},
                                            {"ACCESS_SAVE\\ACCESS_VALUE0", "Qty"},
                                            {"ACCESS_SAVE\\ACCESS_TAG0", "bv_qty,3"},
                                            {"ACCESS_SAVE\\ACCESS_TO0", "Number"}})
        settings.Set(name, text);
    Press("cmdGo");
    EXPECT_EQ(Setting("CSV_SAVE\\CSV_REDUCE"), "1") << "nobody has touched it here";
    EXPECT_EQ(Setting("ACCESS_SAVE\\ACCESS_MAP_COUNT"), "1");
    EXPECT_EQ(Setting("ACCESS_SAVE\\ACCESS_EXPORT_PATH"), "C:\\shop.mdb");
    EXPECT_EQ(Setting("CSV_SAVE\\CVS_COL_COUNT"), "1");
    EXPECT_EQ(Setting("CSV_SAVE\\CVS_EXPORT_PATH"), "C:\\out.csv");
    EXPECT_EQ(TakeExportTroubles(),
              Texts{"the choices of this export were saved over others that another program has saved since "
                    "the dialog was opened: CVS_EXPORT_PATH"});
}

TEST_F(ExportDialog, ComesUpWithWhatItKept) {
    files.contents["C:\\shop.mdb"] = "";
    target.tables = {"Parts", "Other"};
    target.fields = {{"Number", 3}};
    for (const auto& [name, text] :
         std::map<std::string, std::string>{{"EXPORT_TYPE", "1"},
                                            {"SAVE_SWITCH", "1"},
                                            {"CSV_SAVE\\CVS_EXPORT_PATH", "C:\\o.csv"},
                                            {"CSV_SAVE\\CVS_MAPPING_SWITCH", "1"},
                                            {"CSV_SAVE\\CSV_REDUCE", "1"},
                                            {"CSV_SAVE\\CVS_COL_COUNT", "1"},
                                            {"CSV_SAVE\\CVS_COL_KEY0", "bv_length"},
                                            {"CSV_SAVE\\CVS_COL_VALUE0", "Length"},
                                            {"ACCESS_SAVE\\ACCESS_EXPORT_PATH", "C:\\shop.mdb"},
                                            {"ACCESS_SAVE\\ACCESS_TABLE_NAME", "Parts"},
                                            {"ACCESS_SAVE\\ACCESS_MAP_COUNT", "1"},
                                            {"ACCESS_SAVE\\ACCESS_KEY0", "bv_qty"},
                                            {"ACCESS_SAVE\\ACCESS_VALUE0", "Qty"},
                                            {"ACCESS_SAVE\\ACCESS_TAG0", "bv_qty,3"},
                                            {"ACCESS_SAVE\\ACCESS_TO0", "Number"}})
        settings.Set(name, text);
    Open();
    EXPECT_EQ(Form().cboExportType.ListIndex(), 1);
    EXPECT_EQ(VisibleFrames(), (Texts{"fraExportAccess", "fraExistingAccess"}));
    EXPECT_EQ(Form().chkSave.Value(), 1);
    EXPECT_EQ(Form().chkChooseCSV.Value(), 1);
    EXPECT_TRUE(Any("btnInsert").enabled);
    EXPECT_EQ(Form().chkReduce.Value(), 1);
    EXPECT_EQ(Form().txtSaveCSVFile.Text(), "C:\\o.csv");
    EXPECT_EQ(Form().txtExportAccess.Text(), "C:\\shop.mdb");
    EXPECT_EQ(Form().cboAccessTable.Items(), (Texts{"(new)", "Parts", "Other"}));
    EXPECT_EQ(Form().cboAccessTable.Text(), "Parts");
    ASSERT_EQ(Form().lvCVSMapping.rows.size(), 1U);
    EXPECT_EQ(Form().lvCVSMapping.rows[0].text, "Length");
    ASSERT_EQ(Form().lvAccessMap.rows.size(), 1U);
    EXPECT_EQ(Form().lvAccessMap.rows[0].text, "Qty");
    EXPECT_EQ(Form().lvAccessMap.rows[0].tag, "bv_qty,3");
    EXPECT_EQ(Form().lvAccessMap.rows[0].subItems, Texts{"Number"});
}

TEST_F(ExportDialog, TicksItsBoxesAtOneAlone) {
    for (const char* name : {"SAVE_SWITCH", "CSV_SAVE\\CVS_MAPPING_SWITCH", "CSV_SAVE\\CSV_REDUCE"})
        settings.Set(name, "2");
    Open();
    EXPECT_EQ(Form().chkSave.Value() + Form().chkChooseCSV.Value() + Form().chkReduce.Value(), 0);
}

TEST_F(ExportDialog, PassesOverDamagedSettings) {
    for (const char* type : {"x", "-1", "14", "1e300", ""}) {
        settings.Set("EXPORT_TYPE", type);
        settings.Set("CSV_SAVE\\CVS_COL_COUNT", "2000000000");
        settings.Set("ACCESS_SAVE\\ACCESS_MAP_COUNT", "-5");
        Open();
        EXPECT_EQ(Form().cboExportType.ListIndex(), 0) << type;
        EXPECT_LE(Form().lvCVSMapping.rows.size(), 2U);
        EXPECT_TRUE(Form().lvAccessMap.rows.empty());
        Form().Unload();
    }
}

TEST_F(ExportDialog, TellsOfATargetFileThatIsGone) {
    settings.Set("ACCESS_SAVE\\ACCESS_EXPORT_PATH", "C:\\gone.mdb");
    settings.Set("ACCESS_SAVE\\ACCESS_TABLE_NAME", "Parts");
    Open();
    ExpectMessage("Access database File [C:\\gone.mdb] cannot be found. Please relocate file,  if needed.",
                  "NOT FIND FILE", MessageIcon::None);
    EXPECT_EQ(Form().cboAccessTable.Text(), "Parts");
    EXPECT_TRUE(target.connectionStrings.empty());
}

TEST_F(ExportDialog, CancelLeavesNoTarget) {
    Open();
    Press("cmdCancel");
    EXPECT_FALSE(Form().Loaded());
    EXPECT_EQ(TheSession().ExportTarget, 0);
}

TEST_F(ExportDialog, NamesTheWorkFileOfACncRun) {
    files.contents["C:\\Brenvik\\CNCProfile.txt"] = "[CNC]\ncolumns=ID,QTY\n";
    Open();
    Form().cboExportType.SetListIndex(2);
    files.contents["C:\\Brenvik\\CNCProfile.txt"] = "[Edited]\ncolumns=ID,QTY\n";
    Press("cmdGo");
    EXPECT_EQ(Form().ExportPath, "C:\\Brenvik\\CNCExportList.txt");
    EXPECT_EQ(Form().txtSaveCSVFile.Text(), "C:\\Brenvik\\CNCExportList.txt");
    EXPECT_EQ(Form().cboProfileName.Items(), Texts{"Edited"}) << "read again for the run";
}

TEST_F(ExportDialog, NeedsADatabaseAndAMapping) {
    Open();
    Form().cboExportType.SetListIndex(1);
    Press("cmdGo");
    ExpectMessage("You must have selected a database to export to...", "No DB", MessageIcon::Stop);
    Form().txtExportAccess.SetText("C:\\shop.mdb");
    Press("cmdGo");
    ExpectMessage("You need to select fields to export to...", "No Mappings", MessageIcon::Stop);
    EXPECT_TRUE(Form().Loaded());
}

TEST_F(ExportDialog, SaysDoneForANewTableAndMakesNone) {
    Open();
    Form().cboExportType.SetListIndex(1);
    Form().txtExportAccess.SetText("C:\\shop.mdb");
    Choose(Form().cboAccessTable, "(new)");
    EXPECT_TRUE(Any("fraNewAccess").visible);
    Form().txtNewTable.SetText("");
    Press("cmdGo");
    EXPECT_TRUE(dialogs.messages.empty());
    EXPECT_TRUE(Form().Loaded());
    Form().txtNewTable.SetText("Any");
    Press("cmdGo");
    ASSERT_EQ(Messages(), Texts{"Export Complete!!!"});
    EXPECT_EQ(dialogs.messages[0].title, "Done.");
    EXPECT_FALSE(Form().Loaded());
    EXPECT_TRUE(Form().exportEnded);
    EXPECT_TRUE(target.connectionStrings.empty());
}

TEST_F(ExportDialog, KeepsItsFramesOnTheScreen) {
    Open();
    Form().height = 100;
    Form().top = 15000;
    Form().OnResize();
    EXPECT_EQ(Form().height, 6600);
    EXPECT_EQ(Form().top, 15360 - 6600);
    Form().height = 9000;
    Form().OnResize();
    EXPECT_EQ(Form().height, 9000);
}

}  // namespace
}  // namespace brenvik
