// The controls of the material editor, its rows, and how they get to the file and back.
#include "settings/frm_materials.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/quoted.h"
#include "base/skip.h"
#include "base/text.h"
#include "base/text_lines.h"
#include "base/western_text.h"
#include "session/message.h"
#include "session/module_state.h"
#include "session/ports/dialog_port.h"
#include "session/ports/files_port.h"
#include "session/session.h"
#include "session/shared_file.h"

namespace brenvik {

namespace {

constexpr std::string_view Advice =
    "Tool1 is the default tool for cutting the part out. Each Material Name requires that each setting be "
    "filled in or it will be deleted on Save / Close. You can click on a row number to highlight the entire "
    "row, then press Ctrl-C, then click on a new row number and press Ctrl-V to copy data. ";

struct Header {
    const char* caption;
    double width;
};

constexpr auto Headers = std::to_array<Header>({
    {"Material Name", 30},
    {"Grain", 8},
    {"Direction", 10},
    {"Tool1", 8},
    {"Tool1 Dia", 10},
    {"Tool1 Speed", 12},
    {"Tool1 Feed", 12},
    {"Tool2", 8},
    {"Tool2 Dia", 10},
    {"Tool2 Speed", 12},
    {"Tool2 Feed", 12},
    {"Tool3", 8},
    {"Tool3 Dia", 10},
    {"Tool3 Speed", 12},
    {"Tool3 Feed", 12},
});
static_assert(Headers.size() == MaterialFieldCount);

/// Room for what a shop has, and always some rows to type into.
constexpr int LeastRows = 100, SpareRows = 50;

/// A message box has to fit a screen.
constexpr std::size_t MostDamagesTold = 10;

/// Parts the cells of a copied row, as spreadsheets do.
constexpr char CellSeparator = '\t';
constexpr std::string_view Separator(&CellSeparator, 1);

std::vector<GridColumn> Columns() {
    std::vector<GridColumn> columns;
    for (const Header& header : Headers) {
        GridColumn column;
        column.header = header.caption;
        column.width = header.width;
        columns.push_back(std::move(column));
    }
    return columns;
}

struct LibraryNotes {
    std::vector<LibraryNote> notes;
};

/// The captions of the fields that aren't filled in.
std::vector<std::string> BlankFieldsOf(const MaterialTexts& texts) {
    std::vector<std::string> captions;
    for (std::size_t field = 0; field < texts.size(); ++field)
        if (IsBlank(texts[field])) captions.emplace_back(Headers[field].caption);
    return captions;
}

}  // namespace

frmMaterials::frmMaterials()
    : Form("frmMaterials", "Material Library"), fpMaterials(Add<GridControl>("fpMaterials", Columns())) {
    width = 14400;
    height = 7200;
    // A line break inside a value would make two lines of it in the file, a tab two cells on the clipboard.
    fpMaterials.onKey = [](int, int, std::string_view character) {
        return character != "\r" && character != "\n" && character[0] != CellSeparator;
    };
    Add<Control>(ControlKind::Label, "lblAdvice", std::string(Advice));
    AddButton(ControlKind::MenuEntry, "mnuCopyRow", "Copy Row", &frmMaterials::CopyRow);
    AddButton(ControlKind::MenuEntry, "mnuPasteRow", "Paste Row", &frmMaterials::PasteRow);
    AddButton(ControlKind::Button, "btnSave", "Save / Close", &frmMaterials::SaveAndClose);
    mBtnSave = &Get<Control>("btnSave");
}

void frmMaterials::AddButton(ControlKind kind, const char* name, const char* buttonCaption,
                             void (frmMaterials::*handler)()) {
    Add<Control>(kind, name, buttonCaption).onClick = [this, handler] {
        ShowAndResume(ShowFailureWithDetail, [&] { (this->*handler)(); });
    };
}

void frmMaterials::OnLoad() {
    copiedRow.clear();
    mDamages.clear();
    mOpened.clear();
    mContent.reset();
    mLineEnd.clear();
    fpMaterials.ClearMarks();
    fpMaterials.SetMaxRows(LeastRows);
    const bool read = ShowAndResume(ShowFailureWithDetail, [this] { LoadMaterials(); });
    // Saving the empty grid over a library that is there, only unreadable, would lose it.
    mBtnSave->enabled = read || !ThePlatform().files->FileExists(MaterialsPath());
    if (mLineEnd.empty()) mLineEnd = ThePlatform().files->LineEnd();
    TellDamages();
}

void frmMaterials::LoadMaterials() {
    // Of one reading: what another program puts there right behind it has not been looked at.
    std::string content = ReadMaterialsContent();
    MaterialLibrary library = ParseMaterials(content);
    mContent = std::move(content);
    mOpened = library.materials;
    mDamages = std::move(library.damages);
    mLineEnd = std::move(library.lineEnd);
    fpMaterials.SetMaxRows(std::max(LeastRows, static_cast<int>(library.materials.size()) + SpareRows));
    int row = 1;
    for (const MaterialTexts& texts : library.materials) {
        for (std::size_t field = 0; field < texts.size(); ++field)
            if (!texts[field].empty())
                fpMaterials.SetCellText(static_cast<int>(field) + 1, row, texts[field]);
        ++row;
    }
}

void frmMaterials::TellDamages() const {
    if (mDamages.empty()) return;
    std::string text = MaterialsPath() + " is damaged:";
    for (std::size_t at = 0; at < std::min(mDamages.size(), MostDamagesTold); ++at)
        text += "\r\nline " + std::to_string(mDamages[at].line) + ": " + mDamages[at].text;
    if (mDamages.size() > MostDamagesTold)
        text += "\r\nand " + std::to_string(mDamages.size() - MostDamagesTold) + " more";
    ShowMessage(text + "\r\nPlease check these materials before you save.", {}, MessageIcon::Exclamation);
}

void frmMaterials::CopyRow() {
    const int row = fpMaterials.ActiveRow();
    if (row < 1) return;
    std::vector<std::string> cells;
    for (int column = 1; column <= fpMaterials.MaxCols(); ++column)
        cells.push_back(ReplaceAll(fpMaterials.CellText(column, row), Separator, " "));
    copiedRow = Join(cells, Separator);
}

void frmMaterials::PasteRow() {
    int row = fpMaterials.ActiveRow();
    if (row < 1 || copiedRow.empty()) return;
    for (const std::string& line : LinesOf(copiedRow)) {
        if (row > fpMaterials.MaxRows()) fpMaterials.SetMaxRows(row + SpareRows);
        std::vector<std::string> cells = Split(line, CellSeparator);
        cells.resize(MaterialFieldCount);
        for (int column = 1; column <= fpMaterials.MaxCols(); ++column)
            fpMaterials.SetCellText(column, row, cells[static_cast<std::size_t>(column - 1)]);
        ++row;
    }
}

MaterialTexts frmMaterials::TextsOfRow(int row) const {
    MaterialTexts texts;
    for (std::size_t field = 0; field < texts.size(); ++field)
        texts[field] = fpMaterials.CellText(static_cast<int>(field) + 1, row);
    return texts;
}

std::vector<MaterialTexts> frmMaterials::CompleteRows() const {
    std::vector<MaterialTexts> rows;
    for (int row = 1; row <= fpMaterials.MaxRows(); ++row)
        if (MaterialTexts texts = TextsOfRow(row); BlankFieldsOf(texts).empty())
            rows.push_back(std::move(texts));
    return rows;
}

void frmMaterials::NoteRowsLeftOut() const {
    for (int row = 1; row <= fpMaterials.MaxRows(); ++row) {
        const MaterialTexts texts = TextsOfRow(row);
        const std::vector<std::string> blank = BlankFieldsOf(texts);
        if (blank.empty() || blank.size() == MaterialFieldCount) continue;
        const bool wasTouched = std::ranges::find(mOpened, texts) == mOpened.end();
        StateOf<LibraryNotes>().notes.push_back(
            {"the material " + InQuotes(texts.front()) + " in row " + std::to_string(row) +
                 " of the editor was not saved: all settings of a material have to be filled in, found " +
                 Join(blank, ", ") + " blank; what " + MaterialsPath() +
                 " had before stands in materials.bak",
             !wasTouched});
    }
}

void frmMaterials::SaveAndClose() {
    if (!mDamages.empty()) {
        const std::string question =
            MaterialsPath() +
            " was damaged when it was opened. Materials that are not filled in completely, and lines that "
            "belong to no material, are not saved; the old text stays in materials.bak. Save all the same?";
        if (ThePlatform().dialogs->Show({question, "", MessageIcon::Question, MessageButtons::YesNo}) ==
            MessageAnswer::No)
            return;
    }
    const std::vector<MaterialTexts> rows = CompleteRows();
    const bool isOthers = mContent && !IsUtf8(*mContent);
    // Blank lines and the case of keys are the writer's own as long as nothing is typed.
    const bool isUnchanged = mContent && !isOthers && mDamages.empty() && rows == mOpened;
    if (isUnchanged && ThePlatform().files->FileExists(MaterialsPath())) {
        KeepMaterials();
    } else if (!WriteUnlessChanged({MaterialsPath(), mContent}, {}, [&] { SaveMaterials(rows, mLineEnd); })) {
        StateOf<LibraryNotes>().notes.push_back({ChangedElsewhere(MaterialsPath()), true});
        return;
    }
    NoteRowsLeftOut();
    if (isOthers)
        StateOf<LibraryNotes>().notes.push_back(
            {MaterialsPath() +
                 " was no UTF-8, was taken for the Western Windows code page, and is UTF-8 now; what "
                 "it had before stands in materials.bak",
             false});
    Unload();
}

std::vector<LibraryNote> TakeLibraryNotes() { return std::exchange(StateOf<LibraryNotes>().notes, {}); }

void commands::BVMaterial(AcadApplication&) { ThePlatform().dialogs->ShowModal(StateOf<frmMaterials>()); }

}  // namespace brenvik
