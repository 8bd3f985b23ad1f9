// The controls of the export dialog, how it comes up, and what its export button does.
#include "export/frm_export.h"

#include <algorithm>
#include <array>
#include <optional>

#include "base/letter_case.h"
#include "base/quoted.h"
#include "base/skip.h"
#include "base/text.h"
#include "export/adjustment_file.h"
#include "export/cnc_hand_off.h"
#include "export/csv_export.h"
#include "export/export_cells.h"
#include "export/export_dialogs.h"
#include "export/export_troubles.h"
#include "export/frm_adjustments.h"
#include "grid/column_relation.h"
#include "grid/frm_main.h"
#include "grid/mod4spread.h"
#include "parts/cnc_list.h"
#include "session/message.h"
#include "session/module_state.h"
#include "session/ports/dialog_port.h"
#include "session/session.h"
#include "session/text_files.h"

namespace brenvik {

namespace {

constexpr auto Types = std::to_array<std::string_view>({
    "Export to CSV",
    "Export to Access Database",
    "Export to C2C",
    "Export to ATP",
    "Export to ROV",
    "Export to CNI",
    "Export to ASP",
    "Export to WOP4",
    "Export to WOP5",
    "Export to THERM",
    "Export to BW",
    "Export to ENR",
    "Export to ABC",
    "Export to RCIM",
});

/// What the tallest frame takes, in twips.
constexpr double FrameHeight = 6600;

/// The identity, the raw extents and the extents of the last Apply are no columns for an export.
bool IsOffered(const std::string& header) {
    return !header.empty() && Left(header, 3) != "bv_" && FoldLower(Left(header, 3)) != "old" &&
           FoldLower(Left(header, 5)) != "value";
}

}  // namespace

frmExport::frmExport()
    : Form("frmExport", "Brenvik Export Tool"),
      cboExportType(Add<ListControl>(ControlKind::ComboBox, "cboExportType")),
      chkSave(Add<CheckControl>(ControlKind::CheckBox, "chkSave", "Save Settings?")),
      Text1(Add<Control>(ControlKind::TextBox, "Text1")),
      txtSaveCSVFile(Add<Control>(ControlKind::TextBox, "txtSaveCSVFile")),
      chkChooseCSV(Add<CheckControl>(ControlKind::CheckBox, "chkChooseCSV", "Create Custom Export Profile")),
      chkReduce(Add<CheckControl>(ControlKind::CheckBox, "chkReduce",
                                  "Export as Fraction, reduced to the closest 32nd")),
      cboProfileName(Add<ListControl>(ControlKind::ComboBox, "cboProfileName")),
      cboCSVCaptionFrom(Add<ListControl>(ControlKind::ListBox, "cboCSVCaptionFrom", true)),
      cboDBNames(Add<ListControl>(ControlKind::ComboBox, "cboDBNames")),
      lstExportColumns(Add<ListControl>(ControlKind::ListBox, "lstExportColumns")),
      lvCVSMapping(Add<ListViewControl>("lvCVSMapping", std::vector<std::string>{"From Field"})),
      txtExportAccess(Add<Control>(ControlKind::TextBox, "txtExportAccess")),
      cboAccessTable(Add<ListControl>(ControlKind::ComboBox, "cboAccessTable")),
      txtNewTable(Add<Control>(ControlKind::TextBox, "txtNewTable", "BrenvikExport")),
      cboAccessFrom(Add<ListControl>(ControlKind::ComboBox, "cboAccessFrom")),
      cboFromDBVals(Add<ListControl>(ControlKind::ComboBox, "cboFromDBVals")),
      cboAccessTableList(Add<ListControl>(ControlKind::ComboBox, "cboAccessTableList")),
      cboAccessFieldTypes(Add<ListControl>(ControlKind::ComboBox, "cboAccessFieldTypes")),
      lvAccessMap(Add<ListViewControl>("lvAccessMap", std::vector<std::string>{"From Field", "To Field"})) {
    width = 10200;
    height = 8400;
    AddFixedControls();
    AddCsvFrame();
    AddAccessFrame();
    AddSqlServerFrame();
}

void frmExport::OnClickOf(Control& control, void (frmExport::*handler)()) {
    control.onClick = [this, handler] { ShowAndResume(ShowFailure, [&] { (this->*handler)(); }); };
}

void frmExport::AddButton(const char* name, const char* buttonCaption, void (frmExport::*handler)()) {
    OnClickOf(Add<Control>(ControlKind::Button, name, buttonCaption), handler);
}

void frmExport::AddFixedControls() {
    Add<Control>(ControlKind::Label, "lblExportType", "Choose Export Type");
    Add<Control>(ControlKind::Label, "lblAdjustments", "BrenvikAdjustments");
    OnClickOf(cboExportType, &frmExport::TypeChanged);
    AddButton("cmdGo", "Export", &frmExport::Go);
    AddButton("cmdCancel", "Cancel / Close", &frmExport::Unload);
    AddButton("Command1", "Modify Adjustments", &frmExport::ModifyAdjustments);
    AddButton("cmdADJBrowse", "...", &frmExport::BrowseAdjustments);
}

void frmExport::AddCsvFrame() {
    Add<Control>(ControlKind::Frame, "fraExportCSV", "Export to CSV File");
    Add<Control>(ControlKind::Label, "lblSaveCSVFile", "Save File As (*.csv):");
    Add<Control>(ControlKind::Label, "lblProfileName", "Choose Export Profile");
    Add<Control>(ControlKind::Label, "lblAvailableColumns", "Available Columns");
    Add<Control>(ControlKind::Label, "lblProfileColumns", "Loaded Profile Columns");
    AddButton("cmdCSVBrowse", "...", &frmExport::BrowseCsv);
    AddButton("btnInsert", ">", &frmExport::InsertColumns);
    AddButton("btnRemove", "<", &frmExport::RemoveColumn);
    AddButton("cmdMoveUp", "Move Up", &frmExport::MoveUp);
    AddButton("cmdMoveDown", "Move Down", &frmExport::MoveDown);
    AddButton("cmdAddFrom", "Add", &frmExport::AddFrom);
    AddButton("cmdRemoveFrom", "Remove", &frmExport::RemoveFrom);
    OnClickOf(chkChooseCSV, &frmExport::ChooseCsvSwitched);
    OnClickOf(cboProfileName, &frmExport::ProfileChosen);
    cboDBNames.visible = false;
    Add<ListControl>(ControlKind::ComboBox, "cboCSVCaptionFromback").visible = false;
}

void frmExport::AddAccessFrame() {
    Add<Control>(ControlKind::Frame, "fraExportAccess", "Export to Access Database").visible = false;
    Add<Control>(ControlKind::Label, "lblExportAccess", "Select Access Database File (*.mdb)");
    Add<Control>(ControlKind::Label, "lblAccessTable", "Select Table");
    AddButton("cmdBrowseAccess", "...", &frmExport::BrowseAccess);
    OnClickOf(cboAccessTable, &frmExport::TableChosen);
    Add<Control>(ControlKind::Frame, "fraNewAccess").visible = false;
    Add<Control>(ControlKind::Label, "lblNewTable", "New Table Name");
    Add<Control>(ControlKind::Frame, "fraExistingAccess", "Map Grid to Database Fields").visible = false;
    AddButton("cmdAccessAdd", "Add", &frmExport::AddMapping);
    AddButton("cmdRemove", "Remove", &frmExport::RemoveMapping);
    cboFromDBVals.visible = false;
    cboAccessFieldTypes.visible = false;
}

void frmExport::AddSqlServerFrame() {
    Add<Control>(ControlKind::Frame, "fraSQL", "Export to SQL Server Database").visible = false;
    Add<Control>(ControlKind::Label, "lblSQLServer", "Enter Server Name or IP Address of SQL Server");
    Add<Control>(ControlKind::TextBox, "txtSQLServer");
    Add<Control>(ControlKind::Label, "lblPort", "Port");
    Add<Control>(ControlKind::TextBox, "txtPort");
    Add<Control>(ControlKind::Label, "lblSQLDatabase", "Database Name");
    Add<Control>(ControlKind::TextBox, "txtSQLDatabase");
    AddButton("cmdConnect", "Check Connection", &frmExport::CheckSqlServer);
}

void frmExport::OnLoad() {
    CncMode = 0;
    ExportPath.clear();
    ExportAdjPath.clear();
    login = {};
    connectFailed = false;
    exportEnded = false;
    Populate();
    OfferTypes();
    cboExportType.SetListIndex(CsvExportType);
    LoadProfiles();
    Populate();
    OfferColumns();
    ChooseCsvSwitched();
    RestoreState();
}

void frmExport::OfferTypes() {
    for (const std::string_view type : Types) cboExportType.AddItem(type);
    cboAccessTable.AddItem("(new)");
}

void frmExport::OfferColumns() {
    cboCSVCaptionFrom.AddItem("(Blank)");
    const int columnCount = GridFormInstance().fpSpread1.MaxCols();
    for (int column = 1; column <= columnCount; ++column) {
        const std::string header = Mod4Spread::GetCellText(column, 0);
        if (!IsOffered(header)) continue;
        const std::string field = ColumnForCaption(header);
        cboAccessFrom.AddItem(header);
        cboCSVCaptionFrom.AddItem(header);
        cboFromDBVals.AddItem(field);
        cboDBNames.AddItem(field);
    }
    for (const std::string_view joined : {ThicknessMaterialImperial, ThicknessMaterialMetric}) {
        cboCSVCaptionFrom.AddItem(joined);
        cboAccessFrom.AddItem(joined);
        cboDBNames.AddItem("bv_thickness|bv_material");
        cboFromDBVals.AddItem("bv_thickness|bv_material");
    }
}

void frmExport::TypeChanged() {
    const int type = cboExportType.ListIndex();
    if (type < 0) return;
    Get<Control>("fraExportCSV").visible = type != AccessExportType;
    Get<Control>("fraExportAccess").visible = type == AccessExportType;
    CncMode = type >= FirstCncExportType ? 1 : 0;
    if (type == CsvExportType) LoadProfiles();
    if (type >= FirstCncExportType) LoadCNCProfiles();
}

void frmExport::Populate() {
    const std::string path = ResolveAdjustmentPath();
    if (path.empty()) return ShowMessage(MissingAdjustments);
    ExportAdjPath = path;
    Text1.SetText(path);
    // Lists are exported from machines too whose settings only the administrator may write.
    Skip([&] { KeepAdjustmentPath(path); });
}

void frmExport::Go() {
    if (chkSave.Value() == 1) ShowAndResume(ShowFailure, [this] { SaveState(); });
    const int type = cboExportType.ListIndex();
    if (type == CsvExportType) GoCsv();
    if (type == AccessExportType) GoAccess();
    if (type >= FirstCncExportType) GoCnc();
}

void frmExport::GoCsv() {
    if (txtSaveCSVFile.Text().empty())
        return ShowMessage("You must specify a file to export to!", "No File Name...",
                           MessageIcon::Information);
    RunCsvExport(*this);
}

void frmExport::GoAccess() {
    if (txtExportAccess.Text().empty())
        return ShowMessage("You must have selected a database to export to...", "No DB", MessageIcon::Stop);
    if (cboAccessTable.Text() != "(new)") {
        if (lvAccessMap.rows.empty())
            return ShowMessage("You need to select fields to export to...", "No Mappings", MessageIcon::Stop);
        return RunAccessExport(*this);
    }
    if (txtNewTable.Text().empty()) return;
    // A table of that name is not made: exports have always gone into tables that somebody designed.
    NoteExportTrouble("no row was written to " + txtExportAccess.Text() +
                      ": expected a table that is there, found " + InQuotes("(new)") +
                      ", and no table is made");
    ShowMessage("Export Complete!!!", "Done.");
    exportEnded = true;
    Unload();
}

void frmExport::GoCnc() {
    const int type = cboExportType.ListIndex();
    ExportPath = HandOverFolder() + std::string(CncWorkFile);
    txtSaveCSVFile.SetText(ExportPath);
    LoadCNCProfiles();
    HandOffToCnc(*this, type - FirstCncExportType + 1);
}

void frmExport::BrowseCsv() {
    const std::optional<std::string> path = ThePlatform().dialogs->ChooseFile(
        {"Export Data", "Comma Separated Values (*.csv)|*.csv|All Files (*.*)|*.*", "csv",
         "BrenvikExport.csv", true});
    if (path) txtSaveCSVFile.SetText(*path);
}

void frmExport::BrowseAdjustments() {
    if (ChooseAdjustmentFile(ExportAdjPath)) Populate();
}

void frmExport::ModifyAdjustments() {
    ShowAdjustments();
    Populate();
}

void frmExport::OnResize() {
    if (mResizing || minimized || height >= FrameHeight) return;
    mResizing = true;
    // The frames need their height; what the screen doesn't have, the form gives up, and moves up before
    // that.
    const double screenHeight = ThePlatform().dialogs->Screen().height;
    height = std::min(FrameHeight, screenHeight);
    top = std::clamp(top, 0.0, screenHeight - height);
    mResizing = false;
}

void ShowExportDialog(frmMain& form) {
    ThePlatform().dialogs->ShowModal(StateOf<frmExport>());
    if (TheSession().ExportTarget >= 1 && TheSession().ExportTarget <= 12) form.Unload();
}

}  // namespace brenvik
