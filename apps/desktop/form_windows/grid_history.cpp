// Whole rows are remembered: letters that are typed change sizes beside them.
#include "form_windows/grid_history.h"

#include <algorithm>
#include <utility>

#include "base/utf8.h"

namespace brenvik::desktop {

namespace {

/// The column of the part table that holds a row's handle.
constexpr std::string_view HandleField = "bv_id";

}  // namespace

GridHistory::TypedCell GridHistory::Named(int column, int row) const {
    TypedCell cell{{}, column, row};
    if (mGrid.MaxCols() > 0 && mGrid.Column(1).fieldName == HandleField) cell.part = mGrid.CellText(1, row);
    return cell;
}

int GridHistory::RowOf(const TypedCell& cell) const {
    if (cell.part.empty()) return cell.row <= mGrid.MaxRows() ? cell.row : 0;
    for (int row = 1; row <= mGrid.MaxRows(); ++row)
        if (mGrid.CellText(1, row) == cell.part) return row;
    return 0;
}

std::vector<std::string> GridHistory::TextsOf(int row) const {
    std::vector<std::string> texts;
    for (int column = 1; column <= mGrid.MaxCols(); ++column) texts.push_back(mGrid.CellText(column, row));
    return texts;
}

const GridHistory::RowTexts& GridHistory::RowFor(const Step& step, const TypedCell& cell) {
    return *std::ranges::find_if(step.rows, [&](const RowTexts& row) {
        return row.where.row == cell.row && row.where.part == cell.part;
    });
}

void GridHistory::Keep(const BeforeTyping& note,
                       const std::function<void(const BeforeTyping& typing)>& edit) {
    Step step;
    const BeforeTyping typing = [&](int column, int row, std::string_view text) {
        const TypedCell cell = Named(column, row);
        const bool known = std::ranges::any_of(step.rows, [&](const RowTexts& one) {
            return one.where.row == cell.row && one.where.part == cell.part;
        });
        if (!known) step.rows.push_back({cell, TextsOf(row), {}});
        step.cells.push_back(cell);
        if (note) note(column, row, text);
    };
    try {
        edit(typing);
    } catch (...) {
        // The cells before the one that failed have their new texts.
        Finish(std::move(step));
        throw;
    }
    Finish(std::move(step));
}

void GridHistory::Finish(Step step) {
    bool changed = false;
    for (RowTexts& row : step.rows) {
        const int now = RowOf(row.where);
        row.after = now == 0 ? row.before : TextsOf(now);
        changed = changed || row.after != row.before;
    }
    if (!changed) return;
    mDone.push_back(std::move(step));
    mUndone.clear();
}

GridHistory::Outcome GridHistory::TakeBack(const BeforeTyping& note) {
    return Go(mDone, mUndone, true, note);
}

GridHistory::Outcome GridHistory::DoAgain(const BeforeTyping& note) {
    return Go(mUndone, mDone, false, note);
}

GridHistory::Outcome GridHistory::Go(std::vector<Step>& from, std::vector<Step>& to, bool back,
                                     const BeforeTyping& note) {
    if (from.empty()) return Outcome::Nothing;
    if (!MayType(from.back(), back)) return Outcome::Refused;
    to.push_back(std::move(from.back()));
    from.pop_back();
    Type(to.back(), back, note);
    return Outcome::Done;
}

bool GridHistory::MayType(const Step& step, bool back) const {
    if (!mGrid.enabled) return false;
    for (const TypedCell& cell : step.cells) {
        const int row = RowOf(cell);
        if (row == 0 || mGrid.Column(cell.column).hidden || mGrid.CellLocked(cell.column, row)) return false;
        const RowTexts& texts = RowFor(step, cell);
        const auto at = static_cast<std::size_t>(cell.column - 1);
        const std::string& present = (back ? texts.after : texts.before)[at];
        const std::string& wanted = (back ? texts.before : texts.after)[at];
        if (mGrid.CellText(cell.column, row) != present) return false;
        for (std::size_t place = 0; place < wanted.size() && mGrid.onKey;) {
            const std::size_t length = Utf8CharacterAt(wanted, place).length;
            if (!mGrid.onKey(cell.column, row, std::string_view(wanted).substr(place, length))) return false;
            place += length;
        }
    }
    return true;
}

void GridHistory::TypeWhereItDiffers(int column, int row, const std::string& text,
                                     const BeforeTyping& note) const {
    if (mGrid.CellText(column, row) == text) return;
    if (note) note(column, row, text);
    mGrid.UserEdit(column, row, text);
}

void GridHistory::Type(const Step& step, bool back, const BeforeTyping& note) const {
    std::vector<TypedCell> cells = step.cells;
    if (back) std::ranges::reverse(cells);
    for (const TypedCell& cell : cells) {
        const RowTexts& texts = RowFor(step, cell);
        const auto at = static_cast<std::size_t>(cell.column - 1);
        TypeWhereItDiffers(cell.column, RowOf(cell), (back ? texts.before : texts.after)[at], note);
    }
    // What stood beside them and depends on them, such as sizes that were typed before the letters were.
    for (const RowTexts& texts : step.rows) {
        const int row = RowOf(texts.where);
        for (int column = 1; column <= mGrid.MaxCols() && row != 0; ++column) {
            const auto at = static_cast<std::size_t>(column - 1);
            if (texts.before[at] == texts.after[at] || mGrid.Column(column).hidden) continue;
            if (mGrid.CellLocked(column, row)) continue;
            TypeWhereItDiffers(column, row, (back ? texts.before : texts.after)[at], note);
        }
    }
}

}  // namespace brenvik::desktop
