// What must hold whatever the user does. A broken invariant is a defect of the program, so it stops
// the program in every build type: going on would write wrong parts.
#pragma once

#include <string_view>

namespace brenvik {

/// The place of a call. std::source_location would be it, but the Clang that the fuzz targets are built
/// with does not have it beside this standard library; the builtins are known to every compiler in use.
struct SourcePlace {
    const char* file;
    int line;
    const char* function;

    static constexpr SourcePlace Here(const char* file = __builtin_FILE(), int line = __builtin_LINE(),
                                      const char* function = __builtin_FUNCTION()) {
        return {file, line, function};
    }
};

/// Ends the program with the place and the text on standard error: for a branch that is never taken.
[[noreturn]] void InvariantBroken(std::string_view text, const SourcePlace& place = SourcePlace::Here());

/// Stops the program unless `condition` holds. `text` says what was expected to hold.
inline void Invariant(bool condition, std::string_view text, const SourcePlace& place = SourcePlace::Here()) {
    if (!condition) [[unlikely]]
        InvariantBroken(text, place);
}

}  // namespace brenvik
