// Digits and letters of ASCII, whatever the machine's locale says of them.
#pragma once

#include <algorithm>
#include <string_view>

namespace brenvik {

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

constexpr bool IsAsciiLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

constexpr char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

/// Whether nothing but digits stands there. A blank text has none.
constexpr bool IsDigitsAlone(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, IsDigit);
}

}  // namespace brenvik
