// Quick Copy: one statement for each ticked column. No value is escaped: a single quote in one makes its
// statement fail.
#include "grid/quick_copy.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/invariant.h"
#include "base/letter_case.h"
#include "base/skip.h"
#include "base/text.h"
#include "forms/form_guards.h"
#include "forms/repaint_off.h"
#include "grid/frm_main.h"
#include "grid/grid_columns.h"
#include "grid/grid_states.h"
#include "grid/grouping_interlock.h"
#include "grid/mod4spread.h"
#include "grid/typed_values.h"
#include "parts/mdatabase.h"
#include "parts/orie_update.h"
#include "parts/part_table.h"
#include "parts/statement_quotes.h"
#include "session/message.h"

namespace brenvik {

namespace {

/// The headers of columns that say what the solid is like.
constexpr std::array<std::string_view, 6> NotCopied{"x", "y", "z", "width", "height", "thickness"};

/// A ticked column with the value of the row that is copied.
struct CopiedColumn {
    std::string column, value;
    int place = 0;  ///< In the grid.
    bool isLetters = false;
};

std::vector<CopiedColumn> TickedColumns(const frmMain& form, int row) {
    std::vector<CopiedColumn> copied;
    for (const ColumnTickBox& box : ColumnTickBoxes()) {
        if (form.Get<CheckControl>(box.name).Value() != 1) continue;
        const PartColumn* column = FindPartColumnByHeader(box.header);
        Invariant(column != nullptr, "a tick box stands for a column of the grid");
        const int place = Mod4Spread::FindColumn(box.header);
        copied.push_back({std::string(column->column), Mod4Spread::GetCellText(place, row), place,
                          column->gridColumn == OrieColumn});
    }
    return copied;
}

std::string CopyStatement(const CopiedColumn& copied, bool blankCellsOnly) {
    const std::string& column = copied.column;
    const std::string& where = TheSession().WhereClause;
    std::string sql = "update brenvik_data set " + column + " = '" + copied.value + "' ";
    RefusePairedQuotes(sql, 1);
    if (!IsBlank(where)) {
        sql += where;
        if (blankCellsOnly) sql += " AND (isnull(" + column + ") or " + column + " = '')";
    } else if (blankCellsOnly) {
        sql += " where (isnull(" + column + ")  or  " + column + " = '')";
    }
    return sql;
}

void CopyInTable(const frmMain& form, int row) {
    const bool blankCellsOnly = form.Get<CheckControl>("chkBlank").Value() == 1;
    for (const CopiedColumn& copied : TickedColumns(form, row)) {
        if (copied.isLetters && !mAutoCAD::AreValidLetters(copied.value)) {
            ShowMessage(LettersRefused);
            continue;
        }
        mDatabase::ExecuteSql(CopyStatement(copied, blankCellsOnly));
    }
}

/// A ticked column whose cell is blank in the copied row is emptied in all rows, and one box is ticked by
/// itself while another may still be from a moment ago. So what goes is named before it does.
bool AgreedToWhatGoes(const frmMain& form) {
    if (form.Get<CheckControl>("chkBlank").Value() == 1) return true;
    const GridControl& grid = form.fpSpread1;
    std::vector<std::string> emptied;
    for (const CopiedColumn& copied : TickedColumns(form, grid.ActiveRow())) {
        if (!IsBlank(copied.value)) continue;
        int rows = 0;
        for (int row = 1; row <= grid.MaxRows(); ++row)
            if (!IsBlank(Mod4Spread::GetCellText(copied.place, row))) ++rows;
        if (rows > 0)
            emptied.push_back(grid.CellText(copied.place, 0) + " (" + std::to_string(rows) +
                              (rows == 1 ? " row)" : " rows)"));
    }
    if (emptied.empty()) return true;
    const MessageRequest question{
        "The row that you copy has nothing in a ticked column. The copy clears what other rows have there: " +
            Join(emptied, ", ") + ". Do you wish to copy anyway?",
        "Quick Copy", MessageIcon::Question, MessageButtons::YesNo};
    return ThePlatform().dialogs->Show(question) != MessageAnswer::No;
}

}  // namespace

void QuickCopy(frmMain& form) {
    if (RefusedByGrouping("You cannot Quick Copy items to the grid while GROUPING is active.")) return;
    const GridControl& grid = form.fpSpread1;
    const bool noCell = grid.MaxRows() < 1 || grid.ActiveRow() < 1;
    if (noCell || Mod4Spread::GetCellText(grid.ActiveColumn(), grid.ActiveRow()).empty())
        return ShowMessage("Please select a cell to Quick Copy", "Invalid Quick Copy Selection");
    const std::string header = FoldLower(grid.CellText(grid.ActiveColumn(), 0));
    if (std::find(NotCopied.begin(), NotCopied.end(), header) != NotCopied.end())
        return ShowMessage("You cannot copy the X,Y,Z data", "Unable to Copy Cell", MessageIcon::Stop);
    if (AgreedToWhatGoes(form)) form.QCopy();
}

void frmMain::QCopy() {
    const RepaintOff repaintOff(fpSpread1);
    const ActiveCellKept activeCellKept(fpSpread1);
    const bool lettersCopied = Get<CheckControl>("chkLWT").Value() == 1;
    NoteEditedRows();
    const std::optional<Failure> failure = Attempt([this] { CopyInTable(*this, fpSpread1.ActiveRow()); });
    if (failure) {
        // Columns before the refused one have been copied, and the grid shows what the table holds.
        Skip([this] { Adodc1.Refresh(); });
        throw Failure(*failure);
    }
    // A statement for the engine to flush on, so that the data control's connection sees the copies.
    mDatabase::ExecuteSql("select 1=1");
    Adodc1.Refresh();
    const HourglassShown hourglass(*this);
    if (!lettersCopied) return;
    for (int row = 1; row <= fpSpread1.MaxRows(); ++row) SetSizesFromLetters(row);
    fpSpread1.SaveOrTell();
}

}  // namespace brenvik
