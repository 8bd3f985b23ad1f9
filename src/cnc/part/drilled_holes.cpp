// How lengths of drilled holes compare, and holes that got no operation.
#include "cnc/part/drilled_holes.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "base/number_text.h"
#include "base/numbers.h"
#include "cnc/part/run_state.h"

namespace brenvik {

namespace {

constexpr int CompareDecimals = 6;
// Far above what the modeller leaves of rotations and far below a step of the comparison.
constexpr double ModellerNoise = 1e-9;
// Finer than a sixty-fourth of an inch needs, and coarser than the noise of a part a few metres long.
constexpr int CleanDecimals = 9;
constexpr double CleanNoise = 1e-10;
constexpr int TellDecimals = 3;

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

void NeedOtherSide(RunState& run) {
    run.NeedSecondSide = 1;
    if (run.FirstPass()) run.ThroughRouteSeen = 1;
}

Point3 OnFirstSide(const RunState& run, const Box3& part, const Point3& place) {
    if (run.FirstPass()) return place;
    return {place.x, part.min.y + part.max.y - place.y, part.min.z + part.max.z - place.z};
}

void NoteUnexplained(RunState& run, const Box3& part, std::string_view kind, double diameter,
                     const Point3& place) {
    const auto number = [](double value) { return NumberToText(RoundHalfEven(value, TellDecimals)); };
    const Point3 seen = OnFirstSide(run, part, place);
    const std::string text = std::string(kind) + " of " + number(diameter) + " at " + number(seen.x) + "," +
                             number(seen.y) + "," + number(seen.z) + ": no operation";
    if (std::ranges::find(run.unexplained, text) == run.unexplained.end()) run.unexplained.push_back(text);
    const double reach = diameter / 2;
    run.notePlaces[text] = {{seen.x - reach, seen.y - reach, seen.z - reach},
                            {seen.x + reach, seen.y + reach, seen.z + reach}};
}

}  // namespace brenvik
