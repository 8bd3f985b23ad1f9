// Codes begin with a backslash; a backslash in front of another, or of a brace, is that character.
#include "drafting_host/document/geometry/text_heights.h"

#include <charconv>

#include "base/number_text.h"

namespace brenvik {

std::string WithScaledHeights(std::string_view text, double factor) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] != '\\' || at + 1 == text.size()) {
            result += text[at++];
            continue;
        }
        result += text.substr(at, 2);
        const bool isHeight = text[at + 1] == 'H';
        at += 2;
        if (!isHeight) continue;
        const char* const first = text.data() + at;
        double height = 0;
        const auto read = std::from_chars(first, text.data() + text.size(), height);
        const auto length = static_cast<std::size_t>(read.ptr - first);
        const bool isMultiple =
            at + length < text.size() && (text[at + length] == 'x' || text[at + length] == 'X');
        if (read.ec != std::errc{} || isMultiple) continue;
        result += ShortestRoundTrip(height * factor);
        at += length;
    }
    return result;
}

}  // namespace brenvik
