// Hexadecimal digits.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace brenvik {

inline constexpr std::string_view HexDigits = "0123456789ABCDEF";
inline constexpr std::string_view SmallHexDigits = "0123456789abcdef";

/// Appends the lowest `count` digits of the value.
inline void AppendHex(std::string& text, std::uint32_t value, unsigned count,
                      std::string_view digits = HexDigits) {
    for (; count > 0; --count) text += digits[(value >> 4 * (count - 1)) & 0xFU];
}

/// Two digits for each byte.
inline std::string HexOf(std::string_view bytes, std::string_view digits = HexDigits) {
    std::string text;
    text.reserve(2 * bytes.size());
    for (const char byte : bytes) AppendHex(text, static_cast<unsigned char>(byte), 2, digits);
    return text;
}

}  // namespace brenvik
