// Reading numbers by hand-written grammar and std::from_chars, so that no locale has a say, and decimal
// rounding that decides a half by the digits that people see, and the rest by the exact binary value.
#include "base/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <system_error>

#include "base/ascii.h"
#include "base/decimal_digits.h"
#include "base/failure.h"
#include "base/invariant.h"
#include "base/trimmed.h"

namespace brenvik {
namespace {

// The number found at the head of a text: how much of the text it is, and its value, which is an
// infinity when the number is beyond a double's range.
struct ScannedNumber {
    std::size_t length = 0;
    double value = 0;
};

bool IsExponentLetter(char c) { return c == 'e' || c == 'E' || c == 'd' || c == 'D'; }

std::size_t SkipDigits(std::string_view text, std::size_t at) {
    while (at < text.size() && IsDigit(text[at])) ++at;
    return at;
}

std::string_view WithoutLeadingSpace(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    return first == std::string_view::npos ? std::string_view{} : text.substr(first);
}

std::string_view WithoutSpace(std::string_view text) { return Trimmed(text, " \t"); }

// Whether a number that std::from_chars calls out of range is too large rather than too small. The conversion
// itself does not say.
bool IsTooLarge(std::string_view digits, std::size_t exponentAt) {
    const std::string_view mantissa = digits.substr(0, exponentAt);
    const std::size_t pointAt = std::min(mantissa.find('.'), mantissa.size());
    const std::size_t firstNonZero = mantissa.find_first_of("123456789");
    if (firstNonZero == std::string_view::npos) return false;
    const bool exponentIsNegative = exponentAt + 1 < digits.size() && digits[exponentAt + 1] == '-';
    long long exponent = 0;
    for (const char c : digits.substr(std::min(exponentAt + 1, digits.size())))
        if (IsDigit(c) && exponent < 1'000'000'000'000) exponent = exponent * 10 + (c - '0');
    const long long place = static_cast<long long>(pointAt) - static_cast<long long>(firstNonZero);
    return place + (exponentIsNegative ? -exponent : exponent) > 0;
}

// Converts the digits of an unsigned number in the grammar above; `exponentAt` is the place of its
// exponent letter, or its length.
double ConvertDigits(std::string_view digits, std::size_t exponentAt) {
    std::string withE;
    if (exponentAt < digits.size() && digits[exponentAt] != 'e') {
        withE = digits;
        withE[exponentAt] = 'e';
        digits = withE;
    }
    double value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (result.ec == std::errc::result_out_of_range)
        return IsTooLarge(digits, exponentAt) ? std::numeric_limits<double>::infinity() : 0.0;
    return value;
}

// The longest number that starts at the first character; length 0 when none does.
ScannedNumber ScanNumber(std::string_view text) {
    std::size_t at = 0;
    if (!text.empty() && (text[0] == '+' || text[0] == '-')) at = 1;
    const std::size_t digitsAt = at;
    at = SkipDigits(text, at);
    std::size_t digitCount = at - digitsAt;
    if (at < text.size() && text[at] == '.') {
        const std::size_t decimalsAt = at + 1;
        at = SkipDigits(text, decimalsAt);
        digitCount += at - decimalsAt;
    }
    if (digitCount == 0) return {};
    const std::size_t exponentAt = at;
    if (at < text.size() && IsExponentLetter(text[at])) {
        std::size_t exponentDigitsAt = at + 1;
        if (exponentDigitsAt < text.size() &&
            (text[exponentDigitsAt] == '+' || text[exponentDigitsAt] == '-'))
            ++exponentDigitsAt;
        const std::size_t end = SkipDigits(text, exponentDigitsAt);
        // A letter without digits behind it is no exponent: "5 each" and "5e" are both 5.
        if (end > exponentDigitsAt) at = end;
    }
    const double value = ConvertDigits(text.substr(digitsAt, at - digitsAt), exponentAt - digitsAt);
    return {at, text[0] == '-' ? -value : value};
}

// Powers of ten that a double holds exactly.
constexpr std::array<double, 23> ExactPowersOfTen = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                     1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                     1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// What the double product of two moderate doubles lost: a * b - product, exactly (splitting each factor
// in halves of 26 bits whose products are exact).
double ProductError(double a, double b, double product) {
    constexpr double splitter = 134217729.0;  // 2^27 + 1
    const double aSplit = splitter * a;
    const double aHigh = aSplit - (aSplit - a);
    const double aLow = a - aHigh;
    const double bSplit = splitter * b;
    const double bHigh = bSplit - (bSplit - b);
    const double bLow = b - bHigh;
    return ((aHigh * bHigh - product) + aHigh * bLow + aLow * bHigh) + aLow * bLow;
}

// The integer nearest to magnitude * power, halves to even, where the double product is below 2^53.
// The product is the double nearest to the exact one, and every half below 2^52 is a double, so the two
// lie on the same side of a half unless the product is a half itself; then the lost rest decides.
std::int64_t NearestMultiple(double magnitude, double power, double product) {
    const auto whole = static_cast<std::int64_t>(product);
    const double rest = product - static_cast<double>(whole);
    if (rest < 0.5) return whole;
    if (rest > 0.5) return whole + 1;
    const double lost = ProductError(magnitude, power, product);
    if (lost < 0) return whole;
    if (lost > 0) return whole + 1;
    return whole + (whole & 1);
}

// The even neighbour where the number's digits end in a 5 one place behind the last that is kept; null for
// any other number.
std::optional<double> EvenOfHalf(double magnitude, int decimals) {
    const DecimalDigits number = DigitsOf(magnitude);
    const int places = static_cast<int>(number.digits.size()) - 1 - number.exponent;
    if (places != decimals + 1 || number.digits.back() != '5') return std::nullopt;
    std::int64_t kept = 0;
    for (const char digit : std::string_view(number.digits).substr(0, number.digits.size() - 1))
        kept = kept * 10 + (digit - '0');
    const std::string text = std::to_string(kept + (kept & 1)) + "e-" + std::to_string(decimals);
    double even = 0;
    std::from_chars(text.data(), text.data() + text.size(), even);
    return even;
}

// Whether the product lies so near to a half that its value's 15 digits may end there. They differ from the
// value by 5 parts in 10^15 at most.
bool MayBeHalf(double product) {
    constexpr double digitsEnd = 1e-14;
    return std::fabs(product - std::floor(product) - 0.5) <= product * digitsEnd;
}

// Any number of places, by way of the exact decimal digits of the value.
double RoundByDigits(double magnitude, int decimals) {
    // More places than a double can have below its last digit change nothing.
    constexpr int placesOfTheSmallest = 1074;
    if (decimals >= placesOfTheSmallest) return magnitude;
    // 309 digits before the point, the point and the places.
    std::array<char, 309 + 1 + placesOfTheSmallest> buffer;
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                       std::chars_format::fixed, decimals);
    Invariant(written.ec == std::errc{}, "the buffer holds every double in fixed form");
    double rounded = 0;
    std::from_chars(buffer.data(), written.ptr, rounded);
    return rounded;
}

double RoundMagnitude(double magnitude, int decimals) {
    if (static_cast<std::size_t>(decimals) >= ExactPowersOfTen.size()) {
        const std::optional<double> even = EvenOfHalf(magnitude, decimals);
        return even ? *even : RoundByDigits(magnitude, decimals);
    }
    const double power = ExactPowersOfTen[static_cast<std::size_t>(decimals)];
    const double product = magnitude * power;
    // From 2^53 on neighbouring doubles are further apart than the places asked for.
    if (product >= 0x1p53) return magnitude;
    if (MayBeHalf(product))
        if (const std::optional<double> even = EvenOfHalf(magnitude, decimals)) return *even;
    // Both operands are exact, so the quotient is the double nearest to the decimal.
    return static_cast<double>(NearestMultiple(magnitude, power, product)) / power;
}

}  // namespace

std::size_t NumberLength(std::string_view text) { return ScanNumber(text).length; }

double LenientNumber(std::string_view text) {
    const double value = ScanNumber(WithoutLeadingSpace(text)).value;
    return std::isfinite(value) ? value : 0.0;
}

bool IsNumeric(std::string_view text) {
    const std::string_view inner = WithoutSpace(text);
    const ScannedNumber number = ScanNumber(inner);
    return number.length > 0 && number.length == inner.size() && std::isfinite(number.value);
}

double StrictNumber(std::string_view text) {
    const std::string_view inner = WithoutSpace(text);
    const ScannedNumber number = ScanNumber(inner);
    if (number.length == 0 || number.length != inner.size())
        throw TypeMismatch("\"" + std::string(text) + "\" is not a number");
    if (!std::isfinite(number.value))
        throw Overflow("\"" + std::string(text) + "\" is too large for a number");
    return number.value;
}

std::int32_t StrictInteger(std::string_view text) { return ToInteger(StrictNumber(text)); }

std::int32_t ToInteger(double value) {
    const double rounded = RoundHalfEven(value, 0);
    // Written so that a value that is no number fails too.
    if (!(rounded >= std::numeric_limits<std::int32_t>::min() &&
          rounded <= std::numeric_limits<std::int32_t>::max()))
        throw Overflow();
    return static_cast<std::int32_t>(rounded);
}

float ToSingle(double value) {
    // The first double that rounds out of single precision: half a unit above the largest single.
    constexpr double tooLarge = 0x1.ffffffp127;
    if (!(std::fabs(value) < tooLarge)) throw Overflow();
    return static_cast<float>(value);
}

bool SwitchIsOne(std::string_view text) { return LenientNumber(text) == 1.0; }

bool SwitchIsNotZero(std::string_view text) { return LenientNumber(text) != 0.0; }

double RoundHalfEven(double value, int decimals) {
    Invariant(decimals >= 0, "the number of decimals is not negative");
    if (!std::isfinite(value)) return value;
    const double rounded = RoundMagnitude(std::fabs(value), decimals);
    if (rounded == 0) return 0.0;
    return value < 0 ? -rounded : rounded;
}

}  // namespace brenvik
