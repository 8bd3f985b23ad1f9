// Strict UTF-8 decoding and encoding.
#include "base/utf8.h"

#include "base/invariant.h"

namespace brenvik {
namespace {

constexpr char32_t HighestCodePoint = 0x10FFFF;

bool IsSurrogate(char32_t codePoint) { return codePoint >= 0xD800 && codePoint <= 0xDFFF; }

// The length that a first byte announces and the payload bits in it; length 0 for a byte that can't
// begin a character.
struct FirstByte {
    std::size_t length = 0;
    char32_t bits = 0;
    char32_t smallest = 0;  // a smaller value would be an overlong form
};

FirstByte ReadFirstByte(unsigned char byte) {
    if (byte < 0x80) return {1, byte, 0};
    if ((byte & 0xE0) == 0xC0) return {2, byte & 0x1FU, 0x80};
    if ((byte & 0xF0) == 0xE0) return {3, byte & 0x0FU, 0x800};
    if ((byte & 0xF8) == 0xF0) return {4, byte & 0x07U, 0x10000};
    return {};
}

}  // namespace

Utf8Character Utf8CharacterAt(std::string_view text, std::size_t at) {
    const auto byte = static_cast<unsigned char>(text[at]);
    const Utf8Character damaged{byte, 1, false};
    const FirstByte first = ReadFirstByte(byte);
    if (first.length == 0 || first.length > text.size() - at) return damaged;
    char32_t codePoint = first.bits;
    for (std::size_t i = 1; i < first.length; ++i) {
        const auto next = static_cast<unsigned char>(text[at + i]);
        if ((next & 0xC0) != 0x80) return damaged;
        codePoint = (codePoint << 6) | (next & 0x3FU);
    }
    if (codePoint < first.smallest || codePoint > HighestCodePoint || IsSurrogate(codePoint)) return damaged;
    return {codePoint, first.length, true};
}

std::string OtherEncodingOf(std::string_view content) {
    const auto zeroAt = [&](std::size_t at) { return content.size() > at && content[at] == '\0'; };
    const bool marked = content.starts_with("\xFF\xFE") || content.starts_with("\xFE\xFF");
    const bool zerosBehind = !zeroAt(0) && zeroAt(1) && !zeroAt(2) && zeroAt(3);
    const bool zerosAhead = zeroAt(0) && !zeroAt(1) && zeroAt(2) && content.size() > 3 && !zeroAt(3);
    return marked || zerosBehind || zerosAhead ? "UTF-16" : "";
}

void AppendUtf8(std::string& text, char32_t codePoint) {
    Invariant(codePoint <= HighestCodePoint && !IsSurrogate(codePoint), "a code point can be encoded");
    const auto append = [&text](char32_t bits) {
        text += static_cast<char>(static_cast<unsigned char>(bits));
    };
    if (codePoint < 0x80) {
        append(codePoint);
    } else if (codePoint < 0x800) {
        append(0xC0 | (codePoint >> 6));
        append(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        append(0xE0 | (codePoint >> 12));
        append(0x80 | ((codePoint >> 6) & 0x3F));
        append(0x80 | (codePoint & 0x3F));
    } else {
        append(0xF0 | (codePoint >> 18));
        append(0x80 | ((codePoint >> 12) & 0x3F));
        append(0x80 | ((codePoint >> 6) & 0x3F));
        append(0x80 | (codePoint & 0x3F));
    }
}

}  // namespace brenvik
