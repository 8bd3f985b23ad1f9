// No rounding: a corner that was pointed at is meant to the last digit.
#include "toolkit/exact_text.h"

#include <array>
#include <charconv>

namespace brenvik::desktop {

std::string ExactText(double number) {
    std::array<char, 400> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
    return {text.data(), end.ptr};
}

std::string ExactText(const Point3& point) {
    return ExactText(point.x) + "," + ExactText(point.y) + "," + ExactText(point.z);
}

}  // namespace brenvik::desktop
