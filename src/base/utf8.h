// One character at a time out of UTF-8 text that may be damaged: drawings of other programs bring bytes
// in other code pages, and such bytes have to come out again as they went in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace brenvik {

/// A character of a text: its code point and its length in bytes. A byte that begins no valid
/// character (overlong forms, surrogates and values above 10FFFF included) is one character of length 1
/// with `valid` false and the byte for its code point.
struct Utf8Character {
    char32_t codePoint = 0;
    std::size_t length = 0;
    bool valid = false;
};

/// The character that begins at byte `at`, which lies inside the text.
Utf8Character Utf8CharacterAt(std::string_view text, std::size_t at);

/// What the content of a text file is that has two bytes for each character: "UTF-16", by its byte order mark
/// or by the zeros beside its first letters. Blank for any other.
std::string OtherEncodingOf(std::string_view content);

/// Appends a code point's UTF-8 form. Surrogates and values above 10FFFF are a defect of the caller.
void AppendUtf8(std::string& text, char32_t codePoint);

}  // namespace brenvik
