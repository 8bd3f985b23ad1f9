// The palette is a rule: ten basic colours, 24 hues of ten shades each, six greys.
#include "drafting_host/dxf/data/aci_colors.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace brenvik {
namespace {

constexpr std::array<ScreenColor, 10> Basic{{{0, 0, 0},
                                             {255, 0, 0},
                                             {255, 255, 0},
                                             {0, 255, 0},
                                             {0, 255, 255},
                                             {0, 0, 255},
                                             {255, 0, 255},
                                             {255, 255, 255},
                                             {128, 128, 128},
                                             {192, 192, 192}}};
constexpr std::array<std::uint8_t, 6> Greys{51, 80, 105, 130, 190, 255};
/// Brightness of the five shade pairs of a hue.
constexpr std::array<double, 5> Values{255, 165, 127, 76, 38};

/// Hues run in steps of 15 degrees from red over yellow; odd shades are half as strong.
ScreenColor Shade(int index) {
    const double hue = (index / 10 - 1) * 15.0 / 60.0;
    const double value = Values[static_cast<std::size_t>(index % 10 / 2)];
    const double least = index % 2 == 0 ? 0 : value / 2;
    const auto channel = [&](double shift) {
        const double place = std::fmod(hue + shift, 6.0);
        const double share = std::clamp(std::min(place, 4 - place), 0.0, 1.0);
        return static_cast<std::uint8_t>(least + (value - least) * share);
    };
    return {channel(2), channel(0), channel(4)};
}

}  // namespace

ScreenColor ColorOfIndex(int index) {
    if (index < 10) return Basic[static_cast<std::size_t>(std::max(index, 0))];
    if (index < 250) return Shade(index);
    return {Greys[static_cast<std::size_t>(std::min(index, 255) - 250)],
            Greys[static_cast<std::size_t>(std::min(index, 255) - 250)],
            Greys[static_cast<std::size_t>(std::min(index, 255) - 250)]};
}

int NearestColorIndex(const ScreenColor& color) {
    int best = 7, bestDistance = 1 << 30;
    for (int index = 1; index <= 255; ++index) {
        const ScreenColor other = ColorOfIndex(index);
        const int red = color.red - other.red, green = color.green - other.green,
                  blue = color.blue - other.blue;
        const int distance = red * red + green * green + blue * blue;
        if (distance < bestDistance) {
            best = index;
            bestDistance = distance;
        }
    }
    return best;
}

}  // namespace brenvik
