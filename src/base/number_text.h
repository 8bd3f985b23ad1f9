// From numbers to text. One rule gives the digits: at most 15 significant ones, rounded from the exact
// binary value, without trailing zeros. The forms differ in the exponent, the zero before the point and
// the leading blank, and each is part of some file or layer name. The decimal mark is always the point.
//
// All forms write a negative zero as "0" unless said otherwise, and throw Failure 6 "Overflow" for a
// value that is not finite, since no reader of our files takes one.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace brenvik {

/// The general text of a number: plain decimal with a zero before the point ("0.375", "-0.5", "600"),
/// or, when the first digit's decimal exponent is below -4 or above 14, the exponent form with a sign
/// and at least two exponent digits ("1E-05", "1.5E+20").
std::string NumberToText(double value);

/// The general text with no zero before the point, and with a blank before a value that is not
/// negative: " .5", "-.5", " 600", " 0", " 1E-05".
std::string NumberToTextBlank(double value);

/// Plain decimal whatever the size, with no zero before the point: ".5", "-.5", "600", "0",
/// ".00001", "100000000000000000000". The value is rounded to `decimals` places first (RoundHalfEven),
/// or taken as it stands without them.
std::string NumberToTextNoZero(double value, std::optional<int> decimals = std::nullopt);

/// Layer number text: NumberToTextNoZero with the point replaced by `mark`: 0.375 with "p" is "p375".
std::string LayerNumberText(double value, std::optional<int> decimals, std::string_view mark);

/// The shortest text that reads back as the same double, for files: "0.1", "600", "1e+20", "-0".
/// With `alwaysReal` a text without point or exponent gets ".0": "600.0".
std::string ShortestRoundTrip(double value, bool alwaysReal = false);

}  // namespace brenvik
