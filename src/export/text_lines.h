// The lines of the text files that people edit by hand: adjustments and profiles.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

/// The lines of a text, whatever ends them (CR LF, LF or CR). An end behind the last line makes no further
/// line, and a byte order mark at the head is no part of the first.
std::vector<std::string> LinesOf(std::string_view text);

/// The lines of a file by way of the files port; fails as that does.
std::vector<std::string> ReadLines(std::string_view path);

/// The folder of the installed system with a backslash at its end: where the delivered files lie.
std::string ApplicationFolder();

}  // namespace brenvik
