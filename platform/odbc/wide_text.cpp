// UTF-8 and UTF-16.
#include "odbc/wide_text.h"

#include <cstddef>

#include "base/utf8.h"

namespace brenvik::odbc {
namespace {

static_assert(sizeof(SQLWCHAR) == 2, "the driver manager's wide characters must be UTF-16");

constexpr char32_t ReplacementCharacter = 0xFFFD;

bool IsHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

}  // namespace

std::vector<SQLWCHAR> ToWide(std::string_view text) {
    std::vector<SQLWCHAR> wide;
    wide.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const Utf8Character character = Utf8CharacterAt(text, at);
        at += character.length;
        if (character.codePoint < 0x10000) {
            wide.push_back(static_cast<SQLWCHAR>(character.codePoint));
        } else {
            const char32_t offset = character.codePoint - 0x10000;
            wide.push_back(static_cast<SQLWCHAR>(0xD800 + (offset >> 10)));
            wide.push_back(static_cast<SQLWCHAR>(0xDC00 + (offset & 0x3FF)));
        }
    }
    return wide;
}

std::string FromWide(std::span<const SQLWCHAR> text) {
    std::string narrow;
    narrow.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char32_t unit = text[at];
        if (IsHighSurrogate(unit) && at + 1 < text.size() && IsLowSurrogate(text[at + 1])) {
            ++at;
            AppendUtf8(narrow, 0x10000 + ((unit - 0xD800) << 10) + (char32_t{text[at]} - 0xDC00));
        } else {
            AppendUtf8(narrow, IsHighSurrogate(unit) || IsLowSurrogate(unit) ? ReplacementCharacter : unit);
        }
    }
    return narrow;
}

}  // namespace brenvik::odbc
