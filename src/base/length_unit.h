// The units that drawings of shops are in.
#pragma once

#include <cmath>

namespace brenvik {

enum class LengthUnit { Millimetre, Inch };

constexpr double MillimetresIn(LengthUnit unit) { return unit == LengthUnit::Inch ? 25.4 : 1; }

/// Whether two sizes mean one unit: programs give the factor of a unit with four digits.
inline bool AreAlikeUnits(double one, double other) { return std::abs(one / other - 1) < 1e-4; }

}  // namespace brenvik
