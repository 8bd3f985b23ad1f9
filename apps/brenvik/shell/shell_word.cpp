// Quoting for the shells of POSIX.
#include "shell/shell_word.h"

#include <algorithm>

#include "base/ascii.h"
#include "base/text.h"

namespace brenvik::app {

namespace {

bool IsPlain(char character) {
    constexpr std::string_view harmless = "-_./,:@%+";
    const auto byte = static_cast<unsigned char>(character);
    return byte >= 0x80 || IsDigit(character) || IsAsciiLetter(character) ||
           harmless.find(character) != std::string_view::npos;
}

/// What keeps its meaning between double quotes besides plain characters.
bool IsPlainInQuotes(char character) {
    constexpr std::string_view harmless = " ()[]{}<>;&|*?#~='^";
    return IsPlain(character) || harmless.find(character) != std::string_view::npos;
}

}  // namespace

std::string ShellWord(std::string_view word) {
    if (!word.empty() && std::ranges::all_of(word, IsPlain)) return std::string(word);
    if (std::ranges::all_of(word, IsPlainInQuotes)) return "\"" + std::string(word) + "\"";
    return "'" + ReplaceAll(word, "'", "'\\''") + "'";
}

std::string ProgramWords(const std::string& homeOption) {
    return homeOption.empty() ? "brenvik" : "brenvik --home " + ShellWord(homeOption);
}

}  // namespace brenvik::app
