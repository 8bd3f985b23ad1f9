// The words around the picture of a part file: what it is of, and what its colours stand for.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cnc/picture/part_picture.h"

namespace brenvik {

struct LegendEntry {
    PictureKind kind;
    std::string words;
    int count = 0;  ///< How often the operation stands in the picture.
};

/// Every operation once, in the order of drawing.
std::vector<LegendEntry> LegendOf(const PartPicture& picture);

/// The title with the size of the board: "Part_0_Side_7   600 x 400 mm, 18 mm thick".
std::string TitleOf(const PartPicture& picture, std::string_view title);

}  // namespace brenvik
