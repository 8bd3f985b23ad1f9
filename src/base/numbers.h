// From text to numbers, and rounding. Settings, part data and most columns are text and are converted
// at use: by the lenient rule (the number at the head of the text, else 0) or by the strict one (a
// failure when the text is no number). No conversion depends on the machine's locale.
//
// A number is written as: an optional sign, digits with an optional decimal point before, among or
// behind them (at least one digit), and an optional exponent, which is one of the letters e, E, d, D,
// an optional sign and digits. The decimal mark is always the point; there is no thousands mark.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace brenvik {

/// The lenient rule: the number at the head of the text, after leading blanks and tabs; what follows
/// it is passed over. 0 when no number stands there, or when it is beyond a double's range.
double LenientNumber(std::string_view text);

/// Whether the whole text is one number within a double's range; blanks and tabs around it are
/// allowed. A blank text is not numeric.
bool IsNumeric(std::string_view text);

/// The strict rule: the number that the whole text is, blanks and tabs around it allowed.
/// Throws Failure 13 "Type mismatch" when the text is no number, 6 "Overflow" when it is beyond a
/// double's range.
double StrictNumber(std::string_view text);

/// The strict rule for a 32-bit integer: a number with decimals is rounded, halves to even.
/// Throws Failure 13 "Type mismatch", or 6 "Overflow" when the rounded value is out of range.
std::int32_t StrictInteger(std::string_view text);

/// A number as a 32-bit integer, halves to even. Throws Failure 6 "Overflow" out of range or for a
/// value that is no number.
std::int32_t ToInteger(double value);

/// A number in single precision, rounded to the nearest. Throws Failure 6 "Overflow" when it is beyond
/// the single-precision range; a value too small becomes 0.
float ToSingle(double value);

/// How many characters at the head of the text are one number, as written above; 0 when none begins there.
std::size_t NumberLength(std::string_view text);

/// Whether a stored switch is on: only a text that is numerically 1 by the lenient rule counts.
bool SwitchIsOne(std::string_view text);

/// Whether a stored switch is on where the reader tests for "not 0": any text that is numerically
/// other than 0 by the lenient rule counts.
bool SwitchIsNotZero(std::string_view text);

/// Rounds to `decimals` places (0 or more) as a person with a pencil does who sees the number's text: 15
/// digits that end in a 5 just behind the place go to the even digit, so 9.525 at 2 gives 9.52 and 2.675
/// gives 2.68, whichever side of the half their doubles lie on. Anything else goes to the nearest. The result
/// is the double nearest to that decimal. Never gives a negative zero. A value that is not finite comes back
/// as it is.
double RoundHalfEven(double value, int decimals);

}  // namespace brenvik
