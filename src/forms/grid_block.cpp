// Reading and writing the clipboard's form, and typing it in.
#include "forms/grid_block.h"

#include <algorithm>

#include "base/text.h"

namespace brenvik {

namespace {

std::string Quoted(const std::string& cell) {
    if (cell.find_first_of("\t\r\n\"") == std::string::npos) return cell;
    return "\"" + ReplaceAll(cell, "\"", "\"\"") + "\"";
}

/// One character after another of a block's text.
class BlockReader {
  public:
    explicit BlockReader(std::string_view text) : mText(text) {}

    std::vector<std::vector<std::string>> Rows() {
        while (mAt < mText.size()) {
            mRows.emplace_back();
            ReadRow(mRows.back());
        }
        return std::move(mRows);
    }

  private:
    bool AtEndOfRow() const { return mAt >= mText.size() || mText[mAt] == '\n' || mText[mAt] == '\r'; }

    void ReadRow(std::vector<std::string>& row) {
        row.push_back(Cell());
        while (mAt < mText.size() && mText[mAt] == '\t') {
            ++mAt;
            row.push_back(Cell());
        }
        if (mAt < mText.size() && mText[mAt] == '\r') ++mAt;
        if (mAt < mText.size() && mText[mAt] == '\n') ++mAt;
    }

    std::string Cell() {
        std::string cell;
        if (mAt < mText.size() && mText[mAt] == '"') TakeQuoted(cell);
        while (!AtEndOfRow() && mText[mAt] != '\t') cell += mText[mAt++];
        return cell;
    }

    void TakeQuoted(std::string& cell) {
        for (++mAt; mAt < mText.size(); ++mAt) {
            if (mText[mAt] == '"') {
                if (mAt + 1 >= mText.size() || mText[mAt + 1] != '"') break;
                ++mAt;
            }
            cell += mText[mAt];
        }
        if (mAt < mText.size()) ++mAt;
    }

    std::string_view mText;
    std::size_t mAt = 0;
    std::vector<std::vector<std::string>> mRows;
};

void Type(GridControl& grid, int column, int row, std::string_view text, const BeforeTyping& before,
          BlockOutcome& outcome) {
    const bool takes = grid.enabled && row >= 1 && row <= grid.MaxRows() && !grid.CellLocked(column, row);
    if (before && takes) before(column, row, text);
    ++(grid.UserEdit(column, row, text) ? outcome.taken : outcome.refused);
}

}  // namespace

std::vector<int> ShownColumns(const GridControl& grid) {
    std::vector<int> shown;
    for (int column = 1; column <= grid.MaxCols(); ++column)
        if (!grid.Column(column).hidden) shown.push_back(column);
    return shown;
}

std::string CopyBlock(const GridControl& grid, const GridBlock& block) {
    std::string text;
    for (int row = block.row; row <= block.lastRow; ++row) {
        bool first = true;
        for (int column = block.column; column <= block.lastColumn; ++column) {
            if (grid.Column(column).hidden) continue;
            if (!first) text += '\t';
            first = false;
            text += Quoted(grid.CellText(column, row));
        }
        text += '\n';
    }
    return text;
}

BlockOutcome PasteBlock(GridControl& grid, int column, int row, std::string_view text,
                        const BeforeTyping& before) {
    BlockOutcome outcome;
    const std::vector<int> shown = ShownColumns(grid);
    const auto first = std::ranges::find(shown, column);
    for (const std::vector<std::string>& cells : BlockReader(text).Rows()) {
        auto place = first;
        for (const std::string& cell : cells) {
            if (place == shown.end() || row > grid.MaxRows()) {
                ++outcome.beyond;
                continue;
            }
            Type(grid, *place++, row, cell, before, outcome);
        }
        ++row;
    }
    return outcome;
}

BlockOutcome FillDown(GridControl& grid, const GridBlock& block, const BeforeTyping& before) {
    BlockOutcome outcome;
    for (int column = block.column; column <= block.lastColumn; ++column) {
        if (grid.Column(column).hidden) continue;
        const std::string text = grid.CellText(column, block.row);
        for (int row = block.row + 1; row <= block.lastRow; ++row)
            Type(grid, column, row, text, before, outcome);
    }
    return outcome;
}

BlockOutcome ClearBlock(GridControl& grid, const GridBlock& block, const BeforeTyping& before) {
    BlockOutcome outcome;
    for (int row = block.row; row <= block.lastRow; ++row)
        for (int column = block.column; column <= block.lastColumn; ++column)
            if (!grid.Column(column).hidden) Type(grid, column, row, "", before, outcome);
    return outcome;
}

}  // namespace brenvik
