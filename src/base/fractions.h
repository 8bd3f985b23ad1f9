// Sizes as fractions of an inch: rounding to a unit, and the text of a number with its fraction.
#pragma once

#include <string>
#include <string_view>

namespace brenvik {

/// The unit that exports round to: a 32nd.
inline constexpr double ExportFractionUnit = 0.03125;

/// The text as it is. The one place to change where a shop writes its fractions another way.
std::string FractionMe(std::string_view text);

/// The multiple of `unit` that is nearest to the value; half ways go away from zero on both sides. Fails with
/// 11 for a unit of 0.
double RoundDecimalValue(double value, double unit);

/// The 32nd that is nearest to a size, by the rule of RoundDecimalValue. Sizes are kept with five decimals,
/// in which a 64th can't be written, so 52.01562 counts as the 52 1/64 that was measured: both it and 52 3/64
/// go away from zero.
double ClosestThirtySecond(double size);

/// The whole number, a blank and the fraction: "3 3/4", "1/2", "3"; blank for 0. With `padded` a text with a
/// fraction has a "0" ahead ("03 3/4", "0 1/2"), which keeps a spreadsheet from reading a date. The fraction
/// of a negative number is in tenths, hundredths and so on, as its decimals have it: "-1 5/10", padded "0-1
/// 5/10". Fails with 6 if the whole number or the denominator goes beyond 32 bits; values rounded to a 32nd
/// that are sizes of parts never do.
std::string DecimalToFraction(double value, bool padded);

}  // namespace brenvik
