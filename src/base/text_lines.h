// The lines of the text files that people edit by hand: adjustments, profiles, materials, part lists.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

/// The lines of a text, whatever ends them (CR LF, LF or CR). An end behind the last line makes no further
/// line, and a byte order mark at the head is no part of the first.
std::vector<std::string> LinesOf(std::string_view text);

}  // namespace brenvik
