// A body's ACIS text between memory, where it stands in clear, and a drawing file, where its lines are
// masked and cut to what a group takes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

/// The text in clear, each line ended by "\n", of lines as a file has them, joined from their groups. A
/// first line that begins with a digit is not masked, as some programs write it; then none is.
std::string AcisTextOf(const std::vector<std::string>& lines);

/// A line in clear as the values of its groups, masked: the first for group 1, the others for group 3,
/// none longer than 255 bytes.
std::vector<std::string> AcisGroupsOf(std::string_view line);

}  // namespace brenvik
