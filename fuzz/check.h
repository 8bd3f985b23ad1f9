// What a fuzz target does when a property of a reader does not hold.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace brenvik::fuzz {

/// Ends the program, which libFuzzer reports with the input.
inline void Require(bool holds, const char* property) {
    if (holds) return;
    std::fprintf(stderr, "This does not hold: %s\n", property);
    std::abort();
}

}  // namespace brenvik::fuzz
