// Blocks of cells as text, as spreadsheet programs put them on the clipboard: cells parted by tabs, rows by
// line breaks, a cell with either in double quotes.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "forms/grid_control.h"

namespace brenvik {

struct GridBlock {
    int column = 1, row = 1, lastColumn = 1, lastRow = 1;
};

/// The columns that are shown, in their order.
std::vector<int> ShownColumns(const GridControl& grid);

/// The block's cells in the columns that are shown. Fails with 9 outside the grid.
std::string CopyBlock(const GridControl& grid, const GridBlock& block);

/// What a paste has done: cells that took the text, cells that are locked, and texts that the grid has no row
/// or column for.
struct BlockOutcome {
    int taken = 0, refused = 0, beyond = 0;
};

/// Called before each text that is typed into a cell which takes typing.
using BeforeTyping = std::function<void(int column, int row, std::string_view text)>;

/// Types a text into the cells from this one on, right and down, each cell by the rules of typing. Columns
/// that aren't shown are passed by.
BlockOutcome PasteBlock(GridControl& grid, int column, int row, std::string_view text,
                        const BeforeTyping& before = {});

/// Types the texts of the block's first row into its other rows.
BlockOutcome FillDown(GridControl& grid, const GridBlock& block, const BeforeTyping& before = {});

/// Types nothing into all cells of the block.
BlockOutcome ClearBlock(GridControl& grid, const GridBlock& block, const BeforeTyping& before = {});

}  // namespace brenvik
