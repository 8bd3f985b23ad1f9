// Sorting and ranking of three extents.
#include "base/numbers.h"
#include "parts/mautocad.h"

namespace brenvik::mAutoCAD {

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

}  // namespace brenvik::mAutoCAD
