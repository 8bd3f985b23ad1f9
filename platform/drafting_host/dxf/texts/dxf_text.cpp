// Decoding and encoding of DXF texts.
#include "drafting_host/dxf/texts/dxf_text.h"

#include <array>
#include <charconv>
#include <optional>
#include <utility>

#include "base/hex.h"
#include "base/letter_case.h"
#include "base/text.h"
#include "base/utf8.h"
#include "drafting_host/dxf/texts/code_pages.h"

namespace brenvik {
namespace {

constexpr std::size_t EscapeLength = 7;    // "\U+XXXX"
constexpr char32_t FirstPrintable = 0xA0;  // beyond ASCII and the control characters above it

bool IsHighSurrogate(unsigned unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(unsigned unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

std::optional<unsigned> EscapedUnit(std::string_view text, std::size_t at) {
    if (text.size() - at < EscapeLength || text[at] != '\\') return std::nullopt;
    if ((text[at + 1] != 'U' && text[at + 1] != 'u') || text[at + 2] != '+') return std::nullopt;
    unsigned unit = 0;
    const char* const first = text.data() + at + 3;
    const auto read = std::from_chars(first, first + 4, unit, 16);
    if (read.ec != std::errc{} || read.ptr != first + 4) return std::nullopt;
    return unit;
}

struct EscapedCharacter {
    char32_t codePoint = 0;
    std::size_t length = 0;
};

bool BeginsWithHexDigit(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdefABCDEF";
    return !text.empty() && digits.find(text.front()) != std::string_view::npos;
}

/// The planes of characters beyond four digits.
bool IsPlane(char32_t number) { return (number >= 1 && number <= 3) || (number >= 0xE && number <= 0x10); }

/// The first four digits of pictures, "\U+1F600": a Greek letter with accents and a hexadecimal digit at its
/// side is rarer than these.
bool MayLackADigit(char32_t unit) { return unit >= 0x1F00 && unit < 0x1FB0; }

// Some programs write characters beyond four digits in eight, "\U+0001F600". What the format would have
// there, a control character that no text holds and four letters or digits, nobody means.
std::optional<EscapedCharacter> LongEscapeAt(std::string_view text, std::size_t at, unsigned plane) {
    constexpr std::size_t length = EscapeLength + 4;
    if (!IsPlane(plane) || text.size() - at < length) return std::nullopt;
    unsigned rest = 0;
    const char* const first = text.data() + at + EscapeLength;
    const auto read = std::from_chars(first, first + 4, rest, 16);
    if (read.ec != std::errc{} || read.ptr != first + 4) return std::nullopt;
    return EscapedCharacter{plane * 0x10000 + rest, length};
}

// A lone half of a surrogate pair is no character; it stays as it is written.
std::optional<EscapedCharacter> EscapedCharacterAt(std::string_view text, std::size_t at) {
    const auto unit = EscapedUnit(text, at);
    if (!unit || IsLowSurrogate(*unit)) return std::nullopt;
    if (const auto character = LongEscapeAt(text, at, *unit)) return character;
    if (!IsHighSurrogate(*unit)) return EscapedCharacter{*unit, EscapeLength};
    const auto low = at + EscapeLength < text.size() ? EscapedUnit(text, at + EscapeLength) : std::nullopt;
    if (!low || !IsLowSurrogate(*low)) return std::nullopt;
    return EscapedCharacter{0x10000 + ((*unit - 0xD800) << 10) + (*low - 0xDC00), 2 * EscapeLength};
}

bool NeedsDecoding(std::string_view text) {
    for (const char c : text)
        if (c == '\\' || c == '^' || static_cast<unsigned char>(c) >= 0x80) return true;
    return false;
}

void AppendEscape(std::string& text, unsigned unit) {
    text += "\\U+";
    AppendHex(text, unit, 4);
}

void AppendEscaped(std::string& text, char32_t codePoint) {
    if (codePoint < 0x10000) {
        AppendEscape(text, codePoint);
        return;
    }
    const unsigned offset = codePoint - 0x10000;
    AppendEscape(text, 0xD800 + (offset >> 10));
    AppendEscape(text, 0xDC00 + (offset & 0x3FFU));
}

/// The control characters that texts of drawings have, and the caret itself, by what stands behind the caret.
/// Careless programs don't escape it: any other letter behind it leaves it a caret.
constexpr std::string_view CaretLetters = "IJM ";
constexpr std::string_view CaretCharacters = "\t\n\r^";

/// What "^" and the letter after it stand for; null where they stand for themselves.
std::optional<char> CaretCharacterAt(std::string_view text, std::size_t at) {
    if (text[at] != '^' || at + 1 >= text.size()) return std::nullopt;
    const std::size_t which = CaretLetters.find(text[at + 1]);
    return which == std::string_view::npos ? std::nullopt : std::optional(CaretCharacters[which]);
}

constexpr std::size_t PageEscapeLength = 8;  // "\M+nXXXX"

struct PageEscape {
    char digit = 0;
    unsigned bytes = 0;
};

std::optional<PageEscape> PageEscapeAt(std::string_view text, std::size_t at) {
    if (text.size() - at < PageEscapeLength || text[at] != '\\') return std::nullopt;
    if ((text[at + 1] != 'M' && text[at + 1] != 'm') || text[at + 2] != '+') return std::nullopt;
    PageEscape escape{text[at + 3]};
    if (escape.digit < '1' || escape.digit > '5') return std::nullopt;
    const char* const first = text.data() + at + 4;
    const auto read = std::from_chars(first, first + 4, escape.bytes, 16);
    if (read.ec != std::errc{} || read.ptr != first + 4) return std::nullopt;
    return escape;
}

/// What a page escape stands for; null if it stays as it is written.
std::optional<EscapedCharacter> PageCharacterAt(std::string_view text, std::size_t at) {
    const auto escape = PageEscapeAt(text, at);
    const auto character = escape ? MultiByteCharacter(escape->digit, escape->bytes) : std::nullopt;
    if (!character) return std::nullopt;
    return EscapedCharacter{*character, PageEscapeLength};
}

/// The length of a character that texts keep as an escape: half a surrogate pair, a character of a page of
/// two bytes. 0 where there is none.
std::size_t KeptEscapeLength(std::string_view text, std::size_t at) {
    if (EscapedUnit(text, at)) return EscapeLength;
    return PageEscapeAt(text, at) ? PageEscapeLength : 0;
}

std::size_t UnitsOf(const Utf8Character& character) {
    return character.valid && character.codePoint >= 0x10000 ? 2 : 1;
}

bool StaysItself(std::string_view text, std::size_t at) {
    const char c = text[at];
    if (c < ' ' || c > '~' || c == '^') return false;
    return !(c == '\\' && (EscapedCharacterAt(text, at) || PageCharacterAt(text, at)));
}

}  // namespace

std::size_t TextDecoder::DecodePageCharacter(std::string& result, std::string_view text,
                                             std::size_t at) const {
    const auto byte = static_cast<unsigned char>(text[at]);
    const auto digit = MultiByteEscapeDigit(mPage);
    if (!digit || at + 1 >= text.size()) {
        AppendUtf8(result, SingleByteCharacter(mPage, byte));
        return 1;
    }
    // The half-width katakana of page 932 are single bytes.
    if (mPage == 932 && byte >= 0xA1 && byte <= 0xDF) {
        AppendUtf8(result, 0xFF61 + (byte - 0xA1U));
        return 1;
    }
    const unsigned pair = byte * 0x100U + static_cast<unsigned char>(text[at + 1]);
    if (const auto character = MultiByteCharacter(*digit, pair)) {
        AppendUtf8(result, *character);
        return 2;
    }
    result += "\\M+";
    result += *digit;
    AppendHex(result, pair, 4);
    return 2;
}

std::string TextDecoder::Decode(std::string_view text) const {
    if (!NeedsDecoding(text)) return std::string(text);
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if (byte < 0x80) {
            if (const auto control = mCaretsEscape ? CaretCharacterAt(text, at) : std::nullopt) {
                result += *control;
                at += 2;
                continue;
            }
            auto escaped = byte == '\\' ? EscapedCharacterAt(text, at) : std::nullopt;
            if (!escaped && byte == '\\') escaped = PageCharacterAt(text, at);
            if (escaped)
                AppendUtf8(result, escaped->codePoint);
            else
                result += text[at];
            at += escaped ? escaped->length : 1;
            continue;
        }
        const Utf8Character character = mBytes == Bytes::Page ? Utf8Character{} : Utf8CharacterAt(text, at);
        if (character.valid) {
            result.append(text.substr(at, character.length));
            at += character.length;
        } else {
            at += DecodePageCharacter(result, text, at);
        }
    }
    return result;
}

bool HoldsPageEscape(std::string_view text) {
    for (std::size_t at = text.find('\\'); at != std::string_view::npos; at = text.find('\\', at + 1))
        if (PageEscapeAt(text, at)) return true;
    return false;
}

bool HoldsFiveDigitEscape(std::string_view written) {
    for (std::size_t at = written.find('\\'); at != std::string_view::npos; at = written.find('\\', at + 1)) {
        const auto unit = EscapedUnit(written, at);
        if (unit && MayLackADigit(*unit) && BeginsWithHexDigit(written.substr(at + EscapeLength)))
            return true;
    }
    return false;
}

std::string FiveDigitsNote(std::size_t texts) {
    return "expected \\U+ with four digits, or two such for a character beyond these, found a fifth digit; " +
           std::to_string(texts) + (texts == 1 ? " text has" : " texts have") +
           " such characters, read by the first four digits, the first one here";
}

std::string KeptEscapesNote(std::size_t texts, std::string_view first) {
    return "expected characters of the code pages that \\M+1 to \\M+5 name (932, 950, 949, 1361, 936), found "
           "some that these lack or this system doesn't know; " +
           std::to_string(texts) + (texts == 1 ? " text keeps" : " texts keep") +
           " them as \\M+nXXXX, first " + std::string(first);
}

int CodePageNumber(std::string_view name) {
    constexpr auto named = std::to_array<std::pair<std::string_view, int>>(
        {{"ASCII", 1252}, {"BIG5", 950}, {"KSC5601", 949}, {"JOHAB", 1361}, {"GB2312", 936}});
    const std::string upper = FoldUpper(Trim(name));
    for (const auto& [word, page] : named)
        if (upper == word) return page;
    std::string_view digits = upper;
    for (const std::string_view prefix : {"ANSI_", "DOS", "CP"}) {
        if (!digits.starts_with(prefix)) continue;
        digits.remove_prefix(prefix.size());
        int number = 0;
        const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
        if (read.ec == std::errc{} && read.ptr == digits.data() + digits.size()) return number;
        return 0;
    }
    return 0;
}

std::string EncodeText(std::string_view text, bool isUnicode) {
    std::string result;
    result.reserve(text.size());
    std::size_t escaped = std::string_view::npos;  // the last character that became an escape
    const auto isFifthDigit = [&](std::size_t at) {
        if (escaped >= at) return false;
        const Utf8Character character = Utf8CharacterAt(text, escaped);
        return escaped + character.length == at && BeginsWithHexDigit(text.substr(at)) &&
               (MayLackADigit(character.codePoint) || IsPlane(character.codePoint));
    };
    for (std::size_t at = 0; at < text.size();) {
        if (StaysItself(text, at) && !isFifthDigit(at)) {
            result += text[at++];
            continue;
        }
        if (const std::size_t which = CaretCharacters.find(text[at]); which != std::string_view::npos) {
            result += '^';
            result += CaretLetters[which];
            ++at;
            continue;
        }
        const Utf8Character character = Utf8CharacterAt(text, at);
        if (isUnicode && character.valid && character.codePoint >= FirstPrintable) {
            result += text.substr(at, character.length);
        } else {
            AppendEscaped(result, character.valid ? character.codePoint : ReplacementCharacter);
            escaped = at;
        }
        at += character.length;
    }
    return result;
}

std::string EscapeControls(std::string_view text) {
    std::string result;
    result.reserve(text.size() + 8);
    for (const char c : text) {
        const std::size_t which = CaretCharacters.find(c);
        result += which == std::string_view::npos ? c : '^';
        if (which != std::string_view::npos) result += CaretLetters[which];
    }
    return result;
}

std::size_t TextUnits(std::string_view text) {
    std::size_t units = 0;
    for (std::size_t at = 0; at < text.size();) {
        const Utf8Character character = Utf8CharacterAt(text, at);
        units += UnitsOf(character);
        at += character.length;
    }
    return units;
}

std::string_view FirstTextUnits(std::string_view text, std::size_t units) {
    std::size_t length = 0;
    for (std::size_t taken = 0; length < text.size();) {
        const std::size_t escape = KeptEscapeLength(text, length);
        const Utf8Character character = Utf8CharacterAt(text, length);
        taken += escape > 0 ? escape : UnitsOf(character);
        if (taken > units) break;
        length += escape > 0 ? escape : character.length;
    }
    return text.substr(0, length);
}

}  // namespace brenvik
