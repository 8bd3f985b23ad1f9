// What the user has typed, pasted and filled in a grid as long as its window is open, to be taken back and
// done again step by step.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "forms/grid_block.h"
#include "forms/grid_control.h"

namespace brenvik::desktop {

/// Nothing is forced into a cell: what goes back is typed like anything else, so that locks and the rules of
/// typing hold, and what depends on a cell follows.
class GridHistory {
  public:
    explicit GridHistory(GridControl& grid) : mGrid(grid) {}

    /// Runs an edit, which reports each cell ahead of typing into it, and keeps what it has changed as one
    /// step. `note` hears of the cells as well.
    void Keep(const BeforeTyping& note, const std::function<void(const BeforeTyping& typing)>& edit);

    enum class Outcome {
        Done,
        Nothing,  ///< There is no such step.
        Refused,  ///< Its cells are gone, locked, or have been changed by something else since; nothing is
                  ///< done.
    };
    Outcome TakeBack(const BeforeTyping& note);
    Outcome DoAgain(const BeforeTyping& note);

  private:
    struct TypedCell {
        std::string part;  ///< Names the row wherever a sort or filter puts it.
        int column = 0, row = 0;
    };
    struct RowTexts {
        TypedCell where;
        std::vector<std::string> before, after;
    };
    struct Step {
        std::vector<TypedCell> cells;
        std::vector<RowTexts> rows;
    };

    TypedCell Named(int column, int row) const;
    /// Null, as 0, if it isn't shown now.
    int RowOf(const TypedCell& cell) const;
    std::vector<std::string> TextsOf(int row) const;
    void Finish(Step step);
    static const RowTexts& RowFor(const Step& step, const TypedCell& cell);
    bool MayType(const Step& step, bool back) const;
    void Type(const Step& step, bool back, const BeforeTyping& note) const;
    void TypeWhereItDiffers(int column, int row, const std::string& text, const BeforeTyping& note) const;
    Outcome Go(std::vector<Step>& from, std::vector<Step>& to, bool back, const BeforeTyping& note);

    GridControl& mGrid;
    std::vector<Step> mDone, mUndone;
};

}  // namespace brenvik::desktop
