// A grid that doesn't repaint for a while: bound to a record set, it would otherwise paint itself anew for
// each cell or column of a loop.
#pragma once

#include "forms/grid_control.h"

namespace brenvik {

/// Repaint is off while this lives, and what it was before afterwards.
class RepaintOff {
  public:
    explicit RepaintOff(GridControl& shownGrid) : mGrid(shownGrid), mBefore(shownGrid.reDraw) {
        mGrid.reDraw = false;
    }
    ~RepaintOff() { mGrid.reDraw = mBefore; }
    RepaintOff(const RepaintOff&) = delete;
    RepaintOff& operator=(const RepaintOff&) = delete;

  private:
    GridControl& mGrid;
    bool mBefore;
};

}  // namespace brenvik
