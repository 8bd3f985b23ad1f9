// What must hold whatever the user does. A broken invariant is a defect of the program, so it stops
// the program in every build type: going on would write wrong parts.
#pragma once

#include <source_location>
#include <string_view>

namespace brenvik {

/// Ends the program with the place and the text on standard error.
[[noreturn]] void InvariantBroken(std::string_view text, const std::source_location& place);

/// Stops the program unless `condition` holds. `text` says what was expected to hold.
inline void Invariant(bool condition, std::string_view text,
                      const std::source_location& place = std::source_location::current()) {
    if (!condition) [[unlikely]]
        InvariantBroken(text, place);
}

}  // namespace brenvik
