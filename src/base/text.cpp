// Blanks, splitting, replacing and character positions.
#include "base/text.h"

#include <algorithm>

#include "base/invariant.h"
#include "base/trimmed.h"
#include "base/utf8.h"

namespace brenvik {
namespace {

// The byte place `count` characters behind byte `at`, at most the end of the text.
std::size_t Advance(std::string_view text, std::size_t at, std::size_t count) {
    while (count > 0 && at < text.size()) {
        at += Utf8CharacterAt(text, at).length;
        --count;
    }
    return at;
}

}  // namespace

std::string TrimRight(std::string_view text) {
    return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
}

std::string Trim(std::string_view text) { return std::string(Trimmed(text, " ")); }

bool IsBlank(std::string_view text) { return text.find_first_not_of(' ') == std::string_view::npos; }

std::vector<std::string> Split(std::string_view text, char separator) {
    std::vector<std::string> pieces;
    if (text.empty()) return pieces;
    for (;;) {
        const std::size_t end = text.find(separator);
        pieces.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) return pieces;
        text.remove_prefix(end + 1);
    }
}

std::string Join(const std::vector<std::string>& pieces, std::string_view separator) {
    std::string text;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        if (i > 0) text += separator;
        text += pieces[i];
    }
    return text;
}

HeadAndTail SplitAtFirst(std::string_view text, char separator) {
    const std::size_t at = text.find(separator);
    if (at == std::string_view::npos) return {std::string(text), {}, false};
    return {std::string(text.substr(0, at)), std::string(text.substr(at + 1)), true};
}

std::string ReplaceAll(std::string_view text, std::string_view part, std::string_view replacement) {
    if (part.empty()) return std::string(text);
    std::string result;
    for (;;) {
        const std::size_t at = text.find(part);
        result += text.substr(0, at);
        if (at == std::string_view::npos) return result;
        result += replacement;
        text.remove_prefix(at + part.size());
    }
}

std::size_t CharacterCount(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); ++count) at += Utf8CharacterAt(text, at).length;
    return count;
}

std::string Left(std::string_view text, std::size_t count) {
    return std::string(text.substr(0, Advance(text, 0, count)));
}

std::string Right(std::string_view text, std::size_t count) {
    const std::size_t all = CharacterCount(text);
    return std::string(text.substr(Advance(text, 0, all - std::min(all, count))));
}

std::string Mid(std::string_view text, std::size_t start, std::size_t count) {
    Invariant(start > 0, "positions in a text count from 1");
    const std::size_t begin = Advance(text, 0, start - 1);
    return std::string(text.substr(begin, Advance(text, begin, count) - begin));
}

std::string DropRight(std::string_view text, std::size_t count) {
    const std::size_t all = CharacterCount(text);
    return Left(text, all - std::min(all, count));
}

}  // namespace brenvik
