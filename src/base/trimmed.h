// Views of a text without what stands around it.
#pragma once

#include <algorithm>
#include <string_view>

namespace brenvik {

/// Blanks of a text of several lines.
inline constexpr std::string_view BlanksAndLineEnds = " \t\r\n";

/// The text without the characters of `blanks` at both ends.
constexpr std::string_view Trimmed(std::string_view text, std::string_view blanks = BlanksAndLineEnds) {
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

}  // namespace brenvik
