// The grid's rows named by their parts.
#include "grid/typed_values.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "base/numbers.h"
#include "base/quoted.h"
#include "base/text.h"
#include "grid/frm_main.h"
#include "grid/grid_columns.h"
#include "grid/mod4spread.h"
#include "parts/part_data_faults.h"
#include "parts/part_table.h"
#include "parts/part_trouble.h"
#include "session/module_state.h"

namespace brenvik {

namespace {

/// By the part's handle, since sorts and filters move rows, and the column.
struct TypedSizes {
    std::map<std::pair<std::string, int>, std::string> texts;
};

/// Rows with edits that no Apply has written, by the part's handle.
struct EditedRows {
    struct Row {
        std::string name;
        bool leftBehind = false;  ///< An Apply came while a filter hid the row.
    };
    std::map<std::string, Row> rows;
};

constexpr int SizeColumns[] = {LengthColumn, WidthColumn, ThicknessColumn};

std::string HandleOf(int row) { return Mod4Spread::GetCellText(IdColumn, row); }

PartTrouble TroubleOf(int row, std::string text) {
    return {HandleOf(row), Mod4Spread::GetCellText(PartNameColumn, row), std::move(text)};
}

/// A size that was cleared is a blank one.
bool AreOneSize(const std::string& a, const std::string& b) {
    if (IsBlank(a) || IsBlank(b)) return IsBlank(a) && IsBlank(b);
    return IsNumeric(a) && IsNumeric(b) && StrictNumber(a) == StrictNumber(b);
}

void NoteSizesOfTheListAlone(int row) {
    const auto& texts = StateOf<TypedSizes>().texts;
    const std::string handle = HandleOf(row);
    for (const int column : SizeColumns) {
        const auto typed = texts.find({handle, column});
        const std::string shown = Mod4Spread::GetCellText(column, row);
        if (typed == texts.end() || !AreOneSize(typed->second, shown)) continue;
        const std::string size = "its " + Mod4Spread::GetCellText(column, 0);
        NotePartTrouble(TroubleOf(
            row,
            (IsBlank(shown) ? size + " was cleared in the list and not in the drawing"
                            : size + " " + shown + ", typed into the list, was not written to the drawing") +
                ": sizes come from the solid, and the next list has its own again"));
    }
}

/// The statement that takes the part into the next list would be spoiled.
void NoteQuotes(int row) {
    for (const PartColumn& column : PartColumns()) {
        if (column.kind != PartColumnKind::Text || column.partDataKey.empty()) continue;
        const std::string text = Mod4Spread::GetCellText(column.gridColumn, row);
        if (text.find('\'') == std::string::npos) continue;
        NotePartTrouble(TroubleOf(row, "a single quote stands in its " + std::string(column.header) + " " +
                                           InQuotes(text) +
                                           ", which the next list can't take; take the quote out"));
    }
}

}  // namespace

void NoteKeysNotTaken(int row, std::string_view typed, std::string_view passed) {
    const std::string present = Mod4Spread::GetCellText(OrieColumn, row);
    PartTrouble trouble =
        TroubleOf(row, InQuotes(typed) + " was typed into its ORIE, which " +
                           (passed.empty() ? "takes none of it and stays " + InQuotes(present)
                                           : "takes " + InQuotes(passed) + " of it") +
                           "; expected L, W and T in some order");
    trouble.isRemark = !passed.empty();
    NotePartTrouble(std::move(trouble));
}

void NoteRefusedLetters(int row, std::string_view typed, std::string_view before) {
    PartTrouble trouble = TroubleOf(
        row,
        "the letters " + InQuotes(typed) + ", typed into its ORIE, were refused" +
            (before.empty() ? std::string()
                            : ", and its letters " + InQuotes(before) + " are out of the list with them") +
            "; expected L, W and T in some order");
    trouble.toldInABox = true;
    NotePartTrouble(std::move(trouble));
}

void NoteTypedSize(int column, int row) {
    if (std::ranges::find(SizeColumns, column) == std::end(SizeColumns)) return;
    const std::string typed = Mod4Spread::GetCellText(column, row);
    if (AreOneSize(typed, GridFormInstance().fpSpread1.SavedText(column, row))) return;
    StateOf<TypedSizes>().texts.insert_or_assign({HandleOf(row), column}, typed);
}

void ForgetTypedSizes(int row) {
    for (const int column : SizeColumns) StateOf<TypedSizes>().texts.erase({HandleOf(row), column});
}

void ForgetTypedSizes() { StateOf<TypedSizes>().texts.clear(); }

void NoteEditedRow(int row) {
    // The rows of a grouped list are of no part, and take no edits.
    const std::string handle = HandleOf(row);
    if (IsBlank(handle)) return;
    StateOf<EditedRows>().rows.insert_or_assign(
        handle, EditedRows::Row{Mod4Spread::GetCellText(PartNameColumn, row), false});
}

void NoteEditedRows() {
    for (int row = 1; row <= GridFormInstance().fpSpread1.MaxRows(); ++row) NoteEditedRow(row);
}

void NoteAppliedRows() {
    auto& rows = StateOf<EditedRows>().rows;
    for (int row = 1; row <= GridFormInstance().fpSpread1.MaxRows(); ++row) rows.erase(HandleOf(row));
    for (auto& [handle, row] : rows) row.leftBehind = true;
}

void NoteRowsLeftBehind() {
    for (const auto& [handle, row] : std::exchange(StateOf<EditedRows>().rows, {}))
        if (row.leftBehind)
            NotePartTrouble(
                {handle, row.name,
                 "what was typed into its row was not written to the drawing: the filter had left "
                 "the row out when the list was applied"});
}

void NoteAppliedValues(int row) {
    if (const std::optional<std::string> fault =
            QuantityFault(Mod4Spread::GetCellText(FindPartColumnByKey("QUANTITY")->gridColumn, row)))
        NotePartTrouble(TroubleOf(row, *fault));
    NoteQuotes(row);
    NoteSizesOfTheListAlone(row);
}

}  // namespace brenvik
