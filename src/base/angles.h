// Angles in radians.
#pragma once

#include <cmath>
#include <numbers>

namespace brenvik {

inline constexpr double QuarterTurn = std::numbers::pi / 2;
inline constexpr double FullTurn = 2 * std::numbers::pi;

/// The angle from 0 on. One just below 0 may come out as a full turn.
inline double WithinFullTurn(double angle) {
    const double rest = std::fmod(angle, FullTurn);
    return rest < 0 ? rest + FullTurn : rest;
}

}  // namespace brenvik
