// Masking and cutting of ACIS lines.
#include "drafting_host/dxf/texts/acis_lines.h"

#include <algorithm>

#include "drafting_host/acis/acis_text.h"

namespace brenvik {
namespace {

constexpr std::size_t LongestValue = 255;

// The version number comes first, and masked digits are letters.
bool IsInClear(std::string_view firstLine) {
    const std::size_t first = firstLine.find_first_not_of(' ');
    return first != std::string_view::npos && firstLine[first] >= '0' && firstLine[first] <= '9';
}

}  // namespace

std::string AcisTextOf(const std::vector<std::string>& lines) {
    const bool inClear = !lines.empty() && IsInClear(lines.front());
    // A drawing holds thousands of these for a while, so none has room to spare.
    std::size_t length = 0;
    for (const std::string& line : lines) length += line.size() + 1;
    std::string text;
    text.reserve(length);
    for (const std::string& line : lines) {
        text += inClear ? line : acis::DecodeLine(acis::UnescapeDxf(line));
        text += '\n';
    }
    return text;
}

std::vector<std::string> AcisGroupsOf(std::string_view line) {
    const std::string masked = acis::EscapeDxf(acis::EncodeLine(line));
    std::vector<std::string> values;
    std::size_t at = 0;
    do {
        std::size_t length = std::min(LongestValue, masked.size() - at);
        // A "^" stays with its blank, for readers that unescape before they join.
        if (at + length < masked.size() && masked[at + length - 1] == '^') --length;
        values.push_back(masked.substr(at, length));
        at += length;
    } while (at < masked.size());
    return values;
}

}  // namespace brenvik
