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

/// Where a part's picture and the words around it stand on their sheet, in units of the sheet: the title
/// above, then the part, as wide as its field or as high as it, and the legend below.
struct PictureLayout {
    static constexpr double Margin = 24, FieldWidth = 1000, FieldHeight = 620, TitleHeight = 44,
                            LegendLine = 24;
    double scale = 1;  ///< Of the part.
    double partTop = 0, partWidth = 0, partHeight = 0;
    double legendTop = 0;
    double sheetWidth = 0, sheetHeight = 0;
};

PictureLayout LayoutOf(const PartPicture& picture, const std::vector<LegendEntry>& legend);

/// The title with the size of the board: "Part_0_Side_7   600 x 400 mm, 18 mm thick".
std::string TitleOf(const PartPicture& picture, std::string_view title);

}  // namespace brenvik
