// Finding the peak of a function of one variable between two bounds, for curves that have no formula
// for their extremes.
#pragma once

#include <cmath>

namespace brenvik::solids {

/// A place and the value there.
struct PeakPoint {
    double at;
    double value;
};

/// The peak of `function` between `low` and `high` by golden section,
/// to the last digits that the values can distinguish. The function has
/// to rise and fall once there; with more peaks one of them is found.
template <class Function>
PeakPoint GoldenPeak(const Function& function, double low, double high) {
    constexpr double golden = 0.6180339887498949;
    // 76 steps shrink the bracket by 1e-16: beyond that neighbouring doubles are the same place.
    constexpr int steps = 76;
    double left = high - golden * (high - low);
    double right = low + golden * (high - low);
    double leftValue = function(left);
    double rightValue = function(right);
    PeakPoint best = leftValue > rightValue ? PeakPoint{left, leftValue} : PeakPoint{right, rightValue};
    for (int step = 0; step < steps && left < right; ++step) {
        if (leftValue > rightValue) {
            high = right;
            right = left;
            rightValue = leftValue;
            left = high - golden * (high - low);
            leftValue = function(left);
            if (leftValue > best.value) best = {left, leftValue};
        } else {
            low = left;
            left = right;
            leftValue = rightValue;
            right = low + golden * (high - low);
            rightValue = function(right);
            if (rightValue > best.value) best = {right, rightValue};
        }
    }
    return best;
}

}  // namespace brenvik::solids
