// How lengths of a part compare, whatever noise the modeller left in them.
#pragma once

namespace brenvik {

/// The same at 6 decimals. Two values that straddle the edge of a rounding step by no more than the
/// modeller's noise count as the same too, so that a part laid at an odd angle gives what a square one does.
bool SameLength(double a, double b);
/// Less, and not the same.
bool Less(double a, double b);
/// A value that is a short decimal but for the modeller's noise becomes that decimal; any other stays as it
/// stands.
double WithoutNoise(double value);

}  // namespace brenvik
