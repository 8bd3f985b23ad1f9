// The decimal digits of a double as people see them: 15 significant ones, which is what a text of the system
// shows and what two programs agree on.
#pragma once

#include <string>

namespace brenvik {

/// A number as its digits without trailing zeros and the decimal exponent of the first one: 0.00375 is "375"
/// and -3. Zero is "0" and 0, and never negative.
struct DecimalDigits {
    bool negative = false;
    std::string digits = "0";
    int exponent = 0;
};

/// Of a finite value, rounded from its exact binary value to 15 digits.
DecimalDigits DigitsOf(double value);

}  // namespace brenvik
