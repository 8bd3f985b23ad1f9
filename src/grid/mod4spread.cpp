// Helpers over the grid of the session's grid form.
#include "grid/mod4spread.h"

#include "base/letter_case.h"
#include "base/skip.h"
#include "grid/frm_main.h"

namespace brenvik::Mod4Spread {

std::string GetCellText(int column, int row) {
    std::string text;
    Skip([&] { text = GridFormInstance().fpSpread1.CellText(column, row); });
    return text;
}

int FindColumn(std::string_view caption) {
    const GridControl& grid = GridFormInstance().fpSpread1;
    const std::string wanted = FoldLower(caption);
    for (int column = 1; column <= grid.MaxCols(); ++column)
        if (FoldLower(grid.CellText(column, 0)) == wanted) return column;
    return -1;
}

void FlushGrid() { GridFormInstance().fpSpread1.Flush(); }

}  // namespace brenvik::Mod4Spread
