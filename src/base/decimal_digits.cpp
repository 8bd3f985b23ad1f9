// The digits are taken from the scientific form.
#include "base/decimal_digits.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string_view>
#include <system_error>

#include "base/invariant.h"

namespace brenvik {

DecimalDigits DigitsOf(double value) {
    if (value == 0) return {};
    std::array<char, 32> buffer;
    constexpr int placesBehindFirst = 14;
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(value),
                                       std::chars_format::scientific, placesBehindFirst);
    Invariant(written.ec == std::errc{}, "the buffer holds 15 digits and an exponent");
    const std::string_view text(buffer.data(), static_cast<std::size_t>(written.ptr - buffer.data()));
    const std::size_t exponentAt = text.find('e');
    DecimalDigits result;
    result.negative = value < 0;
    result.digits = std::string(text.substr(0, 1)) + std::string(text.substr(2, exponentAt - 2));
    result.digits.erase(result.digits.find_last_not_of('0') + 1);
    result.exponent = std::atoi(std::string(text.substr(exponentAt + 1)).c_str());
    return result;
}

}  // namespace brenvik
