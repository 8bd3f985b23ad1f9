// A part picture as an SVG file: to be looked at in any browser, and by programs that compare.
#pragma once

#include <string>
#include <string_view>

#include "cnc/picture/part_picture.h"

namespace brenvik {

/// The whole file, a title above and a legend below. The paths have the coordinates of the part file, with at
/// most four decimals; each has its kind as its class and its layer as `data-layer`.
std::string PictureAsSvg(const PartPicture& picture, std::string_view title);

}  // namespace brenvik
