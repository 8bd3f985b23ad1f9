// The code page in which most files without UTF-8 come, and where its bytes stand in Unicode.
#include "base/western_text.h"

#include <algorithm>
#include <array>

#include "base/utf8.h"

namespace brenvik {

namespace {

/// The characters of the bytes 80 to 9F in the Western Windows code page; 0 where it has none.
constexpr std::array<char32_t, 32> WesternPunctuation{
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

char32_t WesternCharacter(char32_t byte) {
    constexpr char32_t first = 0x80;
    if (byte < first || byte >= first + WesternPunctuation.size()) return byte;
    const char32_t character = WesternPunctuation[byte - first];
    return character == 0 ? byte : character;
}

}  // namespace

bool IsUtf8(std::string_view text) {
    // Most of a long text is ASCII, which needs no look at what a byte begins.
    const auto isHigh = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
    for (auto high = std::ranges::find_if(text, isHigh); high != text.end();
         high = std::ranges::find_if(text, isHigh)) {
        text.remove_prefix(static_cast<std::size_t>(high - text.begin()));
        const Utf8Character character = Utf8CharacterAt(text, 0);
        if (!character.valid) return false;
        text.remove_prefix(character.length);
    }
    return true;
}

std::string WesternAsUtf8(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        const Utf8Character character = Utf8CharacterAt(bytes, at);
        AppendUtf8(text, character.valid ? character.codePoint : WesternCharacter(character.codePoint));
        at += character.length;
    }
    return text;
}

}  // namespace brenvik
