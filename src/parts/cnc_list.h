// The lists by which the grid hands parts over to a CNC run.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

/// The lists in the hand-over folder: a line for each row of the part table, and a line for each group of
/// identical parts, which the run reads.
inline constexpr std::string_view CncWorkFile = "CNCExportList.txt";
inline constexpr std::string_view CncListFile = "CNCExportList2.txt";

/// A group of identical parts by their ids, in the order of their lines.
using CncGroup = std::vector<std::string>;

/// Lines that are equal, letter by letter, behind their second comma, in the order of their first ones. A
/// line with nothing behind its second comma belongs to no group.
std::vector<CncGroup> CncGroupsOf(std::span<const std::string> lines);

/// Whether anything stands behind a line's second comma, by which parts are grouped.
bool StandsInAGroup(std::string_view line);
/// What stands before a line's first comma, without blanks around it.
std::string IdOf(std::string_view line);

/// The second list from the lines of the first: "id,count" for each group, with the id of its first line. A
/// blank id makes no line.
std::string GroupedCncList(std::span<const std::string> lines, std::string_view lineEnd);

/// A line of the second list.
struct ListedPart {
    std::string handle;
    int quantity = 0;
};

/// Null if there is no comma, or no whole number behind it.
std::optional<ListedPart> ParseCncListLine(std::string_view line);

}  // namespace brenvik
