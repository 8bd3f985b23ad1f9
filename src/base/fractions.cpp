// Rounding to a unit, and fractions made from decimals.
#include "base/fractions.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>

#include "base/failure.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "base/text.h"

namespace brenvik {

namespace {

struct Fraction {
    std::int32_t numerator = 0, denominator = 1;
};

/// The part behind the point as a decimal fraction. Single precision ends the digits: 0.1 has one.
Fraction DecimalFraction(float part) {
    constexpr std::int32_t base = 10;
    Fraction fraction;
    while (part != std::trunc(part)) {
        if (fraction.denominator > std::numeric_limits<std::int32_t>::max() / base)
            throw Overflow("a fraction with more digits than a denominator holds");
        part *= static_cast<float>(base);
        fraction.denominator *= base;
    }
    fraction.numerator = ToInteger(static_cast<double>(part));
    return fraction;
}

/// Only a positive fraction is reduced: the lists have always had the negative ones unreduced, and they
/// show that an adjustment was larger than the part.
Fraction Reduced(const Fraction& fraction) {
    if (fraction.numerator <= 0) return fraction;
    const std::int32_t divisor = std::gcd(fraction.numerator, fraction.denominator);
    return {fraction.numerator / divisor, fraction.denominator / divisor};
}

}  // namespace

std::string FractionMe(std::string_view text) { return std::string(text); }

double RoundDecimalValue(double value, double unit) {
    if (unit == 0) throw DivisionByZero("rounding to a unit of 0");
    const double sign = value > 0 ? 1 : (value < 0 ? -1 : 0);
    return std::floor(std::fabs(value) / unit + 0.5) * sign * unit;
}

double ClosestThirtySecond(double size) {
    constexpr int decimalsOfSizes = 5;
    const double halfWay = (std::floor(size / ExportFractionUnit) + 0.5) * ExportFractionUnit;
    const bool isHalfWay = RoundHalfEven(halfWay, decimalsOfSizes) == RoundHalfEven(size, decimalsOfSizes);
    return RoundDecimalValue(isHalfWay ? halfWay : size, ExportFractionUnit);
}

std::string DecimalToFraction(double value, bool padded) {
    const std::int32_t whole = ToInteger(std::trunc(value));
    const Fraction fraction = Reduced(DecimalFraction(ToSingle(value - whole)));
    std::string text;
    if (whole != 0) text = std::to_string(whole) + (fraction.numerator != 0 ? " " : "");
    if (whole == 0 && fraction.numerator < 0) text = "-";
    if (fraction.numerator == 0) return text;
    if (padded) text = "0" + Trim(text) + " ";
    return text + std::to_string(std::abs(fraction.numerator)) + "/" + std::to_string(fraction.denominator);
}

}  // namespace brenvik
