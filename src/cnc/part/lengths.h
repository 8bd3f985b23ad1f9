// How lengths of a part compare, whatever noise the modeller left in them.
#pragma once

#include <string>

namespace brenvik {

/// The same at 6 decimals. Two values that straddle the edge of a rounding step by no more than the
/// modeller's noise count as the same too, so that a part laid at an odd angle gives what a square one does.
bool SameLength(double a, double b);
/// Less, and not equal by `SameLength`.
bool Less(double a, double b);
/// A value that is a short decimal but for the modeller's noise becomes that decimal; any other stays as it
/// stands.
double WithoutNoise(double value);

/// Rounded half to even, as text; a value that rounds to 0 is "0", without a sign.
std::string RoundedText(double value, int decimals);

inline constexpr double MillimetresInAnInch = 25.4;

/// One millimetre in the units of a run, in millimetres or in inches.
double MillimetreIn(bool metric);

}  // namespace brenvik
