// Comparison at six decimals, with room for the noise of rotations.
#include "cnc/part/lengths.h"

#include <cmath>

#include "base/number_text.h"
#include "base/numbers.h"

namespace brenvik {

namespace {

constexpr int CompareDecimals = 6;
// Far above what the modeller leaves of rotations and far below a step of the comparison.
constexpr double ModellerNoise = 1e-9;
// Finer than a sixty-fourth of an inch needs, and coarser than the noise of a part a few metres long.
constexpr int CleanDecimals = 9;
constexpr double CleanNoise = 1e-10;

}  // namespace

bool SameLength(double a, double b) {
    const double apart = std::abs(a - b);
    if (apart <= ModellerNoise) return true;
    // Values that round alike are less than a whole step apart.
    if (apart > 1e-6) return false;
    return RoundHalfEven(a, CompareDecimals) == RoundHalfEven(b, CompareDecimals);
}

bool Less(double a, double b) { return a < b && !SameLength(a, b); }

double WithoutNoise(double value) {
    const double clean = RoundHalfEven(value, CleanDecimals);
    return std::abs(value - clean) < CleanNoise ? clean : value;
}

std::string RoundedText(double value, int decimals) {
    const double rounded = RoundHalfEven(value, decimals);
    return NumberToText(rounded == 0 ? 0 : rounded);
}

double MillimetreIn(bool metric) { return metric ? 1 : 1 / MillimetresInAnInch; }

}  // namespace brenvik
