// The controls of the adjustments editor, and how its grid gets to the file and back.
#include "export/frm_adjustments.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "base/quoted.h"
#include "base/skip.h"
#include "base/text_lines.h"
#include "export/adjustment_file.h"
#include "export/adjustments.h"
#include "export/export_dialogs.h"
#include "export/export_troubles.h"
#include "grid/column_relation.h"
#include "session/message.h"
#include "session/module_state.h"
#include "session/output_rule.h"
#include "session/ports/dialog_port.h"
#include "session/ports/files_port.h"
#include "session/session.h"
#include "session/shared_file.h"
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

/// Beside a column's header, in characters.
constexpr std::size_t HeaderAir = 2;

std::vector<GridColumn> Columns() {
    std::vector<GridColumn> columns;
    for (const char* header : Headers) {
        GridColumn column;
        column.header = header;
        column.width =
            columns.empty() ? 20 : std::max<double>(10, std::string_view(header).size() + HeaderAir);
        columns.push_back(std::move(column));
    }
    return columns;
}

constexpr std::string_view SavingTitle = "Save Adjustments";

bool AnswersYes(const std::string& question) {
    return ThePlatform().dialogs->Show({question, std::string(SavingTitle), MessageIcon::Question,
                                        MessageButtons::YesNo}) == MessageAnswer::Yes;
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

void frmAdjustments::ReadLoaded(const std::string& path) {
    LoadedFile loaded{path, ThePlatform().files->ReadFile(path), {}, {}, {}};
    loaded.file = LinesOfFile(loaded.content, path);
    NoteGuessedLines(path, loaded.file);
    mLoaded = std::move(loaded);
}

void frmAdjustments::LoadAdjustments() {
    fpAdjustments.ClearMarks();
    fpAdjustments.SetMaxRows(LeastRows);
    mLoaded.reset();
    mUnreadable.clear();
    // Where the settings can't be written, the delivered file is edited without being stored there.
    const std::string path = ResolveAdjustmentPath();
    if (path.empty()) return;
    if (!ShowAndResume(ShowFailureWithDetail, [&] { ReadLoaded(path); })) {
        mUnreadable = path;
        return;
    }
    const std::vector<AdjustmentRow> rows = ParseAdjustments(mLoaded->file.lines);
    const int rowCount = static_cast<int>(rows.size());
    fpAdjustments.SetMaxRows(std::max(LeastRows, rowCount + SpareRows));
    for (int row = 1; row <= rowCount; ++row) {
        const AdjustmentRow& values = rows[static_cast<std::size_t>(row - 1)];
        for (std::size_t place = 0; place < values.size(); ++place)
            if (!values[place].empty())
                fpAdjustments.SetCellText(static_cast<int>(place) + 1, row, values[place]);
    }
    mLoaded->notKept = LinesNotKept(mLoaded->file.lines, rows);
    mLoaded->shownText = FileText();
    TellLinesNotShown();
}

// A remark means nothing to an export, so nothing is missing on the screen without it.
void frmAdjustments::TellLinesNotShown() const {
    const std::vector<std::string>& lines = mLoaded->file.lines;
    const auto first = std::ranges::find_if(
        mLoaded->notKept, [&](std::size_t number) { return !lines[number - 1].starts_with('#'); });
    if (first == mLoaded->notKept.end()) return;
    ShowMessage(mLoaded->path + ":" + std::to_string(*first) + ": " + InQuotes(lines[*first - 1]) +
                " can't be shown as it stands. Exports find the keys of an adjustment in any order; this "
                "editor needs all 22 of them in the order of its columns. The adjustments that you see here "
                "are not those of the file.");
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
    if (path && !KeepsOther(*path)) WriteTo(*path);
}

// The file that is edited is saved over as its button says; any other one is somebody's work.
bool frmAdjustments::KeepsOther(const std::string& path) const {
    FilesPort& files = *ThePlatform().files;
    bool isOther = false;
    Skip([&] {
        RequireOutputPlace(path, OutputKind::Adjustments);
        isOther = files.FileExists(path) && files.PlaceOf(path) != files.PlaceOf(EditAdjPath);
    });
    if (!isOther || !AnswersYes(path + " is there already. Leave it as it is?")) return false;
    NoteExportTrouble("the BrenvikAdjustments file " + path + " was not written: it was there already");
    return true;
}

bool frmAdjustments::KeepsUnread(const std::string& path) const {
    if (path != mUnreadable || !ThePlatform().files->FileExists(path)) return false;
    if (!AnswersYes(path + " could not be read, and all that it holds would be lost. Leave it as it is?"))
        return false;
    NoteExportTrouble("the BrenvikAdjustments file " + path +
                      " was not written: it could not be read, and what it holds would be lost");
    return true;
}

bool frmAdjustments::KeepsLines(const std::string& path) const {
    if (!mLoaded || mLoaded->notKept.empty()) return false;
    const std::size_t first = mLoaded->notKept.front();
    const std::string others = mLoaded->notKept.size() == 1
                                   ? std::string()
                                   : " and " + std::to_string(mLoaded->notKept.size() - 1) + " more";
    if (!AnswersYes(mLoaded->path + ":" + std::to_string(first) + ": " +
                    InQuotes(mLoaded->file.lines[first - 1]) + others +
                    " would be lost: this editor writes what its grid shows, and nothing else. Leave " +
                    path + " as it is?"))
        return false;
    NoteExportTrouble("the BrenvikAdjustments file " + path +
                      " was not written: " + std::to_string(mLoaded->notKept.size()) + " of the lines of " +
                      mLoaded->path + " would be lost, the first in line " + std::to_string(first));
    return true;
}

// The dialog keeps its failures to itself; whoever has called the system hears of a file that isn't there.
bool frmAdjustments::WriteTo(const std::string& path) {
    const std::string text = FileText();
    // Nobody has typed anything: the file stays as its writer has laid it out.
    const bool isUnchanged = mLoaded && mLoaded->path == path && mLoaded->shownText == text;
    if (isUnchanged && ThePlatform().files->FileExists(path)) return true;
    if (KeepsUnread(path) || KeepsLines(path)) return false;
    bool isLeft = false;
    const std::optional<Failure> failure = Attempt([&] {
        RequireOutputPlace(path, OutputKind::Adjustments);
        isLeft = !WriteOver(path, text);
    });
    if (isLeft)
        NoteExportTrouble("the BrenvikAdjustments file " + ChangedElsewhere(path));
    else if (failure)
        NoteExportTrouble("the BrenvikAdjustments file " + path +
                          " was not written: " + failure->description());
    else
        TellOddValues(path, text);
    if (!isLeft && !failure && mLoaded && mLoaded->path == path)
        mLoaded = LoadedFile{path, text, {}, {}, text};
    return !isLeft;
}

// The grid takes whatever is typed, and an export would be the first to say that a part is never asked for,
// or that nothing is added.
void frmAdjustments::TellOddValues(const std::string& path, const std::string& text) {
    if (ColumnForCaption(AdjustmentKeys().front()).empty()) ColHeadRelationShip();
    const std::vector<std::string> lines = LinesOf(text);
    NoteAdjustmentFaults(path, lines);
    if (const auto repeated = WalkAdjustments(lines).repeatedHeader)
        NoteExportTrouble("the BrenvikAdjustments file " + path + " has the adjustment " + *repeated +
                          " twice with another one between, and no export can apply it; give each a name of "
                          "its own");
}

// A file that can't be read can't be compared; the user has given it up, or chosen it to be written over.
bool frmAdjustments::WriteOver(const std::string& path, const std::string& text) const {
    const auto write = [&] { ThePlatform().files->WriteFile(path, text); };
    std::optional<std::string> known;
    if (mLoaded && mLoaded->path == path)
        known = mLoaded->content;
    else if (const bool isShown = path == EditAdjPath && path != mUnreadable;
             !isShown && Attempt([&] { known = ContentOf(path); })) {
        write();
        return true;
    }
    return WriteUnlessChanged({path, std::move(known)}, std::string(SavingTitle), write);
}

void frmAdjustments::SaveAndClose() {
    if (!WriteTo(EditAdjPath)) return;
    ShowAndResume(ShowFailure, [&] { SaveSubkeyText(CsvSaveSubkey, AdjustmentPathSetting, EditAdjPath); });
    Unload();
}

void ShowAdjustments() { ThePlatform().dialogs->ShowModal(StateOf<frmAdjustments>()); }

void commands::BVAdjustments(AcadApplication&) { ShowAdjustments(); }

}  // namespace brenvik
