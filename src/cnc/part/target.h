// The twelve CAM packages that a run can write for.
#pragma once

#include <array>
#include <string_view>

namespace brenvik {

/// The targets with the numbers that the export dialog leaves behind.
enum class Target {
    C2C = 1,
    ATP = 2,
    ROV = 3,
    CNI = 4,
    ASP = 5,
    WOP4 = 6,
    WOP5 = 7,
    THERM = 8,
    BW = 9,
    Enroute = 10,
    ABC = 11,
    RCIM = 12,
};

inline constexpr auto AllTargets = std::to_array<Target>(
    {Target::C2C, Target::ATP, Target::ROV, Target::CNI, Target::ASP, Target::WOP4, Target::WOP5,
     Target::THERM, Target::BW, Target::Enroute, Target::ABC, Target::RCIM});

}  // namespace brenvik
