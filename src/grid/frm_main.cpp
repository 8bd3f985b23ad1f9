// The controls of the main dialog and the order in which it comes up.
#include "grid/frm_main.h"

#include <array>
#include <string>
#include <utility>

#include "base/skip.h"
#include "base/text.h"
#include "grid/column_relation.h"
#include "grid/grid_columns.h"
#include "grid/grid_query.h"
#include "grid/grid_settings.h"
#include "grid/typed_values.h"
#include "parts/mautocad.h"
#include "parts/mdatabase.h"
#include "parts/part_table.h"
#include "parts/part_trouble.h"
#include "session/message.h"
#include "session/module_state.h"
#include "session/session.h"

namespace brenvik {

namespace {

constexpr auto TickBoxes = std::to_array<ColumnTickBox>({
    {"chkPart", "Part Name", "part name"},
    {"chkSub", "Sub Assembly", "sub assembly"},
    {"chkMaterial", "Material", "material"},
    {"chkLWT", "ORIE", "orie"},
    {"chkNotes", "Notes", "notes"},
    {"chkUserData1", "User Data 1", "user data1"},
    {"chkUserData2", "User Data 2", "user data2"},
    {"chkPN", "PN", "pn"},
    {"chkPrice", "Price", "price"},
    {"chkEB1", "EB1", "eb1"},
    {"chkEB2", "EB2", "eb2"},
    {"chkEB3", "EB3", "eb3"},
    {"chkEB4", "EB4", "eb4"},
    {"chkFace", "Face", "face"},
});

/// Design widths in characters: room for what the column usually holds.
double DesignWidth(const PartColumn& column) {
    if (column.column == "bv_partname" || column.column == "bv_subassembly" || column.column == "bv_notes")
        return 20;
    if (column.column == "bv_material") return 16;
    if (column.column == "bv_qty" || column.column == "bv_lwt") return 6;
    return 10;
}

/// Columns that only the scan may set are locked: the identity of a row, its layer, and the present extents
/// and those of the last Apply. The identity and the old extents are not shown either. Sizes can be typed
/// over: a list may go out with other sizes than the solids have, and the next scan replaces them by the
/// measured ones.
std::vector<GridColumn> DesignColumns() {
    std::vector<GridColumn> columns;
    for (const PartColumn& part : PartColumns()) {
        const std::string name(part.column);
        const bool hidden = name == "bv_id" || name.starts_with("bv_oldValue");
        const bool rawExtent = name == "bv_x" || name == "bv_y" || name == "bv_z";
        columns.push_back({name, name, DesignWidth(part), hidden, hidden || rawExtent || name == "bv_layer",
                           part.kind == PartColumnKind::Number});
    }
    return columns;
}

std::vector<ToolbarControl::Key> ToolbarKeys() {
    return {{"SORT", "Sort", false},
            {"FILTER", "Filter", false},
            {"QCOPY", "Quick Copy", true},
            {"EXPORT", "Export", true},
            {"PRINT", "Print", false},
            {"APPLY_DRAWING", "Apply to Drawing", true},
            {"APPLY_CLOSE", "Apply/Close", false},
            {"CANCEL_CLOSE", "Cancel/Close", false},
            {"HELP", "Help", true}};
}

}  // namespace

std::span<const ColumnTickBox> ColumnTickBoxes() { return TickBoxes; }

void SetGridCommands(GridCommands commands) { StateOf<GridCommands>() = std::move(commands); }

frmMain& GridFormInstance() {
    Session& session = TheSession();
    if (session.GridForm == nullptr) session.GridForm = std::make_unique<frmMain>();
    return static_cast<frmMain&>(*session.GridForm);
}

frmMain::frmMain()
    : Form("frmMain", "Brenvik"),
      Adodc1(Add<DataControl>("Adodc1", [] { return ThePlatform().database->CreateConnection(); })),
      fpSpread1(Add<GridControl>("fpSpread1", DesignColumns())),
      tbMain(Add<ToolbarControl>("tbMain", ToolbarKeys())),
      sbMain(Add<StatusBarControl>("sbMain", 1)) {
    width = 12000;
    height = 8000;
    gridTop = 1200;
    gridWidth = width;
    gridHeight = height - gridTop - 50;
    Adodc1.visible = false;
    Adodc1.recordSource = FullSelect();
    ConnectGrid();
    tbMain.onKey = [this](std::string_view key) { StateOf<GridCommands>().toolbarKey(*this, key); };
    AddMenu();
    AddTickBoxes();
    Add<Control>(ControlKind::Button, "btnAutoPN", "Auto PN").onClick = [this] {
        ShowAndResume(ShowFailure, [this] { AutoPN(); });
    };
    // An internal command without a meaning for the user.
    auto& Command1 = Add<Control>(ControlKind::Button, "Command1", "Command1");
    Command1.visible = false;
    Command1.onClick = [this] { ShowAndResume(ShowFailure, [this] { Highlight(); }); };
}

void frmMain::ConnectGrid() {
    fpSpread1.onSaveFailed = [](const Failure& failure) {
        ShowFailure(failure);
        NotePartTrouble({"", "", std::string("the list could not take an edit: ") + failure.what(), true});
    };
    fpSpread1.onCellEntered = [this](int column, int row) { CurrentCellMoved(column, row); };
    fpSpread1.onEditEnded = [this](int column, int row) {
        if (fpSpread1.CellText(column, row) != fpSpread1.SavedText(column, row)) NoteEditedRow(row);
        if (column == OrieColumn) OrieEdited(row);
        NoteTypedSize(column, row);
    };
    fpSpread1.onKeysRefused = [](int, int row, std::string_view typed, std::string_view passed) {
        NoteKeysNotTaken(row, typed, passed);
    };
    fpSpread1.onKey = [this](int column, int, std::string_view key) {
        return Loading || column != OrieColumn || checkEntry(key, "LWT");
    };
}

void frmMain::AddMenu() {
    struct Entry {
        const char *name, *caption;
    };
    for (const Entry& entry :
         {Entry{"mnuActions", "&Actions"}, Entry{"mnuExport", "E&xport"}, Entry{"mnuQcopy", "&Quick Copy"},
          Entry{"mnuApplyDrawing", "A&pply to Drawing"}, Entry{"mnb1", "-"},
          Entry{"mnuApplyClose", "Apply/&Close"}, Entry{"mnuExit", "E&xit"}, Entry{"mnuHelpMenu", "&Help"},
          Entry{"mnuHelp", "&View Help"}, Entry{"mnuAbout", "&About Brenvik"}}) {
        auto& control = Add<Control>(ControlKind::MenuEntry, entry.name, entry.caption);
        const std::string menuEntry = entry.name;
        control.onClick = [this, menuEntry] { StateOf<GridCommands>().menuEntry(*this, menuEntry); };
    }
}

void frmMain::AddTickBoxes() {
    Add<Control>(ControlKind::Frame, "fraCheckBoxes");
    for (const ColumnTickBox& box : TickBoxes)
        Add<CheckControl>(ControlKind::CheckBox, std::string(box.name), std::string(box.caption));
    Add<CheckControl>(ControlKind::CheckBox, "chkBlank", "Blank Cells Only");
    Add<CheckControl>(ControlKind::CheckBox, "CheckGroup", "Grouping").onClick = [this] {
        GroupingSwitched(*this);
    };
}

void frmMain::Form_Load() {
    if (Loaded())
        LoadInOrder();
    else
        Load();
}

void frmMain::OnLoad() { LoadInOrder(); }

void frmMain::LoadInOrder() {
    TheSession().ExportTarget = 0;
    // The data control of a form that is loaded already stands on the file that goes.
    Adodc1.Close();
    mDatabase::RefreshWorkingDatabase();
    sbMain.panels[0] = ProductTitle;
    Loading = true;
    SetColumnHeaders();
    LoadGridSettings();
    PlaceForm();
    NoteGridSettingsShown();
    ForgetTypedSizes();
    NoteRowsLeftBehind();
    ScanSelection();
    TheSession().CaptionList = Split(GridCaptionList, ',');
    ColHeadRelationShip();
    Loading = false;
}

void frmMain::ScanSelection() { mAutoCAD::ScanSelection({*this, Adodc1, fpSpread1}); }

bool frmMain::OnQueryClose() { return !TheSession().ApplyBusy; }

void frmMain::OnUnload() {
    NoteRowsLeftBehind();
    SaveGridSettings();
    // The list ends with the form; a later refresh replaces the file that the data control stands on.
    Adodc1.Close();
    fpSpread1.SetDataSource(nullptr);
}

}  // namespace brenvik
