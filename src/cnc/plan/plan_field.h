// What lies within sides of the plan.
#pragma once

#include <span>
#include <vector>

#include "cnc/plan/plan_piece.h"

namespace brenvik {

/// What sides in no order enclose, by even and odd.
class PlanField {
  public:
    explicit PlanField(std::span<const PlanSide> sides);
    bool Holds(const PlanPoint& point) const;  ///< Whether the point lies inside.

  private:
    std::size_t ColumnOf(double x) const;

    std::vector<PlanPiece> mPieces;
    std::vector<std::vector<std::size_t>> mColumns;
    double mFrom = 0, mStep = 0;
};

}  // namespace brenvik
