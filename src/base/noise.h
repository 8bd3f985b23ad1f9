// What is left where a coordinate was taken from another that should have been its equal: -3.6e-15 in place
// of 0. No cut of the trade is that small, but a receiver's eye and a comparison of texts stumble over it, so
// files don't get it. Everything else is written bit for bit.
#pragma once

namespace brenvik {

/// Below it a length in drawing units, or a component of a direction, is noise. The last bit of a coordinate
/// of 10 metres is 2e-12, and a part goes through some tens of turns and shifts.
inline constexpr double SmallestLength = 1e-10;

/// 0 for noise and for a negative zero, any other value as it is.
constexpr double NoiseAsZero(double value) {
    return value > -SmallestLength && value < SmallestLength ? 0.0 : value;
}

}  // namespace brenvik
