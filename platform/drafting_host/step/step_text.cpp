// Looks at STEP text without the modeller, which tells neither line nor reason when it gives up.
#include "drafting_host/step/step_text.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <system_error>
#include <unordered_set>
#include <utility>
#include <vector>

#include "base/noise.h"
#include "base/numbers.h"
#include "base/text.h"
#include "base/utf8.h"
#include "drafting_host/step/step_grammar.h"

namespace brenvik::step {
namespace {

constexpr std::string_view opening = "ISO-10303-21";
constexpr std::string_view ending = "END-ISO-10303-21";

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
bool IsHigh(char c) { return static_cast<unsigned char>(c) >= 0x80; }

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsOfWord(char c) { return IsDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }

/// The number that starts at `place`, 0 when none does or it is beyond an int.
int NumberAt(std::string_view content, std::size_t place) {
    int number = 0;
    std::from_chars(content.data() + place, content.data() + content.size(), number);
    return number;
}

std::size_t LineAt(std::string_view content, std::size_t place) {
    return 1 + static_cast<std::size_t>(std::ranges::count(content.substr(0, place), '\n'));
}

bool IsUtf8(std::string_view text) {
    for (auto high = std::ranges::find_if(text, IsHigh); high != text.end();
         high = std::ranges::find_if(text, IsHigh)) {
        text.remove_prefix(static_cast<std::size_t>(high - text.begin()));
        const Utf8Character character = Utf8CharacterAt(text, 0);
        if (!character.valid) return false;
        text.remove_prefix(character.length);
    }
    return true;
}

/// Skips a text in quotes or a comment that starts at `place`; npos when it doesn't end.
std::size_t SkipQuoted(std::string_view content, std::size_t place) {
    if (content[place] == '\'') {
        const std::size_t close = content.find('\'', place + 1);
        return close == std::string_view::npos ? close : close + 1;
    }
    const std::size_t close = content.find("*/", place + 2);
    return close == std::string_view::npos ? close : close + 2;
}

bool OpensQuoted(std::string_view content, std::size_t place) {
    return content[place] == '\'' || content.substr(place, 2) == "/*";
}

}  // namespace

Failure FormatFailure(const std::filesystem::path& path, std::size_t line, std::string_view expected) {
    std::string detail = path.string();
    if (line > 0) detail += ", line " + std::to_string(line);
    detail += ": expected ";
    detail += expected;
    return {321, std::string(ownSource), "Invalid file format", detail};
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

void RequireWholeStep(const std::filesystem::path& path, std::string_view content) {
    std::string_view start = content;
    if (start.starts_with("\xEF\xBB\xBF")) start.remove_prefix(3);
    while (!start.empty() && IsBlank(start.front())) start.remove_prefix(1);
    if (start.empty()) throw FormatFailure(path, 1, "a STEP file (\"ISO-10303-21;\"), the file is empty");
    while (start.starts_with("/*")) {
        const std::size_t after = SkipQuoted(start, 0);
        start.remove_prefix(after == std::string_view::npos ? start.size() : after);
        while (!start.empty() && IsBlank(start.front())) start.remove_prefix(1);
    }
    if (!start.starts_with(opening)) throw FormatFailure(path, 1, "a STEP file (\"ISO-10303-21;\")");
    // The end mark stands last but for blanks; some programs add a signature or a few bytes behind it.
    const std::size_t tail = content.size() > 65536 ? content.size() - 65536 : 0;
    if (content.find(ending, tail) == std::string_view::npos &&
        content.find(ending) == std::string_view::npos) {
        throw FormatFailure(path, LineAt(content, content.size()),
                            "\"END-ISO-10303-21;\", the file ends before it is complete");
    }
}

CodePage CodePageOf(std::string_view content) {
    if (IsUtf8(content)) return CodePage::Utf8;
    std::size_t inWords = 0, alone = 0;
    for (auto at = content.begin(); at != content.end();) {
        at = std::find_if(at, content.end(), IsHigh);
        const auto last = std::find_if_not(at, content.end(), IsHigh);
        (last - at >= 3 ? inWords : alone) += static_cast<std::size_t>(last - at);
        at = last;
    }
    return inWords > alone ? CodePage::Cyrillic : CodePage::Western;
}

std::size_t BrokenLine(std::string_view content) {
    std::size_t statement = 0;
    bool inside = false, inData = false;
    int depth = 0;
    for (std::size_t place = 0; place < content.size();) {
        if (!inside && !IsBlank(content[place]) && content.substr(place, 2) != "/*") {
            inside = true;
            statement = place;
        }
        if (OpensQuoted(content, place)) {
            place = SkipQuoted(content, place);
            if (place == std::string_view::npos) return LineAt(content, statement);
            continue;
        }
        const char c = content[place++];
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        // An equals sign inside of brackets is the next statement: the closing ones are missing here.
        if (depth < 0 || (depth > 0 && (c == '=' || c == ';'))) return LineAt(content, statement);
        if (c == ';') {
            inside = false;
            const std::string_view text = content.substr(statement, place - statement);
            if (text.starts_with(ending)) return 0;
            if (text.starts_with("ENDSEC")) {
                inData = false;
            } else if (inData && !IsWellFormed(text)) {
                return LineAt(content, statement);
            } else if (text.starts_with("DATA")) {
                inData = true;
            }
        }
    }
    return inside ? LineAt(content, statement) : 0;
}

std::size_t OverlongNumberLine(std::string_view content) {
    constexpr std::size_t digitsOfHighest = 10;
    const auto isOverlong = [&](std::size_t place) {
        std::size_t digits = place + 1;
        while (digits < content.size() && IsDigit(content[digits])) ++digits;
        if (digits - place - 1 < digitsOfHighest) return false;
        long number = 0;
        const auto read = std::from_chars(content.data() + place + 1, content.data() + digits, number);
        return read.ec != std::errc{} || number > highestStatement;
    };
    const auto next = [&](std::size_t from) {
        std::size_t place = content.find('#', from);
        while (place != std::string_view::npos && !isOverlong(place)) place = content.find('#', place + 1);
        return place;
    };
    // Names may hold such a number. Only where one is met has it to be known what stands in quotes.
    std::size_t found = next(0);
    for (std::size_t place = 0; found != std::string_view::npos && place < content.size();) {
        if (OpensQuoted(content, place)) {
            place = SkipQuoted(content, place);
            if (place == std::string_view::npos) return 0;
            if (place > found) found = next(place);
        } else if (place == found) {
            return LineAt(content, found);
        } else {
            ++place;
        }
    }
    return 0;
}

namespace {

/// Goes over the numbers behind "#" outside of quotes and comments; `take` gets the place of the digits and
/// whether they begin a statement, and ends the walk with false.
template <class Take>
void ForEachNumber(std::string_view content, Take take) {
    for (std::size_t place = 0; place < content.size();) {
        if (OpensQuoted(content, place)) {
            place = SkipQuoted(content, place);
            if (place == std::string_view::npos) break;
            continue;
        }
        if (content[place++] != '#') continue;
        std::size_t after = place;
        while (after < content.size() && IsDigit(content[after])) ++after;
        while (after < content.size() && IsBlank(content[after])) ++after;
        if (!take(place, after < content.size() && content[after] == '=')) break;
    }
}

}  // namespace

std::optional<LostReference> FirstLostReference(std::string_view content) {
    std::unordered_set<int> statements;
    std::vector<std::size_t> references;
    ForEachNumber(content, [&](std::size_t place, bool isStatement) {
        if (isStatement)
            statements.insert(NumberAt(content, place));
        else
            references.push_back(place);
        return true;
    });
    const auto lost = std::ranges::find_if(
        references, [&](std::size_t place) { return !statements.contains(NumberAt(content, place)); });
    if (lost == references.end()) return std::nullopt;
    return LostReference{NumberAt(content, *lost), LineAt(content, *lost)};
}

std::optional<RepeatedStatement> FirstRepeatedStatement(std::string_view content) {
    std::unordered_map<int, std::size_t> places;
    std::optional<RepeatedStatement> repeated;
    ForEachNumber(content, [&](std::size_t place, bool isStatement) {
        if (!isStatement) return true;
        const auto [first, fresh] = places.try_emplace(NumberAt(content, place), place);
        if (!fresh)
            repeated =
                RepeatedStatement{first->first, LineAt(content, first->second), LineAt(content, place)};
        return fresh;
    });
    return repeated;
}

std::string LineForMessage(std::string_view content, std::size_t line) {
    constexpr std::size_t longest = 60;
    for (std::size_t skipped = 1; skipped < line; ++skipped) {
        const std::size_t end = content.find('\n');
        content.remove_prefix(end == std::string_view::npos ? content.size() : end + 1);
    }
    std::string text = Trim(content.substr(0, content.find_first_of("\r\n")));
    if (text.size() > longest) text = text.substr(0, longest) + "...";
    std::ranges::replace_if(
        text, [](char c) { return c < ' ' || c > '~'; }, '?');
    return text;
}

std::size_t LineOfStatement(std::string_view content, int number) {
    const std::string mark = "#" + std::to_string(number);
    for (std::size_t place = content.find(mark); place != std::string_view::npos;
         place = content.find(mark, place + 1)) {
        std::size_t after = place + mark.size();
        while (after < content.size() && IsBlank(content[after])) ++after;
        if (after < content.size() && content[after] == '=') return LineAt(content, place);
    }
    return 0;
}

std::size_t StatementLines::Of(int number) const {
    if (mLines.empty()) {
        std::size_t line = 1;
        for (std::size_t place = 0; place < mContent.size(); ++place) {
            if (mContent[place] == '\n') ++line;
            if (mContent[place] != '#') continue;
            std::size_t after = place + 1;
            while (after < mContent.size() && IsDigit(mContent[after])) ++after;
            while (after < mContent.size() && IsBlank(mContent[after])) ++after;
            if (after < mContent.size() && mContent[after] == '=')
                mLines.try_emplace(NumberAt(mContent, place + 1), line);
        }
    }
    const auto found = mLines.find(number);
    return found == mLines.end() ? 0 : found->second;
}

int NestedOrientedEdge(std::string_view content) {
    constexpr std::string_view kind = "ORIENTED_EDGE";
    std::vector<int> edges;
    std::vector<std::pair<int, int>> elements;  // an edge and what it refers to
    for (std::size_t place = content.find(kind); place != std::string_view::npos;
         place = content.find(kind, place + kind.size())) {
        std::size_t before = place;
        while (before > 0 && (IsBlank(content[before - 1]) || content[before - 1] == '=')) --before;
        std::size_t start = before;
        while (start > 0 && IsDigit(content[start - 1])) --start;
        if (start == before || start == 0 || content[start - 1] != '#') continue;
        const int number = NumberAt(content, start);
        edges.push_back(number);
        // Some programs name each statement after its own number, in quotes: that is no reference.
        bool quoted = false;
        for (std::size_t at = place; at < content.size() && (quoted || content[at] != ';'); ++at) {
            if (content[at] == '\'') quoted = !quoted;
            if (!quoted && content[at] == '#') elements.emplace_back(number, NumberAt(content, at + 1));
        }
    }
    std::ranges::sort(edges);
    const auto nested = std::ranges::find_if(
        elements, [&](const auto& pair) { return std::ranges::binary_search(edges, pair.second); });
    return nested == elements.end() ? 0 : nested->first;
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

}  // namespace brenvik::step
