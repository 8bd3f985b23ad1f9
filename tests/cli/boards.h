// Drawings of plain boards, whose parts have the same handles from drawing to drawing.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace brenvik::cli_test {

struct Boards {
    std::vector<std::string> names;
    std::string material = "White Melamine";
    /// With a pocket from below they have a second side.
    bool pocketBelow = false;
    double length = 600;
    /// With a rabbet all along the front edge, 15 wide and 6 deep, and a dowel bore in the left end.
    bool rabbetAndBore = false;
    /// Sawn through, so that each is one solid of two lumps.
    bool areSawn = false;
    /// All in one place.
    bool areStacked = false;
    /// The lengths one by one, where they aren't all the same; sub assemblies, where there are any.
    std::vector<double> lengths = {};
    std::vector<std::string> subAssemblies = {};
};

/// Writes a drawing of boards with these names, `length` by 400 by 18, each with a hole, their PN "7".
void WriteBoardsTo(const std::filesystem::path& file, const Boards& boards);

}  // namespace brenvik::cli_test
