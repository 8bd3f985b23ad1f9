// The 255 colours of drawings.
#pragma once

#include <cstdint>

namespace brenvik {

/// Red, green and blue, 0 to 255 each.
struct ScreenColor {
    std::uint8_t red = 0, green = 0, blue = 0;
};

/// The screen colour of an index from 1 to 255 on a dark ground (7 is white).
ScreenColor ColorOfIndex(int index);

/// The index of the nearest colour, the lowest of equal ones.
int NearestColorIndex(const ScreenColor& color);

}  // namespace brenvik
