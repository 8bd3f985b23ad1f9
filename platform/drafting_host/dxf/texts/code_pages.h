// The code pages of drawings older than release 2007. The single-byte ones of Windows are known
// character by character; the East Asian ones by the digit that a text escapes their characters with, and the
// characters themselves come from the system.
#pragma once

#include <optional>

namespace brenvik {

inline constexpr char32_t ReplacementCharacter = 0xFFFD;

/// Whether the page is 874 or one of 1250 to 1258.
bool IsSingleBytePage(int page);

/// What a byte stands for in a single-byte page; the replacement character where the page has none.
char32_t SingleByteCharacter(int page, unsigned char byte);

/// The digit n by which "\M+nXXXX" names an East Asian page (932, 936, 949, 950, 1361).
std::optional<char> MultiByteEscapeDigit(int page);

/// The character that "\M+nXXXX" names by the digit of its page and its two bytes, the first one the higher.
/// Null if the page has none, or where this system doesn't know the page.
std::optional<char32_t> MultiByteCharacter(char digit, unsigned bytes);

}  // namespace brenvik
