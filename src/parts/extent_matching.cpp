// The walk over three extents, of which each is taken once.
#include "parts/extent_matching.h"

#include "base/number_text.h"
#include "base/numbers.h"

namespace brenvik::mAutoCAD {

namespace {

/// The flag that the walk over the three extents raised, or nothing.
struct Match {
    bool found = false;
    double extent = 0;
};

Match TakeEqual(ExtentsTaken& taken, double value, double a, double b, double c) {
    const auto take = [value](bool& flag, double extent) {
        if (flag || value != extent) return false;
        return flag = true;
    };
    if (take(taken.Small, a)) return {true, a};
    if (take(taken.Big, b)) return {true, b};
    if (take(taken.Mid, c)) return {true, c};
    return {};
}

}  // namespace

bool ConsumeExtent(ExtentsTaken& taken, std::string_view value, double a, double b, double c) {
    return TakeEqual(taken, LenientNumber(value), a, b, c).found;
}

std::string MatchOldValue(ExtentsTaken& taken, std::string_view text, double a, double b, double c) {
    const Match match = TakeEqual(taken, LenientNumber(text), a, b, c);
    return match.found ? NumberToText(match.extent) : "0";
}

}  // namespace brenvik::mAutoCAD
