// The units that drawings of shops are in.
#pragma once

namespace brenvik {

enum class LengthUnit { Millimetre, Inch };

constexpr double MillimetresIn(LengthUnit unit) { return unit == LengthUnit::Inch ? 25.4 : 1; }

}  // namespace brenvik
