// The grid: cells read through to the record set, unsaved texts laid over it, and the user's edit.
#include "forms/grid_control.h"

#include <algorithm>
#include <utility>

#include "base/letter_case.h"
#include "base/numbers.h"
#include "base/skip.h"
#include "base/text.h"
#include "base/utf8.h"
#include "forms/field_text.h"

namespace brenvik {

GridControl::GridControl(std::string controlName, std::vector<GridColumn> gridColumns)
    : Control(ControlKind::Grid, std::move(controlName)),
      mColumns(std::move(gridColumns)),
      mDesignColumns(mColumns),
      mFieldIndexes(mColumns.size(), -1) {}

bool GridControl::Inside(int column, int row) const {
    return column >= 1 && column <= MaxCols() && row >= 1 && row <= mMaxRows;
}

void GridControl::SetMaxRows(int rows) {
    mMaxRows = std::max(rows, 0);
    mEdited.erase(mEdited.upper_bound({mMaxRows, MaxCols()}), mEdited.end());
    mActiveRow = std::min(mActiveRow, mMaxRows);
    // Rows that come later begin unlocked, as the column is.
    for (LockedBlock& block : mLockedBlocks) block.lastRow = std::min(block.lastRow, mMaxRows);
    std::erase_if(mLockedBlocks, [](const LockedBlock& block) { return block.firstRow > block.lastRow; });
}

const GridColumn& GridControl::Column(int column) const {
    if (column < 1 || column > MaxCols()) throw SubscriptOutOfRange("column " + std::to_string(column));
    return mColumns[static_cast<std::size_t>(column - 1)];
}

GridColumn& GridControl::Column(int column) {
    return const_cast<GridColumn&>(std::as_const(*this).Column(column));
}

void GridControl::SetDataSource(DataControl* newSource) {
    if (mSource != nullptr) mSource->onRefreshed = nullptr;
    mSource = newSource;
    if (mSource != nullptr) mSource->onRefreshed = [this] { Reload(); };
    Reload();
}

int GridControl::FieldIndex(int column) const { return mFieldIndexes[static_cast<std::size_t>(column - 1)]; }

std::string GridControl::SavedText(int column, int row) const {
    const Recordset* records = mSource == nullptr ? nullptr : mSource->Records();
    const int field = FieldIndex(column);
    if (records == nullptr || field < 0 || row > records->RecordCount()) return {};
    return FieldText(records->ValueAt(row - 1, field));
}

std::string GridControl::CellText(int column, int row) const {
    if (row == 0) return Column(column).header;
    if (!Inside(column, row))
        throw SubscriptOutOfRange("cell " + std::to_string(column) + ", " + std::to_string(row));
    const auto cell = mEdited.find({row, column});
    return cell == mEdited.end() ? SavedText(column, row) : cell->second;
}

void GridControl::SetCellText(int column, int row, std::string_view newText) {
    if (!Inside(column, row))
        throw SubscriptOutOfRange("cell " + std::to_string(column) + ", " + std::to_string(row));
    mEdited.insert_or_assign(Cell(row, column), std::string(newText));
}

void GridControl::ClearMarks() { mEdited.clear(); }

FieldValue GridControl::ValueToSave(int column, int row, const std::string& cellText) const {
    const FieldValue present = mSource->Records()->ValueAt(row - 1, FieldIndex(column));
    if (!Column(column).numeric && std::holds_alternative<std::string>(present)) return cellText;
    if (IsBlank(cellText)) return std::monostate();
    if (!Column(column).numeric && !std::holds_alternative<double>(present)) return cellText;
    FieldValue value;
    const std::optional<Failure> failure = Attempt([&] { value = StrictNumber(cellText); });
    if (failure)
        throw Failure(failure->number(), failure->source(), failure->description(),
                      "row " + std::to_string(row) + ", column \"" + CellText(column, 0) +
                          "\": expected a number, found \"" + cellText + "\"");
    return value;
}

void GridControl::SaveRow(Recordset& records, EditedCells::const_iterator first,
                          EditedCells::const_iterator last) {
    const int record = first->first.first - 1;
    if (record >= records.RecordCount()) return;
    struct Write {
        int field;
        FieldValue value, before;
    };
    std::vector<Write> writes;
    for (auto cell = first; cell != last; ++cell) {
        const auto& [row, column] = cell->first;
        const int field = FieldIndex(column);
        if (field < 0) continue;
        writes.push_back({field, ValueToSave(column, row, cell->second), records.ValueAt(record, field)});
    }
    for (std::size_t at = 0; at < writes.size(); ++at) {
        const std::optional<Failure> failure =
            Attempt([&] { records.Update(record, writes[at].field, writes[at].value); });
        if (!failure) continue;
        while (at > 0) {
            --at;
            Skip([&] { records.Update(record, writes[at].field, writes[at].before); });
        }
        throw Failure(*failure);
    }
}

void GridControl::SaveTogether(const std::function<void()>& saveRows) {
    const std::optional<Failure> failure = Attempt([&] { mSource->InOneTransaction(saveRows); });
    if (!failure) return;
    // All was taken back, but the record set still has what was written to it.
    Skip([this] { mSource->Refresh(); });
    throw Failure(*failure);
}

void GridControl::SaveChanges() {
    if (mEdited.empty()) return;
    Recordset* records = mSource == nullptr ? nullptr : mSource->Records();
    if (records == nullptr) throw ObjectNotSet(Name());
    if (!records->Updatable())
        throw Failure(3027, Name(),
                      "Can't update: the rows on show are no rows of the table. A grouped list shows sums.");
    std::optional<Failure> firstFailure;
    EditedCells refused;
    const auto saveRows = [&] {
        for (auto first = mEdited.cbegin(); first != mEdited.cend();) {
            const auto last = mEdited.upper_bound({first->first.first, MaxCols()});
            const std::optional<Failure> failure = Attempt([&] { SaveRow(*records, first, last); });
            if (failure) refused.insert(first, EditedCells::const_iterator(last));
            if (failure && !firstFailure) firstFailure = failure;
            first = last;
        }
    };
    const bool oneRow = mEdited.begin()->first.first == mEdited.rbegin()->first.first;
    if (oneRow)
        saveRows();
    else
        SaveTogether(saveRows);
    mEdited = std::move(refused);
    if (firstFailure) throw Failure(*firstFailure);
}

void GridControl::Reload() {
    mEdited.clear();
    std::fill(mFieldIndexes.begin(), mFieldIndexes.end(), -1);
    const Recordset* records = mSource == nullptr ? nullptr : mSource->Records();
    if (records == nullptr) return SetMaxRows(0);
    for (int field = 0; field < records->FieldCount(); ++field) {
        const std::string fieldName = records->FieldName(field);
        for (std::size_t column = 0; column < mColumns.size(); ++column)
            if (EqualsIgnoreCase(mColumns[column].fieldName, fieldName)) mFieldIndexes[column] = field;
    }
    SetMaxRows(records->RecordCount());
}

void GridControl::PutActiveCell(int column, int row) {
    if (column < 1 || column > MaxCols() || row < 0 || row > mMaxRows)
        throw SubscriptOutOfRange("cell " + std::to_string(column) + ", " + std::to_string(row));
    mActiveColumn = column;
    mActiveRow = row;
}

void GridControl::SetActiveCell(int column, int row) {
    PutActiveCell(column, row);
    if (row > 0 && onCellEntered) onCellEntered(column, row);
}

bool GridControl::UserEdit(int column, int row, std::string_view newText) {
    if (!enabled || !Inside(column, row) || Column(column).hidden || CellLocked(column, row)) return false;
    // Typing where the user stands already is no move.
    if (column != mActiveColumn || row != mActiveRow) SetActiveCell(column, row);
    std::string typed;
    for (std::size_t at = 0; at < newText.size();) {
        const std::string_view character = newText.substr(at, Utf8CharacterAt(newText, at).length);
        if (!onKey || onKey(column, row, character)) typed += character;
        at += character.size();
    }
    if (typed != newText && onKeysRefused) onKeysRefused(column, row, newText, typed);
    // A key that doesn't pass doesn't open the cell either, so nothing takes the place of what stands there.
    if (typed.empty() && !newText.empty()) return true;
    SetCellText(column, row, typed);
    if (onEditEnded) onEditEnded(column, row);
    SaveOrTell();
    return true;
}

void GridControl::SaveOrTell() {
    if (mSource == nullptr) return;
    const std::optional<Failure> failure = Attempt([this] { SaveChanges(); });
    if (!failure) return;
    mEdited.clear();
    if (!onSaveFailed) throw Failure(*failure);
    onSaveFailed(*failure);
}

void GridControl::Flush() { SaveChanges(); }

void GridControl::SetBlockLocked(int column, int firstRow, int lastRow, bool locked) {
    // What earlier blocks of the column have outside the rows stays; inside, the new state rules alone.
    std::vector<LockedBlock> kept;
    for (const LockedBlock& block : mLockedBlocks) {
        if (block.column != column || block.lastRow < firstRow || block.firstRow > lastRow) {
            kept.push_back(block);
            continue;
        }
        if (block.firstRow < firstRow) kept.push_back({column, block.firstRow, firstRow - 1});
        if (block.lastRow > lastRow) kept.push_back({column, lastRow + 1, block.lastRow});
    }
    if (locked && firstRow <= lastRow) kept.push_back({column, firstRow, lastRow});
    mLockedBlocks = std::move(kept);
}

bool GridControl::CellLocked(int column, int row) const {
    if (Column(column).locked) return true;
    return std::any_of(mLockedBlocks.begin(), mLockedBlocks.end(), [=](const LockedBlock& block) {
        return block.column == column && row >= block.firstRow && row <= block.lastRow;
    });
}

void GridControl::KeepDesign() {
    Control::KeepDesign();
    mDesignColumns = mColumns;
}

void GridControl::RestoreDesign() {
    Control::RestoreDesign();
    SetDataSource(nullptr);
    mColumns = mDesignColumns;
    mLockedBlocks.clear();
    mActiveColumn = 1;
    mActiveRow = 0;
    reDraw = true;
}

}  // namespace brenvik
