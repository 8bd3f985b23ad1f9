// The first bytes by which drawings of other kinds are known.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace brenvik {

/// Binary drawings begin with their release: "AC10" and two digits, and otherwise in the first ones.
inline constexpr auto DwgBeginnings = std::to_array<std::string_view>({"AC10", "AC1.", "AC2.", "MC0."});
inline constexpr std::string_view StepBeginning = "ISO-10303-21";

inline bool BeginsLikeDwg(std::string_view content) {
    return std::ranges::any_of(DwgBeginnings,
                               [&](std::string_view beginning) { return content.starts_with(beginning); });
}

}  // namespace brenvik
