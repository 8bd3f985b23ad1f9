// The digits of a number are taken once and laid out by the form that is asked for.
#include "base/number_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <system_error>

#include "base/decimal_digits.h"
#include "base/failure.h"
#include "base/invariant.h"
#include "base/numbers.h"
#include "base/text.h"

namespace brenvik {
namespace {

enum class BeforePoint { zero, nothing };

void FailUnlessFinite(double value) {
    if (!std::isfinite(value)) throw Overflow("a number without an end has no text");
}

DecimalDigits FiniteDigitsOf(double value) {
    FailUnlessFinite(value);
    return DigitsOf(value);
}

// Plain decimal of the magnitude.
std::string PlainForm(const DecimalDigits& number, BeforePoint beforePoint) {
    if (number.exponent < 0) {
        const std::string head = beforePoint == BeforePoint::zero ? "0." : ".";
        return head + std::string(static_cast<std::size_t>(-number.exponent - 1), '0') + number.digits;
    }
    const auto wholeDigits = static_cast<std::size_t>(number.exponent) + 1;
    if (number.digits.size() <= wholeDigits)
        return number.digits + std::string(wholeDigits - number.digits.size(), '0');
    return number.digits.substr(0, wholeDigits) + "." + number.digits.substr(wholeDigits);
}

// The exponent form of the magnitude: 1.5E+20, 1E-05.
std::string ExponentForm(const DecimalDigits& number) {
    std::string text = number.digits.substr(0, 1);
    if (number.digits.size() > 1) text += "." + number.digits.substr(1);
    text += number.exponent < 0 ? "E-" : "E+";
    const std::string exponent = std::to_string(std::abs(number.exponent));
    if (exponent.size() < 2) text += '0';
    text += exponent;
    return text;
}

// The magnitude in plain decimal as long as that is no longer than the digits make it; the bounds are
// the classic ones of a conversion with 15 significant digits.
std::string GeneralForm(const DecimalDigits& number, BeforePoint beforePoint) {
    constexpr int smallestPlainExponent = -4;
    constexpr int largestPlainExponent = 14;
    const bool plain = number.exponent >= smallestPlainExponent && number.exponent <= largestPlainExponent;
    return plain ? PlainForm(number, beforePoint) : ExponentForm(number);
}

// The magnitude's text behind a minus, or behind what stands in its place.
std::string Signed(const DecimalDigits& number, std::string_view beforePositive,
                   const std::string& magnitude) {
    std::string text(number.negative ? std::string_view("-") : beforePositive);
    text += magnitude;
    return text;
}

}  // namespace

std::string NumberToText(double value) {
    const DecimalDigits number = FiniteDigitsOf(value);
    return Signed(number, "", GeneralForm(number, BeforePoint::zero));
}

std::string NumberToTextBlank(double value) {
    const DecimalDigits number = FiniteDigitsOf(value);
    return Signed(number, " ", GeneralForm(number, BeforePoint::nothing));
}

std::string NumberToTextNoZero(double value, std::optional<int> decimals) {
    const DecimalDigits number = FiniteDigitsOf(decimals ? RoundHalfEven(value, *decimals) : value);
    return Signed(number, "", PlainForm(number, BeforePoint::nothing));
}

std::string LayerNumberText(double value, std::optional<int> decimals, std::string_view mark) {
    return Trim(ReplaceAll(NumberToTextNoZero(value, decimals), ".", mark));
}

std::string ShortestRoundTrip(double value, bool alwaysReal) {
    FailUnlessFinite(value);
    std::array<char, 32> buffer;
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    Invariant(written.ec == std::errc{}, "the buffer holds every shortest form");
    std::string text(buffer.data(), written.ptr);
    if (alwaysReal && text.find_first_of(".e") == std::string::npos) text += ".0";
    return text;
}

}  // namespace brenvik
