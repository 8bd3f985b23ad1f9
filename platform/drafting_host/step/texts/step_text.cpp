// Checks STEP text without the modeller, which gives neither line nor reason when it gives up.
#include "drafting_host/step/texts/step_text.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <system_error>
#include <unordered_set>
#include <utility>
#include <vector>

#include "base/ascii.h"
#include "base/byte_order_mark.h"
#include "base/file_failure.h"
#include "base/noise.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "base/text.h"
#include "base/western_text.h"

namespace brenvik::step {
namespace {

constexpr std::string_view Opening = "ISO-10303-21";

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
bool IsHigh(char c) { return static_cast<unsigned char>(c) >= 0x80; }
bool IsOfWord(char c) { return IsDigit(c) || IsAsciiLetter(c) || c == '_'; }

bool IsBetween(char c, unsigned char first, unsigned char last) {
    return static_cast<unsigned char>(c) >= first && static_cast<unsigned char>(c) <= last;
}

/// Shift-JIS: pairs of a leading and a following byte, and single bytes of half width. A pair that both other
/// pages would show as signs in the middle of a word makes it likely: the leading byte is one of their marks,
/// the following one beyond ASCII, or two pairs stand side by side.
bool IsShiftJis(std::string_view text) {
    bool likely = false;
    std::size_t lastPair = std::string_view::npos;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!IsHigh(text[at]) || IsBetween(text[at], 0xA1, 0xDF)) continue;
        const bool leads = IsBetween(text[at], 0x81, 0x9F) || IsBetween(text[at], 0xE0, 0xEF);
        const char second = at + 1 < text.size() ? text[at + 1] : ' ';
        if (!leads || !(IsBetween(second, 0x40, 0x7E) || IsBetween(second, 0x80, 0xFC))) return false;
        const bool sign = IsBetween(text[at], 0x81, 0x9F);
        if (sign && (IsHigh(second) || lastPair + 2 == at)) likely = true;
        if (sign) lastPair = at;
        ++at;
    }
    return likely;
}

}  // namespace

Failure FormatFailure(const std::filesystem::path& path, std::size_t line, std::string_view expected) {
    std::string detail = path.string();
    if (line > 0) detail += ", line " + std::to_string(line);
    detail += ": expected ";
    detail += expected;
    return InvalidFileFormat(std::move(detail));
}

std::string ContentOf(const std::filesystem::path& path) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) throw FileNotFound(path.string());
    if (!std::filesystem::is_regular_file(status)) throw PathAccess(path.string() + ": expected a file");
    std::ifstream file(path, std::ios::binary);
    if (!file) throw PathAccess(path.string());
    std::string content;
    const auto size = std::filesystem::file_size(path, error);
    if (!error) content.resize(size);
    file.read(content.data(), static_cast<std::streamsize>(content.size()));
    if (file.bad()) throw PathAccess(path.string());
    content.resize(static_cast<std::size_t>(file.gcount()));
    return content;
}

void RequireStep(const std::filesystem::path& path, std::string_view content) {
    std::string_view start = WithoutByteOrderMark(content);
    while (!start.empty() && IsBlank(start.front())) start.remove_prefix(1);
    if (start.empty()) throw FormatFailure(path, 1, "a STEP file (\"ISO-10303-21;\"), the file is empty");
    if (!start.starts_with(Opening)) throw FormatFailure(path, 1, "a STEP file (\"ISO-10303-21;\")");
}

std::string WithoutComments(std::string content) {
    if (content.find("/*") == content.npos) return content;
    for (std::size_t at = content.find_first_of("'/"); at < content.size();
         at = content.find_first_of("'/", at)) {
        if (content[at] == '\'') {
            at = std::min(content.find('\'', at + 1), content.size() - 1) + 1;
        } else if (content.compare(at, 2, "/*") != 0) {
            ++at;
        } else {
            const std::size_t end = content.find("*/", at + 2);
            if (end == content.npos) return content;
            for (; at < end + 2; ++at)
                if (content[at] != '\r' && content[at] != '\n') content[at] = ' ';
        }
    }
    return content;
}

CodePage CodePageOf(std::string_view content) {
    if (IsUtf8(content)) return CodePage::Utf8;
    if (IsShiftJis(content)) return CodePage::Japanese;
    std::size_t inWords = 0, alone = 0;
    for (auto at = content.begin(); at != content.end();) {
        at = std::find_if(at, content.end(), IsHigh);
        const auto last = std::find_if_not(at, content.end(), IsHigh);
        (last - at >= 3 ? inWords : alone) += static_cast<std::size_t>(last - at);
        at = last;
    }
    return inWords > alone ? CodePage::Cyrillic : CodePage::Western;
}

std::string WithoutNoise(std::string_view content) {
    std::string result;
    result.reserve(content.size());
    for (std::size_t at = 0; at < content.size();) {
        const char c = content[at];
        std::size_t end = at + 1;
        if (c == '\'') {
            end = std::min(content.find('\'', at + 1), content.size() - 1) + 1;
        } else if (c == '#' || (IsOfWord(c) && !IsDigit(c))) {
            // Names of statements and words have digits that are no numbers.
            while (end < content.size() && IsOfWord(content[end])) ++end;
        } else if (const std::size_t length = NumberLength(content.substr(at)); length > 0) {
            end = at + length;
            const std::string_view number = content.substr(at, length);
            if (number.find('.') != std::string_view::npos && NoiseAsZero(LenientNumber(number)) == 0) {
                result += "0.";
                at = end;
                continue;
            }
        }
        result += content.substr(at, end - at);
        at = end;
    }
    return result;
}

std::string RealText(double value) {
    std::string text = ShortestRoundTrip(value);
    const std::size_t exponent = text.find('e');
    if (exponent != text.npos) text[exponent] = 'E';
    if (text.find('.') == text.npos) text.insert(std::min(exponent, text.size()), ".");
    return text;
}

}  // namespace brenvik::step
