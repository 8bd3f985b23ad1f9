// The controls of the adjustments editor, and how its grid gets to the file and back.
#include "export/frm_adjustments.h"

#include <algorithm>
#include <array>
#include <optional>

#include "base/skip.h"
#include "export/adjustments.h"
#include "export/export_dialogs.h"
#include "export/export_troubles.h"
#include "session/message.h"
#include "session/module_state.h"
#include "session/output_rule.h"
#include "session/ports/dialog_port.h"
#include "session/ports/files_port.h"
#include "session/session.h"
#include "session/text_files.h"
#include "settings/settings_keys.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

constexpr std::string_view Warning =
    "Be very careful using BrenvikAdjustments, as your exported sizes will be changed. Any part that meets "
    "the "
    "criteria you specify will be adjusted accordingly based in the values in the l, w and t columns. If a "
    "part "
    "matches more then one Adjust Name in you file, then the part will be adjusted multiple times. This only "
    "effects *.csv and *mdb exports.";

constexpr auto Headers = std::to_array<const char*>({
    "Adjust Name", "Qty",   "Part Name",  "Sub Assem.", "Material", "Length", "Width", "Thick",
    "ORIE",        "Notes", "User Data1", "User Data2", "PN",       "Price",  "EB1",   "EB2",
    "EB3",         "EB4",   "Face",       "Layer",      "L",        "W",      "T",
});
static_assert(Headers.size() == AdjustmentColumnCount);

/// Room for what a shop has, and always some rows to type into.
constexpr int LeastRows = 500, SpareRows = 50;

std::vector<GridColumn> Columns() {
    std::vector<GridColumn> columns;
    for (const char* header : Headers) {
        GridColumn column;
        column.header = header;
        column.width = columns.empty() ? 20 : 10;
        columns.push_back(std::move(column));
    }
    return columns;
}

}  // namespace

frmAdjustments::frmAdjustments()
    : Form("frmAdjustments", "BrenvikAdjustments"),
      fpAdjustments(Add<GridControl>("fpAdjustments", Columns())),
      Text1(Add<Control>(ControlKind::TextBox, "Text1")) {
    width = 12000;
    height = 7200;
    Add<Control>(ControlKind::Label, "lblFile", "BrenvikAdjustments file to use:");
    Add<Control>(ControlKind::Label, "lblWarning", std::string(Warning));
    AddButton("cmdADJBrowse", "...", &frmAdjustments::Browse);
    AddButton("cmdADJBrowse2", "Save as ...", &frmAdjustments::SaveAs);
    AddButton("btnSave", "Save / Close", &frmAdjustments::SaveAndClose);
}

void frmAdjustments::AddButton(const char* name, const char* buttonCaption,
                               void (frmAdjustments::*handler)()) {
    Add<Control>(ControlKind::Button, name, buttonCaption).onClick = [this, handler] {
        ShowAndResume(ShowFailure, [&] { (this->*handler)(); });
    };
}

void frmAdjustments::OnLoad() {
    EditAdjPath.clear();
    Populate();
    LoadAdjustments();
}

void frmAdjustments::Populate() {
    const std::string path = ResolveAdjustmentPath();
    if (path.empty()) return ShowMessage(MissingAdjustments);
    EditAdjPath = path;
    Text1.SetText(path);
    Skip([&] { KeepAdjustmentPath(path); });
}

void frmAdjustments::LoadAdjustments() {
    fpAdjustments.ClearMarks();
    fpAdjustments.SetMaxRows(LeastRows);
    if (GetSubkeyText(CsvSaveSubkey, AdjustmentPathSetting).empty()) return;
    const std::string path = ResolveAdjustmentPath();
    std::vector<AdjustmentRow> rows;
    ShowAndResume(ShowFailureWithDetail, [&] { rows = ParseAdjustments(ReadLines(path)); });
    const int rowCount = static_cast<int>(rows.size());
    fpAdjustments.SetMaxRows(std::max(LeastRows, rowCount + SpareRows));
    for (int row = 1; row <= rowCount; ++row) {
        const AdjustmentRow& values = rows[static_cast<std::size_t>(row - 1)];
        for (std::size_t place = 0; place < values.size(); ++place)
            if (!values[place].empty())
                fpAdjustments.SetCellText(static_cast<int>(place) + 1, row, values[place]);
    }
}

void frmAdjustments::Browse() {
    if (!ChooseAdjustmentFile(EditAdjPath)) return;
    Populate();
    LoadAdjustments();
}

std::string frmAdjustments::FileText() const {
    const std::string_view lineEnd = ThePlatform().files->LineEnd();
    std::string text;
    for (int row = 1; row <= fpAdjustments.MaxRows(); ++row) {
        AdjustmentRow values;
        for (int column = 1; column <= fpAdjustments.MaxCols(); ++column)
            values.push_back(fpAdjustments.CellText(column, row));
        const bool blank =
            std::ranges::all_of(values, [](const std::string& value) { return value.empty(); });
        if (!blank) text += AdjustmentText(values, lineEnd);
    }
    return text;
}

void frmAdjustments::SaveAs() {
    const std::optional<std::string> path =
        ThePlatform().dialogs->ChooseFile(AdjustmentFileRequest(EditAdjPath, true));
    if (path) WriteTo(*path);
}

// The dialog keeps its failures to itself; whoever has called the system hears of a file that isn't there.
void frmAdjustments::WriteTo(const std::string& path) const {
    const std::optional<Failure> failure = Attempt([&] {
        RequireOutputPlace(path, OutputKind::Adjustments);
        ThePlatform().files->WriteFile(path, FileText());
    });
    if (failure)
        NoteExportTrouble("the BrenvikAdjustments file " + path +
                          " was not written: " + failure->description());
}

void frmAdjustments::SaveAndClose() {
    WriteTo(EditAdjPath);
    ShowAndResume(ShowFailure, [&] { SaveSubkeyText(CsvSaveSubkey, AdjustmentPathSetting, EditAdjPath); });
    Unload();
}

void ShowAdjustments() { ThePlatform().dialogs->ShowModal(StateOf<frmAdjustments>()); }

void commands::BVAdjustments(AcadApplication&) { ShowAdjustments(); }

}  // namespace brenvik
