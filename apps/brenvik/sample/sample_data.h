// What the designer of the sample job has typed into the cut list, part by part.
#pragma once

#include <array>
#include <string_view>

namespace brenvik::app {

/// One row of the list, and the extents that the part had when it was applied.
struct SampleData {
    std::string_view number, name, subAssembly, material, letters;
    std::array<std::string_view, 3> extents;
    std::string_view notes, price;
    std::array<std::string_view, 4> edgeBands;
    std::string_view face;
};

/// The row with this part number, which must be there.
const SampleData& SampleDataOf(std::string_view number);

}  // namespace brenvik::app
