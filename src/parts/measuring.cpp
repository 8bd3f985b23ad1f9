// Sorting, ranking and matching of three extents.
#include "base/number_text.h"
#include "base/numbers.h"
#include "parts/extent_matching.h"
#include "parts/mautocad.h"

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

double SmallestOfThree(double a, double b, double c) {
    a = RoundHalfEven(a, 5);
    b = RoundHalfEven(b, 5);
    c = RoundHalfEven(c, 5);
    double smallest = a;
    if (b < a) smallest = b;
    if (c < b && c < a) smallest = c;
    return RoundHalfEven(smallest, 5);
}

double LargestOfThree(double a, double b, double c) {
    a = RoundHalfEven(a, 5);
    b = RoundHalfEven(b, 5);
    c = RoundHalfEven(c, 5);
    double largest = a;
    if (b > a) largest = b;
    if (c > b && c > a) largest = c;
    return RoundHalfEven(largest, 5);
}

int IndexOfLargest(float a, float b, float c) {
    float largest = 0;
    int index = 0;
    const auto walk = [&](float value, int place) {
        if (value < largest) return;
        largest = value;
        index = place;
    };
    walk(a, 1);
    walk(b, 2);
    walk(c, 3);
    return index;
}

int IndexOfSmallest(float a, float b, float c) {
    float smallest = a + b + c;
    int index = 0;
    const auto walk = [&](float value, int place) {
        if (value > smallest) return;
        smallest = value;
        index = place;
    };
    walk(c, 3);
    walk(b, 2);
    walk(a, 1);
    return index;
}

int ThirdIndex(int i, int j) { return 6 - (i + j); }

bool ConsumeExtent(ExtentsTaken& taken, std::string_view value, double a, double b, double c) {
    return TakeEqual(taken, LenientNumber(value), a, b, c).found;
}

std::string MatchOldValue(ExtentsTaken& taken, std::string_view text, double a, double b, double c) {
    const Match match = TakeEqual(taken, LenientNumber(text), a, b, c);
    return match.found ? NumberToText(match.extent) : "0";
}

}  // namespace brenvik::mAutoCAD
