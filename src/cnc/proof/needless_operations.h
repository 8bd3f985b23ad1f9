// Operations that cut nothing of the board that others of their side don't cut.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "cnc/plan/plan_difference.h"
#include "cnc/proof/single_operations.h"

namespace brenvik {

/// What is left of the sheet at a height by the outlines alone: shapes of the role Stock.
struct BoardAtHeight {
    HeightSpan heights;
    std::vector<PlanShape> stock;
};

/// In words, the last of those that cover each other first. `reported` marks operations already reported;
/// they cover nothing and are not reported again.
std::vector<std::string> FaultsOfNeedless(const OperationsOfPart& part, std::span<const BoardAtHeight> board,
                                          std::vector<bool> reported);

/// The same by their places among the operations: without all of them nothing more of the board stays.
std::vector<std::size_t> NeedlessAmong(const OperationsOfPart& part, std::span<const BoardAtHeight> board,
                                       std::vector<bool> reported);

}  // namespace brenvik
