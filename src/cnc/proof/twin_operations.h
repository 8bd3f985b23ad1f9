// Operations that occur twice.
#pragma once

#include "cnc/proof/written_side.h"

namespace brenvik {

/// Whether two operations cut the same of a part between these heights: how far they go into the spoil board
/// doesn't count, nor how deep holes and paths of one side go. `unit` is one millimetre.
bool AreTwins(const WrittenOperation& a, const WrittenOperation& b, const HeightSpan& part, double unit);

}  // namespace brenvik
