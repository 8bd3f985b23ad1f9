// Rotations whose zeros and ones are zeros and ones.
#pragma once

#include <cmath>

namespace brenvik::solids {

/// An entry of a rotation's matrix without the rounding that trigonometry leaves.
inline double CleanEntry(double entry) {
    constexpr double rounding = 1e-14;
    if (std::abs(entry) < rounding) return 0;
    if (std::abs(std::abs(entry) - 1) < rounding) return entry > 0 ? 1 : -1;
    return entry;
}

}  // namespace brenvik::solids
