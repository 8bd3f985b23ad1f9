// Rounding half to even, checked against decimal arithmetic: on the 15 digits of the number's text where they
// end in a half, on the exact digits of the double elsewhere.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "base/numbers.h"

namespace brenvik {
namespace {

// The exact decimal digits of a finite non-negative double, as the digits before and behind the point:
// mantissa times 2^e is mantissa times 5^-e shifted by -e places where e is negative.
struct ExactDecimal {
    std::string whole;
    std::string places;
};

void Multiply(std::vector<int>& digits, int factor) {
    int carry = 0;
    for (int& digit : digits) {
        const int product = digit * factor + carry;
        digit = product % 10;
        carry = product / 10;
    }
    for (; carry > 0; carry /= 10) digits.push_back(carry % 10);
}

ExactDecimal ExactDigits(double magnitude) {
    int exponent = 0;
    auto mantissa = static_cast<unsigned long long>(std::ldexp(std::frexp(magnitude, &exponent), 53));
    exponent -= 53;
    std::vector<int> digits;  // lowest first
    for (; mantissa > 0; mantissa /= 10) digits.push_back(static_cast<int>(mantissa % 10));
    for (int i = 0; i < exponent; ++i) Multiply(digits, 2);
    for (int i = exponent; i < 0; ++i) Multiply(digits, 5);
    const std::size_t placeCount = exponent < 0 ? static_cast<std::size_t>(-exponent) : 0;
    while (digits.size() <= placeCount) digits.push_back(0);
    std::string text;
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit)
        text += static_cast<char>('0' + *digit);
    return {text.substr(0, text.size() - placeCount), text.substr(text.size() - placeCount)};
}

// The same of the number's text of 15 digits, without the zeros at its end.
ExactDecimal SeenDigits(double magnitude) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%.14e", magnitude);
    std::string digits = std::string(1, text[0]) + std::string(&text[2], 14);
    const int exponent = std::atoi(&text[17]);
    digits.erase(digits.find_last_not_of('0') + 1);
    if (exponent < 0) digits.insert(0, static_cast<std::size_t>(-exponent), '0');
    const std::size_t wholeDigits = exponent < 0 ? 1 : static_cast<std::size_t>(exponent) + 1;
    if (digits.size() < wholeDigits) digits.append(wholeDigits - digits.size(), '0');
    return {digits.substr(0, wholeDigits), digits.substr(wholeDigits)};
}

// The reference: the digits cut behind the place, raised by schoolbook rules, read as a double.
double ReferenceRound(double value, int decimals) {
    const ExactDecimal seen = SeenDigits(std::fabs(value));
    const bool isHalf =
        seen.places.size() == static_cast<std::size_t>(decimals) + 1 && seen.places.back() == '5';
    const auto [whole, places] = isHalf ? seen : ExactDigits(std::fabs(value));
    const auto keep = std::min(places.size(), static_cast<std::size_t>(decimals));
    std::string kept = whole + places.substr(0, keep);
    const std::string rest = places.substr(keep);
    bool up = false;
    if (!rest.empty() && rest[0] >= '5') {
        const bool exactHalf = rest[0] == '5' && rest.find_first_not_of('0', 1) == std::string::npos;
        up = !exactHalf || (kept.back() - '0') % 2 == 1;
    }
    if (up) {
        std::size_t at = kept.size();
        while (at > 0 && kept[at - 1] == '9') kept[--at] = '0';
        if (at > 0)
            ++kept[at - 1];
        else
            kept.insert(kept.begin(), '1');
    }
    kept.insert(kept.size() - keep, ".");
    double result = 0;
    std::from_chars(kept.data(), kept.data() + kept.size(), result);
    if (result == 0) return 0.0;
    return value < 0 ? -result : result;
}

TEST(RoundHalfEven, GoesToTheNearestAndToTheEvenDigitWhereTheTextIsAHalf) {
    const struct {
        double value;
        int decimals;
        double rounded;
    } cases[] = {
        {9.525, 2, 9.52},  // the double lies above the half
        {2.675, 2, 2.68},  // and this one below
        {2.665, 2, 2.66},
        {1.005, 2, 1.0},
        {25.4 * 0.375, 2, 9.52},  // 9.524999999999999, which every text of ours shows as 9.525
        {9.52500000000001, 2, 9.53},
        {9.52499999999999, 2, 9.52},
        {1.4999999999999998, 0, 2},
        {5e-31, 30, 0},
        {1.5e-30, 30, 2e-30},
        {0.125, 2, 0.12},
        {0.375, 2, 0.38},
        {0.625, 2, 0.62},
        {0.5, 0, 0},
        {1.5, 0, 2},
        {2.5, 0, 2},
        {3.5, 0, 4},
        {-0.5, 0, 0},
        {-1.5, 0, -2},
        {-2.5, 0, -2},
        {-0.125, 2, -0.12},
        {0.0625, 3, 0.062},
        {0.1875, 3, 0.188},
        {599.999996, 5, 600.0},
        {599.9999949, 5, 599.99999},
        {18.000004, 5, 18.0},
        {0.000004, 5, 0.0},
        {0.000006, 5, 0.00001},
        {19.05, 2, 19.05},
        {19.05, 5, 19.05},
        {0.1 + 0.2, 6, 0.3},
        {1e-14, 6, 0},
        {-1e-14, 6, 0},
        {0.49999999999999994, 0, 0},
        {4503599627370495.5, 0, 4503599627370496.0},
        {4503599627370494.5, 0, 4503599627370494.0},
        {9007199254740991.0, 0, 9007199254740991.0},
        {9007199254740992.0, 3, 9007199254740992.0},
        {1e300, 5, 1e300},
        {-1e300, 22, -1e300},
        {1.2345678901234567, 15, 1.234567890123457},
        {1.5, 30, 1.5},
        {1e-30, 30, 1e-30},
        {1e-30, 29, 0},
        {1e-30, 2000, 1e-30},
    };
    for (const auto& c : cases)
        EXPECT_EQ(RoundHalfEven(c.value, c.decimals), c.rounded) << c.value << " at " << c.decimals;
}

TEST(RoundHalfEven, NeverGivesANegativeZero) {
    for (const double value : {-0.0, -1e-9, -0.4, -0.5})
        EXPECT_FALSE(std::signbit(RoundHalfEven(value, 0))) << value;
    EXPECT_FALSE(std::signbit(RoundHalfEven(-1e-40, 30)));
}

TEST(RoundHalfEven, LeavesWhatIsNotFinite) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(RoundHalfEven(infinity, 5), infinity);
    EXPECT_EQ(RoundHalfEven(-infinity, 40), -infinity);
    EXPECT_TRUE(std::isnan(RoundHalfEven(std::nan(""), 5)));
}

TEST(RoundHalfEven, IsFarFromItsLimitsAtTheEndsOfTheRange) {
    constexpr double largest = std::numeric_limits<double>::max();
    constexpr double smallest = std::numeric_limits<double>::denorm_min();
    for (const int decimals : {0, 5, 22, 23, 300, 400, 1074, 1 << 30}) {
        EXPECT_EQ(RoundHalfEven(largest, decimals), largest) << decimals;
        EXPECT_EQ(RoundHalfEven(-largest, decimals), -largest) << decimals;
    }
    EXPECT_EQ(RoundHalfEven(smallest, 22), 0);
    EXPECT_EQ(RoundHalfEven(smallest, 323), 0);
    EXPECT_EQ(RoundHalfEven(smallest, 324), smallest);
    EXPECT_EQ(RoundHalfEven(smallest, 1074), smallest);
}

TEST(RoundHalfEvenDeathTest, TakesNoNegativeNumberOfDecimals) {
    EXPECT_DEATH(RoundHalfEven(1, -1), "number of decimals is not negative");
}

TEST(RoundHalfEven, EqualsDecimalArithmeticOnSizes) {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> size(-5000, 5000);
    for (int i = 0; i < 60000; ++i) {
        const double value = size(random);
        const int decimals = i % 13;
        ASSERT_EQ(RoundHalfEven(value, decimals), ReferenceRound(value, decimals))
            << value << " at " << decimals;
    }
}

TEST(RoundHalfEven, EqualsDecimalArithmeticBesideAndOnHalves) {
    std::mt19937_64 random(2);
    for (int i = 0; i < 60000; ++i) {
        const int decimals = i % 9;
        const double power = std::pow(10, decimals);
        const double half = (static_cast<double>(random() % 2000000) + 0.5) / power;
        for (const double value : {half, std::nextafter(half, 0.0), std::nextafter(half, 1e9), -half})
            ASSERT_EQ(RoundHalfEven(value, decimals), ReferenceRound(value, decimals))
                << value << " at " << decimals;
    }
}

TEST(RoundHalfEven, EqualsDecimalArithmeticOnBinaryFractions) {
    // Multiples of 1/64 and finer are where exact halves live.
    for (int denominatorBits = 1; denominatorBits <= 12; ++denominatorBits) {
        for (int numerator = -3000; numerator <= 3000; numerator += 7) {
            const double value = std::ldexp(numerator, -denominatorBits);
            for (int decimals = 0; decimals <= 11; ++decimals)
                ASSERT_EQ(RoundHalfEven(value, decimals), ReferenceRound(value, decimals))
                    << value << " at " << decimals;
        }
    }
}

TEST(RoundHalfEven, EqualsDecimalArithmeticWhereTheProductNearsTheLastBit) {
    std::mt19937_64 random(3);
    for (int i = 0; i < 60000; ++i) {
        const int decimals = i % 23;
        // Products from 2^48 to 2^55, across the change of method at 2^53.
        const double product = std::ldexp(1.0 + static_cast<double>(random() >> 12) * 0x1p-52, 48 + i % 8);
        const double value = product / std::pow(10, decimals);
        ASSERT_EQ(RoundHalfEven(value, decimals), ReferenceRound(value, decimals))
            << value << " at " << decimals;
    }
}

TEST(RoundHalfEven, EqualsDecimalArithmeticOnAnyDouble) {
    std::mt19937_64 random(4);
    for (int i = 0; i < 1500; ++i) {
        const double value = std::bit_cast<double>(random());
        if (!std::isfinite(value)) continue;
        const int decimals = static_cast<int>(random() % 340);
        ASSERT_EQ(RoundHalfEven(value, decimals), ReferenceRound(value, decimals))
            << value << " at " << decimals;
    }
}

TEST(RoundHalfEven, IsStableAndKeepsTheOrder) {
    std::mt19937_64 random(5);
    std::uniform_real_distribution<double> size(-100, 100);
    for (int i = 0; i < 20000; ++i) {
        const int decimals = i % 8;
        const double a = size(random);
        const double b = a + size(random) * 1e-4;
        const double rounded = RoundHalfEven(a, decimals);
        ASSERT_EQ(RoundHalfEven(rounded, decimals), rounded) << a;
        ASSERT_EQ(RoundHalfEven(-a, decimals), -rounded) << a;
        if (a <= b)
            ASSERT_LE(rounded, RoundHalfEven(b, decimals)) << a << ' ' << b;
        else
            ASSERT_GE(rounded, RoundHalfEven(b, decimals)) << a << ' ' << b;
    }
}

}  // namespace
}  // namespace brenvik
