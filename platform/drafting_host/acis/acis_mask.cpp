// The masking of ACIS text in drawings and the escape of ASCII DXF around it.
#include "drafting_host/acis/acis_mask.h"

#include <algorithm>

namespace brenvik::acis {
namespace {

// "!" to "~": the range that the masking turns onto itself.
bool IsMasked(char c) { return c > ' ' && c < '\x7F'; }

std::string Mirrored(std::string_view text) {
    constexpr int sumOfBoth = 159;
    std::string result(text);
    for (char& c : result) {
        if (IsMasked(c)) c = static_cast<char>(sumOfBoth - c);
    }
    return result;
}

}  // namespace

std::string DecodeLine(std::string_view masked) { return Mirrored(masked); }

std::string EncodeLine(std::string_view plain) { return Mirrored(plain); }

std::string UnescapeDxf(std::string_view escaped) {
    std::string result;
    result.reserve(escaped.size());
    for (std::size_t i = 0; i < escaped.size(); ++i) {
        result += escaped[i];
        if (escaped[i] == '^' && i + 1 < escaped.size() && escaped[i + 1] == ' ') ++i;
    }
    return result;
}

std::string EscapeDxf(std::string_view masked) {
    std::string result;
    result.reserve(masked.size() + masked.size() / 16);
    for (const char c : masked) {
        result += c;
        if (c == '^') result += ' ';
    }
    return result;
}

bool IsPlainFirstLine(std::string_view line) {
    const std::size_t first = line.find_first_not_of(' ');
    return first != std::string_view::npos && line[first] >= '0' && line[first] <= '9';
}

}  // namespace brenvik::acis
